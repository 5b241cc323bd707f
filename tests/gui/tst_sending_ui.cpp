// Mail and share through the window's buttons: what reaches the mail program, which targets the share
// menu offers and what each does. Printing from the panel onto a real CUPS queue: tst_sending_e2e.

#include "LaunchedProgram.h"

#include "core/overlays/OverlayControllers.h"
#include "sending/FileUris.h"

#include <QClipboard>
#include <QPushButton>

class SendingUiTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { englishTestMode(); }

    void init()
    {
        f.launch([](FakePlatform &fakes) { fakes.share.targets = {{QStringLiteral("kdeconnect:abc"), QStringLiteral("Pixel 7"), {}}}; });
    }
    void cleanup() { f.close(); }

    void mailButtons_data()
    {
        QTest::addColumn<QStringList>("files");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("button");
        QTest::addColumn<QString>("mailto"); // what a dropped text becomes
        QTest::newRow("a document") << QStringList{"a b&c.txt"} << "" << "maildocBtn" << "";
        QTest::newRow("several files") << QStringList{"one.bin", "two,2.bin"} << "" << "mailMultyBtn" << "";
        QTest::newRow("a text") << QStringList{} << "a b&c" << "strMailBtn" << "mailto:?body=a%20b%26c";
    }

    void mailButtons()
    {
        QFETCH(QStringList, files);
        QFETCH(QString, text);
        QFETCH(QString, button);
        QFETCH(QString, mailto);
        const QStringList paths = this->files(files);
        drop(paths, text);
        QVERIFY2(f.button(button), qPrintable(button));
        f.button(button)->click();
        if (mailto.isEmpty())
            QCOMPARE(f.fakes->mail.composed, QList<QStringList>{FileUris::fromPaths(paths)});
        else
            QCOMPARE(f.fakes->mail.mailtos, QStringList{mailto});
        // A mail program that takes no attachments: said, with a button that opens it.
        if (!mailto.isEmpty())
            return;
        f.fakes->mail.client.takesAttachments = false;
        f.button(button)->click();
        QTRY_VERIFY(visibleAlert());
        QCOMPARE(visibleAlert()->text(), Texts::localized("MailAppNOTDefault"));
        visibleAlert()->findChild<QPushButton *>(QStringLiteral("launchMailAppBtn"))->click();
        QCOMPARE(f.fakes->mail.launches, 1);
    }

    void shareMenuOffersWhatIsThere_data()
    {
        QTest::addColumn<QStringList>("files");
        QTest::addColumn<QString>("button");
        QTest::addColumn<bool>("mailClient");
        QTest::addColumn<QStringList>("entries");
        QTest::addColumn<QString>("pick");
        QTest::newRow("a document") << QStringList{"doc.txt"} << "airDrDocBtn" << true
                                    << QStringList{"mail", "kdeconnect:abc", "save-as", "copy-links"} << "kdeconnect:abc";
        QTest::newRow("no mail program") << QStringList{"doc.txt"} << "airDrDocBtn" << false
                                         << QStringList{"kdeconnect:abc", "save-as", "copy-links"} << "copy-links";
        QTest::newRow("several files") << QStringList{"a.bin", "b.bin"} << "airDrMultiBtn" << true
                                       << QStringList{"mail", "kdeconnect:abc", "copy-links"} << "kdeconnect:abc";
        QTest::newRow("a text") << QStringList{} << "strOSXShareBtn" << true
                                << QStringList{"copy-text", "mail", "save-txt", "search", "web:x", "web:facebook"} << "search";
    }

    void shareMenuOffersWhatIsThere()
    {
        QFETCH(QStringList, files);
        QFETCH(QString, button);
        QFETCH(bool, mailClient);
        QFETCH(QStringList, entries);
        QFETCH(QString, pick);
        if (!mailClient)
            f.fakes->mail.client = MailClient();
        const QStringList paths = this->files(files);
        drop(paths, files.isEmpty() ? QStringLiteral("find me") : QString());
        QMenu *menu = openMenu(button);
        QVERIFY(menu);
        QStringList shown;
        for (QAction *a : menu->actions())
            if (!a->isSeparator())
                shown.append(a->objectName());
        QCOMPARE(shown, entries);
        for (QAction *a : menu->actions())
            if (a->objectName() == pick)
                a->trigger();
        if (pick == QLatin1String("kdeconnect:abc"))
            QTRY_COMPARE(f.fakes->share.shared, (QList<QPair<QString, QStringList>>{{pick, FileUris::fromPaths(paths)}}));
        else if (pick == QLatin1String("copy-links"))
            QCOMPARE(QApplication::clipboard()->mimeData()->data(QStringLiteral("text/uri-list")),
                     (FileUris::fromPaths(paths).join(QStringLiteral("\r\n")) + QStringLiteral("\r\n")).toLatin1());
        else if (pick == QLatin1String("search"))
            QCOMPARE(f.fakes->share.searches.value(0).first, QStringLiteral("find me"));
    }

    void shareOverlayHandsOverTheFirstFile()
    {
        const QString path = f.file(QStringLiteral("photo.png"));
        drop({path});
        f.app->showOverlayPanel(f.app->imgShareVC);
        QPushButton *device = f.app->imgShareVC->findChild<QPushButton *>(QStringLiteral("kdeconnect:abc"));
        QVERIFY(device);
        QCOMPARE(device->text(), QStringLiteral("Pixel 7 (KDE Connect)"));
        device->click();
        QVERIFY(!f.app->isModalOverlayVisible());
        QTRY_COMPARE(f.fakes->share.shared.value(0).second, FileUris::fromPaths({path}));
    }

private:
    // These files, or the text when there is one, dropped on the window.
    void drop(const QStringList &paths, const QString &text = {})
    {
        if (text.isEmpty())
            return f.drop(paths);
        QMimeData data;
        data.setText(text);
        f.app->showDropTargetAt(QPointF(400, 300));
        f.app->mycustomviewDidGetDrop(&data);
    }
    QStringList files(const QStringList &names)
    {
        QStringList paths;
        for (const QString &name : names)
            paths.append(f.file(name));
        return paths;
    }
    QMenu *openMenu(const QString &button);

    LaunchedFixture f;
};

QMenu *SendingUiTest::openMenu(const QString &name)
{
    ActionButton *b = f.button(name);
    if (!b)
        return nullptr;
    b->click();
    for (QWidget *w : QApplication::topLevelWidgets())
        if (w->objectName() == QLatin1String("sharePicker") && w->isVisible())
            return qobject_cast<QMenu *>(w);
    return nullptr;
}

QTEST_MAIN(SendingUiTest)
#include "tst_sending_ui.moc"

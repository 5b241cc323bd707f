// Mail, share and print through the window's buttons: what reaches the mail program, which targets
// the share menu offers and what each does, and a PDF printed from its panel through the print
// dialog onto a real CUPS server's cups-pdf queue.

#include "CupsSandbox.h"
#include "LaunchedProgram.h"

#include "core/overlays/OverlayControllers.h"
#include "core/texts/Texts.h"
#include "core/window/DropWindow.h"
#include "platform/cups/CupsPrint.h"
#include "sending/FileUris.h"
#include "utils/Utils.h"
#include "widgets/ActionButton.h"

#include <QApplication>
#include <QClipboard>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QStandardPaths>
#include <QTest>
#include <QUrl>

class SendingUiTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void mailButtons_data();
    void mailButtons();
    void shareMenuOffersWhatIsThere_data();
    void shareMenuOffersWhatIsThere();
    void shareOverlayHandsOverTheFirstFile();
    void printPdfThroughTheDialog();

private:
    void drop(const QStringList &paths, const QString &text = {});
    QMenu *openMenu(const QString &button);
    ActionButton *button(const QString &name) const
    {
        return m_app->window->contentView()->findChild<ActionButton *>(name);
    }

    std::unique_ptr<CupsSandbox> m_cups;
    CupsPrint m_print;
    std::unique_ptr<TestTree> m_tree;
    std::unique_ptr<FakePlatform> m_fakes;
    std::unique_ptr<AppDelegate> m_app;
};

void SendingUiTest::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    Texts::setLanguage(QStringLiteral("en"));
    m_cups = std::make_unique<CupsSandbox>();
}

void SendingUiTest::init()
{
    m_tree = std::make_unique<TestTree>();
    m_fakes = std::make_unique<FakePlatform>(m_tree->path() + QStringLiteral("/.trash"));
    m_fakes->share.targets = {{QStringLiteral("kdeconnect:abc"), QStringLiteral("Pixel 7"), {}}};
    Platform services = m_fakes->services();
    services.print = &m_print;
    m_app = launchedOn(services);
}

void SendingUiTest::cleanup()
{
    m_app.reset();
    for (QWidget *w : QApplication::topLevelWidgets())
        if (qobject_cast<QMessageBox *>(w) || qobject_cast<QMenu *>(w) || qobject_cast<QDialog *>(w))
            delete w;
    m_fakes.reset();
    SettingsStore::shared().resetAll();
    m_tree.reset();
}

void SendingUiTest::drop(const QStringList &paths, const QString &text)
{
    QMimeData data;
    QList<QUrl> urls;
    for (const QString &p : paths)
        urls.append(QUrl::fromLocalFile(p));
    if (text.isEmpty())
        data.setUrls(urls);
    else
        data.setText(text);
    m_app->showDropTargetAt(QPointF(400, 300));
    m_app->mycustomviewDidGetDrop(&data);
}

QMenu *SendingUiTest::openMenu(const QString &name)
{
    ActionButton *b = button(name);
    if (!b)
        return nullptr;
    b->click();
    for (QWidget *w : QApplication::topLevelWidgets())
        if (w->objectName() == QLatin1String("sharePicker") && w->isVisible())
            return qobject_cast<QMenu *>(w);
    return nullptr;
}

void SendingUiTest::mailButtons_data()
{
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("mailto"); // what a dropped text becomes
    QTest::newRow("a document") << QStringList{"a b&c.txt"} << "" << "maildocBtn" << "";
    QTest::newRow("several files") << QStringList{"one.bin", "two,2.bin"} << "" << "mailMultyBtn" << "";
    QTest::newRow("a text") << QStringList{} << "a b&c" << "strMailBtn" << "mailto:?body=a%20b%26c";
}

void SendingUiTest::mailButtons()
{
    QFETCH(QStringList, files);
    QFETCH(QString, text);
    QFETCH(QString, button);
    QFETCH(QString, mailto);
    QStringList paths;
    for (const QString &f : files)
        paths.append(QString::fromUtf8(m_tree->file(f.toUtf8(), "x")));
    drop(paths, text);
    QVERIFY2(this->button(button), qPrintable(button));
    this->button(button)->click();
    if (mailto.isEmpty())
        QCOMPARE(m_fakes->mail.composed, QList<QStringList>{FileUris::fromPaths(paths)});
    else
        QCOMPARE(m_fakes->mail.mailtos, QStringList{mailto});
    // A mail program that takes no attachments: said, with a button that opens it.
    if (!mailto.isEmpty())
        return;
    m_fakes->mail.client.takesAttachments = false;
    this->button(button)->click();
    QMessageBox *alert = nullptr;
    auto shownAlert = [&alert] {
        for (QWidget *w : QApplication::topLevelWidgets())
            if ((alert = qobject_cast<QMessageBox *>(w)) && w->isVisible())
                return true;
        return false;
    };
    QTRY_VERIFY(shownAlert());
    QCOMPARE(alert->text(), Texts::localized("MailAppNOTDefault"));
    alert->findChild<QPushButton *>(QStringLiteral("launchMailAppBtn"))->click();
    QCOMPARE(m_fakes->mail.launches, 1);
}

void SendingUiTest::shareMenuOffersWhatIsThere_data()
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

void SendingUiTest::shareMenuOffersWhatIsThere()
{
    QFETCH(QStringList, files);
    QFETCH(QString, button);
    QFETCH(bool, mailClient);
    QFETCH(QStringList, entries);
    QFETCH(QString, pick);
    if (!mailClient)
        m_fakes->mail.client = MailClient();
    QStringList paths;
    for (const QString &f : files)
        paths.append(QString::fromUtf8(m_tree->file(f.toUtf8(), "x")));
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
        QTRY_COMPARE(m_fakes->share.shared, (QList<QPair<QString, QStringList>>{{pick, FileUris::fromPaths(paths)}}));
    else if (pick == QLatin1String("copy-links"))
        QCOMPARE(QApplication::clipboard()->mimeData()->data(QStringLiteral("text/uri-list")),
                 (FileUris::fromPaths(paths).join(QStringLiteral("\r\n")) + QStringLiteral("\r\n")).toLatin1());
    else if (pick == QLatin1String("search"))
        QCOMPARE(m_fakes->share.searches.value(0).first, QStringLiteral("find me"));
}

void SendingUiTest::shareOverlayHandsOverTheFirstFile()
{
    const QString path = QString::fromUtf8(m_tree->file("photo.png", "x"));
    drop({path});
    m_app->showOverlayPanel(m_app->imgShareVC);
    QPushButton *device = m_app->imgShareVC->findChild<QPushButton *>(QStringLiteral("kdeconnect:abc"));
    QVERIFY(device);
    QCOMPARE(device->text(), QStringLiteral("Pixel 7 (KDE Connect)"));
    device->click();
    QVERIFY(!m_app->isModalOverlayVisible());
    QTRY_COMPARE(m_fakes->share.shared.value(0).second, FileUris::fromPaths({path}));
}

void SendingUiTest::printPdfThroughTheDialog()
{
    if (!m_cups->ready)
        QSKIP(qPrintable(m_cups->skipReason));
    const QString pdf = m_tree->path() + QStringLiteral("/three pages.pdf");
    writeTextPdf(pdf, 3);
    drop({pdf});
    ActionButton *print = button(QStringLiteral("printPrTbleFileBtn"));
    QVERIFY(print && print->isVisible());
    const qsizetype before = m_cups->outputs().size();
    print->click();
    QPrintDialog *dialog = nullptr;
    QTRY_VERIFY((dialog = m_app->window->findChild<QPrintDialog *>()) && dialog->isVisible());
    QVERIFY(m_app->windowIsVsbl()); // the window stays while the dialog is up
    QCOMPARE(dialog->printer()->printerName(), m_cups->queue);
    dialog->accept();
    QTRY_VERIFY_WITH_TIMEOUT(m_cups->outputs().size() > before, 60000);
    QTRY_COMPARE_WITH_TIMEOUT(pdfPageCount(m_cups->outputs().constLast()), 3, 10000);
}

QTEST_MAIN(SendingUiTest)
#include "tst_sending_ui.moc"

// What a drop brings in: the window's own target and the quick-move and alias targets, through real
// drag events on the views; promised files that settle or never do; the cancel of an import.

#include "LaunchedProgram.h"
#include "core/overlays/MoveFileViewController.h"
#include "core/window/ActionPanelView.h"
#include "core/window/BusyView.h"
#include "core/window/DropFilesHereView.h"
#include "core/window/DropView.h"

#include <QClipboard>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QLabel>
#include <QPushButton>


// Files a source promises through X Direct Save (when offered), written `writeAfterMs` after the drop:
// the names it gives (none: it refuses), or, for an image out of a web page, the address beside its
// bytes; the panel, and the names the files have in the temp folder (empty: the source's).
struct Promised
{
    bool directSave;
    QStringList names;
    int writeAfterMs;
    QString address;
    int panel;
    QStringList written;
};
Q_DECLARE_METATYPE(Promised)

class IntakeTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { englishTestMode(); }

    void init()
    {
        SettingsStore::shared().setBool(SettingsKey::EnableUserNotifWhenDoneSwitch, true);
        f.launch([](FakePlatform &fakes) { fakes.volumes.volumes = {fakeStick()}; });
        f.app->showDropTargetAt(QPointF(300, 300));
    }
    void cleanup()
    {
        f.close();
        Utils::cleanUPTepmFileOperationsFolder();
    }

    void windowTarget_data()
    {
        // What is dropped, or pasted with the window's paste key: files of the test's folder by name ("."
        // the folder itself), other addresses as they are, or data of one type ("FILE" the address of
        // notes.txt in it).
        QTest::addColumn<QStringList>("urls");
        QTest::addColumn<QString>("type");
        QTest::addColumn<QByteArray>("data");
        QTest::addColumn<bool>("taken");
        QTest::addColumn<int>("panel"); // 0: none
        QTest::addColumn<bool>("paste");
        const QByteArray png("\x89PNG\r\n\x1a\n", 8);
        QTest::newRow("a text file") << QStringList{"notes.txt"} << "" << QByteArray() << true << 2 << false;
        QTest::newRow("an image file") << QStringList{"photo.png"} << "" << png << true << 1 << false;
        QTest::newRow("a folder") << QStringList{"."} << "" << QByteArray() << true << 333 << false;
        QTest::newRow("another file") << QStringList{"data.bin"} << "" << QByteArray() << true << 777 << false;
        QTest::newRow("two files") << QStringList{"a.txt", "b.txt"} << "" << QByteArray() << true << 888 << false;
        QTest::newRow("text") << QStringList() << "text/plain" << QByteArray("two words") << true << 222 << false;
        QTest::newRow("image data") << QStringList() << "image/png" << png << true << 444 << false;
        QTest::newRow("a lone volume") << QStringList{"/media/someone/STICK"} << "" << QByteArray() << false << 0 << false;
        QTest::newRow("a web link without an image") << QStringList{"https://example.org/page"} << "" << QByteArray() << false << 0 << false;
        QTest::newRow("a type nobody knows") << QStringList() << "application/x-foo" << QByteArray("?") << false << 0 << false;
        QTest::newRow("files, pasted") << QStringList{"notes.txt"} << "" << QByteArray() << true << 2 << true;
        QTest::newRow("a GNOME file manager's files, pasted") << QStringList() << "x-special/gnome-copied-files" << QByteArray("copy\nFILE") << true << 2 << true;
        QTest::newRow("text, pasted") << QStringList() << "text/plain" << QByteArray("two words") << true << 222 << true;
        QTest::newRow("image data, pasted") << QStringList() << "image/png" << png << true << 444 << true;
        QTest::newRow("nothing the window takes, pasted") << QStringList() << "application/x-private" << QByteArray("x") << false << 0 << true;
    }

    void windowTarget()
    {
        QFETCH(QStringList, urls);
        QFETCH(QString, type);
        QFETCH(QByteArray, data);
        QFETCH(bool, taken);
        QFETCH(int, panel);
        QFETCH(bool, paste);
        auto dropped = std::make_unique<QMimeData>();
        QList<QUrl> addresses;
        for (const QString &u : urls)
            addresses << (u.contains(QLatin1Char('/')) ? QUrl::fromUserInput(u) : QUrl::fromLocalFile(u == u"." ? f.dir.path() : file(u, data.isEmpty() ? "x" : data)));
        if (!urls.isEmpty())
            dropped->setUrls(addresses);
        else
            dropped->setData(type, QByteArray(data).replace("FILE", QUrl::fromLocalFile(file(QStringLiteral("notes.txt"))).toEncoded()));
        if (paste) {
            QGuiApplication::clipboard()->setMimeData(dropped.release());
            QTest::keySequence(f.app->window, QKeySequence::Paste);
        } else {
            QCOMPARE(dropOn(f.app->dropFilesHereView, dropped.get()), taken);
        }
        QCOMPARE(f.app->oneofThePanelsIsShown, panel != 0);
        QVERIFY(!f.app->emptyContviewIsShown);
        if (!taken) {
            QCOMPARE(f.app->window->contentView(), f.app->dropFilesHereView); // still waiting
            return;
        }
        QCOMPARE(f.app->window->contentView(), static_cast<QWidget *>(f.app->panelView(DropPanel(panel))));
        QVERIFY(f.app->window->takesFocus()); // a panel takes the keys
        QCOMPARE(f.app->filePathsArr.size(), type == u"text/plain" ? 0 : std::max(qsizetype(1), urls.size()));
        if (type == u"text/plain")
            QCOMPARE(Utils::readDroppedString(), QString::fromUtf8(data));
        if (type == u"image/png") {
            QVERIFY(f.app->droppedImageFromOtherApp);
            QVERIFY(f.app->filePathsArr.value(0).startsWith(Utils::tempFileOperationsFolder()));
        }
    }

    void promisedFilesSettle_data()
    {
        QTest::addColumn<Promised>("row");
        QTest::newRow("one image: the panel of an image from elsewhere") << Promised{true, {"shot.png"}, 0, "", 444, {}};
        QTest::newRow("one text") << Promised{true, {"draft.txt"}, 0, "", 2, {}};
        QTest::newRow("two files") << Promised{true, {"a.png", "b.txt"}, 0, "", 888, {}};
        QTest::newRow("written late") << Promised{true, {"late.txt"}, 350, "", 2, {}};
        // An image dragged out of a web page: no file and no image type, only its bytes beside its address.
        // Chromium answers X Direct Save with "F", leaving the file to the target from application/octet-stream.
        const QString page = QStringLiteral("http://127.0.0.1/pics/view.php?id=7");
        QTest::newRow("browser: X Direct Save left to the target") << Promised{true, {"harbour.png"}, 0, page, 444, {"harbour.png"}};
        QTest::newRow("browser: X Direct Save refused, named from the address")
            << Promised{true, {}, 0, "http://127.0.0.1/pics/harbour.png", 444, {"harbour.png"}};
        QTest::newRow("browser: bytes only, named from the address") << Promised{false, {}, 0, page, 444, {"view.php.png"}};
    }

    void promisedFilesSettle()
    {
        QFETCH(Promised, row);
        f.fakes->promisedFiles.names = row.names;
        f.fakes->promisedFiles.writeAfterMs = row.writeAfterMs;
        QMimeData data;
        if (row.directSave)
            data.setData(QStringLiteral("XdndDirectSave0"), QByteArray());
        if (row.address.isEmpty()) {
            data.setUrls({QUrl::fromLocalFile(file(QStringLiteral("also-named.txt")))}); // promises come first
        } else {
            f.fakes->promisedFiles.writeFromType = QStringLiteral("application/octet-stream");
            data.setUrls({QUrl(row.address)});
            data.setText(row.address);
            data.setData(QStringLiteral("application/octet-stream"), pngBytes());
            if (row.directSave && row.names.isEmpty())
                QTest::ignoreMessage(QtWarningMsg, "promised files not received: the source refused");
        }
        QVERIFY(dropOn(f.app->dropFilesHereView, &data));
        QCOMPARE(f.fakes->promisedFiles.askedFolders.size(), int(row.directSave));
        QVERIFY(f.fakes->promisedFiles.askedFolders.value(0).startsWith(Utils::tempFileOperationsFolder() + QLatin1Char('/')) || !row.directSave);
        QVERIFY(f.app->emptyContviewIsShown || !row.directSave); // until the files stand still
        QTRY_VERIFY_WITH_TIMEOUT(f.app->oneofThePanelsIsShown, 3000);
        QCOMPARE(f.app->window->contentView(), static_cast<QWidget *>(f.app->panelView(DropPanel(row.panel))));
        QVERIFY(f.app->droppedImageFromOtherApp);
        // In the folder the source was told, or the temp folder when none was.
        const QString folder = f.fakes->promisedFiles.askedFolders.value(0, Utils::tempFileOperationsFolder());
        QStringList names;
        for (const QString &path : std::as_const(f.app->filePathsArr)) {
            QVERIFY2(QFileInfo(path).isFile() && path.startsWith(QDir(folder).canonicalPath() + '/'), qPrintable(path));
            names << QFileInfo(path).fileName();
        }
        QCOMPARE(names, row.written.isEmpty() ? row.names : row.written);
        if (!row.address.isEmpty())
            QCOMPARE(f.bytesOf(f.app->filePathsArr.first()), pngBytes());
    }

    void whatCannotFinishWaitsForCancel()
    {
        f.fakes->promisedFiles.names = {QStringLiteral("never.txt")};
        f.fakes->promisedFiles.writeAfterMs = -1;
        QMimeData data;
        data.setData(QStringLiteral("XdndDirectSave0"), QByteArray());
        QVERIFY(dropOn(f.app->dropFilesHereView, &data));
        QTest::qWait(400);
        QVERIFY(f.app->emptyContviewIsShown);
        QVERIFY(!f.app->oneofThePanelsIsShown);
        const QString folder = f.fakes->promisedFiles.askedFolders.value(0);
        QVERIFY(QFileInfo(folder).isDir());

        f.app->emptyContview->cancelProgressBtn->click();
        QCOMPARE(f.app->emptyContview->emptyContviewLbl->text(), QStringLiteral("Data import canceled..."));
        QVERIFY(!QFileInfo::exists(folder));
        QVERIFY(f.app->windowIsVsbl()); // a moment to read the message
        QTRY_VERIFY_WITH_TIMEOUT(!f.app->windowIsVsbl(), 2000);
        // The file appearing now changes nothing: its checks ended with the import.
        writtenFile(folder + QStringLiteral("/never.txt"), "late");
        QTest::qWait(300);
        QVERIFY(!f.app->oneofThePanelsIsShown);
        QDir(folder).removeRecursively();
        // Image data of a kind the window does not keep: the busy view stays, and the cancel is the way
        // out. It removes nothing, as no promised folder was made.
        f.app->showDropTargetAt(QPointF(300, 300));
        const QString kept = file(QStringLiteral("kept.txt"));
        QMimeData exotic;
        exotic.setData(QStringLiteral("image/x-exotic"), "??");
        QVERIFY(dropOn(f.app->dropFilesHereView, &exotic));
        QVERIFY(f.app->emptyContviewIsShown);
        QVERIFY(f.app->filePathsArr.isEmpty());
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^error deleting TempDir for promised files")));
        f.app->emptyContview->cancelProgressBtn->click();
        QTRY_VERIFY_WITH_TIMEOUT(!f.app->windowIsVsbl(), 2000);
        QVERIFY(QFileInfo::exists(kept));
        QVERIFY(QFileInfo(QDir::currentPath()).isDir());
    }

    void smallTargetsTakeFilesAndQuickMoveShowsThePickerAlone()
    {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(file(QStringLiteral("move-me.txt")))});
        QVERIFY(dropOn(f.app->dropFilesHereView->dropQuickMoveView, &data));
        QCOMPARE(f.app->window->contentView(), static_cast<QWidget *>(f.app->moveFileVC));
        QVERIFY(f.app->oneofThePanelsIsShown);
        QVERIFY(!f.app->emptyContviewIsShown);
        QVERIFY(f.app->moveFileVC->goBackBtn->isHidden());
        QCOMPARE(f.app->window->frameYUp().size(), QSizeF(210, 300));
        QCOMPARE(f.app->moveFileVC->destParentFldrPath(), f.app->filePathsArr.first());
        f.app->showDropTargetAt(QPointF(300, 300));
        // A lone volume is refused by the small target and by the window's own around it.
        QMimeData volume;
        volume.setUrls({QUrl::fromLocalFile(QStringLiteral("/media/someone/STICK"))});
        QVERIFY(!dropOn(f.app->dropFilesHereView->createAliasDropView, &volume));
        QCOMPARE(f.app->window->contentView(), f.app->dropFilesHereView);
        // Text let go over a small target is the window's: its panel, no picker, no alias.
        QMimeData text;
        text.setText(QStringLiteral("words"));
        QVERIFY(dropOn(f.app->dropFilesHereView->dropQuickMoveView, &text));
        QCOMPARE(f.app->window->contentView(), static_cast<QWidget *>(f.app->panelView(DropPanelString)));
        QVERIFY(!f.app->dropFilesHereView->dropQuickMoveView->isHovered());
    }

    void aliasesAreLinksBesideTheFiles()
    {
        const QString a = file(QStringLiteral("a.txt"));
        const QString b = file(QStringLiteral("b b.txt"));
        const QString taken = file(QStringLiteral("b b.txt alias"), "the user's own");
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(a), QUrl::fromLocalFile(b)});
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("^&err > .*b b.txt alias")));
        QVERIFY(dropOn(f.app->dropFilesHereView->createAliasDropView, &data));
        QTRY_VERIFY(!f.app->windowIsVsbl());
        QCOMPARE(QFileInfo(a + QStringLiteral(" alias")).symLinkTarget(), a);
        // An item already there keeps its place and its content.
        QVERIFY(!QFileInfo(taken).isSymLink());
        QCOMPARE(f.bytesOf(taken), QByteArray("the user's own"));
        QVERIFY(f.notified(1, 5000));
        QCOMPARE(told(f.note()), (QStringList{"Alias created", "at ../" + QFileInfo(f.dir.path()).fileName(), a + " alias"}));
    }

    void dropViewCaptionsFollowTheDrag()
    {
        // Each target names itself at rest and says what a drop does while something hovers over it.
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(file(QStringLiteral("c.txt")))});
        const struct
        {
            DropView *view;
            const char *resting, *hovered;
        } targets[] = {{f.app->dropFilesHereView->dropQuickMoveView, "Move", "Move/Copy"},
                       {f.app->dropFilesHereView->createAliasDropView, "Alias", "Make alias"}};
        for (const auto &t : targets) {
            QCOMPARE(t.view->labelTextFld->text(), QLatin1String(t.resting));
            QDragEnterEvent enter(QPoint(5, 5), Qt::LinkAction, &data, Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(t.view, &enter);
            QVERIFY(enter.isAccepted());
            QCOMPARE(enter.dropAction(), Qt::LinkAction);
            QVERIFY(t.view->isHovered());
            QCOMPARE(t.view->labelTextFld->text(), QLatin1String(t.hovered));
            QDragLeaveEvent leave;
            QCoreApplication::sendEvent(t.view, &leave);
            QVERIFY(!t.view->isHovered());
            QCOMPARE(t.view->labelTextFld->text(), QLatin1String(t.resting));
        }
        DropView *quickMove = targets[0].view;
        QVERIFY(dropOn(quickMove, &data));
        QCOMPARE(quickMove->labelTextFld->text(), QStringLiteral("Move")); // back at rest after the drop
        Texts::setLanguage(QStringLiteral("de"));
        QCoreApplication::processEvents();
        QCOMPARE(quickMove->labelTextFld->text(), QStringLiteral("Verschieben"));
        Texts::setLanguage(QStringLiteral("en"));
    }

private:
    QString file(const QString &name, const QByteArray &content = "x") { return f.file(name, content); }
    // Enter, then drop, as the windowing system delivers them; whether the drop was taken.
    static bool dropOn(QWidget *target, const QMimeData *data)
    {
        const QPoint at = target->rect().center();
        QDragEnterEvent enter(at, Qt::CopyAction | Qt::LinkAction, data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(target, &enter);
        if (!enter.isAccepted())
            return false;
        QDropEvent drop(at, Qt::CopyAction | Qt::LinkAction, data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(target, &drop);
        return drop.isAccepted();
    }

    LaunchedFixture f;
};

QTEST_MAIN(IntakeTest)
#include "tst_intake.moc"

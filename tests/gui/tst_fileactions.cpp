// The file actions through the window: what each button and overlay makes on disk, what it credits,
// and the notifications with their Show and Undo; mail and share through the window's buttons: what
// reaches the mail program, which targets the share menu offers and what each does. (Printing from the
// panel onto a real CUPS queue: tst_sending_e2e.) Moving and copying: the picker, the conflict dialog,
// the guards' alerts and the progress panel with its rows.

#include "LaunchedProgram.h"
#include "ScratchMount.h"

#include "core/overlays/FileOverlays.h"
#include "core/overlays/MoveFileViewController.h"
#include "core/overlays/OverlayControllers.h"
#include "core/window/ActionPanelView.h"
#include "core/window/BusyView.h"
#include "fileops/actions/TrashJob.h"
#include "fileops/orchestration/MoveCopyOrchestrator.h"
#include "fileops/ui/ConflictDialog.h"
#include "fileops/ui/ProgressPanel.h"
#include "fileops/ui/ProgressRow.h"
#include "fileops/ui/WidgetAlerts.h"
#include "fileops/ui/destinations/DestinationList.h"
#include "fileops/ui/destinations/DestinationListModel.h"
#include "fileops/ui/ZipProgressWindow.h"
#include "sending/FileUris.h"

#include <QCheckBox>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QProcess>
#include <QPushButton>

struct NewItem
{
    QStringList items;
    QString panelButton, kindButton, typed, expected;
    quint64 credit;
};
Q_DECLARE_METATYPE(NewItem)

struct Zipped
{
    QStringList items;
    QString buttonName, archive;
    quint64 credit;
};
Q_DECLARE_METATYPE(Zipped)

struct Mailed
{
    QStringList files;
    QString text, button;
    QString mailto; // what a dropped text becomes
};
Q_DECLARE_METATYPE(Mailed)

struct Undoable
{
    QString panelButton;
    QString field; // of the overlay that asks, empty when none does
    QString typed;
    QStringList expected; // where the two items are then, relative to the tree
};
Q_DECLARE_METATYPE(Undoable)

struct ShareMenu
{
    QStringList files;
    QString button;
    bool mailClient;
    QStringList entries;
    QString pick;
};
Q_DECLARE_METATYPE(ShareMenu)

class FileActionsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { englishTestMode(); }

    void init()
    {
        f.launch([](FakePlatform &fakes) { fakes.share.targets = {{QStringLiteral("kdeconnect:abc"), QStringLiteral("Pixel 7"), {}}}; });
    }
    void cleanup() { f.close(); }

    void zipButtonWritesTheArchiveAndCredits_data()
    {
        QTest::addColumn<Zipped>("row");
        QTest::newRow("a document") << Zipped{{"a.b.txt"}, "zipDocBtn", "a.b.zip", 2};
        QTest::newRow("a folder") << Zipped{{"Photos/", "Photos/p.jpg"}, "zipBtn", "Photos.zip", 2};
        QTest::newRow("several files") << Zipped{{"x.bin", "y.bin"}, "zipMultiBtn", "QuaydropZip.zip", 7};
    }

    void zipButtonWritesTheArchiveAndCredits()
    {
        QFETCH(Zipped, row);
        const auto &[items, buttonName, archive, credit] = row;
        QStringList dropped;
        for (const QString &item : items) {
            const QString made = make(item);
            if (item.count(QLatin1Char('/')) == int(item.endsWith(QLatin1Char('/'))))
                dropped.append(made);
        }
        f.drop(dropped);
        const quint64 before = ledgerTotal(); // a drop credits too
        f.button(buttonName)->click();
        QCOMPARE(ledgerTotal(), before + credit);
        QVERIFY(f.app->zippingTaskPanel && f.app->zippingTaskPanel->isVisible());
        QVERIFY(f.notified(1));
        const QString expected = f.path(archive);
        QCOMPARE(f.note().title, Texts::localized("zipTaskComplete"));
        QCOMPARE(f.note().userInfo.value("filePaths").toStringList(), QStringList{expected});
        QCOMPARE(f.app->zippingTaskPanel->stateText(), Texts::localized("Success"));
        QVERIFY(f.button(buttonName)->isEnabled());
        QProcess unzip;
        unzip.start(QStringLiteral("unzip"), {QStringLiteral("-tqq"), expected});
        QVERIFY(unzip.waitForFinished(20000));
        QCOMPARE(unzip.exitCode(), 0);
        QTRY_VERIFY_WITH_TIMEOUT(!f.app->zippingTaskPanel->isVisible(), 5000);
    }

    void newItemFromTheOverlay_data()
    {
        QTest::addColumn<NewItem>("row");
        QTest::newRow("text beside a document") << NewItem{{"a.txt"}, "createNewDocBtn", "createTextDocumentAction", "", "_NewTextFile.txt", 10};
        QTest::newRow("folder inside a dropped folder") << NewItem{{"box/"}, "createNewBtn", "createFolderBtnAction", "Inner", "box/Inner", 3};
        QTest::newRow("workbook for several") << NewItem{{"x", "y"}, "createFileMultiBtn", "createExcelSheet", "", "_NewWorkbook.xlsx", 10};
        QTest::newRow("OpenDocument text") << NewItem{{"p.png"}, "createNewFImgBtn", "createOdfText", "Plan", "Plan.odt", 10};
    }

    void newItemFromTheOverlay()
    {
        QFETCH(NewItem, row);
        const auto &[items, panelButton, kindButton, typed, expected, credit] = row;
        const QStringList dropped = files(items);
        QVERIFY(f.dropAndPress(dropped, panelButton));
        FileCreateOverlayVC *overlay = f.app->fileCreateVC;
        QVERIFY(overlay->isVisible());
        QCOMPARE(overlay->sameAsDragedFile->isVisible(), dropped.size() == 1);
        QCOMPARE(overlay->insideFolderCheckBox->isChecked(), items.first().endsWith(QLatin1Char('/')));
        QTest::keyClicks(overlay->fileNameTXTfld, typed);
        const quint64 before = ledgerTotal();
        overlay->findChild<QPushButton *>(kindButton)->click();
        const QString path = f.path(expected);
        QVERIFY(QFileInfo::exists(path));
        QCOMPARE(ledgerTotal(), before + credit);
        QVERIFY(!overlay->isVisible());
        QCOMPARE(f.fakes->notifications.delivered.size(), qsizetype(1));
        QCOMPARE(f.note().userInfo.value("OpenPath").toString(), path);
        f.fakes->notifications.click(0);
        QCOMPARE(f.fakes->workspace.opened, QStringList{path});
    }

    void busyViewCancelStopsTheTrashOnly()
    {
        QStringList dropped;
        for (int i = 0; i < 20; ++i)
            dropped.append(make(QStringLiteral("f%1.jpg").arg(i)));
        f.fakes->trash.delayMs = 100;
        QVERIFY(f.dropAndPress(dropped, QStringLiteral("trashMultiBtn")));
        auto *cancel = f.app->emptyContview->cancelProgressBtn;
        QTRY_VERIFY(cancel->isVisible() && cancel->isEnabled());
        cancel->click();
        // The trash stops between items; the window does not speak of a drop import.
        QTRY_VERIFY_WITH_TIMEOUT(!f.app->trashingTask || f.app->trashingTask->isFinished(), 10000);
        f.fakes->trash.delayMs = 0;
        QVERIFY(f.app->emptyContview->emptyContviewLbl->text() != Texts::localized("Data import canceled..."));
        int left = 0;
        for (const QString &p : dropped)
            left += QFile::exists(p) ? 1 : 0;
        QVERIFY2(left > 0, "the cancel did not stop the trash");
        QCOMPARE(left + QDir(f.dir.path() + QStringLiteral("/.trash")).entryList(QDir::Files).size(), 20); // none lost
    }

    void undoableActions_data()
    {
        QTest::addColumn<Undoable>("row");
        QTest::newRow("into folder") << Undoable{"moveToOneFoldBtn", "folderNameTF", "Box", {"Box/a.jpg", "Box/b.jpg"}};
        QTest::newRow("rename") << Undoable{"renameMultiBtn", "renameNameTF", "Trip", {"Trip.jpg", "Trip 1.jpg"}};
        QTest::newRow("trash") << Undoable{"trashMultiBtn", "", "", {".trash/a.jpg", ".trash/b.jpg"}};
    }

    void undoableActions()
    {
        QFETCH(Undoable, row);
        const auto &[panelButton, field, typed, expected] = row;
        const QStringList dropped{make("a.jpg", "A"), make("b.jpg", "B")};
        QVERIFY(f.dropAndPress(dropped, panelButton));
        if (!field.isEmpty()) {
            auto *edit = f.app->window->findChild<QLineEdit *>(field);
            QVERIFY(edit && edit->isVisible());
            edit->clear();
            QTest::keyClicks(edit, typed);
            QTest::keyClick(edit, Qt::Key_Return);
        }
        QVERIFY(f.notified(1, 10000));
        QTest::qWait(300); // Return acts once: no second run that would find the items gone
        QCOMPARE(f.fakes->notifications.delivered.size(), qsizetype(1));
        QVERIFY(!visibleAlert());
        for (const QString &e : expected)
            QVERIFY2(QFileInfo::exists(f.path(e)), qPrintable(e));
        QVERIFY(!QFileInfo::exists(dropped.first()));
        QVERIFY(!f.note().userInfo.value("undoID").toString().isEmpty());
        f.fakes->notifications.clickUndo(0);
        QCOMPARE(f.bytesOf(dropped.at(0)), QByteArray("A"));
        QCOMPARE(f.bytesOf(dropped.at(1)), QByteArray("B"));
        QVERIFY(!QFileInfo::exists(f.path(expected.first())));
    }

    void revealShowsEveryItem()
    {
        const QStringList dropped{make("a"), make("b")};
        f.drop(dropped);
        const quint64 before = ledgerTotal();
        f.button(QStringLiteral("revealInfinderMultibtn"))->click();
        QCOMPARE(f.fakes->workspace.revealed, QList<QStringList>{dropped});
        QCOMPARE(ledgerTotal(), before + 4);
        QVERIFY(f.dropAndPress({dropped.first()}, QStringLiteral("revealInFinderBtn")));
        QCOMPARE(f.fakes->workspace.revealed.last(), QStringList{dropped.first()});
    }

    void mailButtons_data()
    {
        QTest::addColumn<Mailed>("row");
        QTest::newRow("a document") << Mailed{{"a b&c.txt"}, "", "maildocBtn", ""};
        QTest::newRow("several files") << Mailed{{"one.bin", "two,2.bin"}, "", "mailMultyBtn", ""};
        QTest::newRow("a text") << Mailed{{}, "a b&c", "strMailBtn", "mailto:?body=a%20b%26c"};
    }

    void mailButtons()
    {
        QFETCH(Mailed, row);
        const auto &[files, text, button, mailto] = row;
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
        QTest::addColumn<ShareMenu>("row");
        QTest::newRow("a document") << ShareMenu{{"doc.txt"}, "airDrDocBtn", true, {"mail", "kdeconnect:abc", "save-as", "copy-links"}, "kdeconnect:abc"};
        QTest::newRow("no mail program") << ShareMenu{{"doc.txt"}, "airDrDocBtn", false, {"kdeconnect:abc", "save-as", "copy-links"}, "copy-links"};
        QTest::newRow("several files") << ShareMenu{{"a.bin", "b.bin"}, "airDrMultiBtn", true, {"mail", "kdeconnect:abc", "copy-links"}, "kdeconnect:abc"};
        QTest::newRow("a text") << ShareMenu{{}, "strOSXShareBtn", true, {"copy-text", "mail", "save-txt", "search", "web:x", "web:facebook"}, "search"};
    }

    void shareMenuOffersWhatIsThere()
    {
        QFETCH(ShareMenu, row);
        const auto &[files, button, mailClient, entries, pick] = row;
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

    void progressPanelGrowsAndShrinksByRows()
    {
        QList<FileCopyParamsPtr> jobs = {std::make_shared<FileCopyParams>(QStringList{"/a/one"}, "/b", true),
                                         std::make_shared<FileCopyParams>(QStringList{"/a/two"}, "/c", false)};
        QList<FileCopyParamsPtr> cancelled;
        ProgressPanel panel([&] { return jobs; }, [&](const FileCopyParamsPtr &j) { cancelled << j; });
        panel.jobsChanged(2);
        QCOMPARE(panel.numberOfRows(), 2);
        QCOMPARE(panel.height(), 2 * 70 + 17);
        QVERIFY(panel.isVisible());
        QCOMPARE(panel.row(0)->percent(), 0); // a new row's bar is still, at 0
        QCOMPARE(panel.row(1)->text(), QStringLiteral("Moving two to c"));
        panel.jobProgress(jobs[1], 40, QStringLiteral("Moving x to c"));
        QCOMPARE(panel.row(1)->percent(), 40);
        QCOMPARE(panel.row(0)->percent(), 0);
        panel.row(1)->cancelCopyBtn->click();
        QCOMPARE(cancelled, QList<FileCopyParamsPtr>{jobs[1]});
        jobs.removeAt(0);
        panel.jobsChanged(1);
        QCOMPARE(panel.numberOfRows(), 1);
        QCOMPARE(panel.height(), 70 + 17);
        QCOMPARE(panel.row(0)->job(), jobs[0]);
        QCOMPARE(panel.row(0)->percent(), 40); // the remaining row keeps its progress
        jobs.clear();
        panel.jobsChanged(0);
        QVERIFY(!panel.isVisible());
    }

    void conflictDialogAnswers_data()
    {
        QTest::addColumn<int>("button");
        QTest::addColumn<bool>("applyToAll");
        QTest::addColumn<int>("answer");
        QTest::newRow("replace") << 0 << false << int(ConflictAnswer::Replace);
        QTest::newRow("skip for all") << 1 << true << int(ConflictAnswer::Skip);
        QTest::newRow("keep both") << 2 << false << int(ConflictAnswer::KeepBoth);
        QTest::newRow("escape skips") << -1 << false << int(ConflictAnswer::Skip);
    }

    void conflictDialogAnswers()
    {
        QFETCH(int, button);
        QFETCH(bool, applyToAll);
        QFETCH(int, answer);
        QWidget window;
        WidgetConflictResolver resolver(&window);
        QList<ConflictReply> replies;
        resolver.ask(ConflictQuestion{QStringLiteral("<b>photo</b>.png"), {}, {}}, [&](ConflictReply r) { replies << r; });
        ConflictDialog *dialog = resolver.openDialog();
        QVERIFY(dialog && dialog->isVisible());
        QVERIFY(dialog->findChild<QLabel *>(QStringLiteral("informativeText"))->text().contains(QStringLiteral("<b>photo</b>.png")));
        dialog->applyToAllBox->setChecked(applyToAll);
        QPushButton *buttons[] = {dialog->replaceButton, dialog->skipButton, dialog->keepBothButton};
        if (button < 0)
            QTest::keyClick(dialog, Qt::Key_Escape);
        else
            buttons[button]->click();
        QCOMPARE(replies.size(), 1);
        QCOMPARE(int(replies.first().answer), answer);
        QCOMPARE(replies.first().applyToAll, applyToAll);
        QTRY_VERIFY(!resolver.openDialog());
    }

    void libraryFileIsOnlyCopied()
    {
        f.app->showDropTargetAt(QPointF(300, 300));
        f.app->filePathsArr = {make(QStringLiteral("lib.txt"))};
        f.app->libraryFolderFile = true;
        f.app->showPanelWithIndex(DropPanelDocument);
        f.app->moveToBtnAction();
        QVERIFY(f.app->moveFileVC->shouldCopyCheckB->isChecked());
        QVERIFY(!f.app->moveFileVC->shouldCopyCheckB->isEnabled());
    }

    void droppingOnItsOwnFolderIsRefusedWithAnAlert()
    {
        // The picker greys the item's own folder out (tst_destinations_ui); another way there meets the guard.
        const QString source = make(QStringLiteral("here/stay.txt"), "unchanged");
        const QString folder = f.path(QStringLiteral("here"));
        f.app->copyitemsForFileCopy({source}, folder, true);
        QMessageBox *alert = f.app->alerts()->lastAlert();
        QVERIFY(alert && alert->isVisible());
        QCOMPARE(alert->informativeText(), Texts::localized("FilesAlreadyBeingoved"));
        QCOMPARE(f.bytesOf(source), QByteArray("unchanged"));
        alert->close();
    }

    void clashAsksAndKeepsBoth()
    {
        const QString source = make(QStringLiteral("in/same.txt"), "new");
        const QString dest = f.path(QStringLiteral("out"));
        make(QStringLiteral("out/same.txt"), "old");
        dropAndPick({source}, dest);
        ConflictDialog *dialog = f.app->conflictResolver()->openDialog();
        QVERIFY(dialog && dialog->isVisible());
        QVERIFY(f.app->moveCopy()->alertOrSaveOrOpenPanelIsShown);
        QVERIFY(f.app->windowIsVsbl()); // held by the question
        dialog->keepBothButton->click();
        QTRY_VERIFY(!f.app->moveCopy()->alertOrSaveOrOpenPanelIsShown);
        QVERIFY(!f.app->windowIsVsbl()); // and gone with the answer, picker and all
        QVERIFY(Utils::recentDestinations().contains(dest));
        QCOMPARE(f.bytesOf(dest + QStringLiteral("/same.txt")), QByteArray("old"));
        QCOMPARE(f.bytesOf(dest + QStringLiteral("/same 1.txt")), QByteArray("new"));
    }

    void copyToAnotherDeviceShowsARowUntilDone()
    {
        ScratchMount other("64m");
        REQUIRE_SCRATCH_MOUNT(other);
        const QString source = make(QStringLiteral("big/big.bin"), QByteArray(24 << 20, 'b'));
        dropAndPick({source}, other.path());
        QTRY_VERIFY(f.app->progressPanel()->numberOfRows() == 1 || QFileInfo(other.path() + QStringLiteral("/big.bin")).size() == (24 << 20));
        QTRY_COMPARE_WITH_TIMEOUT(f.app->moveCopy()->runningJobs().size(), 0, 20000);
        QCOMPARE(f.app->progressPanel()->numberOfRows(), 0);
        QVERIFY(!f.app->progressPanel()->isVisible());
        QCOMPARE(QFileInfo(other.path() + QStringLiteral("/big.bin")).size(), qint64(24 << 20));
        QVERIFY(!QFile::exists(source)); // a move: the source goes once the copy is complete
    }

private:
    // A file, or a folder when the name ends in a slash.
    QString make(const QString &relative, const QByteArray &content = "x")
    {
        if (!relative.endsWith(QLatin1Char('/')))
            return f.file(relative, content);
        QDir().mkpath(f.path(relative));
        return f.path(relative.chopped(1));
    }

    // These files, or the text when there is one, dropped on the window.
    void drop(const QStringList &paths, const QString &text = {})
    {
        if (text.isEmpty())
            f.drop(paths);
        else
            f.dropText(text);
    }
    QStringList files(const QStringList &names)
    {
        QStringList paths;
        for (const QString &name : names)
            paths.append(make(name));
        return paths;
    }
    QMenu *openMenu(const QString &name)
    {
        ActionButton *b = f.button(name);
        if (!b)
            return nullptr;
        b->click();
        return sharePicker();
    }

    void dropAndPick(const QStringList &paths, const QString &destination)
    {
        f.app->showDropTargetAt(QPointF(300, 300));
        dropPaths(*f.app, paths);
        f.app->moveToBtnAction();
        QVERIFY(f.app->isModalOverlayVisible());
        // A stored destination is a row of the picker like any other.
        f.app->moveFileVC->setDestinationsArr({destination});
        QListView *rows = f.app->moveFileVC->destTablView;
        const QModelIndex first = rows->model()->index(0, 0);
        QCOMPARE(first.data(DestinationListModel::PathRole).toString(), destination);
        QTest::mouseClick(rows->viewport(), Qt::LeftButton, {}, rows->visualRect(first).center());
    }

    LaunchedFixture f;
};

QTEST_MAIN(FileActionsTest)
#include "tst_fileactions.moc"

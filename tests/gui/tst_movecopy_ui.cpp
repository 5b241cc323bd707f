// The move and copy dialogs on the window: the picker, the conflict dialog, the guards' alerts and
// the progress panel with its rows.

#include "ScratchMount.h"
#include "LaunchedProgram.h"
#include "core/overlays/MoveFileViewController.h"
#include "fileops/orchestration/MoveCopyOrchestrator.h"
#include "fileops/ui/ConflictDialog.h"
#include "fileops/ui/ProgressPanel.h"
#include "fileops/ui/ProgressRow.h"
#include "fileops/ui/WidgetAlerts.h"
#include "fileops/ui/destinations/DestinationList.h"
#include "fileops/ui/destinations/DestinationListModel.h"

#include <QCheckBox>
#include <QLabel>
#include <QListView>
#include <QPushButton>


class MoveCopyUiTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { englishTestMode(); }

    void init() { f.launch(); }
    void cleanup() { f.close(); }

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
        f.app->filePathsArr = {makeFile(f.dir.path(), QStringLiteral("lib.txt"))};
        f.app->libraryFolderFile = true;
        f.app->showPanelWithIndex(DropPanelDocument);
        f.app->moveToBtnAction();
        QVERIFY(f.app->moveFileVC->shouldCopyCheckB->isChecked());
        QVERIFY(!f.app->moveFileVC->shouldCopyCheckB->isEnabled());
    }

    void droppingOnItsOwnFolderIsRefusedWithAnAlert()
    {
        // The picker greys the item's own folder out (tst_destinations_ui); another way there meets the guard.
        const QString folder = f.dir.path() + QStringLiteral("/here");
        const QString source = makeFile(folder, QStringLiteral("stay.txt"), "unchanged");
        f.app->copyitemsForFileCopy({source}, folder, true);
        QMessageBox *alert = f.app->alerts()->lastAlert();
        QVERIFY(alert && alert->isVisible());
        QCOMPARE(alert->informativeText(), Texts::localized("FilesAlreadyBeingoved"));
        QCOMPARE(f.bytesOf(source), QByteArray("unchanged"));
        alert->close();
    }

    void clashAsksAndKeepsBoth()
    {
        const QString source = makeFile(f.dir.path() + QStringLiteral("/in"), QStringLiteral("same.txt"), "new");
        const QString dest = f.dir.path() + QStringLiteral("/out");
        makeFile(dest, QStringLiteral("same.txt"), "old");
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
        const QString source = makeFile(f.dir.path() + QStringLiteral("/big"), QStringLiteral("big.bin"), QByteArray(24 << 20, 'b'));
        dropAndPick({source}, other.path());
        QTRY_VERIFY(f.app->progressPanel()->numberOfRows() == 1 || QFileInfo(other.path() + QStringLiteral("/big.bin")).size() == (24 << 20));
        QTRY_COMPARE_WITH_TIMEOUT(f.app->moveCopy()->runningJobs().size(), 0, 20000);
        QCOMPARE(f.app->progressPanel()->numberOfRows(), 0);
        QVERIFY(!f.app->progressPanel()->isVisible());
        QCOMPARE(QFileInfo(other.path() + QStringLiteral("/big.bin")).size(), qint64(24 << 20));
        QVERIFY(!QFile::exists(source)); // a move: the source goes once the copy is complete
    }

private:
    static QString makeFile(const QString &dir, const QString &name, const QByteArray &bytes = "data")
    {
        return writtenFile(dir + '/' + name, bytes);
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

QTEST_MAIN(MoveCopyUiTest)
#include "tst_movecopy_ui.moc"

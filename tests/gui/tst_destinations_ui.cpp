// The destination picker and the destination manager on the real stored lists in the test's home:
// the rows and their rules, the click filter, a vanished folder, edit mode, the recent menu, the
// subfolder popup and its generations, keyboard use, and the manager that edits the same list.

#include "LaunchedProgram.h"
#include "ScratchMount.h"
#include "TestTree.h"
#include "core/overlays/MoveFileViewController.h"
#include "fileops/destinations/DestinationEdits.h"
#include "fileops/destinations/DestinationsFile.h"
#include "fileops/ui/destinations/DestinationList.h"
#include "fileops/ui/destinations/DestinationListModel.h"
#include "fileops/ui/destinations/DestinationRowDelegate.h"
#include "fileops/ui/destinations/ManageDestinationsWC.h"
#include "fileops/ui/destinations/SubfolderPopup.h"
#include "menubar/options/PopMenuContentViewController.h"
#include "menubar/statusitem/CCNStatusItem.h"

#include <QAbstractButton>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QThreadPool>
#include <QTreeView>


#include <sys/stat.h>

class DestinationsUiTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        englishTestMode();
        m_home = QDir::homePath();
        for (const char *f : {"Desktop", "Documents", "Music/Albums"})
            QDir(m_home).mkpath(QString::fromLatin1(f));
    }

    void init()
    {
        QFile::remove(Utils::moveCopyPathsPlistPath());
        QFile::remove(Utils::pathForRecentDestnsPlist());
        m_tree = std::make_unique<TestTree>();
        m_fakes = std::make_unique<FakePlatform>(m_tree->path() + QStringLiteral("/.trash"));
        Platform::install(m_fakes->services());
        m_completions.clear();
        m_picker = std::make_unique<MoveFileViewController>();
        m_picker->setCompletion([this](qint64 tag, bool copy, QString path) { m_completions.append({tag, copy, path}); });
        m_picker->resize(210, 300);
        m_picker->setDestParentFldrPath(m_tree->path() + QStringLiteral("/dropped.txt"));
        m_picker->setDestinationsArr(Utils::createMoveDestArr());
        m_picker->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_picker.get()));
    }

    void cleanup()
    {
        m_picker.reset();
        QThreadPool::globalInstance()->waitForDone();
    }

    void pickerShowsEachFolderOnceAndGreysTheDropsOwn()
    {
        m_picker.reset();
        const std::unique_ptr<AppDelegate> app = launchedOn(*m_fakes);
        const QString offer = writtenFile(m_home + QStringLiteral("/Documents/offer.txt"));
        app->showDropTargetAt(QPointF(300, 300));
        dropPaths(*app, {offer});
        app->moveToBtnAction();
        DestinationList *list = app->moveFileVC->destList;
        const QStringList rows = list->destinationsArr();
        QCOMPARE(rows, (QStringList{m_home + "/Desktop", m_home + "/Documents", m_home + "/Music"}));
        QCOMPARE(list->model()->index(1).data(DestinationListModel::InactiveRole).toBool(), true);
        QCOMPARE(list->model()->index(1).data(Qt::ToolTipRole).toString(), m_home + "/Documents");

        clickRow(list, m_home + "/Documents"); // its own folder: nothing happens
        QVERIFY(app->isModalOverlayVisible());
        QVERIFY(QFileInfo::exists(offer));
        clickRow(list, m_home + "/Music");
        QTRY_VERIFY(QFileInfo::exists(m_home + "/Music/offer.txt"));
        QVERIFY(!QFileInfo::exists(offer));
        QVERIFY(QFile::remove(m_home + "/Music/offer.txt"));
    }

    void aSecondClickWithinASecondDoesNotCount()
    {
        DestinationList *list = m_picker->destList;
        clickRow(list, m_home + "/Desktop");
        clickRow(list, m_home + "/Music");
        QCOMPARE(m_completions.size(), 1);
        QCOMPARE(std::get<0>(m_completions.first()), MoveFileViewController::kChosenTag);
        QCOMPARE(std::get<2>(m_completions.first()), m_home + "/Desktop");
    }

    void aVanishedFolderAsksToBeRemoved_data()
    {
        QTest::addColumn<bool>("yes");
        QTest::newRow("yes removes it") << true;
        QTest::newRow("no keeps it") << false;
    }

    void aVanishedFolderAsksToBeRemoved()
    {
        QFETCH(bool, yes);
        const QString gone = QString::fromUtf8(m_tree->folder("gone"));
        QVERIFY(DestinationEdits::add(gone).ok());
        DestinationList *list = m_picker->destList;
        list->reload();
        QVERIFY(QDir(gone).removeRecursively());
        clickRow(list, gone);
        QCOMPARE(list->question()->text(), Texts::localized("destFolderDoesntExistMsg"));
        answer(list, yes);
        QVERIFY(m_completions.isEmpty()); // never copied into a path made anew
        QVERIFY(!QFileInfo::exists(gone));
        // Kept, it stays stored for its return; the rows show only what exists.
        QCOMPARE(DestinationsFile::readPaths().paths().contains(gone), !yes);
    }

    void editModeRenamesRemovesAddsAndReorders()
    {
        DestinationList *list = m_picker->destList;
        m_picker->enterEditMode();
        QVERIFY(m_picker->isEditMode());
        QVERIFY(m_picker->addDestBtn->isVisible() && !m_picker->recentDestBtn->isVisible());
        ManageDestinationsWC manager;
        manager.show();

        // Rename in place; the other window follows the file.
        list->destTablView->setCurrentIndex(list->indexOfPath(m_home + "/Music"));
        QTest::keyClick(list->destTablView, Qt::Key_F2);
        auto *editor = list->destTablView->findChild<QLineEdit *>(QStringLiteral("destNameEditor"));
        QVERIFY(editor);
        editor->setText(QStringLiteral("Tunes"));
        QTest::keyClick(editor, Qt::Key_Return);
        QTRY_COMPARE(DestinationEdits::destNameForDestPath(m_home + "/Music"), QStringLiteral("Tunes")); // committed queued
        QTRY_COMPARE(manager.destList->model()->index(manager.destList->indexOfPath(m_home + "/Music").row()).data().toString(),
                     QStringLiteral("Tunes"));

        // Remove with the row's button, after the question.
        QStyleOptionViewItem option;
        const QModelIndex desktop = list->indexOfPath(m_home + "/Desktop");
        option.rect = list->destTablView->visualRect(desktop);
        const QRect remove = list->delegate()->buttonRect(option, desktop, DestinationRowDelegate::RemoveButton);
        QVERIFY(!remove.isEmpty());
        QTest::mouseClick(list->destTablView->viewport(), Qt::LeftButton, {}, remove.center());
        answer(list, true);
        QVERIFY(!DestinationsFile::readPaths().paths().contains(m_home + "/Desktop"));
        QVERIFY(QFileInfo(m_home + "/Desktop").isDir()); // the folder itself stays

        // Add through the folder panel: it goes first; a second time it is refused.
        const QString work = QString::fromUtf8(m_tree->folder("work"));
        for (int round = 0; round < 2; ++round) {
            m_picker->addDestBtn->click();
            QFileDialog *panel = list->folderPanel();
            QVERIFY(panel);
            QCOMPARE(panel->windowTitle(), Texts::localized("chooseUserDest"));
            panel->selectFile(work);
            static_cast<QDialog *>(panel)->accept();
            QTRY_VERIFY(!list->folderPanel());
        }
        QCOMPARE(DestinationsFile::readPaths().paths(), (QStringList{work, m_home + "/Documents", m_home + "/Music"}));
        QCOMPARE(row(list, 0), work);
        QMessageBox *refused = visibleAlert();
        QVERIFY(refused);
        QCOMPARE(refused->text(), Texts::localized("destAlreadyThereMsg"));
        refused->close();

        // Drag the last row to the top.
        DestinationListModel *model = list->model();
        std::unique_ptr<QMimeData> dragged(model->mimeData({model->index(2)}));
        QVERIFY(!model->canDropMimeData(dragged.get(), Qt::MoveAction, 2, 0, {})); // onto its own place
        model->dropMimeData(dragged.get(), Qt::MoveAction, 0, 0, {});
        QCOMPARE(DestinationsFile::readPaths().paths(), (QStringList{m_home + "/Music", work, m_home + "/Documents"}));
        QCOMPARE(list->destinationsArr(), DestinationsFile::readPaths().paths());

        // Delete asks too; removing every row brings the standard folders back.
        for (int i = 0; i < 3; ++i) {
            list->destTablView->setCurrentIndex(model->index(0));
            QTest::keyClick(list->destTablView, Qt::Key_Delete);
            answer(list, true);
        }
        QCOMPARE(list->destinationsArr(), (QStringList{m_home + "/Desktop", m_home + "/Documents", m_home + "/Music"}));
    }

    void recentMenu()
    {
        m_picker->showMyDestMenu();
        QList<QAction *> items = m_picker->userDestMenu->actions();
        QCOMPARE(items.size(), 1);
        QCOMPARE(items.first()->text(), Texts::localized("- Empty -"));
        QVERIFY(!items.first()->isEnabled());
        m_picker->myMenuItemViewSelector(MoveFileViewController::kEmptyRecentTag);
        QVERIFY(m_completions.isEmpty());
        m_picker->userDestMenu->hide();

        const QString a = QString::fromUtf8(m_tree->folder("a"));
        const QString b = QString::fromUtf8(m_tree->folder("b"));
        Utils::updateRecentDestnsPlistWithPath(a);
        Utils::updateRecentDestnsPlistWithPath(b);
        QVERIFY(QDir(a).removeRecursively()); // gone folders are not offered
        m_picker->showMyDestMenu();
        items = m_picker->userDestMenu->actions();
        QCOMPARE(items.size(), 1);
        QCOMPARE(items.first()->text(), QStringLiteral("b"));
        QCOMPARE(items.first()->toolTip(), b);
        items.first()->trigger();
        QCOMPARE(m_completions.size(), 1);
        QCOMPARE(std::get<0>(m_completions.first()), MoveFileViewController::kRecentTag);
        QCOMPARE(std::get<2>(m_completions.first()), b);
    }

    void subfolderPopupChoosesAndANewerFetchWins()
    {
        // 20,000 subfolders: their listing is still under way when a click on another row starts a newer one.
        // On a tmpfs where the tests may mount one: 20,000 folders are made there in a moment.
        ScratchMount fast("64m");
        const QString big = (fast.isValid() ? fast.path() : m_tree->path()) + "/big";
        QVERIFY(QDir().mkpath(big));
        for (int i = 0; i < 20000; ++i)
            ::mkdir((big + QLatin1Char('/') + QString::number(i)).toUtf8().constData(), 0755);
        for (const char *f : {"small", "small/Inbox", "small/Inbox/2026", "small/dropped", "empty"})
            m_tree->folder(f);
        const QString small = m_tree->path() + "/small";
        DestinationList *list = m_picker->destList;
        list->setDestParentFldrPath(small + "/dropped");
        QVERIFY(DestinationsFile::writePaths({{"big", big}, {"small", small}, {"empty", m_tree->path() + "/empty"}}).ok());
        list->reload();
        SubfolderPopup *popup = list->subfolderPopup();
        QSignalSpy loaded(popup, &SubfolderPopup::levelLoaded);

        list->showSubfolders(list->indexOfPath(big));
        const int first = popup->generation();
        list->showSubfolders(list->indexOfPath(small));
        QCOMPARE(popup->generation(), first + 1);
        QVERIFY(loaded.wait(5000));
        QThreadPool::globalInstance()->waitForDone();
        QCoreApplication::processEvents();
        QCOMPARE(loaded.count(), 1); // the older fetch gave up and showed nothing
        QVERIFY(popup->isVisible());
        QCOMPARE(popup->shownPaths(), (QStringList{small + "/dropped", small + "/Inbox"}));
        QVERIFY(popup->height() <= SubfolderPopup::kMaxHeight + 20);

        popup->expandPath(small + "/Inbox");
        QVERIFY(loaded.wait(5000));
        QCOMPARE(popup->shownPaths(small + "/Inbox"), QStringList{small + "/Inbox/2026"});

        // The dropped item cannot receive itself; another folder completes with tag 0.
        QSignalSpy chosen(list, &DestinationList::subfolderChosen);
        QTreeView *tree = popup->subFldrOutlineView();
        QTest::ignoreMessage(QtWarningMsg, "copying to self");
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualRect(tree->model()->index(0, 0)).center());
        QVERIFY(chosen.isEmpty());
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualRect(tree->model()->index(1, 0)).center());
        QCOMPARE(chosen.count(), 1);
        QVERIFY(!popup->isVisible());
        QCOMPARE(m_completions.size(), 1);
        QCOMPARE(std::get<2>(m_completions.first()), small + "/Inbox");

        // An empty folder says so.
        list->showSubfolders(list->indexOfPath(m_tree->path() + "/empty"));
        QVERIFY(loaded.wait(5000));
        QVERIFY(popup->noSubfoldersNote()->isVisible());
        QCOMPARE(popup->noSubfoldersNote()->text(), Texts::localized("noSubfoldersMsg"));
        popup->hide();
    }

    void managerAddsASubfolderFirstAndOpensFromTheOptions()
    {
        m_picker.reset();
        const std::unique_ptr<AppDelegate> app = launchedOn(*m_fakes);
        app->optionsPanel()->showFavDestinationManagerWindow();
        ManageDestinationsWC *manager = app->optionsPanel()->destManagerWC();
        QVERIFY(manager && manager->isVisible());
        DestinationList *list = manager->destList;
        QVERIFY(list->editMode());
        QVERIFY(!list->model()->index(0).data(DestinationListModel::InactiveRole).toBool());

        SubfolderPopup *popup = list->subfolderPopup();
        QSignalSpy loaded(popup, &SubfolderPopup::levelLoaded);
        list->showSubfolders(list->indexOfPath(m_home + "/Music"));
        QVERIFY(loaded.wait(5000));
        QVERIFY(!popup->addButton()->isEnabled());
        QTreeView *tree = popup->subFldrOutlineView();
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualRect(tree->model()->index(0, 0)).center());
        QVERIFY(popup->addButton()->isEnabled());
        popup->addButton()->click();
        QCOMPARE(DestinationsFile::readPaths().paths().first(), m_home + "/Music/Albums");
        QCOMPARE(row(list, 0), m_home + "/Music/Albums");

        // A stick plugged in shows at once, first.
        m_fakes->volumes.plugIn(fakeStick());
        QCOMPARE(row(list, 0), fakeStick().mountPoint);
        manager->close();
    }

    void keyboard()
    {
        DestinationList *list = m_picker->destList;
        list->destTablView->setFocus();
        QTest::keyClick(list->destTablView, Qt::Key_Escape);
        QCOMPARE(std::get<0>(m_completions.takeFirst()), MoveFileViewController::kGoBackTag);
        m_picker->goBackBtn->hide(); // the quick-move picker has no panel to go back to
        QTest::keyClick(list->destTablView, Qt::Key_Escape);
        QCOMPARE(std::get<0>(m_completions.takeFirst()), OverlayController::kCloseTag);

        list->destTablView->setCurrentIndex(list->model()->index(0));
        QTest::keyClick(list->destTablView, Qt::Key_Down);
        QSignalSpy loaded(list->subfolderPopup(), &SubfolderPopup::levelLoaded);
        QTest::keyClick(list->destTablView, Qt::Key_Right); // Documents' subfolders: none
        QVERIFY(loaded.wait(5000));
        list->subfolderPopup()->hide();
        QTest::keyClick(list->destTablView, Qt::Key_Delete); // only in edit mode
        QVERIFY(!list->question());
        QTest::keyClick(list->destTablView, Qt::Key_Return);
        QCOMPARE(m_completions.size(), 1);
        QCOMPARE(std::get<2>(m_completions.first()), m_home + "/Documents");
    }

private:
    QString row(DestinationList *list, int i) const
    {
        return list->model()->index(i).data(DestinationListModel::PathRole).toString();
    }
    void clickRow(DestinationList *list, const QString &path)
    {
        const QModelIndex index = list->indexOfPath(path);
        QVERIFY(index.isValid());
        QTest::mouseClick(list->destTablView->viewport(), Qt::LeftButton, {}, list->destTablView->visualRect(index).center());
    }
    void answer(DestinationList *list, bool yes)
    {
        QTRY_VERIFY(list->question() && list->question()->isVisible());
        for (QAbstractButton *b : list->question()->buttons())
            if (b->text() == Texts::localized(yes ? "YES" : "NO"))
                b->click();
        QTRY_VERIFY(!list->question());
    }

    QString m_home;
    std::unique_ptr<TestTree> m_tree;
    std::unique_ptr<FakePlatform> m_fakes;
    std::unique_ptr<MoveFileViewController> m_picker;
    QList<std::tuple<qint64, bool, QString>> m_completions;
};

QTEST_MAIN(DestinationsUiTest)
#include "tst_destinations_ui.moc"

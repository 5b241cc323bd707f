#include "AppDelegate.h"

#include "core/NotificationCenter.h"
#include "core/overlays/MoveFileViewController.h"
#include "fileops/ui/destinations/DestinationList.h"
#include "core/panels/PanelCatalog.h"
#include "core/texts/Texts.h"
#include "core/window/DropWindow.h"
#include "fileops/orchestration/MoveCopyOrchestrator.h"
#include "utils/Utils.h"

#include <QCheckBox>
#include <QListView>
#include <QPushButton>

void AppDelegate::loadMovePicker()
{
    // The dropped item first: the rows' rules depend on it.
    moveFileVC->setDefDestArr(Utils::defFileMoveDestPaths(true));
    moveFileVC->setDestParentFldrPath(filePathsArr.value(0));
    moveFileVC->setDestinationsArr(Utils::createMoveDestArr());
    applyPanelFrame(PanelCatalog::kTallPanelHeight);
}

void AppDelegate::settleMovePickerControls()
{
    moveFileVC->destTablView->scrollToTop();
    if (moveFileVC->isEditMode()) // each showing starts in the normal mode
        moveFileVC->enterEditMode();
    // A file of the Library folder is only ever copied.
    if (libraryFolderFile) {
        moveFileVC->shouldCopyCheckB->setChecked(true);
        moveFileVC->shouldCopyCheckB->setEnabled(false);
    } else {
        moveFileVC->shouldCopyCheckB->setEnabled(true);
    }
}

void AppDelegate::moveToBtnAction()
{
    loadMovePicker();
    moveFileVC->goBackBtn->setEnabled(true);
    moveFileVC->goBackBtn->setVisible(true);
    showOverlayPanel(moveFileVC);
    settleMovePickerControls();
}

void AppDelegate::moveFileCompletion(qint64 tag, bool copy, const QString &path)
{
    if (tag == OverlayController::kCloseTag) { // Escape where there is no panel to go back to
        orderOutTheWindow();
        return;
    }
    // Credited whatever the tag, the back button included.
    Utils::saveChangesToTimeSavedPlistByAddingSec(15);
    if (tag < MoveFileViewController::kOtherFolderTag) {
        m_moveCopy->isFileOperationCopy = copy;
        const bool sameVolume = Utils::checkIfMoveToSameVolume(filePathsArr.value(0), path);
        copyitemsForFileCopy(filePathsArr, path, sameVolume);
        // Also when a guard refused the operation.
        Utils::updateRecentDestnsPlistWithPath(path);
        orderOutTheWindow();
    } else if (tag == MoveFileViewController::kOtherFolderTag) {
        m_moveCopy->isFileOperationCopy = copy;
        moveFilesViaOpenPanel(filePathsArr);
    } else if (tag == MoveFileViewController::kGoBackTag) {
        closeVisibleModalOverlay();
    }
}

void AppDelegate::moveFilesViaOpenPanel(const QStringList &paths)
{
    // On cancel nothing happens: the do-not-close state stays until the next notice clears it.
    Utils::postShouldNotCloseWindowYetNotif(true);
    chooseFolder(Texts::localized("Move files to..."), true, [paths](const QString &chosen) {
        const bool sameVolume = Utils::checkIfMoveToSameVolume(paths.value(0), chosen);
        Utils::updateRecentDestnsPlistWithPath(chosen);
        Utils::postShouldNotCloseWindowYetNotif(false);
        // The copy starts once the panel has gone.
        NotificationCenter::defaultCenter().post(QString::fromLatin1(NotificationName::OpenPanelHasJustClosed),
                                                 {{QStringLiteral("filesToMoveCopy"), paths},
                                                  {QStringLiteral("openPanelURLpath"), chosen},
                                                  {QStringLiteral("checkIfMoveToSameVolume"), sameVolume}});
    });
}

void AppDelegate::NSOpenPanelHasJustClosed(const QVariantMap &userInfo)
{
    copyitemsForFileCopy(userInfo.value(QStringLiteral("filesToMoveCopy")).toStringList(),
                         userInfo.value(QStringLiteral("openPanelURLpath")).toString(),
                         userInfo.value(QStringLiteral("checkIfMoveToSameVolume")).toBool());
    Utils::postShouldNotCloseWindowYetNotif(false);
    closeVisibleModalOverlay();
    orderOutTheWindow();
}

void AppDelegate::copyitemsForFileCopy(const QStringList &paths, const QString &parFolder, bool isVolumeSame)
{
    m_moveCopy->copyitemsForFileCopy(paths, parFolder, isVolumeSame);
}

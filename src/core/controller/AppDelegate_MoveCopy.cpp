#include "AppDelegate.h"

#include "core/NotificationCenter.h"
#include "core/overlays/MoveFileViewController.h"
#include "core/panels/PanelCatalog.h"
#include "core/texts/Texts.h"
#include "core/window/DropWindow.h"
#include "fileops/orchestration/MoveCopyOrchestrator.h"
#include "utils/Utils.h"

#include <QCheckBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QListWidget>
#include <QPushButton>

void AppDelegate::loadMovePicker()
{
    moveFileVC->setDestinationsArr(Utils::createMoveDestArr());
    moveFileVC->setDefDestArr(Utils::defFileMoveDestPaths(true));
    moveFileVC->setDestParentFldrPath(filePathsArr.value(0));
    applyPanelFrame(PanelCatalog::kTallPanelHeight);
}

void AppDelegate::settleMovePickerControls()
{
    moveFileVC->destTablView->scrollToTop();
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
    Utils::postShouldNotCloseWindowYetNotif(true);
    QString start = Utils::getOpenPanelURL();
    if (start.isEmpty() || !QFileInfo(start).isDir())
        start = Utils::getDesktopFolderPath();
    auto *panel = new QFileDialog(window, Texts::localized("Move files to..."), start);
    panel->setFileMode(QFileDialog::Directory);
    panel->setOption(QFileDialog::ShowDirsOnly);
    panel->setAcceptMode(QFileDialog::AcceptOpen);
    panel->setAttribute(Qt::WA_DeleteOnClose);
    alertOrSaveOrOpenPanelIsShown = true;
    connect(panel, &QFileDialog::finished, this, [this, panel, paths](int result) {
        alertOrSaveOrOpenPanelIsShown = false;
        // On cancel nothing happens: the do-not-close state stays until the next notice clears it.
        if (result != QDialog::Accepted || panel->selectedFiles().isEmpty())
            return;
        const QString chosen = panel->selectedFiles().first();
        Utils::overWriteOpenPanelLastSaveURL(chosen);
        const bool sameVolume = Utils::checkIfMoveToSameVolume(paths.value(0), chosen);
        Utils::updateRecentDestnsPlistWithPath(chosen);
        Utils::postShouldNotCloseWindowYetNotif(false);
        // The copy starts once the panel has gone.
        NotificationCenter::defaultCenter().post(QString::fromLatin1(NotificationName::OpenPanelHasJustClosed),
                                                 {{QStringLiteral("filesToMoveCopy"), paths},
                                                  {QStringLiteral("openPanelURLpath"), chosen},
                                                  {QStringLiteral("checkIfMoveToSameVolume"), sameVolume}});
    });
    panel->open();
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

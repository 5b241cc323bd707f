#include "AppDelegate.h"

#include "core/fs/NativePath.h"
#include "core/texts/Texts.h"
#include "utils/Utils.h"
#include "widgets/ActionButton.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QHash>
#include <QPointer>
#include <QThreadPool>
#include <QTimer>

namespace {

constexpr int kTitleRevertMs = 500;

} // namespace

const QHash<QString, AppDelegate::ActionHandler> &AppDelegate::actionHandlers()
{
    static const QHash<QString, ActionHandler> handlers = {
        {"sizebtnAction", &AppDelegate::sizebtnAction},
        {"getPathBtnAction", &AppDelegate::getPathBtnAction},
        {"imageDropSaveAction", &AppDelegate::imageDropSaveAction},
        {"copyImgDimesions", &AppDelegate::copyImgDimesions},
        {"copydroppedImgURLToClipboard", &AppDelegate::copydroppedImgURLToClipboard},
        {"copyDroppedStringToClipboard", &AppDelegate::copyDroppedStringToClipboard},
        {"quickResizeBtnAction", &AppDelegate::quickResizeBtnAction},
        {"convertImgAction", &AppDelegate::convertImgAction},
        {"showPDFToImgConvertVC", &AppDelegate::showPDFToImgConvertVC},
        {"SaveAsPDF", &AppDelegate::SaveAsPDF},
        {"zipBtnAction", &AppDelegate::zipBtnAction},
        {"zipMultiFilesAction", &AppDelegate::zipMultiFilesAction},
        {"createNewFileBtnAction", &AppDelegate::createNewFileBtnAction},
        {"putSelectedFilesInFolderAction", &AppDelegate::putSelectedFilesInFolderAction},
        {"showRenameVC", &AppDelegate::showRenameVC},
        {"trashFiles", &AppDelegate::trashFiles},
        {"revealOneFileInFinder", &AppDelegate::revealOneFileInFinder},
        {"revealMultiFilesInFinder", &AppDelegate::revealMultiFilesInFinder},
        {"mailFileBtnAction", &AppDelegate::mailFileBtnAction},
        {"mailMultipleFilesAvtion", &AppDelegate::mailMultipleFilesAvtion},
        {"newMailWithDroppedString", &AppDelegate::newMailWithDroppedString},
        {"printFileAction", &AppDelegate::printFileAction},
        {"printPDFFileAction", &AppDelegate::printPDFFileAction},
        {"showImgSharePanelVC", &AppDelegate::showImgSharePanelVC},
        {"airDropBtnAction", &AppDelegate::airDropBtnAction},
        {"airDropMultiFiles", &AppDelegate::airDropMultiFiles},
        {"shareDroppedStringViaShareMenu", &AppDelegate::shareDroppedStringViaShareMenu},
        {"postDroppedStringOnTwitter", &AppDelegate::postDroppedStringOnTwitter},
        {"postDroppedStringOnFacebook", &AppDelegate::postDroppedStringOnFacebook},
        {"searchStringInFinder", &AppDelegate::searchStringInFinder},
        {"saveDroppedStringToTXT", &AppDelegate::saveDroppedStringToTXT},
        {"setAsWallpaperAction", &AppDelegate::setAsWallpaperAction},
    };
    return handlers;
}

bool AppDelegate::handlesAction(const QString &action)
{
    return action == QLatin1String("moveToBtnAction") || actionHandlers().contains(action);
}

void AppDelegate::performAction(const QString &action, ActionButton *sender)
{
    installOverlayCompletions();
    if (const auto it = actionHandlers().constFind(action); it != actionHandlers().cend()) {
        (this->*it.value())(sender);
        return;
    }
    if (action == QLatin1String("moveToBtnAction")) {
        moveToBtnAction();
        return;
    }
    // A button whose action has no handler is a fault of this build: say so rather than do nothing.
    qWarning("%s: no such action", qPrintable(action));
    Q_EMIT actionNotAvailable(action);
}

void AppDelegate::revertTitleLater(ActionButton *sender, std::function<QString()> title)
{
    QPointer<ActionButton> button(sender);
    QTimer::singleShot(kTitleRevertMs, this, [this, button, title] {
        if (button && windowIsVsbl())
            button->setText(title());
    });
}

void AppDelegate::showSizeAsBtnTitle(ActionButton *sender)
{
    Utils::saveChangesToTimeSavedPlistByAddingSec(5);
    sender->setText(QStringLiteral(" "));
    sender->setBusy(true);
    QPointer<ActionButton> button(sender);
    QPointer<AppDelegate> self(this);
    const QStringList paths = filePathsArr;
    QThreadPool::globalInstance()->start([self, button, paths] {
        const QString size = Utils::getTheSizeOfItemsInArr(paths);
        // Back through the application, which outlives the controller: the pointers are only read on
        // the main thread.
        QMetaObject::invokeMethod(QCoreApplication::instance(), [self, button, size] {
            if (!self || !button)
                return;
            button->setBusy(false);
            button->setText(size);
        }, Qt::QueuedConnection);
    });
}

void AppDelegate::sizebtnAction(ActionButton *sender)
{
    Utils::copyStringToClipboard(sender->text());
    sender->setText(Texts::localized("Copied!"));
    revertTitleLater(sender, [this] { return Utils::getTheSizeOfItemsInArr(filePathsArr); });
    Utils::saveChangesToTimeSavedPlistByAddingSec(3);
}

void AppDelegate::getPathBtnAction(ActionButton *sender)
{
    const QString first = filePathsArr.value(0);
    qInfo("Size > %llu, exists> %d", static_cast<unsigned long long>(Utils::fileSizeAtPath(first)),
          QFileInfo::exists(first) ? 1 : 0);
    Utils::copyStringToClipboard(NativePath::forDisplay(first));
    sender->setText(Texts::localized("Copied!"));
    Utils::saveChangesToTimeSavedPlistByAddingSec(10);
    revertTitleLater(sender, [] { return Texts::localized("/path"); });
}

void AppDelegate::imageDropSaveAction(ActionButton *)
{
    Utils::saveChangesToTimeSavedPlistByAddingSec(3);
    // The save panel owns the user's attention: the window waits for it.
    alertOrSaveOrOpenPanelIsShown = true;
    QPointer<AppDelegate> self(this);
    Utils::openSavePanelWithCurrentFilePath(filePathsArr.value(0), QStringLiteral("img"), QStringLiteral("_NewImage"),
                                            [self](const QString &) {
                                                if (self)
                                                    self->alertOrSaveOrOpenPanelIsShown = false;
                                            });
}

void AppDelegate::copyImgDimesions(ActionButton *sender)
{
    Utils::saveChangesToTimeSavedPlistByAddingSec(8);
    const QString dimensions = Utils::getImageDimensionsAsStringImgPath(filePathsArr.value(0));
    Utils::copyStringToClipboard(dimensions);
    sender->setText(Texts::localized("Copied!"));
    revertTitleLater(sender, [dimensions] { return dimensions; });
}

void AppDelegate::copydroppedImgURLToClipboard(ActionButton *sender)
{
    // The text of the last string drop, where the address of a dropped web image is kept.
    Utils::copyTXTfileContentsToClipboardFromPath(Utils::pathToTempDroppedStr());
    sender->setText(Texts::localized("Copied!"));
    revertTitleLater(sender, [] { return Texts::localized("/path"); });
}

void AppDelegate::copyDroppedStringToClipboard(ActionButton *sender)
{
    Utils::saveChangesToTimeSavedPlistByAddingSec(2);
    Utils::saveChangesToTimeSavedPlistByAddingSec(2);
    Utils::copyTXTfileContentsToClipboardFromPath(Utils::pathToTempDroppedStr());
    sender->setText(Texts::localized("Copied!"));
    revertTitleLater(sender, [] { return Texts::localized("Copy to clipboard"); });
}

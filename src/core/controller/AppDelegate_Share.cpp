#include "AppDelegate.h"

#include "core/fs/NativePath.h"
#include "core/fs/PathParts.h"
#include "core/texts/Texts.h"
#include "core/window/DropWindow.h"
#include "sending/FileUris.h"
#include "sending/ShareTargets.h"
#include "sending/ui/SharePicker.h"
#include "utils/Utils.h"
#include "core/overlays/OverlayControllers.h"
#include "widgets/ActionButton.h"

#include <QClipboard>
#include <QDir>
#include <QGuiApplication>
#include <QMimeData>
#include <QUrl>

namespace {

void sayShareFailed(const Status &s)
{
    if (s.ok())
        return;
    qWarning("%s", qPrintable(s.error().message));
    Utils::showBasicAlertwithTitle(Texts::localized("shareFailedTitle"), s.error().message);
}

// File managers paste what a copy of files put there: the URI list, and GNOME's own form of it.
void copyAsFileLinks(const QStringList &paths)
{
    const QStringList uris = FileUris::fromPaths(paths);
    auto *data = new QMimeData;
    data->setData(QStringLiteral("text/uri-list"), (uris.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n")).toLatin1());
    data->setData(QStringLiteral("x-special/gnome-copied-files"), ("copy\n" + uris.join(QLatin1Char('\n'))).toLatin1());
    QStringList shown;
    for (const QString &p : paths)
        shown.append(NativePath::forDisplay(p));
    data->setText(shown.join(QLatin1Char('\n')));
    QGuiApplication::clipboard()->setMimeData(data);
}

} // namespace

void AppDelegate::airDropBtnAction(ActionButton *sender)
{
    Utils::saveChangesToTimeSavedPlistByAddingSec(5);
    showOSXSharingOptionsForArrOfFilePaths(filePathsArr, sender);
}

void AppDelegate::airDropMultiFiles(ActionButton *sender)
{
    Utils::saveChangesToTimeSavedPlistByAddingSec(10);
    showOSXSharingOptionsForArrOfFilePaths(filePathsArr, sender);
}

void AppDelegate::showImgSharePanelVC(ActionButton *sender) { showOSXSharingOptionsForArrOfFilePaths(filePathsArr, sender); }

void AppDelegate::showOSXSharingOptionsForArrOfFilePaths(const QStringList &paths, QWidget *sender)
{
    if (paths.isEmpty()) {
        qWarning("FilePaths to share arr is nil");
        return;
    }
    dontActivatePrevFrontMostApp = true;
    // The window stays while its menu is up.
    Utils::postShouldNotCloseWindowYetNotif(true);
    showSharePicker(ShareTargets::forFiles(paths, ShareTargets::Use::Window), sender,
                    [this, paths](const QString &id) { shareFilesTo(id, paths); },
                    [] { Utils::postShouldNotCloseWindowYetNotif(false); });
}

void AppDelegate::shareFilesTo(const QString &targetId, const QStringList &paths)
{
    if (targetId == ShareTargets::kCopyLinks) {
        copyAsFileLinks(paths);
        return;
    }
    if (targetId == ShareTargets::kSaveAs) {
        const QString path = paths.value(0);
        const auto parts = PathParts::splitExtension(PathParts::lastComponent(path));
        Utils::openSavePanelWithCurrentFilePath(path, parts.extension, parts.name, [](const QString &) {});
        return;
    }
    if (targetId == ShareTargets::kMail) {
        Utils::emailMultiFilesViaDefaultMailApp(paths);
        return;
    }
    ShareTargets::shareFiles(targetId, paths, [targetId](const Status &s) {
        if (s.ok())
            qInfo("shared with %s", qPrintable(targetId));
        sayShareFailed(s);
    });
}

void AppDelegate::shareCompletion(qint64 tag)
{
    const QList<ShareTarget> targets = imgShareVC->targets();
    closeVisibleModalOverlay();
    if (tag < 0 || tag >= targets.size())
        return;
    shareFilesTo(targets.at(tag).id, {filePathsArr.value(0)});
    Utils::saveChangesToTimeSavedPlistByAddingSec(droppedImageFromOtherApp ? 20 : 3);
}

void AppDelegate::shareDroppedStringViaShareMenu(ActionButton *sender)
{
    Utils::postShouldNotCloseWindowYetNotif(true);
    showSharePicker(ShareTargets::forText(), sender, [this](const QString &id) { shareDroppedStringTo(id); },
                    [] { Utils::postShouldNotCloseWindowYetNotif(false); });
}

void AppDelegate::shareDroppedStringTo(const QString &targetId)
{
    if (targetId == ShareTargets::kCopyText)
        Utils::copyTXTfileContentsToClipboardFromPath(Utils::pathToTempDroppedStr());
    else if (targetId == ShareTargets::kMail)
        newMailWithDroppedString(nullptr);
    else if (targetId == ShareTargets::kSaveText)
        saveDroppedStringToTXT(nullptr);
    else if (targetId == ShareTargets::kSearch)
        searchStringInFinder(nullptr);
    else if (targetId == ShareTargets::kWebX)
        postDroppedStringOnTwitter(nullptr);
    else if (targetId == ShareTargets::kWebFacebook)
        postDroppedStringOnFacebook(nullptr);
    else if (ShareService *share = Platform::current().share)
        sayShareFailed(share->shareText(targetId, Utils::readDroppedString()));
}

void AppDelegate::searchStringInFinder(ActionButton *)
{
    ShareService *share = Platform::current().share;
    if (!share || !share->canSearchFiles()) {
        sayShareFailed(Error{QStringLiteral("Share"), 1, Texts::localized("noFileSearch")});
        return;
    }
    sayShareFailed(share->searchFiles(Utils::readDroppedString().trimmed(), FileUris::fromPath(QDir::homePath())));
}

void AppDelegate::saveDroppedStringToTXT(ActionButton *)
{
    Utils::saveChangesToTimeSavedPlistByAddingSec(15);
    Utils::openSavePanelWithCurrentFilePath(Utils::pathToTempDroppedStr(), QStringLiteral("txt"), QStringLiteral("_NewTextDocument"),
                                            [this](const QString &saved) {
        if (!saved.isEmpty()) {
            Utils::postSimpleNotificationWithTitle(
                Texts::localized("Textsaved"),
                Texts::localized("to ../%@/%@")
                    .arg(NativePath::forDisplay(PathParts::lastComponent(PathParts::parent(saved))),
                         NativePath::forDisplay(PathParts::lastComponent(saved))),
                Texts::localized("revealShowFileBtn"), {{QStringLiteral("filePaths"), QStringList{saved}}});
        }
        orderOutTheWindow();
    });
}

void AppDelegate::postDroppedStringOnTwitter(ActionButton *)
{
    Utils::saveChangesToTimeSavedPlistByAddingSec(8);
    if (Workspace *workspace = Platform::current().workspace)
        sayShareFailed(workspace->openUrl(ShareTargets::webSharePage(ShareTargets::kWebX, Utils::readDroppedString())));
}

void AppDelegate::postDroppedStringOnFacebook(ActionButton *)
{
    Utils::saveChangesToTimeSavedPlistByAddingSec(8);
    const QString text = Utils::readDroppedString();
    const QString page = ShareTargets::webSharePage(ShareTargets::kWebFacebook, text);
    // Facebook takes links only: other text waits on the clipboard, to be pasted into the post.
    if (!page.contains(QLatin1String("sharer"))) {
        Utils::copyStringToClipboard(text);
        Utils::postSimpleNotificationWithTitle(Texts::localized("facebookTextCopied"), Texts::localized("facebookTextCopiedText"),
                                               QString(), {});
    }
    if (Workspace *workspace = Platform::current().workspace)
        sayShareFailed(workspace->openUrl(page));
}

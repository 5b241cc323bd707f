// The wallpaper button and its overlay: the dropped picture as wallpaper, and the two before it.

#include "AppDelegate.h"

#include "core/overlays/WallpaperOverlayVC.h"
#include "core/texts/Texts.h"
#include "images/Thumbnails.h"
#include "images/wallpaper/WallpaperHistory.h"
#include "utils/Utils.h"

#include <QCoreApplication>
#include <QPointer>
#include <QThreadPool>

namespace {

void alertNotSet(const Error &error)
{
    Utils::showBasicAlertwithTitle(Texts::localized("wallpaperNotSetTitle"), error.message);
}

} // namespace

void AppDelegate::setAsWallpaperAction(ActionButton *)
{
    showOverlayPanel(wpChangeVC);
}

void AppDelegate::wpVCCompletion(qint64 tag)
{
    if (tag != WallpaperOverlayVC::kSetTag) {
        closeVisibleModalOverlay();
        return;
    }
    Utils::saveChangesToTimeSavedPlistByAddingSec(5);
    if (!m_platform.wallpaper) {
        alertNotSet(Error{QStringLiteral("Wallpaper"), 1, Texts::localized("noWallpaperServiceMsg")});
        return;
    }
    const Status set = WallpaperHistory::setDroppedPicture(filePathsArr.value(0), *m_platform.wallpaper);
    if (!set.ok()) {
        qWarning("DesktopImgCouldn'tBeSet %s", qPrintable(set.error().message));
        alertNotSet(set.error());
        return;
    }
    closeVisibleModalOverlay();
}

void AppDelegate::setupOldWPview()
{
    const WallpaperHistory::Shown shown =
        m_platform.wallpaper ? WallpaperHistory::slotsToShow(*m_platform.wallpaper) : WallpaperHistory::Shown{};
    const QString paths[2] = {shown.slot1, shown.slot2};
    for (int slot = 1; slot <= 2; ++slot) {
        const QString path = paths[slot - 1];
        wpChangeVC->showSlot(slot, QImage(), false);
        if (path.isEmpty())
            continue;
        QPointer<WallpaperOverlayVC> overlay(wpChangeVC);
        // A thumbnail of a large photo takes a moment: made off the main thread, shown when ready.
        QThreadPool::globalInstance()->start(
            [overlay, slot, path] {
                const QImage thumbnail = Thumbnails::thumbnailForFilePath(path);
                QMetaObject::invokeMethod(QCoreApplication::instance(), [overlay, slot, thumbnail] {
                    if (overlay)
                        overlay->showSlot(slot, thumbnail, !thumbnail.isNull());
                }, Qt::QueuedConnection);
            },
            QThread::HighPriority);
    }
}

void AppDelegate::setOldWPAsDesktopWPAction(int slot, QWidget *)
{
    if (!m_platform.wallpaper)
        return;
    if (const Status set = WallpaperHistory::setSlot(slot, *m_platform.wallpaper); !set.ok()) {
        qWarning("DesktopImgCouldn'tBeSet %s", qPrintable(set.error().message));
        alertNotSet(set.error());
    }
}

void AppDelegate::shareOldWPaction(int slot, QWidget *sender)
{
    if (!m_platform.wallpaper)
        return;
    const WallpaperHistory::Shown shown = WallpaperHistory::slotsToShow(*m_platform.wallpaper);
    const QString path = slot == 1 ? shown.slot1 : shown.slot2;
    if (path.isEmpty())
        return;
    showOSXSharingOptionsForArrOfFilePaths({path}, sender);
}

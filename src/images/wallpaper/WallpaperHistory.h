#pragma once

// The wallpaper and the two pictures before it. A dropped picture is copied into "QD_WP" first (its
// source may be temporary, or in a folder the desktop cannot read) and the copy becomes the wallpaper;
// "WPs.plist" keeps "curWP", "oldWP1" and "oldWP2", and moves on only for a file name it has not seen.

#include "utils/Result.h"

#include <QString>

class WallpaperService;

namespace WallpaperHistory {

// Larger pictures are refused: a desktop would spend minutes and gigabytes drawing them.
inline constexpr qint64 kMaxSide = 16384;
inline constexpr qint64 kMaxPixels = qint64(8192) * 8192;
inline constexpr char kErrorDomain[] = "Wallpaper";
enum ErrorCode { kSetFailed = 1, kTooLarge = 2, kNotAPicture = 3, kNoSlot = 4 };

struct Entries
{
    QString curWP, oldWP1, oldWP2;
};

// What the list says; a damaged or missing list reads as empty.
Entries read();

// Makes `dropped` the wallpaper through its copy in the folder and moves the history on. A copy that
// cannot be made still sets the dropped file itself, and leaves the list as it was. The error names the
// desktop when it would not take the picture.
Status setDroppedPicture(const QString &dropped, WallpaperService &service);

// The pictures of slots 1 and 2 as the overlay offers them, only files that exist. Until the history
// first moves, slot 1 holds the present desktop picture, which is kept as "curWP".
struct Shown
{
    QString slot1, slot2;
};
Shown slotsToShow(WallpaperService &service);

// Back to the picture of slot 1 or 2; the history stays as it is.
Status setSlot(int slot, WallpaperService &service);

} // namespace WallpaperHistory

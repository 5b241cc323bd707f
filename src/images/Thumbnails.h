#pragma once

#include <QImage>
#include <QString>

namespace Thumbnails {

inline constexpr int kMaxSide = 180;

// What stands for a file in a list: the desktop's cached thumbnail when it is current, else a small
// decode of an image or of a PDF's first page, drawn as an icon with a frame; else the icon of the
// file's type. Never null for an existing path.
QImage thumbnailForFilePath(const QString &path);

// The freedesktop cache's file for `path` at `size` ("normal", "large", ...), current or not.
QString cachedThumbnailPath(const QString &path, const QString &size);

} // namespace Thumbnails

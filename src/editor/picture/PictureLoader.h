#pragma once

#include "images/BitmapImageRep.h"
#include "utils/Result.h"

#include <QColorSpace>
#include <QString>

// A picture file read for editing: upright (its EXIF orientation applied), with what a saved edit
// carries over. Decoded by the toolkit's own readers.
struct LoadedPicture
{
    BitmapImageRep image;  // upright pixels and the point size their resolution gives
    QColorSpace colorSpace; // the file's colour profile, if it has one
    QByteArray exif;       // the file's EXIF block as it stands
    QByteArray sourceJpeg; // the file itself when it is a JPEG: a turn stays lossless after it is gone
    int orientation = 1;   // the EXIF orientation the pixels were stood up from
    quint64 typeCode = 4;  // the encoder a save uses: the file's own type, by its first byte
};

namespace PictureLoader {

// Larger pictures are refused before a pixel is decoded: a header may claim anything.
inline constexpr qint64 kMaxPixels = qint64(1) << 28; // 268 megapixels

// The whole picture. A missing, empty, foreign, damaged or cut-short file, or one that claims too many
// pixels, fails with a message that names it.
Result<LoadedPicture> load(const QString &path);

// What a file says about itself, read without decoding a pixel, after the same checks as load().
struct Header
{
    QByteArray bytes;     // the whole file
    QSize pixels;         // upright
    int orientation = 1;  // EXIF numbering
    quint64 typeCode = 4; // by the first byte
};
Result<Header> header(const QString &path);

// A quick look for the first frame: the picture upright at about `fit` pixels or a little more (a JPEG
// is decoded at a fraction of its size), and the full picture's pixel and point size.
struct Preview
{
    QImage image;
    QSize pixels;
    QSizeF points;
};
Result<Preview> preview(const QString &path, QSize fit);

} // namespace PictureLoader

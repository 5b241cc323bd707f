#pragma once

// libvips for the image worker: decoding any readable file, the Lanczos resampler and the encoders.
// Only the worker process links it. Include this before any Qt header (glib names a member
// `signals`). Nothing here throws: libvips errors come back as values.

#include <vips/vips8>

#include "images/ImageErrors.h"
#include "utils/Result.h"

#include <QImage>
#include <QString>

#include <functional>

namespace VipsSupport {

using ImageErrors::kMaxPixels;

// Starts libvips once per process; safe from any thread.
void ensureStarted();

// Sequential access streams the file once, top to bottom, in little memory; random access may look
// at any pixel more than once.
enum class Access { Sequential, Random };

// Opens the first image of the file; nothing is decoded until pixels are asked for.
Result<vips::VImage> load(const QString &path, Access access = Access::Sequential);
Result<vips::VImage> loadFromData(const QByteArray &data, Access access = Access::Sequential);

// The pixels decoded into memory and turned upright: an EXIF orientation is applied, and the image
// states none any more, so nothing written from it is turned a second time.
Result<vips::VImage> decoded(const vips::VImage &image, const QString &path);
inline constexpr qint64 kMaxDecodedBytes = qint64(1) << 30;
// The image as it is seen, like decoded(), but an upright image stays a stream: its pixels are
// decoded strip by strip as whatever is made of them is written. Loaded with fail_on=error, a
// damaged file still fails that write, every time (a repeated-run test holds it to that).
Result<vips::VImage> upright(const vips::VImage &image, const QString &path);

// Ends the computation of `image` once `cancelled` says true; it is asked as the pixels are made.
// `cancelled` must outlive the computation.
void stopWhen(const vips::VImage &image, const std::function<bool()> *cancelled);

// The file's pixel size from its header alone, as the image is seen: a photo whose orientation turns
// it by a quarter has its sides swapped.
Result<QSize> headerSize(const QString &path);
// The EXIF orientation, 1 (upright) to 8; 1 when the image states none.
int orientation(const vips::VImage &image);
inline bool turnsAQuarter(int orientation) { return orientation >= 5 && orientation <= 8; }

// Horizontal resolution in dots per inch (72 when the file says nothing).
double dotsPerInch(const vips::VImage &image);
double verticalDotsPerInch(const vips::VImage &image);
vips::VImage withResolution(const vips::VImage &image, double dotsPerInchX, double dotsPerInchY);

// 8-bit sRGB with an alpha band only where the image has one.
Result<vips::VImage> toDisplayable(const vips::VImage &image);
// Deep copies both ways, resolution kept.
Result<QImage> toQImage(const vips::VImage &image);
Result<vips::VImage> fromQImage(const QImage &image);

// The bytes of an encoder's result; the blob is released.
QByteArray takeBlob(VipsBlob *blob);

Error error(const QString &path, const QString &what);
// Runs `work`, turning a libvips failure into an Error about `path`.
template <typename T, typename F>
Result<T> guarded(const QString &path, F &&work)
{
    try {
        return Result<T>(work());
    } catch (const vips::VError &e) {
        return error(path, QString::fromUtf8(e.what()).trimmed());
    }
}

} // namespace VipsSupport

#include "PictureLoader.h"

#include "core/fs/FsCalls.h"
#include "images/ImageErrors.h"
#include "images/ImageTypeCode.h"
#include "images/edit/ImageMetadata.h"
#include "images/pdf/JpegInfo.h"
#include "utils/Utils.h"

#include <QBuffer>
#include <QImageReader>
#include <QTransform>

#include <cmath>

namespace PictureLoader {

namespace {

struct Opened
{
    QByteArray bytes;
    QSize stored;        // as stored, before the orientation is applied
    int orientation = 1; // EXIF numbering
};

int orientationOf(QImageIOHandler::Transformations t)
{
    using T = QImageIOHandler::Transformation;
    switch (int(t)) {
    case T::TransformationMirror: return 2;
    case T::TransformationRotate180: return 3;
    case T::TransformationFlip: return 4;
    case T::TransformationFlipAndRotate90: return 5;
    case T::TransformationRotate90: return 6;
    case T::TransformationMirrorAndRotate90: return 7;
    case T::TransformationRotate270: return 8;
    default: return 1;
    }
}

// Reads the file and checks what can be checked before decoding.
Result<Opened> open(const QString &path)
{
    if (auto unusable = ImageErrors::unusableInput(path))
        return *unusable;
    auto bytes = FsCalls::readWholeFile(path);
    if (!bytes.ok())
        return ImageErrors::make(path, bytes.error().info.value(QStringLiteral("reason"), bytes.error().message).toString());
    Opened opened{bytes.value(), {}, 1};
    QBuffer buffer(&opened.bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    if (!reader.canRead())
        return ImageErrors::make(path, QString::fromLatin1(ImageErrors::kNotAnImage));
    opened.stored = reader.size();
    // The reader knows the orientation of JPEG and TIFF; a PNG's eXIf chunk is read here.
    opened.orientation = orientationOf(reader.transformation());
    if (opened.orientation == 1)
        opened.orientation = ImageMetadata::exifOrientation(ImageMetadata::exifOf(opened.bytes));
    if (opened.stored.isValid() && qint64(opened.stored.width()) * opened.stored.height() > kMaxPixels)
        return ImageErrors::make(path, QStringLiteral("the image is too large (%1 x %2 pixels; at most %3 megapixels are read)")
                                           .arg(opened.stored.width())
                                           .arg(opened.stored.height())
                                           .arg(kMaxPixels / 1000000));
    if (Utils::getImageFileTypeFromData(opened.bytes.left(1)) == ImageTypeCode::JPEG && !JpegInfo::isComplete(opened.bytes))
        return ImageErrors::damaged(path, QStringLiteral("the JPEG data ends before its picture does"));
    return opened;
}

void allowLargePictures()
{
    // The limit above decides; the reader's own default (128 MiB) would refuse 33 megapixels.
    QImageReader::setAllocationLimit(int(kMaxPixels * 4 / (1024 * 1024)) + 64);
}

bool turnsAQuarter(int orientation)
{
    return orientation >= 5 && orientation <= 8;
}

// The stored pixels as they are meant to be seen. Turning loses an image's colour space and swaps its
// resolution, so both are put back.
QImage upright(QImage image, int orientation)
{
    const QColorSpace colorSpace = image.colorSpace();
    const int dpmX = image.dotsPerMeterX(), dpmY = image.dotsPerMeterY();
    const QTransform quarter = QTransform().rotate(90);
    switch (orientation) {
    case 2: image = image.mirrored(true, false); break;
    case 3: image = image.transformed(QTransform().rotate(180)); break;
    case 4: image = image.mirrored(false, true); break;
    case 5: image = image.mirrored(false, true).transformed(quarter); break;
    case 6: image = image.transformed(quarter); break;
    case 7: image = image.mirrored(true, false).transformed(quarter); break;
    case 8: image = image.transformed(QTransform().rotate(270)); break;
    default: return image;
    }
    image.setColorSpace(colorSpace);
    image.setDotsPerMeterX(turnsAQuarter(orientation) ? dpmY : dpmX);
    image.setDotsPerMeterY(turnsAQuarter(orientation) ? dpmX : dpmY);
    return image;
}

// Decodes as stored, at `scaled` (stored orientation) when given, then stands the pixels up.
Result<QImage> decode(const QString &path, Opened &opened, QSize scaled = {})
{
    QBuffer buffer(&opened.bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    reader.setAutoTransform(false);
    if (scaled.isValid())
        reader.setScaledSize(scaled);
    QImage image = reader.read();
    if (image.isNull())
        return ImageErrors::damaged(path, reader.errorString());
    return upright(std::move(image), opened.orientation);
}

} // namespace

Result<LoadedPicture> load(const QString &path)
{
    allowLargePictures();
    auto opened = open(path);
    if (!opened.ok())
        return opened.error();
    auto image = decode(path, opened.value());
    if (!image.ok())
        return image.error();
    LoadedPicture loaded;
    loaded.colorSpace = image.value().colorSpace();
    loaded.typeCode = Utils::getImageFileTypeFromData(opened.value().bytes.left(1));
    loaded.exif = ImageMetadata::exifOf(opened.value().bytes);
    loaded.orientation = opened.value().orientation;
    if (loaded.typeCode == ImageTypeCode::JPEG)
        loaded.sourceJpeg = opened.value().bytes;
    loaded.image = BitmapImageRep::fromImage(std::move(image.value()));
    return loaded;
}

Result<Header> header(const QString &path)
{
    auto opened = open(path);
    if (!opened.ok())
        return opened.error();
    Header h;
    h.orientation = opened.value().orientation;
    h.pixels = turnsAQuarter(h.orientation) ? opened.value().stored.transposed() : opened.value().stored;
    h.typeCode = Utils::getImageFileTypeFromData(opened.value().bytes.left(1));
    h.bytes = std::move(opened.value().bytes);
    return h;
}

Result<Preview> preview(const QString &path, QSize fit)
{
    allowLargePictures();
    auto opened = open(path);
    if (!opened.ok())
        return opened.error();
    const QSize stored = opened.value().stored;
    const bool turned = turnsAQuarter(opened.value().orientation);
    const QSize pixels = turned ? stored.transposed() : stored;
    // Only a JPEG decodes smaller by itself (at 1/2, 1/4 or 1/8); others are decoded whole.
    QSize scaled;
    if (Utils::getImageFileTypeFromData(opened.value().bytes.left(1)) == ImageTypeCode::JPEG && pixels.isValid() &&
        fit.isValid() && (pixels.width() > fit.width() || pixels.height() > fit.height())) {
        const QSize fitted = pixels.scaled(fit, Qt::KeepAspectRatio);
        scaled = turned ? fitted.transposed() : fitted;
    }
    auto image = decode(path, opened.value(), scaled);
    if (!image.ok())
        return image.error();
    const QSize full = scaled.isValid() ? pixels : image.value().size();
    // The whole picture's point size, from the resolution the file states.
    const double dpiX = Resolution::fromDotsPerMeter(image.value().dotsPerMeterX());
    const double dpiY = Resolution::fromDotsPerMeter(image.value().dotsPerMeterY());
    return Preview{image.value(), full,
                   QSizeF(full.width() * Resolution::kPointsPerInch / dpiX, full.height() * Resolution::kPointsPerInch / dpiY)};
}

} // namespace PictureLoader

#include "EditedPicture.h"

#include "images/ImageErrors.h"
#include "images/ImageTypeCode.h"
#include "images/edit/ImageMetadata.h"
#include "images/edit/LosslessJpeg.h"
#include "images/edit/PictureEncoder.h"
#include "utils/Utils.h"

#include <QTransform>

EditedPicture::EditedPicture(QString sourcePath, LoadedPicture loaded)
    : m_sourcePath(std::move(sourcePath)), m_loaded(std::move(loaded))
{
}

void EditedPicture::rotate(bool clockwise)
{
    if (isNull())
        return;
    BitmapImageRep &image = m_loaded.image;
    image.pixels = image.pixels.transformed(QTransform().rotate(clockwise ? 90 : -90));
    image.size = image.size.transposed();
    m_turns = (m_turns + (clockwise ? 1 : 3)) % 4;
}

bool EditedPicture::crop(const QRect &pixels, const QSizeF &points)
{
    const QRect inside = pixels.intersected(m_loaded.image.pixels.rect());
    if (isNull() || inside.isEmpty() || points.width() < 1.0 || points.height() < 1.0)
        return false;
    if (inside == m_loaded.image.pixels.rect() && points == m_loaded.image.size)
        return true; // the whole picture: nothing changes, a turn stays lossless
    m_loaded.image = {m_loaded.image.pixels.copy(inside), points};
    m_onlyTurned = false;
    return true;
}

void EditedPicture::replaceImage(const BitmapImageRep &image)
{
    m_loaded.image = image;
    m_onlyTurned = false;
}

Result<QByteArray> EditedPicture::encodedPixels(const BitmapImageRep &image) const
{
    QImage pixels = image.taggedPixels();
    pixels.setColorSpace(m_loaded.colorSpace);
    auto encoded = PictureEncoder::encode(pixels, m_loaded.typeCode);
    if (!encoded.ok() || m_loaded.exif.isEmpty())
        return encoded;
    return ImageMetadata::withExif(encoded.value(), ImageMetadata::uprightExif(m_loaded.exif, pixels.size()));
}

Result<QByteArray> EditedPicture::encodedForSaving(const QImage &layer) const
{
    if (isNull())
        return ImageErrors::make(m_sourcePath, QStringLiteral("there is no picture to save"));
    if (!layer.isNull()) {
        BitmapImageRep merged = Utils::combineBgIm(m_loaded.image, {layer, QSizeF(layer.size())});
        merged.size = m_loaded.image.size; // the picture's resolution stays
        return encodedPixels(merged);
    }
    if (m_onlyTurned && !m_loaded.sourceJpeg.isEmpty()) {
        auto turned = turnedJpeg(m_loaded.sourceJpeg, m_loaded.orientation, m_turns, m_loaded.image.pixels.size());
        if (turned.ok())
            return turned;
        qInfo("%s: turned by encoding again (%s)", qPrintable(m_sourcePath), qPrintable(turned.error().message));
    }
    return encodedPixels(m_loaded.image);
}

Result<QByteArray> EditedPicture::turnedJpeg(const QByteArray &jpeg, int orientation, int clockwiseTurns, QSize pixels)
{
    auto turned = LosslessJpeg::transformed(jpeg, LosslessJpeg::forOrientationAndTurns(orientation, clockwiseTurns));
    if (!turned.ok())
        return turned;
    return ImageMetadata::withUprightExif(turned.value(), pixels);
}

Result<QByteArray> EditedPicture::turnedJpegFile(const QString &path, int clockwiseTurns)
{
    auto header = PictureLoader::header(path);
    if (!header.ok())
        return header.error();
    if (header.value().typeCode != ImageTypeCode::JPEG)
        return ImageErrors::make(path, QStringLiteral("not a JPEG"));
    const QSize pixels = clockwiseTurns % 2 ? header.value().pixels.transposed() : header.value().pixels;
    return turnedJpeg(header.value().bytes, header.value().orientation, clockwiseTurns, pixels);
}

#include "PictureEncoder.h"

#include "images/ImageWorker.h"
#include "images/ImageErrors.h"
#include "images/ImageTypeCode.h"
#include "worker/Jobs.h"
#include "worker/Protocol.h"

#include <QBuffer>
#include <QImageWriter>
#include <QColorSpace>
#include <QPainter>

namespace {

constexpr int kDefaultJpegQuality = 85; // the worker's encoders use the same

QImage onWhite(const QImage &image)
{
    if (!image.hasAlphaChannel())
        return image;
    QImage flat(image.size(), QImage::Format_RGB32);
    flat.fill(Qt::white);
    QPainter painter(&flat);
    painter.drawImage(0, 0, image);
    painter.end();
    flat.setDotsPerMeterX(image.dotsPerMeterX());
    flat.setDotsPerMeterY(image.dotsPerMeterY());
    flat.setColorSpace(image.colorSpace());
    return flat;
}

Result<QByteArray> withQt(const QImage &image, const char *format, int quality = -1, int compression = -1)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, format);
    if (quality >= 0)
        writer.setQuality(quality);
    if (compression >= 0)
        writer.setCompression(compression);
    writer.setOptimizedWrite(true);
    if (!writer.write(image))
        return ImageErrors::make(QString(), QStringLiteral("the %1 encoder failed: %2")
                                                .arg(QString::fromLatin1(format).toUpper(), writer.errorString()));
    return bytes;
}

} // namespace

Result<QByteArray> PictureEncoder::encode(const QImage &pixels, quint64 code)
{
    if (pixels.isNull())
        return ImageErrors::make(QString(), QStringLiteral("there is no picture to encode"));
    switch (code) {
    case ImageTypeCode::JPEG:
        return withQt(onWhite(pixels), "jpeg", kDefaultJpegQuality);
    case ImageTypeCode::BMP:
        return withQt(pixels, "bmp");
    case ImageTypeCode::TIFF:
        return withQt(pixels, "tiff", -1, 1); // LZW
    case ImageTypeCode::GIF:
    case ImageTypeCode::JPEG2000: {
        // The image library's encoders, in the image worker.
        const auto encoded = ImageWorker::call(WorkerJobs::kEncode,
                                               {{WorkerJobs::kImage, WorkerProtocol::image(pixels)}, {WorkerJobs::kCode, qint64(code)}}, {});
        if (!encoded.ok())
            return encoded.error();
        return encoded.value().value(WorkerJobs::kData).toByteArray();
    }
    default:
        return withQt(pixels, "png");
    }
}

#include "ImageEncoder.h"

#include "images/BitmapImageRep.h"
#include "images/ImageTypeCode.h"
#include "utils/Utils.h"

#include <QBuffer>
#include <QImageWriter>

#include <algorithm>
#include <cmath>

using vips::VImage;

namespace {

VImage onWhite(const VImage &image)
{
    if (!image.has_alpha())
        return image;
    const int colours = image.bands() - 1;
    return image.flatten(VImage::option()->set("background", std::vector<double>(size_t(colours), 255.0)));
}

int qualityOf(std::optional<float> factor, int fallback)
{
    if (!factor)
        return fallback;
    return std::clamp(int(std::lround(double(*factor) * 100.0)), 1, 100);
}

Result<QByteArray> encodeBmp(const VImage &image)
{
    // libvips writes no BMP of its own; Qt's encoder takes the pixels.
    auto pixels = VipsSupport::toQImage(image);
    if (!pixels.ok())
        return pixels.error();
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, "bmp");
    if (!writer.write(pixels.value()))
        return VipsSupport::error(QString(), QStringLiteral("BMP encoder: %1").arg(writer.errorString()));
    return bytes;
}

} // namespace

Result<QByteArray> ImageEncoder::encode(const VImage &image, quint64 code, std::optional<float> factor)
{
    if (code == ImageTypeCode::BMP)
        return encodeBmp(image);
    const double dpiX = VipsSupport::dotsPerInch(image);
    const double dpiY = VipsSupport::verticalDotsPerInch(image);
    return VipsSupport::guarded<QByteArray>(QString(), [&]() -> QByteArray {
        const VImage tagged = VipsSupport::withResolution(image, dpiX, dpiY);
        switch (code) {
        case ImageTypeCode::TIFF:
            return VipsSupport::takeBlob(tagged.tiffsave_buffer(
                VImage::option()->set("compression", VIPS_FOREIGN_TIFF_COMPRESSION_LZW)->set("resunit", VIPS_FOREIGN_TIFF_RESUNIT_INCH)));
        case ImageTypeCode::GIF:
            return VipsSupport::takeBlob(tagged.gifsave_buffer());
        case ImageTypeCode::JPEG:
            return VipsSupport::takeBlob(onWhite(tagged).jpegsave_buffer(
                VImage::option()->set("Q", qualityOf(factor, kDefaultJpegQuality))->set("optimize_coding", true)));
        case ImageTypeCode::JPEG2000: {
            const bool lossless = !factor || *factor >= 1.0f;
            auto *options = VImage::option()->set("lossless", lossless);
            if (!lossless)
                options->set("Q", qualityOf(factor, 48));
            return VipsSupport::takeBlob(tagged.jp2ksave_buffer(options));
        }
        default:
            return VipsSupport::takeBlob(tagged.pngsave_buffer());
        }
    });
}

QByteArray Utils::convertImg(const BitmapImageRep &image, quint64 code, float compressedBy)
{
    if (code == ImageTypeCode::GIF || code > ImageTypeCode::JPEG2000 || !image.isValid())
        return {};
    const auto source = VipsSupport::fromQImage(image.taggedPixels());
    const auto encoded = source.ok() ? ImageEncoder::encode(source.value(), code, compressedBy) : Result<QByteArray>(source.error());
    if (!encoded.ok()) {
        qWarning("%s", qPrintable(encoded.error().message));
        return {};
    }
    return encoded.value();
}

#include "ImageEncoder.h"

#include "images/BitmapImageRep.h"
#include "images/ImageTypeCode.h"

#include <QBuffer>
#include <QFile>
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

// Optimised Huffman tables make a JPEG about 5 % smaller, but libjpeg then holds every coefficient of
// the picture until the end (two bytes per sample), so the picture no longer streams: past this size,
// standard tables.
constexpr qint64 kOptimizedJpegMaxPixels = 16'000'000;

int qualityOf(std::optional<float> factor, int fallback)
{
    if (!factor)
        return fallback;
    return std::clamp(int(std::lround(double(*factor) * 100.0)), 1, 100);
}

// libvips writes no BMP of its own; Qt's encoder takes the pixels.
Status encodeBmp(const VImage &image, QIODevice &device)
{
    auto pixels = VipsSupport::toQImage(image);
    if (!pixels.ok())
        return pixels.error();
    QImageWriter writer(&device, "bmp");
    if (!writer.write(pixels.value()))
        return VipsSupport::error(QString(), QStringLiteral("BMP encoder: %1").arg(writer.errorString()));
    return success();
}

// The saver an ImageTypeCode names, its options, and the image as that saver takes it.
struct Saver
{
    const char *name;
    VImage image;
    vips::VOption *options;
};

Saver saverFor(const VImage &image, quint64 code, std::optional<float> factor)
{
    const VImage tagged =
        VipsSupport::withResolution(image, VipsSupport::dotsPerInch(image), VipsSupport::verticalDotsPerInch(image));
    switch (code) {
    case ImageTypeCode::TIFF:
        return {"tiffsave", tagged,
                VImage::option()->set("compression", VIPS_FOREIGN_TIFF_COMPRESSION_LZW)->set("resunit", VIPS_FOREIGN_TIFF_RESUNIT_INCH)};
    case ImageTypeCode::GIF:
        return {"gifsave", tagged, VImage::option()};
    case ImageTypeCode::JPEG:
        return {"jpegsave", onWhite(tagged),
                VImage::option()
                    ->set("Q", qualityOf(factor, ImageEncoder::kDefaultJpegQuality))
                    ->set("optimize_coding", qint64(image.width()) * image.height() <= kOptimizedJpegMaxPixels)};
    case ImageTypeCode::JPEG2000: {
        const bool lossless = !factor || *factor >= 1.0f;
        auto *options = VImage::option()->set("lossless", lossless);
        if (!lossless)
            options->set("Q", qualityOf(factor, 48));
        return {"jp2ksave", tagged, options};
    }
    default:
        return {"pngsave", tagged, VImage::option()};
    }
}

} // namespace

Result<QByteArray> ImageEncoder::encode(const VImage &image, quint64 code, std::optional<float> factor)
{
    if (code == ImageTypeCode::BMP) {
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        const Status s = encodeBmp(image, buffer);
        return s.ok() ? Result<QByteArray>(bytes) : Result<QByteArray>(s.error());
    }
    return VipsSupport::guarded<QByteArray>(QString(), [&]() -> QByteArray {
        Saver saver = saverFor(image, code, factor);
        VipsBlob *blob = nullptr;
        VImage::call((std::string(saver.name) + "_buffer").c_str(), saver.options->set("in", saver.image)->set("buffer", &blob));
        return VipsSupport::takeBlob(blob);
    });
}

Status ImageEncoder::encodeToFile(const VImage &image, quint64 code, std::optional<float> factor, int fd)
{
    if (code == ImageTypeCode::BMP) {
        QFile file;
        if (!file.open(fd, QIODevice::WriteOnly, QFileDevice::DontCloseHandle))
            return VipsSupport::error(QString(), file.errorString());
        return encodeBmp(image, file);
    }
    return VipsSupport::guarded<Done>(QString(), [&] {
        Saver saver = saverFor(image, code, factor);
        vips::VTarget target = vips::VTarget::new_to_descriptor(fd);
        VImage::call((std::string(saver.name) + "_target").c_str(), saver.options->set("in", saver.image)->set("target", target));
        return Done{};
    });
}

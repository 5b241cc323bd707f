#include "images/codecs/VipsSupport.h"

#include "CodecJobs.h"

#include "core/fs/PathParts.h"
#include "images/BitmapImageRep.h"
#include "images/ImageTypeCode.h"
#include "images/codecs/ImageEncoder.h"
#include "images/codecs/PngRecompress.h"
#include "images/codecs/Resampler.h"
#include "worker/Jobs.h"
#include "worker/Protocol.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>

using vips::VImage;
namespace J = WorkerJobs;

namespace {

QString sourceOf(const QCborMap &a) { return WorkerProtocol::pathFrom(a.value(J::kSource)); }

std::optional<float> factorOf(const QCborMap &a)
{
    if (!a.contains(J::kFactor))
        return std::nullopt;
    return float(a.value(J::kFactor).toDouble());
}

// What went wrong while a streamed image was written: the output's own failure (a full disk), a
// decoder that ran out of the worker's memory, or damage met on the way down the file.
Error streamFailure(const QString &source, const Error &error)
{
    const QString said = error.info.value(QStringLiteral("reason")).toString();
    if (said.contains(QLatin1String("memory"), Qt::CaseInsensitive))
        return ImageErrors::make(source, QStringLiteral("could not be read: it needs more memory than the decoder may use"));
    // The encoder's "unable to write" follows any failure upstream; only the system's own words
    // say that the output itself failed.
    for (const int err : {ENOSPC, EDQUOT, EIO, EROFS, EACCES, EFBIG})
        if (said.contains(QString::fromLocal8Bit(strerror(err))))
            return VipsSupport::error(source, said);
    return ImageErrors::damaged(source, said);
}

Result<QCborMap> encodeInto(const QCborMap &a, const QString &source, const VImage &image, std::optional<float> factor,
                            const JobContext &context)
{
    auto fd = CodecJobs::openOutput(a);
    if (!fd.ok())
        return fd.error();
    VipsSupport::stopWhen(image, &context.cancelled);
    const Status written = ImageEncoder::encodeToFile(image, quint64(a.value(J::kCode).toInteger()), factor, fd.value());
    ::close(fd.value());
    if (!written.ok())
        return streamFailure(source, written.error());
    return QCborMap();
}

Result<VImage> openUpright(const QString &source)
{
    auto loaded = VipsSupport::load(source);
    if (!loaded.ok())
        return loaded.error();
    return VipsSupport::upright(loaded.value(), source);
}

Result<QCborMap> probe(const QCborMap &a, const JobContext &)
{
    const QString source = sourceOf(a);
    auto loaded = VipsSupport::load(source);
    if (!loaded.ok())
        return loaded.error();
    const VImage &image = loaded.value();
    const int orientation = VipsSupport::orientation(image);
    const bool turned = VipsSupport::turnsAQuarter(orientation);
    return QCborMap{{J::kWidth, turned ? image.height() : image.width()},
                    {J::kHeight, turned ? image.width() : image.height()},
                    {J::kDpiX, VipsSupport::dotsPerInch(image)},
                    {J::kDpiY, VipsSupport::verticalDotsPerInch(image)},
                    {J::kOrientation, orientation}};
}

Result<QCborMap> resize(const QCborMap &a, const JobContext &context)
{
    const QString source = sourceOf(a);
    auto image = openUpright(source);
    if (!image.ok())
        return image.error();
    auto scaled = Resampler::lanczosScale(image.value(), a.value(J::kWidth).toDouble(), a.value(J::kHeight).toDouble());
    if (!scaled.ok())
        return VipsSupport::error(source, scaled.error().message);
    return encodeInto(a, source, scaled.value(), std::nullopt, context);
}

Result<QCborMap> convert(const QCborMap &a, const JobContext &context)
{
    const QString source = sourceOf(a);
    const quint64 code = quint64(a.value(J::kCode).toInteger());
    const bool pngToPng = code == ImageTypeCode::PNG && PngRecompress::isPng(source) &&
                          PathParts::splitExtension(PathParts::lastComponent(source)).extension == u"png";
    if (a.contains(J::kPngLevel) || pngToPng) {
        // A PNG stays the same pixels and chunks, deflated again.
        auto recompressed = PngRecompress::recompress(source, float(a.value(J::kPngLevel).toDouble(1.0)));
        if (!recompressed.ok())
            return recompressed.error();
        auto fd = CodecJobs::openOutput(a);
        if (!fd.ok())
            return fd.error();
        const Status written = CodecJobs::writeAll(fd.value(), recompressed.value());
        ::close(fd.value());
        return written.ok() ? Result<QCborMap>(QCborMap()) : Result<QCborMap>(written.error());
    }
    auto image = openUpright(source);
    if (!image.ok())
        return image.error();
    return encodeInto(a, source, image.value(), factorOf(a), context);
}

// The whole image in memory as Qt holds pixels, fitted into side x side when a side is given.
Result<QImage> decodedPixels(const QString &source, int side)
{
    auto loaded = VipsSupport::load(source);
    if (!loaded.ok())
        return loaded.error();
    VImage image = loaded.value();
    if (side > 0) {
        auto upright = VipsSupport::upright(image, source);
        if (!upright.ok())
            return upright.error();
        const double scale = std::min(1.0, double(side) / std::max(upright.value().width(), upright.value().height()));
        auto small = VipsSupport::guarded<VImage>(source, [&] { return upright.value().resize(scale).copy_memory(); });
        if (!small.ok())
            return ImageErrors::damaged(source, small.error().info.value(QStringLiteral("reason")).toString());
        image = small.value();
    } else {
        auto whole = VipsSupport::decoded(image, source);
        if (!whole.ok())
            return whole.error();
        image = whole.value();
    }
    auto pixels = VipsSupport::toQImage(image);
    if (!pixels.ok())
        return VipsSupport::error(source, pixels.error().message);
    return pixels.value();
}

Result<QCborMap> decode(const QCborMap &a, const JobContext &)
{
    const QString source = sourceOf(a);
    auto pixels = decodedPixels(source, int(a.value(J::kSide).toInteger()));
    if (!pixels.ok())
        return pixels.error();
    return QCborMap{{J::kImage, WorkerProtocol::image(pixels.value())},
                    {J::kDpiX, Resolution::fromDotsPerMeter(pixels.value().dotsPerMeterX())},
                    {J::kDpiY, Resolution::fromDotsPerMeter(pixels.value().dotsPerMeterY())}};
}

Result<QCborMap> scale(const QCborMap &a, const JobContext &)
{
    const auto source = VipsSupport::fromQImage(WorkerProtocol::imageFrom(a.value(J::kImage)));
    if (!source.ok())
        return source.error();
    const auto scaled = Resampler::lanczosScale(source.value(), a.value(J::kWidth).toDouble(), a.value(J::kHeight).toDouble());
    if (!scaled.ok())
        return scaled.error();
    const auto pixels = VipsSupport::toQImage(scaled.value());
    if (!pixels.ok())
        return pixels.error();
    return QCborMap{{J::kImage, WorkerProtocol::image(pixels.value())}};
}

Result<QCborMap> encode(const QCborMap &a, const JobContext &)
{
    const auto source = VipsSupport::fromQImage(WorkerProtocol::imageFrom(a.value(J::kImage)));
    if (!source.ok())
        return source.error();
    const auto encoded = ImageEncoder::encode(source.value(), quint64(a.value(J::kCode).toInteger()), factorOf(a));
    if (!encoded.ok())
        return encoded.error();
    return QCborMap{{J::kData, encoded.value()}};
}

} // namespace

Result<QImage> CodecJobs::thumbnailOfImage(const QString &source, int side) { return decodedPixels(source, side); }

void CodecJobs::addImageJobs(std::map<QString, CodecJob> &jobs)
{
    jobs[J::kProbe] = probe;
    jobs[J::kResize] = resize;
    jobs[J::kConvert] = convert;
    jobs[J::kDecode] = decode;
    jobs[J::kScale] = scale;
    jobs[J::kEncode] = encode;
}

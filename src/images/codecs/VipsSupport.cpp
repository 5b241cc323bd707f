#include "VipsSupport.h"

#include "core/fs/FsCalls.h"
#include "core/fs/NativePath.h"
#include "images/BitmapImageRep.h"


#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

#include <mutex>

using vips::VImage;

namespace VipsSupport {

void ensureStarted()
{
    static std::once_flag once;
    std::call_once(once, [] {
        if (VIPS_INIT("quaydrop") != 0)
            qWarning("image library failed to start: %s", vips_error_buffer());
        // A damaged file fails as one error value; the library's warnings for each of its tiles would
        // only bury that line.
        g_log_set_handler("VIPS", GLogLevelFlags(G_LOG_LEVEL_WARNING | G_LOG_LEVEL_MESSAGE | G_LOG_LEVEL_INFO),
                          [](const gchar *, GLogLevelFlags, const gchar *, gpointer) {}, nullptr);
        // Each image is opened once: a cache of operations only holds memory.
        vips_cache_set_max(0);
        vips_cache_set_max_mem(0);
    });
}

QByteArray takeBlob(VipsBlob *blob)
{
    size_t size = 0;
    const void *data = vips_blob_get(blob, &size);
    QByteArray bytes(static_cast<const char *>(data), qsizetype(size));
    vips_area_unref(VIPS_AREA(blob));
    return bytes;
}

Error error(const QString &path, const QString &what)
{
    ensureStarted();
    vips_error_clear();
    // libvips reports several lines; one line reads better in a log and a message.
    return ImageErrors::make(path, what.simplified());
}

namespace {

vips::VOption *accessOption(Access access)
{
    return VImage::option()->set("access", access == Access::Sequential ? VIPS_ACCESS_SEQUENTIAL : VIPS_ACCESS_RANDOM)
        ->set("fail_on", VIPS_FAIL_ON_ERROR);
}

Result<VImage> checked(const QString &path, VImage image)
{
    const qint64 pixels = qint64(image.width()) * qint64(image.height());
    if (image.width() < 1 || image.height() < 1)
        return error(path, QStringLiteral("the image has no pixels"));
    if (pixels > kMaxPixels)
        return ImageErrors::tooLarge(path, image.width(), image.height());
    return image;
}

} // namespace

Result<VImage> load(const QString &path, Access access)
{
    ensureStarted();
    if (auto unusable = ImageErrors::unusableInput(path))
        return *unusable;
    // The file is opened by its bytes here; the library's own opening would parse options out of a
    // name with brackets in it.
    const int fd = ::open(NativePath::toNative(path).constData(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return error(path, QString::fromLocal8Bit(strerror(errno)));
    VipsSource *source = vips_source_new_from_descriptor(fd);
    ::close(fd); // the source holds a duplicate
    if (!source)
        return error(path, QString::fromUtf8(vips_error_buffer()));
    const char *loader = vips_foreign_find_load_source(source);
    if (loader) {
        vips::VSource wrapped(source, vips::STEAL);
        auto opened = guarded<VImage>(path, [&] { return VImage::new_from_source(wrapped, "", accessOption(access)); });
        // A loader knew the first bytes, so what it could not read is damage.
        return opened.ok() ? checked(path, opened.value()) : ImageErrors::damaged(path, opened.error().info.value(QStringLiteral("reason")).toString());
    }
    g_object_unref(source);
    vips_error_clear();
    // Loaders that cannot stream (ImageMagick's types) take the file in memory.
    auto bytes = FsCalls::readWholeFile(path);
    if (!bytes.ok())
        return error(path, bytes.error().info.value(QStringLiteral("reason")).toString());
    auto opened = loadFromData(bytes.value(), access);
    if (!opened.ok())
        return ImageErrors::make(path, opened.error().info.value(QStringLiteral("reason")).toString());
    return opened;
}

Result<VImage> loadFromData(const QByteArray &data, Access access)
{
    ensureStarted();
    const char *loader = vips_foreign_find_load_buffer(data.constData(), size_t(data.size()));
    if (!loader) {
        vips_error_clear();
        return error(QString(), QString::fromLatin1(ImageErrors::kNotAnImage));
    }
    // libvips reads lazily: the loader keeps its own reference to a copy of the bytes.
    VipsBlob *blob = vips_blob_copy(data.constData(), size_t(data.size()));
    auto opened = guarded<VImage>(QStringLiteral("data"), [&] {
        VImage out;
        VImage::call(loader, accessOption(access)->set("buffer", blob)->set("out", &out));
        return out;
    });
    vips_area_unref(VIPS_AREA(blob));
    if (!opened.ok())
        return ImageErrors::damaged(QString(), opened.error().message);
    return checked(QString(), opened.value());
}

Result<VImage> decoded(const VImage &image, const QString &path)
{
    const qint64 bytes = qint64(VIPS_IMAGE_SIZEOF_IMAGE(image.get_image()));
    if (bytes > kMaxDecodedBytes)
        return error(path, QStringLiteral("the image is too large to decode (%1 MiB of pixels)").arg(bytes >> 20));
    auto pixels = guarded<VImage>(path, [&] { return image.copy_memory(); });
    if (!pixels.ok())
        return ImageErrors::damaged(path, pixels.error().info.value(QStringLiteral("reason")).toString());
    if (orientation(pixels.value()) == 1)
        return pixels;
    // Turned from memory, where any pixel can be read in any order; the orientation becomes 1.
    return guarded<VImage>(path, [&] { return pixels.value().autorot(); });
}

Result<VImage> upright(const VImage &image, const QString &path)
{
    if (orientation(image) == 1)
        return image;
    return decoded(image, path);
}

namespace {
void onEval(VipsImage *image, VipsProgress *, void *cancelled)
{
    if ((*static_cast<const std::function<bool()> *>(cancelled))())
        vips_image_set_kill(image, TRUE);
}
} // namespace

void stopWhen(const VImage &image, const std::function<bool()> *cancelled)
{
    if (!cancelled || !*cancelled)
        return;
    vips_image_set_progress(image.get_image(), TRUE);
    g_signal_connect(image.get_image(), "eval", G_CALLBACK(onEval), const_cast<std::function<bool()> *>(cancelled));
}

int orientation(const VImage &image)
{
    if (vips_image_get_typeof(image.get_image(), VIPS_META_ORIENTATION) == 0)
        return 1;
    int value = 1;
    if (vips_image_get_int(image.get_image(), VIPS_META_ORIENTATION, &value) != 0) {
        vips_error_clear();
        return 1;
    }
    return value >= 1 && value <= 8 ? value : 1;
}

Result<QSize> headerSize(const QString &path)
{
    auto image = load(path, Access::Sequential);
    if (!image.ok())
        return image.error();
    const QSize stored(image.value().width(), image.value().height());
    return turnsAQuarter(orientation(image.value())) ? stored.transposed() : stored;
}

namespace {
double fromPerMillimetre(double perMm)
{
    // Formats without a resolution (GIF, for one) are left at the library's 1 per millimetre.
    if (!(perMm > 0) || perMm == 1.0)
        return Resolution::kPointsPerInch;
    return Resolution::snapped(perMm * Resolution::kMillimetresPerInch);
}
} // namespace

double dotsPerInch(const VImage &image) { return fromPerMillimetre(image.xres()); }
double verticalDotsPerInch(const VImage &image) { return fromPerMillimetre(image.yres()); }

VImage withResolution(const VImage &image, double dotsPerInchX, double dotsPerInchY)
{
    VImage tagged = image.copy(VImage::option()
                                   ->set("xres", dotsPerInchX / Resolution::kMillimetresPerInch)
                                   ->set("yres", dotsPerInchY / Resolution::kMillimetresPerInch));
    tagged.set("resolution-unit", "in");
    return tagged;
}

Result<VImage> toDisplayable(const VImage &image)
{
    return guarded<VImage>(QString(), [&] {
        VImage out = image;
        if (out.interpretation() != VIPS_INTERPRETATION_sRGB) {
            // CMYK, Lab, 16-bit grey and the like become sRGB; plain 8-bit grey is widened too.
            out = out.colourspace(VIPS_INTERPRETATION_sRGB);
        }
        if (out.format() != VIPS_FORMAT_UCHAR)
            out = out.cast(VIPS_FORMAT_UCHAR);
        if (out.bands() > 4)
            out = out.extract_band(0, VImage::option()->set("n", 4));
        return out;
    });
}

Result<QImage> toQImage(const VImage &image)
{
    auto ready = toDisplayable(image);
    if (!ready.ok())
        return ready.error();
    const VImage rgb = ready.value();
    const bool alpha = rgb.bands() == 4;
    QImage out(rgb.width(), rgb.height(), alpha ? QImage::Format_RGBA8888 : QImage::Format_RGB888);
    if (out.isNull())
        return error(QString(), QStringLiteral("not enough memory for %1 x %2 pixels").arg(rgb.width()).arg(rgb.height()));
    auto pixels = guarded<bool>(QString(), [&] {
        size_t size = 0;
        void *bytes = rgb.write_to_memory(&size);
        const int rowBytes = rgb.width() * rgb.bands();
        const auto *src = static_cast<const uchar *>(bytes);
        for (int y = 0; y < rgb.height(); ++y)
            memcpy(out.scanLine(y), src + qsizetype(y) * rowBytes, size_t(rowBytes));
        g_free(bytes);
        return true;
    });
    if (!pixels.ok())
        return pixels.error();
    out.setDotsPerMeterX(Resolution::toDotsPerMeter(dotsPerInch(image)));
    out.setDotsPerMeterY(Resolution::toDotsPerMeter(verticalDotsPerInch(image)));
    return out;
}

Result<VImage> fromQImage(const QImage &image)
{
    ensureStarted();
    const bool alpha = image.hasAlphaChannel();
    const QImage src = image.convertToFormat(alpha ? QImage::Format_RGBA8888 : QImage::Format_RGB888);
    const int bands = alpha ? 4 : 3;
    const int rowBytes = src.width() * bands;
    QByteArray packed;
    const uchar *bytes = src.constBits();
    if (src.bytesPerLine() != rowBytes) { // rows padded to four bytes
        packed.resize(qsizetype(rowBytes) * src.height());
        for (int y = 0; y < src.height(); ++y)
            memcpy(packed.data() + qsizetype(y) * rowBytes, src.constScanLine(y), size_t(rowBytes));
        bytes = reinterpret_cast<const uchar *>(packed.constData());
    }
    VipsImage *copied = vips_image_new_from_memory_copy(bytes, size_t(rowBytes) * size_t(src.height()), src.width(),
                                                        src.height(), bands, VIPS_FORMAT_UCHAR);
    if (!copied)
        return error(QString(), QString::fromUtf8(vips_error_buffer()));
    VImage out(copied);
    out = out.copy(VImage::option()->set("interpretation", VIPS_INTERPRETATION_sRGB));
    return withResolution(out, Resolution::fromDotsPerMeter(image.dotsPerMeterX()),
                          Resolution::fromDotsPerMeter(image.dotsPerMeterY()));
}

} // namespace VipsSupport

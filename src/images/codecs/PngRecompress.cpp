#include "PngRecompress.h"

#include "core/fs/NativePath.h"
#include "images/ImageErrors.h"

#include <png.h>

#include <algorithm>
#include <csetjmp>
#include <cstdio>
#include <cstring>
#include <memory>
#include <vector>

namespace {

// libpng reports a fatal error by a long jump back to the call that set the jump target; the
// message is kept here on the way.
struct ErrorSink
{
    char message[256] = {0};
};

void onError(png_structp png, png_const_charp message)
{
    auto *sink = static_cast<ErrorSink *>(png_get_error_ptr(png));
    if (sink)
        snprintf(sink->message, sizeof sink->message, "%s", message);
    png_longjmp(png, 1);
}

void onWarning(png_structp, png_const_charp) {}

void appendToBuffer(png_structp png, png_bytep data, png_size_t length)
{
    auto *out = static_cast<QByteArray *>(png_get_io_ptr(png));
    out->append(reinterpret_cast<const char *>(data), qsizetype(length));
}

void flushNothing(png_structp) {}

struct FileCloser
{
    void operator()(FILE *f) const
    {
        if (f)
            fclose(f);
    }
};

Error failure(const QString &path, const QString &what) { return ImageErrors::make(path, what); }

constexpr size_t kSignatureBytes = 8;

// Everything libpng allocates for the two passes, released in one place whichever way the work ends.
struct Structs
{
    png_structp read = nullptr;
    png_infop info = nullptr;
    png_infop endInfo = nullptr;
    png_structp write = nullptr;
    ~Structs()
    {
        if (write)
            png_destroy_write_struct(&write, nullptr);
        if (read)
            png_destroy_read_struct(&read, info ? &info : nullptr, endInfo ? &endInfo : nullptr);
    }
};

} // namespace

bool PngRecompress::isPng(const QString &path)
{
    std::unique_ptr<FILE, FileCloser> in(fopen(NativePath::toNative(path).constData(), "rbe"));
    png_byte header[kSignatureBytes];
    return in && fread(header, 1, sizeof header, in.get()) == sizeof header && png_sig_cmp(header, 0, sizeof header) == 0;
}

Result<QByteArray> PngRecompress::recompress(const QString &source, float factor)
{
    if (auto unusable = ImageErrors::unusableInput(source))
        return *unusable;
    std::unique_ptr<FILE, FileCloser> in(fopen(NativePath::toNative(source).constData(), "rbe"));
    if (!in)
        return failure(source, QString::fromLocal8Bit(strerror(errno)));
    png_byte header[kSignatureBytes];
    if (fread(header, 1, sizeof header, in.get()) != sizeof header || png_sig_cmp(header, 0, sizeof header) != 0)
        return failure(source, QString::fromLatin1(ImageErrors::kNotAnImage));
    fseek(in.get(), 0, SEEK_SET);

    ErrorSink readErrors, writeErrors;
    Structs s;
    s.read = png_create_read_struct(PNG_LIBPNG_VER_STRING, &readErrors, onError, onWarning);
    if (!s.read)
        return failure(source, QStringLiteral("out of memory"));
    s.info = png_create_info_struct(s.read);
    s.endInfo = png_create_info_struct(s.read);
    if (!s.info || !s.endInfo)
        return failure(source, QStringLiteral("out of memory"));

    // Declared before the jump target so that a long jump leaves them in a defined state.
    std::vector<png_byte> pixels;
    std::vector<png_bytep> rows;
    QByteArray out;
    if (setjmp(png_jmpbuf(s.read)))
        return ImageErrors::damaged(source, QStringLiteral("libpng: %1").arg(QString::fromUtf8(readErrors.message)));
    png_init_io(s.read, in.get());
    // Private chunks come across as well as the known ones.
    png_set_keep_unknown_chunks(s.read, PNG_HANDLE_CHUNK_ALWAYS, nullptr, 0);
    png_read_info(s.read, s.info);
    const png_uint_32 height = png_get_image_height(s.read, s.info);
    const png_size_t rowBytes = png_get_rowbytes(s.read, s.info);
    const png_uint_32 width = png_get_image_width(s.read, s.info);
    if (quint64(width) * height > quint64(1) << 28)
        return failure(source, QStringLiteral("the image is too large (%1 x %2 pixels)").arg(width).arg(height));
    pixels.resize(rowBytes * height);
    rows.resize(height);
    for (png_uint_32 y = 0; y < height; ++y)
        rows[y] = pixels.data() + rowBytes * y;
    png_read_image(s.read, rows.data());
    png_read_end(s.read, s.endInfo);

    s.write = png_create_write_struct(PNG_LIBPNG_VER_STRING, &writeErrors, onError, onWarning);
    if (!s.write)
        return failure(source, QStringLiteral("out of memory"));
    if (setjmp(png_jmpbuf(s.write)))
        return failure(source, QStringLiteral("cannot encode (%1)").arg(QString::fromUtf8(writeErrors.message)));
    const double clamped = std::clamp(double(factor), 0.0, 1.0);
    png_set_write_fn(s.write, &out, appendToBuffer, flushNothing);
    png_set_keep_unknown_chunks(s.write, PNG_HANDLE_CHUNK_ALWAYS, nullptr, 0);
    // The method is set on the reading side, where it changes nothing; the level is what counts.
    png_set_compression_method(s.read, 8);
    png_set_compression_level(s.write, int(clamped * 9.0));
    png_write_info(s.write, s.info);
    png_write_image(s.write, rows.data());
    png_write_end(s.write, s.endInfo);
    return out;
}

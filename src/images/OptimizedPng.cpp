#include "OptimizedPng.h"

#include "core/fs/PathParts.h"
#include "images/ImageTypeCode.h"
#include "utils/Utils.h"

#include <QBuffer>
#include <QImageReader>
#include <QPainter>

#include <zlib.h>

#include <cmath>
#include <numeric>

namespace {

void appendBytes(QByteArray &data, std::initializer_list<quint8> bytes)
{
    for (quint8 b : bytes)
        data.append(char(b));
}

void appendBigEndian(QByteArray &data, quint32 v)
{
    appendBytes(data, {quint8(v >> 24), quint8(v >> 16), quint8(v >> 8), quint8(v)});
}

quint32 chunkCrc(const char *type, const QByteArray &body)
{
    uLong crc = crc32(0, reinterpret_cast<const Bytef *>(type), 4);
    return quint32(crc32(crc, reinterpret_cast<const Bytef *>(body.constData()), uInt(body.size())));
}

} // namespace

void OptimizedPng::appendUInt(QByteArray &data, quint32 value)
{
    appendBigEndian(data, value);
    appendBytes(data, {0, 0, 0, 0});
}

QByteArray OptimizedPng::filteredRows(const QImage &image)
{
    const QImage premultiplied = image.convertToFormat(QImage::Format_RGBA8888_Premultiplied);
    const int w = premultiplied.width();
    const int h = premultiplied.height();
    QByteArray rows(qsizetype(w * 4 + 1) * h, Qt::Uninitialized);
    auto *out = reinterpret_cast<quint8 *>(rows.data());
    for (int y = 0; y < h; ++y) {
        const quint8 *px = premultiplied.constScanLine(y);
        *out++ = 1; // Sub
        quint8 left[4] = {0, 0, 0, 0};
        for (int x = 0; x < w; ++x, px += 4) {
            const quint8 bgra[4] = {px[2], px[1], px[0], px[3]};
            for (int c = 0; c < 4; ++c) {
                *out++ = quint8(bgra[c] - left[c]);
                left[c] = bgra[c];
            }
        }
    }
    return rows;
}

QByteArray OptimizedPng::optimizedData(const QImage &image)
{
    if (image.isNull())
        return {};
    const QByteArray filtered = filteredRows(image);
    // A raw deflate stream in one call, into a buffer the size of the input, as the format's readers
    // expect it; an input that does not shrink is cut where the buffer ends.
    QByteArray compressed(filtered.size(), Qt::Uninitialized);
    z_stream stream{};
    stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(filtered.constData()));
    stream.avail_in = uInt(filtered.size());
    stream.next_out = reinterpret_cast<Bytef *>(compressed.data());
    stream.avail_out = uInt(compressed.size());
    qsizetype produced = 0;
    if (deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, -8, 9, Z_DEFAULT_STRATEGY) == Z_OK) {
        deflate(&stream, Z_FINISH);
        produced = qsizetype(stream.total_out);
    }
    compressed.truncate(produced);

    QByteArray png;
    appendBytes(png, {0x89, 0x50, 0x4E, 0x47, 0x0D, 0x0A, 0x1A, 0x0A});
    appendUInt(png, 4);
    png.append("CgBI");
    appendBytes(png, {0x30, 0x00, 0x20, 0x06, 0x17, 0x9E, 0x80, 0x65});
    QByteArray ihdr;
    appendBigEndian(ihdr, quint32(image.width()));
    appendBigEndian(ihdr, quint32(image.height()));
    appendBytes(ihdr, {8, 6, 0, 0, 0});
    appendUInt(png, 13);
    png.append("IHDR");
    png.append(ihdr);
    appendUInt(png, chunkCrc("IHDR", ihdr));
    appendUInt(png, quint32(compressed.size()));
    png.append("IDAT");
    png.append(compressed);
    appendUInt(png, chunkCrc("IDAT", compressed));
    appendUInt(png, 0);
    png.append("IEND");
    appendBytes(png, {0xAE, 0x42, 0x60, 0x82});
    deflateEnd(&stream);
    return png;
}

QByteArray OptimizedPng::optimizedData(const QByteArray &encoded)
{
    const QImage image = QImage::fromData(encoded);
    if (image.isNull()) {
        qWarning("Can't decode NSData into image.");
        return {};
    }
    return optimizedData(image);
}

quint64 OptimizedPng::fileTypeForFile(const QString &fileName)
{
    const QString ext = PathParts::splitExtension(PathParts::lastComponent(fileName)).extension.toLower();
    if (ext == u"png")
        return ImageTypeCode::PNG;
    if (ext == u"gif")
        return ImageTypeCode::GIF;
    if (ext == u"jpg" || ext == u"jpeg")
        return ImageTypeCode::JPEG;
    return ImageTypeCode::TIFF;
}

QList<QImage> AnimatedGif::framesOfAnimatedImageWithAnimatedGIFData(const QByteArray &data)
{
    QBuffer buffer;
    buffer.setData(data);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, "gif");
    QList<QImage> frames;
    QList<int> delays;
    while (reader.canRead()) {
        const QImage frame = reader.read();
        if (frame.isNull())
            break;
        // Qt gives milliseconds; the frame list counts hundredths of a second.
        const int ms = reader.nextImageDelay();
        frames.append(frame);
        delays.append(ms > 0 ? int(std::lrint(ms / 10.0)) : 1);
    }
    if (frames.isEmpty())
        return {};
    int divisor = 0;
    for (int d : delays)
        divisor = std::gcd(divisor, d);
    if (divisor <= 0)
        divisor = 1;
    QList<QImage> list;
    for (qsizetype i = 0; i < frames.size(); ++i)
        for (int n = 0; n < delays[i] / divisor; ++n)
            list.append(frames[i]);
    return list;
}

BitmapImageRep Utils::imageWithAlpha(const BitmapImageRep &image, float alpha)
{
    QImage out(image.pixels.size(), QImage::Format_ARGB32_Premultiplied);
    out.fill(Qt::transparent);
    QPainter painter(&out);
    painter.setOpacity(alpha);
    painter.drawImage(0, 0, image.pixels);
    painter.end();
    out.setDotsPerMeterX(image.pixels.dotsPerMeterX());
    out.setDotsPerMeterY(image.pixels.dotsPerMeterY());
    return {out, image.size};
}

BitmapImageRep Utils::combineBgIm(const BitmapImageRep &background, const BitmapImageRep &foreground)
{
    if (!background.isValid() || !foreground.isValid())
        return {};
    // Both lie at the bottom-left corner; the result covers both and its point size is its pixel size.
    const int w = std::max(background.pixelsWide(), foreground.pixelsWide());
    const int h = std::max(background.pixelsHigh(), foreground.pixelsHigh());
    QImage out(w, h, QImage::Format_ARGB32_Premultiplied);
    out.fill(Qt::transparent);
    QPainter painter(&out);
    painter.drawImage(0, h - background.pixelsHigh(), background.pixels);
    painter.drawImage(0, h - foreground.pixelsHigh(), foreground.pixels);
    painter.end();
    return {out, QSizeF(w, h)};
}

#pragma once

// Image and PDF files for the tests, made in memory: encoded images with a given resolution, damaged
// and lying files, and PDFs of pages of given sizes.

#include "images/vips/VipsSupport.h"

#include "core/fs/AtomicFile.h"
#include "images/BitmapImageRep.h"
#include "images/pdf/PdfWriter.h"

#include <QBuffer>
#include <QByteArray>
#include <QFile>
#include <QImage>
#include <QImageWriter>
#include <QList>
#include <QSizeF>
#include <QtEndian>

#include <zlib.h>

namespace ImageFixtures {

// A picture with structure in every channel, so that resampling and encoders have work to do.
inline QImage picture(int w, int h, bool alpha = false)
{
    QImage img(w, h, alpha ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x)
            img.setPixel(x, y, qRgba((x * 7 + y * 3) % 256, (x * y) % 256, (255 - x * 5) & 0xFF, alpha ? (x * 255 / w) : 255));
    return img;
}

inline QByteArray encoded(const QImage &image, const char *format, double dpi = 72.0, int quality = -1)
{
    if (qstrcmp(format, "tiff") == 0) {
        // Qt writes TIFF only with an extra plugin; the image library always can.
        auto v = VipsSupport::fromQImage(image);
        return VipsSupport::takeBlob(VipsSupport::withResolution(v.value(), dpi, dpi).tiffsave_buffer());
    }
    QImage tagged = image;
    tagged.setDotsPerMeterX(Resolution::toDotsPerMeter(dpi));
    tagged.setDotsPerMeterY(Resolution::toDotsPerMeter(dpi));
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, format);
    writer.setQuality(quality);
    writer.write(tagged);
    return bytes;
}

inline bool write(const QString &path, const QByteArray &bytes)
{
    QFile f(path);
    return f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size();
}

inline QByteArray chunk(const char *type, const QByteArray &body)
{
    QByteArray c(4, '\0');
    qToBigEndian<quint32>(quint32(body.size()), c.data());
    c.append(type, 4);
    c.append(body);
    uLong crc = crc32(0, reinterpret_cast<const Bytef *>(type), 4);
    crc = crc32(crc, reinterpret_cast<const Bytef *>(body.constData()), uInt(body.size()));
    QByteArray tail(4, '\0');
    qToBigEndian<quint32>(quint32(crc), tail.data());
    return c + tail;
}

// A PNG whose header claims this size, with a few bytes of data: readers must refuse before decoding.
inline QByteArray pngClaiming(quint32 width, quint32 height)
{
    QByteArray ihdr(13, '\0');
    qToBigEndian<quint32>(width, ihdr.data());
    qToBigEndian<quint32>(height, ihdr.data() + 4);
    ihdr[8] = 8;
    ihdr[9] = 2;
    return QByteArray("\x89PNG\r\n\x1a\n", 8) + chunk("IHDR", ihdr) + chunk("IDAT", QByteArray(16, 'x')) +
           chunk("IEND", {});
}

// A PNG with a private chunk before its data, which only a chunk-keeping rewrite carries across.
inline QByteArray pngWithPrivateChunk(const QImage &image)
{
    const QByteArray png = encoded(image, "png");
    const qsizetype ihdrEnd = 8 + 25;
    return png.left(ihdrEnd) + chunk("prVt", "kept by a lossless rewrite") + png.mid(ihdrEnd);
}

// A PNG whose pixel data is damaged behind a valid header.
inline QByteArray damagedPng(const QImage &image)
{
    QByteArray png = encoded(image, "png");
    const qsizetype idat = png.indexOf("IDAT");
    for (qsizetype i = idat + 8; i < std::min(png.size() - 16, idat + 40); ++i)
        png[i] = char(png[i] ^ 0x5A);
    return png;
}

// A PDF of pages of these sizes in points, each covered by the picture.
inline bool pdfWithPages(const QString &path, const QList<QSizeF> &pages, const QImage &content = picture(8, 8))
{
    AtomicFile file(path);
    PdfWriter pdf(file);
    if (!file.open().ok() || !pdf.begin().ok())
        return false;
    for (const QSizeF &page : pages)
        if (!pdf.addImagePage(content, page).ok())
            return false;
    return pdf.finish().ok() && file.commit(AtomicFile::Mode::Replace).ok();
}

// An animated GIF of solid frames with these delays in milliseconds.
inline QByteArray animatedGif(const QList<int> &delaysMs)
{
    VipsSupport::ensureStarted();
    const int side = 4;
    vips::VImage strip = vips::VImage::black(side, side * int(delaysMs.size()), vips::VImage::option()->set("bands", 3));
    strip = strip.linear({1.0, 1.0, 1.0}, {40.0, 120.0, 200.0}).cast(VIPS_FORMAT_UCHAR);
    strip.set("page-height", side);
    std::vector<int> delays(delaysMs.begin(), delaysMs.end());
    strip.set("delay", delays);
    strip.set("loop", 0);
    return VipsSupport::takeBlob(strip.gifsave_buffer());
}

// A Photoshop file, a type that can be read but not written here.
inline QByteArray psd(const QImage &image)
{
    VipsSupport::ensureStarted();
    auto v = VipsSupport::fromQImage(image);
    return VipsSupport::takeBlob(v.value().magicksave_buffer(vips::VImage::option()->set("format", "psd")));
}

} // namespace ImageFixtures

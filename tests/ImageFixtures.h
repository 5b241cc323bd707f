#pragma once

// Image and PDF files for the tests, made in memory: encoded images with a given resolution, damaged
// and lying files, and PDFs of pages of given sizes.

#include "TestSupport.h"
#include "images/codecs/VipsSupport.h"

#include "core/fs/AtomicFile.h"
#include "images/BitmapImageRep.h"
#include "images/jobs/ImageBatchJob.h"
#include "images/pdf/PdfWriter.h"

#include <QBuffer>
#include <QByteArray>
#include <QFile>
#include <QImage>
#include <QImageReader>
#include <QImageWriter>
#include <QPainter>
#include <QSignalSpy>
#include <QDir>
#include <QList>
#include <QSizeF>
#include <QtEndian>

#include <cstdlib>

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

inline bool write(const QString &path, const QByteArray &bytes) { return writeFile(path, bytes); }

// The picture encoded into a file at `path`; the path, or an empty one when it could not be written.
inline QString imageFile(const QString &path, const QImage &image, const char *format = "png", double dpi = 72.0)
{
    return write(path, encoded(image, format, dpi)) ? path : QString();
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

// A PDF of one page under a page tree `depth` levels deep, each level an object of its own.
inline QByteArray pdfWithDeepPageTree(int depth)
{
    QByteArrayList objects{"<< /Type /Catalog /Pages 2 0 R >>"};
    for (int level = 0; level < depth; ++level) {
        const int self = int(objects.size()) + 1;
        objects.append("<< /Type /Pages /Count 1 /Kids [" + QByteArray::number(self + 1) + " 0 R]" +
                       (level ? " /Parent " + QByteArray::number(self - 1) + " 0 R" : QByteArray()) + " >>");
    }
    objects.append("<< /Type /Page /Parent " + QByteArray::number(objects.size()) + " 0 R /MediaBox [0 0 200 200] >>");
    return pdfOf(objects);
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

// Four quarters of one colour each (red, green over blue, white): every turn and mirror of it differs.
inline QImage quarters(int w, int h)
{
    QImage img(w, h, QImage::Format_RGB32);
    QPainter p(&img);
    p.fillRect(0, 0, w / 2, h / 2, Qt::red);
    p.fillRect(w / 2, 0, w - w / 2, h / 2, Qt::green);
    p.fillRect(0, h / 2, w / 2, h - h / 2, Qt::blue);
    p.fillRect(w / 2, h / 2, w - w / 2, h - h / 2, Qt::white);
    return img;
}

// The JPEG with an EXIF block of our own making ahead of its other segments, as cameras write it, that
// states this orientation (1 upright ... 6 turn a quarter clockwise to view ... 8).
inline QByteArray withOrientation(const QByteArray &jpeg, int orientation)
{
    // Little-endian TIFF header; IFD0 of one entry: tag 0x0112, type SHORT, count 1, the value; no next IFD.
    const QByteArray tiff = QByteArray("II*\0\x08\0\0\0\x01\0\x12\x01\x03\0\x01\0\0\0", 18) + char(orientation) +
                            QByteArray(7, '\0');
    const QByteArray body = QByteArray("Exif\0\0", 6) + tiff;
    const int length = int(body.size()) + 2;
    return jpeg.left(2) + QByteArray("\xFF\xE1", 2) + char(length >> 8) + char(length & 0xFF) + body + jpeg.mid(2);
}

// The file as a viewer shows it: Qt's own reader, with the EXIF orientation applied.
inline QImage seenByAViewer(const QString &path)
{
    QImageReader reader(path);
    reader.setAutoTransform(true);
    return reader.read();
}

// The pixels as stored, and whether the file asks a viewer to turn or mirror them.
inline QImage storedPixels(const QString &path)
{
    QImageReader reader(path);
    reader.setAutoTransform(false);
    return reader.read();
}
inline bool statesATurn(const QString &path)
{
    return QImageReader(path).transformation() != QImageIOHandler::TransformationNone;
}

// Whether two pictures of quarters show each quarter in the same place.
inline bool sameQuarters(const QImage &a, const QImage &b)
{
    if (a.isNull() || b.isNull())
        return false;
    for (const QPointF f : {QPointF(0.25, 0.25), QPointF(0.75, 0.25), QPointF(0.25, 0.75), QPointF(0.75, 0.75)}) {
        const QColor ca = a.pixelColor(int(a.width() * f.x()), int(a.height() * f.y()));
        const QColor cb = b.pixelColor(int(b.width() * f.x()), int(b.height() * f.y()));
        if (std::abs(ca.red() - cb.red()) + std::abs(ca.green() - cb.green()) + std::abs(ca.blue() - cb.blue()) > 90)
            return false;
    }
    return true;
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

// Starts the job and waits for its end; the job, for what it wrote and what failed.
template <typename Job>
std::unique_ptr<Job> ranToEnd(std::unique_ptr<Job> job, int ms = 60000)
{
    QSignalSpy finished(job.get(), &ImageBatchJob::finished);
    job->start();
    if (!finished.wait(ms))
        qWarning("the job did not finish in time");
    return job;
}

// Temporary files a job left in a folder.
inline QStringList leftovers(const QString &folder)
{
    return QDir(folder).entryList({QStringLiteral(".quaydrop-*")}, QDir::Files | QDir::Hidden);
}

} // namespace ImageFixtures

#include "PdfWriter.h"

#include "core/fs/AtomicFile.h"

#include <zlib.h>

namespace {

QByteArray number(double v)
{
    QByteArray s = QByteArray::number(v, 'f', 4);
    while (s.contains('.') && (s.endsWith('0') || s.endsWith('.')))
        s.chop(1);
    return s;
}

Result<QByteArray> deflated(const QByteArray &raw)
{
    uLongf size = compressBound(uLong(raw.size()));
    QByteArray out(qsizetype(size), Qt::Uninitialized);
    if (compress2(reinterpret_cast<Bytef *>(out.data()), &size, reinterpret_cast<const Bytef *>(raw.constData()),
                  uLong(raw.size()), Z_DEFAULT_COMPRESSION) != Z_OK)
        return Error{QStringLiteral("PDF"), 2, QStringLiteral("cannot compress the image data")};
    out.truncate(qsizetype(size));
    return out;
}

} // namespace

PdfWriter::PdfWriter(AtomicFile &out) : m_out(out) {}

int PdfWriter::reserve()
{
    m_offsets.append(-1);
    return int(m_offsets.size());
}

Status PdfWriter::put(const QByteArray &bytes) { return m_out.write(bytes); }

Status PdfWriter::startObject(int n)
{
    m_offsets[n - 1] = m_out.written();
    return put(QByteArray::number(n) + " 0 obj\n");
}

Status PdfWriter::putStream(int n, const QByteArray &dictionary, const QByteArray &data)
{
    if (Status s = startObject(n); !s.ok())
        return s;
    if (Status s = put("<<" + dictionary + " /Length " + QByteArray::number(data.size()) + ">>\nstream\n"); !s.ok())
        return s;
    if (Status s = put(data); !s.ok())
        return s;
    return put("\nendstream\nendobj\n");
}

Status PdfWriter::begin()
{
    // The binary comment tells transfer programs that the file is not text.
    if (Status s = put("%PDF-1.4\n%\xE2\xE3\xCF\xD3\n"); !s.ok())
        return s;
    reserve(); // 1: catalog, written at the end
    m_pagesObject = reserve();
    return success();
}

QTransform PdfWriter::pageMatrix(const QSizeF &pagePoints, int orientation, const QTransform &turn, QSizeF *page)
{
    // The unit square laid over w x h points as an EXIF orientation asks: 2 to 4 mirror or turn by a
    // half, 5 to 8 turn by a quarter (the page is then the image's sides swapped).
    const qreal w = pagePoints.width(), h = pagePoints.height();
    QTransform m;
    switch (orientation) {
    case 2: m = QTransform(-w, 0, 0, h, w, 0); break;
    case 3: m = QTransform(-w, 0, 0, -h, w, h); break;
    case 4: m = QTransform(w, 0, 0, -h, 0, h); break;
    case 5: m = QTransform(0, -h, -w, 0, w, h); break;
    case 6: m = QTransform(0, -h, w, 0, 0, h); break;
    case 7: m = QTransform(0, h, w, 0, 0, 0); break;
    case 8: m = QTransform(0, h, -w, 0, w, 0); break;
    default: m = QTransform(w, 0, 0, h, 0, 0); break;
    }
    if (turn.isIdentity()) {
        *page = pagePoints;
        return m;
    }
    const QRectF box = turn.mapRect(QRectF(QPointF(0, 0), pagePoints));
    *page = QSizeF(box.width(), box.height());
    return m * turn * QTransform::fromTranslate(-box.x(), -box.y());
}

Status PdfWriter::addPage(int imageObject, const QSizeF &pagePoints, int orientation, const QTransform &turn)
{
    const int contents = reserve();
    const int page = reserve();
    QSizeF size;
    const QTransform m = pageMatrix(pagePoints, orientation, turn, &size);
    const QByteArray w = number(size.width());
    const QByteArray h = number(size.height());
    const QByteArray draw = "q " + number(m.m11()) + ' ' + number(m.m12()) + ' ' + number(m.m21()) + ' ' + number(m.m22()) +
                            ' ' + number(m.dx()) + ' ' + number(m.dy()) + " cm /Im0 Do Q\n";
    if (Status s = putStream(contents, {}, draw); !s.ok())
        return s;
    if (Status s = startObject(page); !s.ok())
        return s;
    if (Status s = put("<</Type /Page /Parent " + QByteArray::number(m_pagesObject) + " 0 R /MediaBox [0 0 " + w + ' ' + h +
                       "] /Resources <</XObject <</Im0 " + QByteArray::number(imageObject) +
                       " 0 R>>>> /Contents " + QByteArray::number(contents) + " 0 R>>\nendobj\n");
        !s.ok())
        return s;
    m_pages.append(page);
    return success();
}

Status PdfWriter::addJpegPage(const QByteArray &jpeg, const JpegInfo &info, const QSizeF &pagePoints, int orientation,
                              const QTransform &turn)
{
    const int image = reserve();
    QByteArray dict = "/Type /XObject /Subtype /Image /Width " + QByteArray::number(info.width) + " /Height " +
                      QByteArray::number(info.height) + " /BitsPerComponent 8 /Filter /DCTDecode /ColorSpace ";
    dict += info.components == 1 ? "/DeviceGray" : info.components == 4 ? "/DeviceCMYK" : "/DeviceRGB";
    if (info.components == 4 && info.adobeInverted)
        dict += " /Decode [1 0 1 0 1 0 1 0]";
    if (Status s = putStream(image, dict, jpeg); !s.ok())
        return s;
    return addPage(image, pagePoints, orientation, turn);
}

Status PdfWriter::addImagePage(const QImage &source, const QSizeF &pagePoints, const QTransform &turn)
{
    const bool grey = source.isGrayscale() && !source.hasAlphaChannel();
    const QImage colour = source.convertToFormat(grey ? QImage::Format_Grayscale8 : QImage::Format_RGB888);
    const int rowBytes = colour.width() * (grey ? 1 : 3);
    QByteArray samples(qsizetype(rowBytes) * colour.height(), Qt::Uninitialized);
    for (int y = 0; y < colour.height(); ++y)
        memcpy(samples.data() + qsizetype(y) * rowBytes, colour.constScanLine(y), size_t(rowBytes));
    auto packed = deflated(samples);
    if (!packed.ok())
        return packed.error();
    samples = QByteArray();

    int mask = 0;
    if (source.hasAlphaChannel()) {
        const QImage alpha = source.convertToFormat(QImage::Format_Alpha8);
        QByteArray a(qsizetype(alpha.width()) * alpha.height(), Qt::Uninitialized);
        for (int y = 0; y < alpha.height(); ++y)
            memcpy(a.data() + qsizetype(y) * alpha.width(), alpha.constScanLine(y), size_t(alpha.width()));
        auto packedMask = deflated(a);
        if (!packedMask.ok())
            return packedMask.error();
        mask = reserve();
        if (Status s = putStream(mask,
                                 "/Type /XObject /Subtype /Image /Width " + QByteArray::number(alpha.width()) +
                                     " /Height " + QByteArray::number(alpha.height()) +
                                     " /BitsPerComponent 8 /ColorSpace /DeviceGray /Filter /FlateDecode",
                                 packedMask.value());
            !s.ok())
            return s;
    }
    const int image = reserve();
    QByteArray dict = "/Type /XObject /Subtype /Image /Width " + QByteArray::number(colour.width()) + " /Height " +
                      QByteArray::number(colour.height()) + " /BitsPerComponent 8 /ColorSpace " +
                      (grey ? "/DeviceGray" : "/DeviceRGB") + " /Filter /FlateDecode";
    if (mask)
        dict += " /SMask " + QByteArray::number(mask) + " 0 R";
    if (Status s = putStream(image, dict, packed.value()); !s.ok())
        return s;
    return addPage(image, pagePoints, 1, turn);
}

Status PdfWriter::finish()
{
    QByteArray kids;
    for (int p : std::as_const(m_pages))
        kids += QByteArray::number(p) + " 0 R ";
    if (Status s = startObject(m_pagesObject); !s.ok())
        return s;
    if (Status s = put("<</Type /Pages /Kids [" + kids.trimmed() + "] /Count " + QByteArray::number(m_pages.size()) +
                       ">>\nendobj\n");
        !s.ok())
        return s;
    if (Status s = startObject(1); !s.ok())
        return s;
    if (Status s = put("<</Type /Catalog /Pages " + QByteArray::number(m_pagesObject) + " 0 R>>\nendobj\n"); !s.ok())
        return s;
    const int info = reserve();
    if (Status s = startObject(info); !s.ok())
        return s;
    if (Status s = put("<</Producer (Quaydrop)>>\nendobj\n"); !s.ok())
        return s;

    const qint64 xref = m_out.written();
    QByteArray table = "xref\n0 " + QByteArray::number(m_offsets.size() + 1) + "\n0000000000 65535 f \n";
    for (qint64 offset : std::as_const(m_offsets))
        table += QByteArray::number(offset).rightJustified(10, '0') + " 00000 n \n";
    table += "trailer\n<</Size " + QByteArray::number(m_offsets.size() + 1) + " /Root 1 0 R /Info " +
             QByteArray::number(info) + " 0 R>>\nstartxref\n" + QByteArray::number(xref) + "\n%%EOF\n";
    return put(table);
}

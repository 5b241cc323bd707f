#include "ImageMetadata.h"

#include <QtEndian>

#include <optional>

#include <zlib.h>

namespace {

constexpr char kExifHeader[] = "Exif\0\0";
constexpr qsizetype kExifHeaderSize = 6;
constexpr quint16 kOrientationTag = 0x0112;
constexpr quint16 kExifIfdTag = 0x8769;
constexpr quint16 kPixelXDimensionTag = 0xA002;
constexpr quint16 kPixelYDimensionTag = 0xA003;
constexpr quint16 kShort = 3;
constexpr quint16 kLong = 4;

bool isJpeg(const QByteArray &d)
{
    return d.size() >= 4 && quint8(d[0]) == 0xFF && quint8(d[1]) == 0xD8;
}

bool isPng(const QByteArray &d)
{
    return d.startsWith(QByteArray("\x89PNG\r\n\x1a\n", 8));
}

int u16be(const QByteArray &d, qsizetype at)
{
    return (quint8(d[at]) << 8) | quint8(d[at + 1]);
}

// Where the EXIF segment of a JPEG starts (its FF E1) and its length field; -1 when there is none.
qsizetype jpegExifSegment(const QByteArray &d)
{
    qsizetype at = 2;
    while (at + 4 <= d.size() && quint8(d[at]) == 0xFF) {
        const quint8 marker = quint8(d[at + 1]);
        if (marker == 0xDA || marker == 0xD9)
            break;
        const int length = u16be(d, at + 2);
        if (length < 2 || at + 2 + length > d.size())
            break;
        if (marker == 0xE1 && length >= 2 + kExifHeaderSize && d.mid(at + 4, kExifHeaderSize) == QByteArray(kExifHeader, kExifHeaderSize))
            return at;
        at += 2 + length;
    }
    return -1;
}

QByteArray pngChunk(const char *type, const QByteArray &body)
{
    QByteArray chunk(4, '\0');
    qToBigEndian<quint32>(quint32(body.size()), chunk.data());
    chunk.append(type, 4);
    chunk.append(body);
    uLong crc = crc32(0, reinterpret_cast<const Bytef *>(type), 4);
    crc = crc32(crc, reinterpret_cast<const Bytef *>(body.constData()), uInt(body.size()));
    QByteArray tail(4, '\0');
    qToBigEndian<quint32>(quint32(crc), tail.data());
    return chunk + tail;
}

// A TIFF-structured block: reads and patches values in place.
class Tiff
{
public:
    explicit Tiff(QByteArray &data) : m_d(data)
    {
        if (m_d.size() < 8)
            return;
        if (m_d.startsWith("II"))
            m_little = true;
        else if (!m_d.startsWith("MM"))
            return;
        m_valid = u16(2) == 42;
    }
    bool valid() const { return m_valid; }
    quint32 firstIfd() const { return u32(4); }

    // The offset of the entry with this tag in the IFD at `ifd`, or 0.
    qsizetype entry(quint32 ifd, quint16 tag) const
    {
        if (!inside(ifd, 2))
            return 0;
        const int count = u16(ifd);
        for (int i = 0; i < count; ++i) {
            const qsizetype at = ifd + 2 + 12 * qsizetype(i);
            if (!inside(at, 12))
                return 0;
            if (u16(at) == tag)
                return at;
        }
        return 0;
    }
    // A SHORT or LONG value kept within its entry; nothing for other types.
    std::optional<quint32> value(qsizetype entry) const
    {
        if (entry == 0 || u32(entry + 4) != 1)
            return std::nullopt;
        if (u16(entry + 2) == kShort)
            return u16(entry + 8);
        if (u16(entry + 2) == kLong)
            return u32(entry + 8);
        return std::nullopt;
    }
    void setValue(qsizetype entry, quint32 v)
    {
        if (entry == 0 || u32(entry + 4) != 1)
            return;
        if (u16(entry + 2) == kShort && v <= 0xFFFF)
            put16(entry + 8, quint16(v));
        else if (u16(entry + 2) == kLong)
            put32(entry + 8, v);
    }

private:
    bool inside(qsizetype at, qsizetype n) const { return at >= 8 && at + n <= m_d.size(); }
    quint16 u16(qsizetype at) const
    {
        const auto *p = reinterpret_cast<const uchar *>(m_d.constData() + at);
        return m_little ? qFromLittleEndian<quint16>(p) : qFromBigEndian<quint16>(p);
    }
    quint32 u32(qsizetype at) const
    {
        const auto *p = reinterpret_cast<const uchar *>(m_d.constData() + at);
        return m_little ? qFromLittleEndian<quint32>(p) : qFromBigEndian<quint32>(p);
    }
    void put16(qsizetype at, quint16 v)
    {
        auto *p = reinterpret_cast<uchar *>(m_d.data() + at);
        m_little ? qToLittleEndian(v, p) : qToBigEndian(v, p);
    }
    void put32(qsizetype at, quint32 v)
    {
        auto *p = reinterpret_cast<uchar *>(m_d.data() + at);
        m_little ? qToLittleEndian(v, p) : qToBigEndian(v, p);
    }

    QByteArray &m_d;
    bool m_little = false;
    bool m_valid = false;
};

} // namespace

namespace ImageMetadata {

QByteArray exifOf(const QByteArray &file)
{
    if (isJpeg(file)) {
        const qsizetype at = jpegExifSegment(file);
        return at < 0 ? QByteArray() : file.mid(at + 4 + kExifHeaderSize, u16be(file, at + 2) - 2 - kExifHeaderSize);
    }
    if (isPng(file)) {
        qsizetype at = 8;
        while (at + 12 <= file.size()) {
            const quint32 length = qFromBigEndian<quint32>(file.constData() + at);
            const QByteArray type = file.mid(at + 4, 4);
            if (type == "eXIf")
                return file.mid(at + 8, length);
            if (type == "IDAT" || type == "IEND" || length > quint32(file.size()))
                break;
            at += 12 + qsizetype(length);
        }
    }
    return {};
}

int exifOrientation(const QByteArray &exif)
{
    QByteArray copy = exif;
    Tiff tiff(copy);
    if (!tiff.valid())
        return 1;
    const auto value = tiff.value(tiff.entry(tiff.firstIfd(), kOrientationTag));
    return value && *value >= 1 && *value <= 8 ? int(*value) : 1;
}

QByteArray uprightExif(const QByteArray &exif, QSize pixels)
{
    QByteArray out = exif;
    Tiff tiff(out);
    if (!tiff.valid())
        return out;
    const quint32 ifd0 = tiff.firstIfd();
    tiff.setValue(tiff.entry(ifd0, kOrientationTag), 1);
    if (const auto exifIfd = tiff.value(tiff.entry(ifd0, kExifIfdTag)); exifIfd && pixels.isValid()) {
        tiff.setValue(tiff.entry(*exifIfd, kPixelXDimensionTag), quint32(pixels.width()));
        tiff.setValue(tiff.entry(*exifIfd, kPixelYDimensionTag), quint32(pixels.height()));
    }
    return out;
}

QByteArray withExif(const QByteArray &encoded, const QByteArray &exif)
{
    if (exif.isEmpty())
        return encoded;
    if (isJpeg(encoded)) {
        const qsizetype length = 2 + kExifHeaderSize + exif.size();
        if (length > 0xFFFF)
            return encoded;
        // After SOI and a JFIF APP0 if there is one: readers look for EXIF among the first segments.
        qsizetype at = 2;
        if (encoded.size() > 6 && quint8(encoded[2]) == 0xFF && quint8(encoded[3]) == 0xE0)
            at = 4 + u16be(encoded, 4);
        QByteArray segment("\xFF\xE1", 2);
        segment.append(char(length >> 8)).append(char(length & 0xFF));
        segment.append(kExifHeader, kExifHeaderSize).append(exif);
        return encoded.left(at) + segment + encoded.mid(at);
    }
    if (isPng(encoded)) {
        const qsizetype idat = encoded.indexOf("IDAT");
        if (idat < 12)
            return encoded;
        return encoded.left(idat - 4) + pngChunk("eXIf", exif) + encoded.mid(idat - 4);
    }
    return encoded;
}

QByteArray withUprightExif(const QByteArray &jpeg, QSize pixels)
{
    if (!isJpeg(jpeg))
        return jpeg;
    const qsizetype at = jpegExifSegment(jpeg);
    if (at < 0)
        return jpeg;
    const qsizetype start = at + 4 + kExifHeaderSize;
    const qsizetype length = u16be(jpeg, at + 2) - 2 - kExifHeaderSize;
    QByteArray out = jpeg;
    out.replace(start, length, uprightExif(jpeg.mid(start, length), pixels));
    return out;
}

} // namespace ImageMetadata

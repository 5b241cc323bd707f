#include "JpegInfo.h"

#include <cstring>

namespace {
int u16(const QByteArray &d, qsizetype at) { return (quint8(d.at(at)) << 8) | quint8(d.at(at + 1)); }
} // namespace

std::optional<JpegInfo> JpegInfo::parse(const QByteArray &data)
{
    if (data.size() < 4 || quint8(data.at(0)) != 0xFF || quint8(data.at(1)) != 0xD8)
        return std::nullopt;
    JpegInfo info;
    qsizetype at = 2;
    while (at + 4 <= data.size()) {
        if (quint8(data.at(at)) != 0xFF)
            return std::nullopt;
        const quint8 marker = quint8(data.at(at + 1));
        if (marker == 0xFF) { // fill byte
            ++at;
            continue;
        }
        if (marker == 0xD8 || (marker >= 0xD0 && marker <= 0xD7) || marker == 0x01) {
            at += 2;
            continue;
        }
        const int length = u16(data, at + 2);
        if (length < 2 || at + 2 + length > data.size())
            return std::nullopt;
        const qsizetype body = at + 4;
        if (marker == 0xEE && length >= 14 && data.mid(body, 5) == QByteArrayLiteral("Adobe")) {
            info.adobeInverted = true;
        } else if ((marker >= 0xC0 && marker <= 0xC2) && length >= 8) {
            info.precision = quint8(data.at(body));
            info.height = u16(data, body + 1);
            info.width = u16(data, body + 3);
            info.components = quint8(data.at(body + 5));
            if (info.precision != 8 || info.width < 1 || info.height < 1 ||
                (info.components != 1 && info.components != 3 && info.components != 4))
                return std::nullopt;
            return info;
        } else if (marker >= 0xC3 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC) {
            return std::nullopt; // lossless or arithmetic coding: readers of PDF do not take these
        } else if (marker == 0xDA || marker == 0xD9) {
            return std::nullopt; // no frame header before the scan
        }
        at += 2 + length;
    }
    return std::nullopt;
}

bool JpegInfo::isComplete(const QByteArray &data)
{
    // Walks the segments and the scans' entropy-coded data up to the end marker. Whatever follows it
    // (a phone's appended video, a second picture) is not looked at.
    if (data.size() < 4 || quint8(data.at(0)) != 0xFF || quint8(data.at(1)) != 0xD8)
        return false;
    const auto *d = reinterpret_cast<const quint8 *>(data.constData());
    const qsizetype size = data.size();
    qsizetype at = 2;
    while (at + 2 <= size) {
        if (d[at] != 0xFF)
            return false;
        const quint8 marker = d[at + 1];
        if (marker == 0xD9)
            return true;
        if (marker == 0xFF) {
            ++at;
            continue;
        }
        if ((marker >= 0xD0 && marker <= 0xD7) || marker == 0x01) {
            at += 2;
            continue;
        }
        if (at + 4 > size)
            return false;
        at += 2 + u16(data, at + 2);
        if (marker != 0xDA)
            continue;
        // Entropy-coded data: an FF is followed by 00 (a stuffed byte) or a restart marker until the
        // next segment begins.
        for (;;) {
            const auto *ff = static_cast<const quint8 *>(std::memchr(d + at, 0xFF, size_t(size - at)));
            if (!ff || ff + 1 >= d + size)
                return false;
            at = ff - d;
            if (ff[1] != 0x00 && (ff[1] < 0xD0 || ff[1] > 0xD7))
                break;
            ++at;
        }
    }
    return false;
}

#include "NativePath.h"

namespace {

constexpr char16_t kEscapeBase = 0xDC00;

bool isEscapedByte(char16_t c) { return c >= 0xDC80 && c <= 0xDCFF; }

// Length of the valid UTF-8 sequence at p (strict: no overlongs, no surrogates, at most U+10FFFF),
// or 0 if the bytes there are not one.
int validSequenceLength(const unsigned char *p, qsizetype left, char32_t *cp)
{
    const unsigned char b0 = p[0];
    if (b0 < 0x80) {
        *cp = b0;
        return 1;
    }
    int len;
    char32_t min;
    if ((b0 & 0xE0) == 0xC0) {
        len = 2, min = 0x80, *cp = b0 & 0x1F;
    } else if ((b0 & 0xF0) == 0xE0) {
        len = 3, min = 0x800, *cp = b0 & 0x0F;
    } else if ((b0 & 0xF8) == 0xF0) {
        len = 4, min = 0x10000, *cp = b0 & 0x07;
    } else {
        return 0;
    }
    if (left < len)
        return 0;
    for (int i = 1; i < len; ++i) {
        if ((p[i] & 0xC0) != 0x80)
            return 0;
        *cp = (*cp << 6) | (p[i] & 0x3F);
    }
    if (*cp < min || *cp > 0x10FFFF || (*cp >= 0xD800 && *cp <= 0xDFFF))
        return 0;
    return len;
}

} // namespace

QString NativePath::fromNative(const QByteArray &bytes)
{
    if (QByteArrayView(bytes).isValidUtf8())
        return QString::fromUtf8(bytes);

    QString out;
    out.reserve(bytes.size());
    const auto *p = reinterpret_cast<const unsigned char *>(bytes.constData());
    const qsizetype n = bytes.size();
    for (qsizetype i = 0; i < n;) {
        char32_t cp = 0;
        const int len = validSequenceLength(p + i, n - i, &cp);
        if (len == 0) {
            out.append(QChar(char16_t(kEscapeBase + p[i])));
            ++i;
            continue;
        }
        if (cp >= 0x10000) {
            const char32_t v = cp - 0x10000;
            out.append(QChar(char16_t(0xD800 + (v >> 10))));
            out.append(QChar(char16_t(0xDC00 + (v & 0x3FF))));
        } else {
            out.append(QChar(char16_t(cp)));
        }
        i += len;
    }
    return out;
}

QByteArray NativePath::toNative(const QString &path)
{
    bool hasEscapes = false;
    for (QChar c : path) {
        if (isEscapedByte(c.unicode())) {
            hasEscapes = true;
            break;
        }
    }
    if (!hasEscapes)
        return path.toUtf8();

    QByteArray out;
    out.reserve(path.size() * 2);
    const qsizetype n = path.size();
    for (qsizetype i = 0; i < n; ++i) {
        const char16_t c = path.at(i).unicode();
        if (QChar::isHighSurrogate(c) && i + 1 < n && QChar::isLowSurrogate(path.at(i + 1).unicode())) {
            out.append(QString(path.constData() + i, 2).toUtf8());
            ++i;
        } else if (isEscapedByte(c)) {
            out.append(char(c - kEscapeBase));
        } else {
            out.append(QString(QChar(c)).toUtf8());
        }
    }
    return out;
}

QString NativePath::forDisplay(const QString &path)
{
    QString shown = path;
    const qsizetype n = shown.size();
    for (qsizetype i = 0; i < n; ++i) {
        const char16_t c = shown.at(i).unicode();
        if (QChar::isHighSurrogate(c) && i + 1 < n && QChar::isLowSurrogate(shown.at(i + 1).unicode())) {
            ++i;
        } else if (QChar::isSurrogate(c)) {
            shown[i] = QChar::ReplacementCharacter;
        }
    }
    return shown;
}

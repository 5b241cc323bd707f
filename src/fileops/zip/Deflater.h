#pragma once

#include <QByteArray>

#include <zlib.h>

// Raw deflate (no zlib header), at the level of `zip -6`, fed in pieces. Stretches that look like
// data deflate cannot shrink (photos, video, archives) go in as stored blocks of the same stream:
// trying to compress them costs most of the time of a zip and gains nothing.
class Deflater
{
public:
    static constexpr int kLevel = 6;
    static constexpr qint64 kSlice = 64 << 10; // judged one at a time

    Deflater();
    ~Deflater();
    Deflater(const Deflater &) = delete;
    Deflater &operator=(const Deflater &) = delete;

    // Appends the deflated form of `size` bytes to `out`; `last` ends the stream.
    bool feed(const char *data, qint64 size, bool last, QByteArray &out) { return feed(data, size, last ? Z_FINISH : Z_NO_FLUSH, out); }
    // The same with zlib's flush after the last byte: Z_SYNC_FLUSH ends the output on a byte boundary
    // without ending the stream, so that a piece deflated elsewhere can follow it.
    bool feed(const char *data, qint64 size, int flush, QByteArray &out);
    // The bytes that came before, for matches to refer to; only before the first feed.
    bool prime(const char *data, qint64 size);
    void reset();
    bool ok() const { return m_ok; }

    // Bits per byte of the bytes' order-0 entropy: 8 for noise, about 4.5 for text.
    static double entropy(const char *data, qint64 size);

private:
    bool drive(int flush, QByteArray &out);
    bool switchLevel(int level, QByteArray &out);

    z_stream m_stream{};
    int m_level = kLevel;
    bool m_ok = false;
};

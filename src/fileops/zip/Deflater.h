#pragma once

#include <QByteArray>

#include <zlib.h>

// Raw deflate (no zlib header), at the level of `zip -6`, fed in pieces.
class Deflater
{
public:
    static constexpr int kLevel = 6;

    Deflater();
    ~Deflater();
    Deflater(const Deflater &) = delete;
    Deflater &operator=(const Deflater &) = delete;

    // Appends the deflated form of `size` bytes to `out`; `last` ends the stream.
    bool feed(const char *data, qint64 size, bool last, QByteArray &out);
    void reset();
    bool ok() const { return m_ok; }

private:
    z_stream m_stream{};
    bool m_ok = false;
};

#include "Deflater.h"

#include <algorithm>

Deflater::Deflater()
{
    m_ok = deflateInit2(&m_stream, kLevel, Z_DEFLATED, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY) == Z_OK;
}

Deflater::~Deflater()
{
    if (m_ok)
        deflateEnd(&m_stream);
}

void Deflater::reset()
{
    if (m_ok)
        m_ok = deflateReset(&m_stream) == Z_OK;
}

bool Deflater::feed(const char *data, qint64 size, bool last, QByteArray &out)
{
    if (!m_ok)
        return false;
    m_stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(data));
    m_stream.avail_in = uInt(size);
    const int flush = last ? Z_FINISH : Z_NO_FLUSH;
    while (true) {
        const qsizetype room = qsizetype(std::max<uLong>(deflateBound(&m_stream, m_stream.avail_in), 64 << 10));
        const qsizetype at = out.size();
        out.resize(at + room);
        m_stream.next_out = reinterpret_cast<Bytef *>(out.data() + at);
        m_stream.avail_out = uInt(room);
        const int r = deflate(&m_stream, flush);
        out.resize(at + room - qsizetype(m_stream.avail_out));
        if (r == Z_STREAM_END)
            return true;
        if (r != Z_OK && r != Z_BUF_ERROR)
            return m_ok = false;
        if (!last && m_stream.avail_in == 0)
            return true;
    }
}

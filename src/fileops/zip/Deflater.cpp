#include "Deflater.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

// Huffman coding alone saves (8 - entropy) / 8; JPEG data measures about 7.95 and deflate gets
// nothing out of it, text measures 4 to 5.
constexpr double kIncompressibleFrom = 7.9;
constexpr qint64 kSampleFrom = 4096; // below this the estimate says little, and deflating is cheap anyway

} // namespace

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
        m_ok = deflateReset(&m_stream) == Z_OK && deflateParams(&m_stream, kLevel, Z_DEFAULT_STRATEGY) == Z_OK;
    m_level = kLevel;
}

double Deflater::entropy(const char *data, qint64 size)
{
    if (size <= 0)
        return 0;
    // Four tables, so that runs of one byte value do not wait on one counter.
    std::array<std::array<quint32, 256>, 4> counts{};
    const auto *p = reinterpret_cast<const uchar *>(data);
    qint64 i = 0;
    for (; i + 4 <= size; i += 4) {
        ++counts[0][p[i]];
        ++counts[1][p[i + 1]];
        ++counts[2][p[i + 2]];
        ++counts[3][p[i + 3]];
    }
    for (; i < size; ++i)
        ++counts[0][p[i]];
    double sum = 0;
    for (int b = 0; b < 256; ++b) {
        const quint32 c = counts[0][b] + counts[1][b] + counts[2][b] + counts[3][b];
        if (c)
            sum += double(c) * std::log2(double(c));
    }
    return std::log2(double(size)) - sum / double(size);
}

// Runs deflate over the pending input, growing `out` as it needs.
bool Deflater::drive(int flush, QByteArray &out)
{
    while (true) {
        const qsizetype room = qsizetype(std::max<uLong>(deflateBound(&m_stream, m_stream.avail_in), 64 << 10));
        const qsizetype at = out.size();
        out.resize(at + room);
        m_stream.next_out = reinterpret_cast<Bytef *>(out.data() + at);
        m_stream.avail_out = uInt(room);
        const int r = deflate(&m_stream, flush);
        const bool full = m_stream.avail_out == 0;
        out.resize(at + room - qsizetype(m_stream.avail_out));
        if (r == Z_STREAM_END)
            return true;
        if (r != Z_OK && r != Z_BUF_ERROR)
            return m_ok = false;
        // With room left over, deflate has taken every byte and done the flush asked for.
        if (!full && m_stream.avail_in == 0)
            return true;
    }
}

// Ends the current block so that what follows goes in at `level` (0: stored blocks).
bool Deflater::switchLevel(int level, QByteArray &out)
{
    if (level == m_level)
        return true;
    m_stream.avail_in = 0;
    if (!drive(Z_BLOCK, out))
        return false;
    char spare[64];
    m_stream.next_out = reinterpret_cast<Bytef *>(spare);
    m_stream.avail_out = sizeof spare;
    if (deflateParams(&m_stream, level, Z_DEFAULT_STRATEGY) != Z_OK)
        return m_ok = false;
    out.append(spare, qsizetype(sizeof spare - m_stream.avail_out));
    m_level = level;
    return true;
}

bool Deflater::prime(const char *data, qint64 size)
{
    if (m_ok && size > 0)
        m_ok = deflateSetDictionary(&m_stream, reinterpret_cast<const Bytef *>(data), uInt(size)) == Z_OK;
    return m_ok;
}

bool Deflater::feed(const char *data, qint64 size, int flush, QByteArray &out)
{
    if (!m_ok)
        return false;
    do {
        const qint64 n = std::min(size, kSlice);
        const int level = n < kSampleFrom ? m_level : entropy(data, n) >= kIncompressibleFrom ? 0 : kLevel;
        if (!switchLevel(level, out))
            return false;
        m_stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(data));
        m_stream.avail_in = uInt(n);
        if (!drive(n == size ? flush : Z_NO_FLUSH, out))
            return false;
        data += n;
        size -= n;
    } while (size > 0);
    return true;
}

#pragma once

#include <QtGlobal>

#include <functional>

class QThreadPool;

// A large file deflated on every core at once, still as one stream: pieces of it deflate side by
// side on the pool, each primed with the 32 KiB before it and ended on a byte boundary, and are
// handed on in order; the CRC-32 of each is combined into the file's. The caller's thread reads the
// file and writes, and holds at most `inFlight` pieces at a time.
namespace PieceDeflate {

inline constexpr qint64 kPiece = 1 << 20;
inline constexpr qint64 kWindow = 32 << 10; // what deflate may refer back to

enum class End { Done, ReadFailed, DeflateFailed, WriteFailed, Stopped };

struct Outcome
{
    End end = End::Done;
    int error = 0;    // errno of a failed read
    quint64 size = 0; // bytes read
    quint32 crc = 0;
};

struct Calls
{
    std::function<bool(const char *data, qint64 size)> write; // false: stop, the write failed
    std::function<void(quint64 bytesDone)> progress;          // after each piece handed on
    std::function<bool()> stopped;                            // asked before each piece is read
};

Outcome run(int fd, QThreadPool &pool, int inFlight, const Calls &calls);

} // namespace PieceDeflate

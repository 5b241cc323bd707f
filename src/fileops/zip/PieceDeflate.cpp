#include "PieceDeflate.h"

#include "Deflater.h"

#include <QByteArray>
#include <QThreadPool>

#include <unistd.h>

#include <cerrno>
#include <condition_variable>
#include <cstring>
#include <deque>
#include <memory>
#include <mutex>

namespace {

struct Piece
{
    QByteArray input; // the bytes before it that prime the deflater, then its own
    qsizetype primed = 0;
    bool last = false;
    // From the worker, once `done`.
    QByteArray output;
    quint32 crc = 0;
    bool ok = false;
    bool done = false;

    qint64 size() const { return input.size() - primed; }
};

// Up to `size` bytes, fewer only at the end of the file; -1 with errno on a failure.
qint64 readFully(int fd, char *into, qint64 size)
{
    qint64 got = 0;
    while (got < size) {
        const ssize_t n = ::read(fd, into + got, size_t(size - got));
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0)
            return -1;
        if (n == 0)
            break;
        got += n;
    }
    return got;
}

void deflatePiece(Piece &p)
{
    Deflater deflater;
    const char *own = p.input.constData() + p.primed;
    p.ok = deflater.prime(p.input.constData(), p.primed) &&
           deflater.feed(own, p.size(), p.last ? Z_FINISH : Z_SYNC_FLUSH, p.output);
    p.crc = quint32(crc32(0, reinterpret_cast<const Bytef *>(own), uInt(p.size())));
}

} // namespace

PieceDeflate::Outcome PieceDeflate::run(int fd, QThreadPool &pool, int inFlight, const Calls &calls)
{
    std::mutex lock;
    std::condition_variable ready;
    std::deque<std::shared_ptr<Piece>> pieces; // in file order, read and not yet handed on
    QByteArray before;                         // the last bytes read, to prime the next piece
    bool atEnd = false;
    Outcome out;
    uLong crc = crc32(0, nullptr, 0);
    auto waitFor = [&](Piece &p) {
        std::unique_lock<std::mutex> hold(lock);
        ready.wait(hold, [&] { return p.done; });
    };

    while (out.end == End::Done) {
        while (!atEnd && int(pieces.size()) < std::max(inFlight, 1)) {
            if (calls.stopped()) {
                out.end = End::Stopped;
                break;
            }
            auto piece = std::make_shared<Piece>();
            piece->primed = before.size();
            piece->input.resize(before.size() + kPiece);
            std::memcpy(piece->input.data(), before.constData(), size_t(before.size()));
            const qint64 got = readFully(fd, piece->input.data() + before.size(), kPiece);
            if (got < 0) {
                out.end = End::ReadFailed;
                out.error = errno;
                break;
            }
            piece->input.resize(before.size() + got);
            atEnd = piece->last = got < kPiece;
            before = piece->input.right(std::min<qsizetype>(kWindow, piece->input.size()));
            pieces.push_back(piece);
            pool.start([piece, &lock, &ready] {
                deflatePiece(*piece);
                std::lock_guard<std::mutex> hold(lock);
                piece->done = true;
                ready.notify_all();
            });
        }
        if (out.end != End::Done || pieces.empty())
            break;
        const std::shared_ptr<Piece> oldest = pieces.front();
        pieces.pop_front();
        waitFor(*oldest);
        if (!oldest->ok) {
            out.end = End::DeflateFailed;
            break;
        }
        crc = crc32_combine(crc, oldest->crc, z_off_t(oldest->size()));
        out.size += quint64(oldest->size());
        if (!calls.write(oldest->output.constData(), oldest->output.size())) {
            out.end = End::WriteFailed;
            break;
        }
        calls.progress(out.size);
    }
    // The workers still at it refer to this frame.
    for (const auto &p : pieces)
        waitFor(*p);
    out.crc = quint32(crc);
    return out;
}

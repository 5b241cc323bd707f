#include "ZipJob.h"

#include "Deflater.h"
#include "PieceDeflate.h"
#include "ZipArchiveWriter.h"
#include "ZipPlan.h"
#include "core/fs/FsCalls.h"
#include "core/fs/NativePath.h"
#include "core/fs/PathParts.h"
#include "platform/Platform.h"
#include "utils/Utils.h"

#include <QElapsedTimer>
#include <QThread>
#include <QThreadPool>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <condition_variable>
#include <cstring>
#include <mutex>
#include <optional>
#include <vector>

namespace {

constexpr quint64 kInMemoryMax = 32ull << 20; // larger files are deflated by the writer as it goes
constexpr quint64 kBytesAhead = 160ull << 20; // source bytes read ahead of the writer, at most
constexpr qint64 kChunk = 1 << 20;
constexpr qint64 kProgressMs = 100;

Error fileError(const QByteArray &path, int err)
{
    const QString p = NativePath::fromNative(path);
    return Error{QString::fromLatin1(ZipPlan::kErrorDomain), err,
                 QStringLiteral("%1: %2").arg(NativePath::forDisplay(p), QString::fromLocal8Bit(strerror(err))),
                 {{QStringLiteral("path"), p}, {QStringLiteral("reason"), QString::fromLocal8Bit(strerror(err))}}};
}

Error cancelled() { return Error{QString::fromLatin1(ZipPlan::kErrorDomain), ECANCELED, QStringLiteral("Canceled")}; }

// One file, read and deflated whole in a worker.
struct Packed
{
    Result<QByteArray> data = QByteArray();
    bool deflated = false;
    quint32 crc = 0;
    quint64 size = 0;
};

qint64 readSome(int fd, char *into, qint64 size)
{
    while (true) {
        const ssize_t n = ::read(fd, into, size_t(size));
        if (n >= 0 || errno != EINTR)
            return n;
    }
}

Packed pack(const ZipEntry &e, const std::atomic<bool> &stop)
{
    Packed p;
    const FsCalls::UniqueFd fd(::open(e.source.constData(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC));
    if (!fd) {
        p.data = fileError(e.source, errno);
        return p;
    }
    QByteArray raw;
    raw.reserve(qsizetype(e.size));
    QByteArray deflated;
    Deflater deflater;
    uLong crc = crc32(0, nullptr, 0);
    while (true) {
        if (stop) {
            p.data = cancelled();
            return p;
        }
        const qsizetype at = raw.size();
        raw.resize(at + kChunk);
        const qint64 n = readSome(fd.fd, raw.data() + at, kChunk);
        if (n < 0) {
            p.data = fileError(e.source, errno);
            return p;
        }
        raw.resize(at + n);
        crc = crc32(crc, reinterpret_cast<const Bytef *>(raw.constData() + at), uInt(n));
        if (!deflater.feed(raw.constData() + at, n, n == 0, deflated)) {
            p.data = fileError(e.source, ENOMEM);
            return p;
        }
        if (n == 0)
            break;
    }
    p.crc = quint32(crc);
    p.size = quint64(raw.size());
    // Data that deflate cannot shrink is stored as it is, as zip does.
    p.deflated = !raw.isEmpty() && deflated.size() < raw.size();
    p.data = p.deflated ? std::move(deflated) : std::move(raw);
    return p;
}

// A hidden file beside the archive's final name, with the mode a new file of this user gets.
Result<std::pair<int, QByteArray>> makeTemporary(const QString &finalPath)
{
    QByteArray pattern = NativePath::toNative(PathParts::parent(finalPath)) + "/.quaydrop-" +
                         NativePath::toNative(PathParts::lastComponent(finalPath)).left(64) + ".XXXXXX";
    const int fd = ::mkostemp(pattern.data(), O_CLOEXEC);
    if (fd < 0)
        return fileError(NativePath::toNative(finalPath), errno);
    const mode_t mask = ::umask(0);
    ::umask(mask);
    ::fchmod(fd, 0666 & ~mask);
    return std::make_pair(fd, pattern);
}

// The complete archive takes its name; an older one of that name goes to the trash first, and if it
// cannot, the new one takes a free name beside it.
Result<QString> commit(const QByteArray &temp, const QString &finalPath, TrashService *trash)
{
    const QString folder = PathParts::parent(finalPath);
    const auto parts = PathParts::splitExtension(PathParts::lastComponent(finalPath));
    QString target = finalPath;
    for (int attempt = 0; attempt < 8; ++attempt) {
        const int err = FsCalls::renameNoReplace(AT_FDCWD, temp, AT_FDCWD, NativePath::toNative(target));
        if (err == 0)
            return target;
        if (err != EEXIST)
            return fileError(NativePath::toNative(target), err);
        if (attempt == 0 && trash) {
            const Result<QString> aside = trash->moveToTrash(target);
            if (aside.ok())
                continue;
            qWarning("zip: the older %s could not go to the trash (%s); the new archive takes another name",
                     qPrintable(NativePath::forDisplay(target)), qPrintable(aside.error().message));
        }
        target = folder + QLatin1Char('/') + Utils::nameForNewFileOrFolder(folder, parts.name, parts.extension);
    }
    return fileError(NativePath::toNative(finalPath), EEXIST);
}

} // namespace

struct ZipJob::Shared
{
    ZipPlan plan;
    std::mutex lock;
    std::condition_variable ready;
    std::vector<std::optional<Packed>> packed;
    std::atomic<bool> stop{false}; // cancelled, or the writer gave up
    QThreadPool pool;
};

ZipJob::ZipJob(QStringList paths, TrashService *trash, QString archivePath, QObject *parent)
    : QObject(parent), m_paths(std::move(paths)), m_trash(trash), m_archivePath(std::move(archivePath))
{
    if (m_archivePath.isEmpty() && !m_paths.isEmpty())
        m_archivePath = ZipPlan::archivePath(m_paths);
    // "Photos.zip" zipped alone would be its own older archive: the new one takes a free name.
    if (m_paths.contains(m_archivePath)) {
        const QString folder = PathParts::parent(m_archivePath);
        m_archivePath = folder + QLatin1Char('/') +
                        Utils::nameForNewFileOrFolder(folder, PathParts::splitExtension(PathParts::lastComponent(m_archivePath)).name,
                                                      QStringLiteral("zip"));
    }
}

ZipJob::~ZipJob()
{
    m_cancelled = true;
    if (m_started)
        m_workerDone.acquire();
}

void ZipJob::post(std::function<void()> update)
{
    QMetaObject::invokeMethod(this, std::move(update), Qt::QueuedConnection);
}

void ZipJob::start()
{
    if (m_started)
        return;
    m_started = true;
    auto shared = std::make_shared<Shared>();
    QThreadPool::globalInstance()->start([this, shared] {
        run(shared);
        m_workerDone.release();
    });
}

void ZipJob::run(const std::shared_ptr<Shared> &shared)
{
    auto finish = [this](Result<QString> result) {
        post([this, result] {
            m_result = result;
            m_finished = true;
            Q_EMIT finished();
        });
    };
    if (m_paths.isEmpty()) {
        finish(Error{QString::fromLatin1(ZipPlan::kErrorDomain), EINVAL, QStringLiteral("nothing to zip")});
        return;
    }
    Result<ZipPlan> planned = ZipPlan::build(m_paths);
    if (!planned.ok()) {
        finish(planned.error());
        return;
    }
    Shared &s = *shared;
    s.plan = std::move(planned.value());
    const QList<ZipEntry> &entries = s.plan.entries;
    const quint64 total = s.plan.totalBytes;
    s.packed.resize(size_t(entries.size()));
    s.pool.setMaxThreadCount(parallel > 0 ? parallel : std::max(1, QThread::idealThreadCount()));
    post([this, total] {
        m_total = total;
        Q_EMIT progress(0, total, QString());
    });

    auto temp = makeTemporary(m_archivePath);
    if (!temp.ok()) {
        finish(temp.error());
        return;
    }
    const auto [fd, tempName] = temp.value();

    quint64 done = 0;
    QElapsedTimer clock;
    clock.start();
    qint64 lastReport = -kProgressMs;
    auto report = [&](const ZipEntry &e, bool force) {
        if (!force && clock.elapsed() - lastReport < kProgressMs)
            return;
        lastReport = clock.elapsed();
        const QString name = NativePath::forDisplay(NativePath::fromNative(e.name));
        post([this, done, total, name] {
            m_done = done;
            Q_EMIT progress(done, total, name);
        });
    };

    qsizetype nextToPack = 0;
    quint64 bytesAhead = 0;
    auto feed = [&](qsizetype current) {
        for (; nextToPack < entries.size(); ++nextToPack) {
            const ZipEntry &e = entries.at(nextToPack);
            if (e.kind != ZipEntry::Kind::File || e.size > kInMemoryMax)
                continue;
            if (nextToPack > current && bytesAhead + e.size > kBytesAhead)
                break;
            bytesAhead += e.size;
            const qsizetype index = nextToPack;
            s.pool.start([&s, index] {
                Packed p = pack(s.plan.entries.at(index), s.stop);
                std::lock_guard<std::mutex> hold(s.lock);
                s.packed[size_t(index)] = std::move(p);
                s.ready.notify_all();
            });
        }
    };
    auto stopped = [&] {
        if (m_cancelled)
            s.stop = true;
        return bool(s.stop);
    };

    std::optional<Error> failure;
    {
        ZipArchiveWriter writer(fd);
        for (qsizetype i = 0; i < entries.size() && !failure; ++i) {
            if (stopped()) {
                failure = cancelled();
                break;
            }
            feed(i);
            const ZipEntry &e = entries.at(i);
            Status written = success();
            if (e.kind == ZipEntry::Kind::Folder) {
                written = writer.addFolder(e);
            } else if (e.kind == ZipEntry::Kind::Link) {
                QByteArray target(qsizetype(e.size) + 1, Qt::Uninitialized);
                const ssize_t n = ::readlink(e.source.constData(), target.data(), size_t(target.size()));
                if (n < 0) {
                    failure = fileError(e.source, errno);
                    break;
                }
                target.resize(n);
                written = writer.addLink(e, target);
            } else if (e.size <= kInMemoryMax) {
                Packed p;
                {
                    std::unique_lock<std::mutex> hold(s.lock);
                    s.ready.wait(hold, [&] { return s.packed[size_t(i)].has_value(); });
                    p = std::move(*s.packed[size_t(i)]);
                    s.packed[size_t(i)].reset();
                }
                bytesAhead -= e.size;
                if (!p.data.ok()) {
                    failure = p.data.error();
                    break;
                }
                written = writer.beginFile(e, p.deflated);
                if (written.ok())
                    written = writer.writeData(p.data.value().constData(), p.data.value().size());
                if (written.ok())
                    written = writer.endFile(p.size, p.crc);
                done += e.size;
            } else {
                // A large file: its pieces deflate on every core while this thread reads and writes.
                const FsCalls::UniqueFd in(::open(e.source.constData(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC));
                if (!in) {
                    failure = fileError(e.source, errno);
                    break;
                }
                ::posix_fadvise(in.fd, 0, 0, POSIX_FADV_SEQUENTIAL);
                written = writer.beginFile(e, true);
                if (!written.ok()) {
                    failure = written.error();
                    break;
                }
                const quint64 before = done;
                const PieceDeflate::Outcome out = PieceDeflate::run(
                    in.fd, s.pool, 2 * s.pool.maxThreadCount() + 2,
                    {[&](const char *data, qint64 size) { return (written = writer.writeData(data, size)).ok(); },
                     [&](quint64 bytes) {
                         done = before + bytes;
                         report(e, false);
                     },
                     stopped});
                if (out.end == PieceDeflate::End::Stopped)
                    failure = cancelled();
                else if (out.end == PieceDeflate::End::ReadFailed)
                    failure = fileError(e.source, out.error);
                else if (out.end == PieceDeflate::End::DeflateFailed)
                    failure = fileError(e.source, ENOMEM);
                if (failure)
                    break;
                if (written.ok())
                    written = writer.endFile(out.size, out.crc);
            }
            if (!written.ok())
                failure = written.error();
            report(e, false);
        }
        if (!failure)
            if (Status closed = writer.finish(); !closed.ok())
                failure = closed.error();
    }
    s.stop = s.stop || failure.has_value();
    s.pool.waitForDone();

    // close() is where some file systems report a full disk.
    if (::close(fd) != 0 && !failure)
        failure = fileError(tempName, errno);
    if (!failure && m_cancelled)
        failure = cancelled();
    if (failure) {
        ::unlink(tempName.constData());
        finish(*failure);
        return;
    }
    Result<QString> committed = commit(tempName, m_archivePath, m_trash);
    if (!committed.ok())
        ::unlink(tempName.constData());
    post([this, done, total] {
        m_done = done;
        Q_EMIT progress(done, total, QString());
    });
    finish(committed);
}

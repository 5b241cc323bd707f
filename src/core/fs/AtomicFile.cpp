#include "AtomicFile.h"

#include "FsCalls.h"
#include "NativePath.h"
#include "PathParts.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>

AtomicFile::AtomicFile(QString finalPath) : m_final(std::move(finalPath)) {}

AtomicFile::~AtomicFile() { discard(); }

Error AtomicFile::failure(int err, const char *what) const
{
    return Error{QString::fromLatin1(kErrorDomain), err,
                 QStringLiteral("%1 %2: %3")
                     .arg(QString::fromLatin1(what), NativePath::forDisplay(m_final), QString::fromLocal8Bit(strerror(err))),
                 {{QStringLiteral("path"), m_final}, {QStringLiteral("reason"), QString::fromLocal8Bit(strerror(err))}}};
}

void AtomicFile::discard()
{
    if (m_fd >= 0)
        ::close(m_fd);
    m_fd = -1;
    if (!m_temp.isEmpty())
        ::unlink(m_temp.constData());
    m_temp.clear();
}

Status AtomicFile::open()
{
    discard();
    const QString folder = PathParts::parent(m_final);
    QByteArray pattern = NativePath::toNative(folder) + "/.quaydrop-" +
                         NativePath::toNative(PathParts::lastComponent(m_final)).left(64) + ".XXXXXX";
    const int fd = ::mkostemp(pattern.data(), O_CLOEXEC);
    if (fd < 0)
        return failure(errno, "cannot write");
    // mkostemp makes 0600; the result gets the mode any new file of this user would get.
    const mode_t mask = ::umask(0);
    ::umask(mask);
    ::fchmod(fd, 0666 & ~mask);
    m_fd = fd;
    m_temp = pattern;
    m_written = 0;
    return success();
}

Status AtomicFile::write(const char *data, qint64 size)
{
    if (m_fd < 0)
        return failure(EBADF, "not open for writing:");
    while (size > 0) {
        const ssize_t n = ::write(m_fd, data, size_t(size));
        if (n < 0) {
            if (errno == EINTR)
                continue;
            return failure(errno, "cannot write");
        }
        data += n;
        size -= n;
        m_written += n;
    }
    return success();
}

Status AtomicFile::commitAs(const QString &finalPath, Mode mode)
{
    m_final = finalPath;
    return commit(mode);
}

Status AtomicFile::commit(Mode mode)
{
    if (m_temp.isEmpty())
        return failure(EBADF, "not open for writing:");
    if (m_fd >= 0) {
        // close() is where some file systems report a full disk.
        const int closed = ::close(m_fd);
        m_fd = -1;
        if (closed != 0)
            return failure(errno, "cannot write");
    }
    const QByteArray target = NativePath::toNative(m_final);
    int err = 0;
    if (mode == Mode::Replace)
        err = ::rename(m_temp.constData(), target.constData()) == 0 ? 0 : errno;
    else
        err = FsCalls::renameNoReplace(AT_FDCWD, m_temp, AT_FDCWD, target);
    if (err != 0)
        return failure(err, "cannot write");
    m_temp.clear();
    return success();
}

Status AtomicFile::writeFile(const QString &path, const QByteArray &data, Mode mode)
{
    AtomicFile file(path);
    if (Status s = file.open(); !s.ok())
        return s;
    if (Status s = file.write(data); !s.ok())
        return s;
    return file.commit(mode);
}

#include "EntryCopier.h"

#include "core/fs/FsCalls.h"
#include "core/fs/TreeWalk.h"

#include <QRandomGenerator>

#include <dirent.h>
#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <vector>

using FsCalls::UniqueFd;

namespace {

constexpr int kDirFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

bool isDotOrDotDot(const char *n) { return n[0] == '.' && (n[1] == 0 || (n[1] == '.' && n[2] == 0)); }

void copyXattrs(int srcFd, int dstFd)
{
    ssize_t len = ::flistxattr(srcFd, nullptr, 0);
    if (len <= 0)
        return;
    std::vector<char> names(static_cast<size_t>(len));
    len = ::flistxattr(srcFd, names.data(), names.size());
    if (len <= 0)
        return;
    std::vector<char> value;
    for (const char *n = names.data(); n < names.data() + len; n += strlen(n) + 1) {
        ssize_t vlen = ::fgetxattr(srcFd, n, nullptr, 0);
        if (vlen < 0)
            continue;
        value.resize(size_t(vlen) + 1);
        vlen = ::fgetxattr(srcFd, n, value.data(), value.size());
        if (vlen >= 0)
            ::fsetxattr(dstFd, n, value.data(), size_t(vlen), 0); // unsupported there: passed over
    }
}

} // namespace

QByteArray EntryMetadata::temporaryName()
{
    // Short on purpose: the final name may already use all 255 bytes.
    return ".qd-" + QByteArray::number(QRandomGenerator::global()->generate64(), 16) + ".part";
}

void EntryMetadata::copyTo(int srcFd, const struct stat &st, int dstFd)
{
    copyXattrs(srcFd, dstFd);
    if (::fchown(dstFd, st.st_uid, st.st_gid) != 0)
        [[maybe_unused]] int r = ::fchown(dstFd, uid_t(-1), st.st_gid); // not root: keep the group if we may
    ::fchmod(dstFd, st.st_mode & 07777);
    const timespec times[2] = {st.st_atim, st.st_mtim};
    ::futimens(dstFd, times);
}

bool EntryCopier::fail(int error, const QByteArray &name)
{
    m_error = error;
    m_failedName = name;
    return false;
}

bool EntryCopier::stopRequested(quint64 bytes, const QByteArray &name)
{
    if (m_step && !m_step(bytes, name)) {
        fail(ECANCELED, name);
        return true;
    }
    return false;
}

bool EntryCopier::copy(int srcDir, const QByteArray &srcName, int dstDir, const QByteArray &dstName,
                       const SetAside &replace)
{
    if (stopRequested(0, srcName))
        return false;
    struct stat st;
    if (::fstatat(srcDir, srcName.constData(), &st, AT_SYMLINK_NOFOLLOW) != 0)
        return fail(errno, srcName);

    struct stat existing;
    const bool targetExists = ::fstatat(dstDir, dstName.constData(), &existing, AT_SYMLINK_NOFOLLOW) == 0;
    if (targetExists && !replace)
        return fail(EEXIST, srcName);

    if (S_ISDIR(st.st_mode) && !replace)
        return copyFolder(srcDir, srcName, st, dstDir, dstName);

    const QByteArray temp = EntryMetadata::temporaryName();
    if (!writeUnderTemporaryName(srcDir, srcName, st, dstDir, temp))
        return false;

    if (targetExists && replace) {
        int error = 0;
        if (!replace(dstDir, dstName, &error)) {
            removeTemporary(dstDir, temp);
            return fail(error ? error : EIO, srcName);
        }
    }
    if (const int error = FsCalls::renameNoReplace(dstDir, temp, dstDir, dstName)) {
        removeTemporary(dstDir, temp);
        return fail(error, srcName);
    }
    return true;
}

void EntryCopier::removeTemporary(int dstDir, const QByteArray &temp)
{
    TreeWalk::removeRecursivelyAt(dstDir, temp, [](const QByteArray &name, int error) {
        if (error != ENOENT)
            qWarning("could not remove the temporary copy %s: %s", name.constData(), strerror(error));
    });
}

bool EntryCopier::writeUnderTemporaryName(int srcDir, const QByteArray &name, const struct stat &st, int dstDir,
                                          const QByteArray &temp)
{
    bool ok;
    if (S_ISDIR(st.st_mode))
        ok = copyFolder(srcDir, name, st, dstDir, temp);
    else if (S_ISREG(st.st_mode))
        ok = copyFile(srcDir, name, st, dstDir, temp);
    else if (S_ISLNK(st.st_mode))
        ok = copySymlink(srcDir, name, st, dstDir, temp);
    else
        ok = copySpecial(srcDir, name, st, dstDir, temp);
    if (!ok)
        removeTemporary(dstDir, temp); // a cancelled or failed copy leaves nothing behind
    return ok;
}

bool EntryCopier::copyFile(int srcDir, const QByteArray &name, const struct stat &st, int dstDir,
                           const QByteArray &tempName)
{
    UniqueFd in(::openat(srcDir, name.constData(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC));
    if (!in)
        return fail(errno, name);
    struct stat now;
    if (::fstat(in.fd, &now) != 0)
        return fail(errno, name);
    if (!S_ISREG(now.st_mode)) // replaced by something else since it was looked at
        return fail(EINVAL, name);
    UniqueFd out(::openat(dstDir, tempName.constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
    if (!out)
        return fail(errno, name);
    bool ok = copyData(in.fd, out.fd, now, name);
    if (ok)
        EntryMetadata::copyTo(in.fd, now, out.fd);
    // close reports late write errors on some file systems
    const int closed = ::close(out.fd);
    const int closeError = errno;
    out.fd = -1;
    if (ok && closed != 0)
        ok = fail(closeError, name);
    return ok;
}

bool EntryCopier::copyData(int in, int out, const struct stat &st, const QByteArray &name)
{
    if (st.st_size == 0)
        return !stopRequested(0, name);
    if (::ioctl(out, FICLONE, in) == 0)
        return !stopRequested(quint64(st.st_size), name);

    const bool sparse = quint64(st.st_blocks) * 512u < quint64(st.st_size);
    if (!sparse)
        return copyRange(in, out, 0, st.st_size, name, true);

    // Only the data segments travel; the holes stay holes.
    off_t pos = 0;
    while (pos < st.st_size) {
        const off_t data = ::lseek(in, pos, SEEK_DATA);
        if (data < 0) {
            if (errno == ENXIO)
                break;
            return copyRange(in, out, pos, st.st_size - pos, name, true); // no SEEK_DATA here
        }
        off_t hole = ::lseek(in, data, SEEK_HOLE);
        if (hole < 0)
            hole = st.st_size;
        if (!copyRange(in, out, data, hole - data, name, false))
            return false;
        pos = hole;
    }
    if (::ftruncate(out, st.st_size) != 0)
        return fail(errno, name);
    return true;
}

bool EntryCopier::copyRange(int in, int out, off_t from, off_t length, const QByteArray &name, bool toEof)
{
    off_t inOff = from, outOff = from;
    std::vector<char> buffer;
    while (toEof || inOff < from + length) {
        const size_t want = toEof ? kChunk : size_t(std::min<off_t>(kChunk, from + length - inOff));
        ssize_t n = -1;
        if (m_method == Method::CopyFileRange) {
            n = ::copy_file_range(in, &inOff, out, &outOff, want, 0);
            if (n < 0 && (errno == EXDEV || errno == ENOSYS || errno == EOPNOTSUPP || errno == EINVAL)) {
                m_method = Method::SendFile;
                continue;
            }
        } else if (m_method == Method::SendFile) {
            if (::lseek(out, outOff, SEEK_SET) < 0)
                return fail(errno, name);
            n = ::sendfile(out, in, &inOff, want);
            if (n < 0 && (errno == EINVAL || errno == ENOSYS)) {
                m_method = Method::ReadWrite;
                continue;
            }
            if (n > 0)
                outOff += n;
        } else {
            buffer.resize(kChunk);
            n = ::pread(in, buffer.data(), want, inOff);
            for (ssize_t written = 0; n > 0 && written < n;) {
                const ssize_t w = ::pwrite(out, buffer.data() + written, size_t(n - written), outOff + written);
                if (w < 0)
                    return fail(errno, name);
                written += w;
            }
            if (n > 0) {
                inOff += n;
                outOff += n;
            }
        }
        if (n < 0) {
            if (errno == EINTR)
                continue;
            return fail(errno, name);
        }
        if (n == 0)
            break; // end of file, also when the file shrank while being copied
        if (stopRequested(quint64(n), name))
            return false;
    }
    return true;
}

bool EntryCopier::copySymlink(int srcDir, const QByteArray &name, const struct stat &st, int dstDir,
                              const QByteArray &tempName)
{
    QByteArray target(qMax<qsizetype>(st.st_size, 255) + 1, Qt::Uninitialized);
    const ssize_t len = ::readlinkat(srcDir, name.constData(), target.data(), size_t(target.size()));
    if (len < 0)
        return fail(errno, name);
    target.truncate(len);
    if (::symlinkat(target.constData(), dstDir, tempName.constData()) != 0)
        return fail(errno, name);
    ::fchownat(dstDir, tempName.constData(), st.st_uid, st.st_gid, AT_SYMLINK_NOFOLLOW);
    const timespec times[2] = {st.st_atim, st.st_mtim};
    ::utimensat(dstDir, tempName.constData(), times, AT_SYMLINK_NOFOLLOW);
    return !stopRequested(0, name);
}

bool EntryCopier::copySpecial(int srcDir, const QByteArray &name, const struct stat &st, int dstDir,
                              const QByteArray &tempName)
{
    // Pipes, sockets and device nodes are recreated, not read.
    if (::mknodat(dstDir, tempName.constData(), st.st_mode, st.st_rdev) != 0)
        return fail(errno, name);
    ::fchownat(dstDir, tempName.constData(), st.st_uid, st.st_gid, AT_SYMLINK_NOFOLLOW);
    ::fchmodat(dstDir, tempName.constData(), st.st_mode & 07777, 0);
    const timespec times[2] = {st.st_atim, st.st_mtim};
    ::utimensat(dstDir, tempName.constData(), times, AT_SYMLINK_NOFOLLOW);
    Q_UNUSED(srcDir);
    return true;
}

bool EntryCopier::copyFolder(int srcDir, const QByteArray &name, const struct stat &st, int dstDir,
                             const QByteArray &dstName)
{
    UniqueFd src(::openat(srcDir, name.constData(), kDirFlags));
    if (!src)
        return fail(errno, name);
    if (::mkdirat(dstDir, dstName.constData(), 0700) != 0)
        return fail(errno, name);
    UniqueFd dst(::openat(dstDir, dstName.constData(), kDirFlags));
    if (!dst)
        return fail(errno, name);
    if (!copyFolderContents(src.fd, dst.fd))
        return false;
    // Last, so that the entries written inside do not change the folder's times.
    EntryMetadata::copyTo(src.fd, st, dst.fd);
    return true;
}

bool EntryCopier::copyFolderContents(int srcFd, int dstFd)
{
    DIR *dir = ::fdopendir(::dup(srcFd));
    if (!dir)
        return fail(errno, QByteArray());
    std::vector<QByteArray> names;
    errno = 0;
    while (const dirent *e = ::readdir(dir)) {
        if (!isDotOrDotDot(e->d_name))
            names.emplace_back(e->d_name);
    }
    const int readError = errno;
    ::closedir(dir);
    if (readError != 0)
        return fail(readError, QByteArray());

    for (const QByteArray &entry : names) {
        if (stopRequested(0, entry))
            return false;
        struct stat st;
        if (::fstatat(srcFd, entry.constData(), &st, AT_SYMLINK_NOFOLLOW) != 0)
            return fail(errno, entry);
        if (S_ISDIR(st.st_mode)) {
            if (!copyFolder(srcFd, entry, st, dstFd, entry))
                return false;
            continue;
        }
        const QByteArray temp = EntryMetadata::temporaryName();
        if (!writeUnderTemporaryName(srcFd, entry, st, dstFd, temp))
            return false;
        if (const int error = FsCalls::renameNoReplace(dstFd, temp, dstFd, entry)) {
            removeTemporary(dstFd, temp);
            return fail(error, entry);
        }
    }
    return true;
}

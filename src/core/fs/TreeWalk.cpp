#include "TreeWalk.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace {

constexpr int kDirOpenFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

bool isDotOrDotDot(const char *n) { return n[0] == '.' && (n[1] == 0 || (n[1] == '.' && n[2] == 0)); }

QByteArray join(const QByteArray &dir, const char *name)
{
    QByteArray p = dir;
    if (!p.endsWith('/'))
        p += '/';
    return p + name;
}

// Takes ownership of fd.
quint64 sumDirectory(int fd, const QByteArray &path, const TreeWalk::ErrorHandler &onError)
{
    DIR *dir = fdopendir(fd);
    if (!dir) {
        onError(path, errno);
        close(fd);
        return 0;
    }
    quint64 total = 0;
    while (true) {
        errno = 0;
        const dirent *e = readdir(dir);
        if (!e) {
            if (errno != 0)
                onError(path, errno);
            break;
        }
        if (isDotOrDotDot(e->d_name))
            continue;
        bool isDir = e->d_type == DT_DIR;
        if (e->d_type != DT_DIR) {
            struct stat st;
            if (fstatat(dirfd(dir), e->d_name, &st, AT_SYMLINK_NOFOLLOW) != 0) {
                onError(join(path, e->d_name), errno);
                continue;
            }
            isDir = S_ISDIR(st.st_mode);
            if (!isDir)
                total += quint64(st.st_blocks) * 512u;
        }
        if (isDir) {
            const int child = openat(dirfd(dir), e->d_name, kDirOpenFlags);
            if (child < 0) {
                onError(join(path, e->d_name), errno);
                continue;
            }
            total += sumDirectory(child, join(path, e->d_name), onError);
        }
    }
    closedir(dir);
    return total;
}

// Empties the folder open on fd (owned) and reports whether everything went.
bool emptyDirectory(int fd, const QByteArray &path, const TreeWalk::ErrorHandler &onError)
{
    DIR *dir = fdopendir(fd);
    if (!dir) {
        onError(path, errno);
        close(fd);
        return false;
    }
    bool allGone = true;
    while (const dirent *e = readdir(dir)) {
        if (isDotOrDotDot(e->d_name))
            continue;
        if (unlinkat(dirfd(dir), e->d_name, 0) == 0)
            continue;
        if (errno != EISDIR && errno != EPERM) {
            onError(join(path, e->d_name), errno);
            allGone = false;
            continue;
        }
        const int child = openat(dirfd(dir), e->d_name, kDirOpenFlags);
        if (child < 0) {
            onError(join(path, e->d_name), errno);
            allGone = false;
            continue;
        }
        const bool childEmpty = emptyDirectory(child, join(path, e->d_name), onError);
        if (!childEmpty || unlinkat(dirfd(dir), e->d_name, AT_REMOVEDIR) != 0) {
            if (childEmpty)
                onError(join(path, e->d_name), errno);
            allGone = false;
        }
    }
    closedir(dir);
    return allGone;
}

} // namespace

quint64 TreeWalk::allocatedBytesBelow(const QByteArray &dir, const ErrorHandler &onError)
{
    const int fd = open(dir.constData(), kDirOpenFlags);
    if (fd < 0) {
        const int error = errno;
        struct stat st;
        // A link to a folder counts as itself: there is nothing below it to report.
        if (!(lstat(dir.constData(), &st) == 0 && S_ISLNK(st.st_mode)))
            onError(dir, error);
        return 0;
    }
    return sumDirectory(fd, dir, onError);
}

bool TreeWalk::removeRecursively(const QByteArray &path, const ErrorHandler &onError)
{
    return removeRecursivelyAt(AT_FDCWD, path, onError);
}

bool TreeWalk::removeRecursivelyAt(int dirFd, const QByteArray &name, const ErrorHandler &onError)
{
    if (unlinkat(dirFd, name.constData(), 0) == 0)
        return true;
    if (errno != EISDIR && errno != EPERM) {
        onError(name, errno);
        return false;
    }
    const int fd = openat(dirFd, name.constData(), kDirOpenFlags);
    if (fd < 0) {
        onError(name, errno);
        return false;
    }
    if (!emptyDirectory(fd, name, onError))
        return false;
    if (unlinkat(dirFd, name.constData(), AT_REMOVEDIR) != 0) {
        onError(name, errno);
        return false;
    }
    return true;
}

#include "FsCalls.h"

#include "NativePath.h"

#include <stdio.h>
#include <sys/stat.h>

#include <cerrno>

bool FsCalls::exists(const QString &path, bool followLinks)
{
    struct stat st;
    const QByteArray native = NativePath::toNative(path);
    return (followLinks ? ::stat(native.constData(), &st) : ::lstat(native.constData(), &st)) == 0;
}

int FsCalls::renameNoReplace(int fromDir, const QByteArray &from, int toDir, const QByteArray &to)
{
    if (::renameat2(fromDir, from.constData(), toDir, to.constData(), RENAME_NOREPLACE) == 0)
        return 0;
    if (errno != EINVAL && errno != ENOSYS)
        return errno;
    // File systems without RENAME_NOREPLACE: a hard link fails on a taken name as well.
    if (::linkat(fromDir, from.constData(), toDir, to.constData(), 0) == 0) {
        ::unlinkat(fromDir, from.constData(), 0);
        return 0;
    }
    if (errno != EPERM)
        return errno;
    // Folders cannot be linked: look, then rename (the only way left on such file systems).
    struct stat st;
    if (::fstatat(toDir, to.constData(), &st, AT_SYMLINK_NOFOLLOW) == 0)
        return EEXIST;
    return ::renameat(fromDir, from.constData(), toDir, to.constData()) == 0 ? 0 : errno;
}

int FsCalls::renameNoReplace(const QString &from, const QString &to)
{
    return renameNoReplace(AT_FDCWD, NativePath::toNative(from), AT_FDCWD, NativePath::toNative(to));
}

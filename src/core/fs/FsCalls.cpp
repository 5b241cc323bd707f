#include "FsCalls.h"

#include "NativePath.h"

#include <QFile>

#include <stdio.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstring>

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

Result<QByteArray> FsCalls::readWholeFile(const QString &path, qint64 maxBytes)
{
    auto failure = [&path](const QString &why) {
        return Error{QStringLiteral("File"), 1, QStringLiteral("%1: %2").arg(NativePath::forDisplay(path), why),
                     {{QStringLiteral("path"), path}, {QStringLiteral("reason"), why}}};
    };
    const int fd = ::open(NativePath::toNative(path).constData(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return failure(QString::fromLocal8Bit(strerror(errno)));
    QFile file;
    if (!file.open(fd, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        ::close(fd);
        return failure(file.errorString());
    }
    if (maxBytes >= 0 && file.size() > maxBytes)
        return failure(QStringLiteral("too large (%1 MiB)").arg(file.size() >> 20));
    QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return failure(file.errorString());
    return bytes;
}

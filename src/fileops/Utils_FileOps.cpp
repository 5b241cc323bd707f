#include "core/fs/FsCalls.h"
#include "core/fs/NativePath.h"
#include "core/fs/PathParts.h"
#include "utils/Utils.h"


#include <sys/stat.h>
#include <sys/statvfs.h>

#include <cerrno>
#include <cstring>

namespace {
constexpr qsizetype kNameMax = 255; // bytes in one file name

// Shortens the name part so that name, number and extension still fit in one file name.
QString fitted(QString name, const QString &tail)
{
    while (!name.isEmpty() && NativePath::toNative(name + tail).size() > kNameMax)
        name.chop(name.size() > 1 && name.at(name.size() - 1).isLowSurrogate() ? 2 : 1);
    return name + tail;
}
} // namespace

QString Utils::nameForNewFileOrFolder(const QString &folder, const QString &defaultName, const QString &fileExtension)
{
    const QString suffix = fileExtension.isEmpty() ? QString() : QChar('.') + fileExtension;
    if (!FsCalls::exists(folder + QChar('/') + defaultName + suffix))
        return defaultName + suffix;
    for (quint64 n = 1;; ++n) {
        const QString candidate = fitted(defaultName, QStringLiteral(" %1").arg(n) + suffix);
        if (!FsCalls::exists(folder + QChar('/') + candidate))
            return candidate;
    }
}

void Utils::createfolderAtPath(const QString &path, const QString &sourceFile)
{
    if (FsCalls::exists(path))
        return;
    struct stat parent;
    const QString sourceParent = PathParts::parent(sourceFile);
    const mode_t mode = ::stat(NativePath::toNative(sourceParent).constData(), &parent) == 0 ? (parent.st_mode & 07777) : 0755;
    if (!PathParts::makePath(path, mode))
        qWarning("could not create the folder %s: %s", qPrintable(NativePath::forDisplay(path)), strerror(errno));
}

bool Utils::checkIfTheresEnoughSpaceForNumberOfBytes(quint64 bytes, const QString &path)
{
    struct statvfs fs;
    if (::statvfs(NativePath::toNative(path).constData(), &fs) != 0)
        return false;
    return quint64(fs.f_bavail) * quint64(fs.f_frsize) > bytes;
}

bool Utils::checkIfMoveToSameVolume(const QString &path, const QString &moveDest)
{
    struct stat a, b;
    if (::lstat(NativePath::toNative(path).constData(), &a) != 0 ||
        ::stat(NativePath::toNative(moveDest).constData(), &b) != 0)
        return false;
    return a.st_dev == b.st_dev;
}

QString Utils::nonSandboxPathFor(const QString &folderName)
{
    const QString home = checkAndReturnHomeFolderPath(QString());
    return home.isNull() ? QString() : home + QChar('/') + folderName;
}

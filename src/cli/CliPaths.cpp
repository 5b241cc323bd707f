#include "CliPaths.h"

#include "core/fs/FsCalls.h"
#include "core/fs/NativePath.h"

#include <QDir>

#include <sys/stat.h>

#include <cerrno>
#include <cstring>

namespace {
Error pathError(const QString &path, const QString &reason, int code)
{
    return Error{QStringLiteral("File"), code, QStringLiteral("%1: %2").arg(NativePath::forDisplay(path), reason),
                 {{QStringLiteral("path"), path}, {QStringLiteral("reason"), reason}}};
}
} // namespace

QString CliPaths::absolute(const QString &argument)
{
    return QDir::cleanPath(QDir::isAbsolutePath(argument) ? argument : QDir::currentPath() + QChar('/') + argument);
}

std::optional<Error> CliPaths::missing(const QString &path)
{
    if (FsCalls::exists(path))
        return std::nullopt;
    return pathError(path, QString::fromLocal8Bit(strerror(errno)), errno);
}

std::optional<Error> CliPaths::notAFolder(const QString &path)
{
    struct stat st;
    if (::stat(NativePath::toNative(path).constData(), &st) != 0)
        return pathError(path, QString::fromLocal8Bit(strerror(errno)), errno);
    if (!S_ISDIR(st.st_mode))
        return pathError(path, QStringLiteral("not a folder"), ENOTDIR);
    return std::nullopt;
}

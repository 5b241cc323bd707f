#include "CliPaths.h"

#include "core/fs/FsCalls.h"
#include "core/fs/NativePath.h"

#include <QDir>

#include <cerrno>
#include <cstring>

QString CliPaths::absolute(const QString &argument)
{
    return QDir::cleanPath(QDir::isAbsolutePath(argument) ? argument : QDir::currentPath() + QChar('/') + argument);
}

bool CliPaths::reportMissing(const QString &path, QTextStream &err, const char *suffix)
{
    if (FsCalls::exists(path))
        return false;
    err << "quaydrop: " << NativePath::forDisplay(path) << ": " << strerror(errno) << suffix << '\n';
    return true;
}

#include "ProgramPaths.h"

#include "core/fs/NativePath.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <unistd.h>

namespace {

bool exists(const QString &path) { return ::access(NativePath::toNative(path).constData(), F_OK) == 0; }

QString folder() { return QFileInfo(ProgramPaths::self()).path(); }

// The first of these that exists, else the first.
QString firstOf(const QString &beside, const QString &installed)
{
    return !exists(beside) && exists(installed) ? QDir::cleanPath(installed) : beside;
}

} // namespace

QString ProgramPaths::self()
{
    char path[4096];
    const ssize_t n = ::readlink("/proc/self/exe", path, sizeof path - 1);
    return n > 0 ? NativePath::fromNative(QByteArray(path, n)) : QCoreApplication::applicationFilePath();
}

QString ProgramPaths::helper(const QString &name)
{
    const QString here = folder();
    return firstOf(here + QChar('/') + name, here + QStringLiteral("/../libexec/quaydrop/") + name);
}

QString ProgramPaths::front()
{
    const QString here = folder();
    return firstOf(here + QStringLiteral("/quaydrop"), here + QStringLiteral("/../../bin/quaydrop"));
}

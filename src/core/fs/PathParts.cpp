#include "PathParts.h"

#include "NativePath.h"

#include <sys/stat.h>

#include <cerrno>

namespace {
QString withoutTrailingSlashes(const QString &path)
{
    QString p = path;
    while (p.size() > 1 && p.endsWith(QChar('/')))
        p.chop(1);
    return p;
}
} // namespace

QString PathParts::lastComponent(const QString &path)
{
    const QString p = withoutTrailingSlashes(path);
    return p.mid(p.lastIndexOf(QChar('/')) + 1);
}

QString PathParts::parent(const QString &path)
{
    const QString p = withoutTrailingSlashes(path);
    const qsizetype slash = p.lastIndexOf(QChar('/'));
    return slash <= 0 ? QStringLiteral("/") : p.left(slash);
}

PathParts::NameAndExtension PathParts::splitExtension(const QString &fileName)
{
    const qsizetype dot = fileName.lastIndexOf(QChar('.'));
    if (dot <= 0 || dot == fileName.size() - 1)
        return {fileName, QString()};
    return {fileName.left(dot), fileName.mid(dot + 1)};
}

bool PathParts::makePath(const QString &path, unsigned mode)
{
    const QByteArray native = NativePath::toNative(path);
    struct stat st;
    if (::stat(native.constData(), &st) == 0) {
        if (S_ISDIR(st.st_mode))
            return true;
        errno = ENOTDIR;
        return false;
    }
    for (qsizetype i = 1; i <= native.size(); ++i) {
        if (i < native.size() && native.at(i) != '/')
            continue;
        const QByteArray prefix = native.left(i);
        if (::mkdir(prefix.constData(), mode) != 0 && errno != EEXIST)
            return false;
    }
    return ::stat(native.constData(), &st) == 0 && S_ISDIR(st.st_mode);
}

#include "FileUris.h"

#include "core/fs/NativePath.h"

QString FileUris::fromPath(const QString &path)
{
    return QStringLiteral("file://") + QString::fromLatin1(NativePath::toNative(path).toPercentEncoding("/"));
}

QStringList FileUris::fromPaths(const QStringList &paths)
{
    QStringList uris;
    uris.reserve(paths.size());
    for (const QString &p : paths)
        uris.append(fromPath(p));
    return uris;
}

#include "core/fs/NativePath.h"
#include "core/fs/PathParts.h"
#include "utils/Utils.h"

#include <cerrno>
#include <cstring>

#include <unistd.h>

QStringList Utils::createAliasesForFilePathsInArr(const QStringList &paths)
{
    QStringList made;
    for (const QString &path : paths) {
        const QString alias = PathParts::parent(path) + QLatin1Char('/') + PathParts::lastComponent(path) + QStringLiteral(" alias");
        // An absolute target keeps resolving wherever the link is later moved.
        if (::symlink(NativePath::toNative(path).constData(), NativePath::toNative(alias).constData()) != 0) {
            qWarning("&err > %s: %s", qPrintable(NativePath::forDisplay(alias)), std::strerror(errno));
            continue;
        }
        made.append(alias);
    }
    return made;
}

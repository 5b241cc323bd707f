#include "Gather.h"

#include "Relocate.h"
#include "core/fs/FsCalls.h"
#include "core/fs/NativePath.h"
#include "core/fs/PathParts.h"
#include "fileops/FreeName.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstring>

Gather::Outcome Gather::moveSelectedFilesIntoFolder(const QStringList &paths, const QString &name)
{
    Outcome out;
    if (paths.isEmpty() || name.isEmpty())
        return out;
    const Result<QString> made = FreeName::write(PathParts::parent(paths.first()), name, QString(), [](const QString &path) -> Status {
        if (::mkdir(NativePath::toNative(path).constData(), 0777) == 0)
            return success();
        const int err = errno;
        return Error{QStringLiteral("Gather"), err, QStringLiteral("Error: Create folder failed %1: %2")
                                                        .arg(NativePath::forDisplay(path), QString::fromLocal8Bit(strerror(err)))};
    });
    if (!made.ok()) {
        qWarning("%s", qPrintable(made.error().message));
        out.failures.append(made.error());
        return out;
    }
    out.folder = made.value();
    for (const QString &item : paths) {
        const Result<QString> moved = Relocate::intoFolder(item, out.folder, PathParts::lastComponent(item));
        if (!moved.ok()) {
            qWarning("left where it was: %s", qPrintable(moved.error().message));
            out.failures.append(moved.error());
            continue;
        }
        out.moved.append(moved.value());
        out.steps.append({moved.value(), item, false});
    }
    return out;
}

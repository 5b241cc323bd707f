#include "TrashItems.h"

#include "core/fs/NativePath.h"
#include "core/fs/TreeWalk.h"
#include "platform/Platform.h"

#include <cerrno>
#include <cstring>

QString TrashItems::removableMountPointAt(const QString &path, VolumeService *volumes)
{
    if (!volumes)
        return {};
    QString p = path;
    while (p.size() > 1 && p.endsWith(QLatin1Char('/')))
        p.chop(1);
    for (const VolumeInfo &v : volumes->mountedVolumes())
        if (v.mountPoint == p && p != QLatin1String("/") && (v.removable || v.ejectable))
            return v.mountPoint;
    return {};
}

TrashItems::Outcome TrashItems::trashFiles(const QStringList &paths, TrashService *trash, VolumeService *volumes, const Next &next)
{
    Outcome out;
    for (int i = 0; i < paths.size(); ++i) {
        const QString &path = paths.at(i);
        if (next && !next(i, path))
            break;
        if (const QString mount = removableMountPointAt(path, volumes); !mount.isEmpty()) {
            const Status ejected = volumes->eject(mount);
            if (ejected.ok())
                out.ejected.append(mount);
            else {
                qWarning("%s , %s", qPrintable(ejected.error().message), qPrintable(NativePath::forDisplay(mount)));
                out.failures.append(ejected.error());
            }
            continue;
        }
        if (!trash) {
            out.failures.append(Error{QStringLiteral("Trash"), 1, QStringLiteral("no trash service")});
            continue;
        }
        const Result<QString> trashed = trash->moveToTrash(path);
        if (trashed.ok()) {
            out.trashed.append({trashed.value(), path, true});
        } else if (trashed.error().code == TrashService::kNoTrashHere) {
            out.noTrash.append(path);
        } else {
            qWarning("%s , %s", qPrintable(trashed.error().message), qPrintable(NativePath::forDisplay(path)));
            out.failures.append(trashed.error());
        }
    }
    return out;
}

Status TrashItems::deleteForGood(const QString &path)
{
    int failed = 0;
    QByteArray where;
    const bool gone = TreeWalk::removeRecursively(NativePath::toNative(path), [&](const QByteArray &p, int e) {
        failed = e;
        where = p;
    });
    if (gone)
        return success();
    const QString reason = QString::fromLocal8Bit(strerror(failed));
    return Error{QStringLiteral("Trash"), failed, QStringLiteral("%1: %2").arg(NativePath::forDisplay(NativePath::fromNative(where)), reason),
                 {{QStringLiteral("path"), NativePath::fromNative(where)}, {QStringLiteral("reason"), reason}}};
}

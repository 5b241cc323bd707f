#include "DestinationRows.h"

#include "DestinationEdits.h"
#include "DestinationsFile.h"
#include "core/fs/PathParts.h"
#include "utils/Utils.h"

#include <QHash>

namespace DestinationRows {

bool isAtOrInside(const QString &path, const QString &folder)
{
    if (folder.isEmpty())
        return false;
    if (folder == QLatin1String("/"))
        return true;
    return path == folder || path.startsWith(folder + QLatin1Char('/'));
}

QList<DestinationRow> rowsFor(const QStringList &paths, const QStringList &standardFolders, const QString &droppedPath)
{
    // One read of the names for all rows.
    QHash<QString, QString> names;
    for (const DestinationsFile::Entry &e : DestinationsFile::readPaths().entries)
        names.insert(e.path, e.name);
    const QString parent = droppedPath.isEmpty() ? QString() : PathParts::parent(droppedPath);

    QList<DestinationRow> rows;
    for (const QString &p : paths) {
        DestinationRow row;
        row.path = p;
        row.name = names.value(p, PathParts::lastComponent(p));
        row.stored = names.contains(p);
        row.kind = standardFolders.contains(p) ? DestinationRow::Kind::StandardFolder : DestinationRow::Kind::UserFolder;
        if (Utils::isUnderVolumesRoot(p))
            row.kind = DestinationRow::Kind::Volume;
        if (!droppedPath.isEmpty()) {
            const QString last = PathParts::lastComponent(p);
            if (isAtOrInside(p, droppedPath)) {
                row.buttonHidden = row.inactive = true;
            } else if (p == parent || (Utils::nonSandboxPathFor(last) == parent && !PathParts::parent(p).endsWith(last))) {
                row.inactive = true;
            }
        }
        rows.append(row);
    }
    return rows;
}

} // namespace DestinationRows

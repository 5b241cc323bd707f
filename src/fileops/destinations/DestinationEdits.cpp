#include "DestinationEdits.h"

#include "DestinationsFile.h"
#include "core/fs/FsCalls.h"
#include "core/fs/NativePath.h"
#include "core/fs/PathParts.h"
#include "utils/Utils.h"

#include <sys/stat.h>

namespace DestinationEdits {

namespace {

using DestinationsFile::Entry;

// "PATH: REASON", as the command line writes every error that names a file.
Error failure(ErrorCode code, const QString &reason, const QString &path)
{
    return Error{QString::fromLatin1(kErrorDomain), code, NativePath::forDisplay(path) + QStringLiteral(": ") + reason,
                 {{QStringLiteral("path"), path}, {QStringLiteral("reason"), reason}}};
}

QString trimmed(QString path)
{
    while (path.size() > 1 && path.endsWith(QLatin1Char('/')))
        path.chop(1);
    return path;
}

// What the user sees as the list: the stored entries, or, where the file is missing or damaged,
// the standard folders that the picker shows in their stead.
QList<Entry> editableEntries()
{
    const DestinationsFile::Stored stored = DestinationsFile::readPaths();
    if (stored.state == DestinationsFile::State::Read)
        return stored.entries;
    QList<Entry> entries;
    for (const QString &p : Utils::defFileMoveDestPaths(true))
        if (FsCalls::exists(p, true))
            entries.append({PathParts::lastComponent(p), p});
    return entries;
}

QStringList pathsOf(const QList<Entry> &entries)
{
    QStringList paths;
    for (const Entry &e : entries)
        paths.append(e.path);
    return paths;
}

} // namespace

QString destNameForDestPath(const QString &path)
{
    for (const Entry &e : DestinationsFile::readPaths().entries)
        if (e.path == path)
            return e.name;
    return PathParts::lastComponent(path);
}

Status rename(const QString &path, const QString &name)
{
    QList<Entry> entries = editableEntries();
    for (Entry &e : entries) {
        if (e.path != path)
            continue;
        const QString typed = name.trimmed();
        e.name = typed.isEmpty() ? PathParts::lastComponent(path) : typed;
        return DestinationsFile::writePaths(entries);
    }
    return failure(NotADestination, QStringLiteral("not a stored destination"), path);
}

Status add(const QString &given, const QStringList &shownRows)
{
    const QString path = trimmed(given);
    struct stat st{};
    if (::stat(NativePath::toNative(path).constData(), &st) != 0 || !S_ISDIR(st.st_mode))
        return failure(NoSuchFolder, QStringLiteral("no such folder"), path);
    QList<Entry> entries = editableEntries();
    if (pathsOf(entries).contains(path) || shownRows.contains(path))
        return failure(AlreadyADestination, QStringLiteral("already a destination"), path);
    entries.insert(0, {PathParts::lastComponent(path), path});
    // Folders that are gone leave; those on a volume that is not mounted stay for its return.
    entries.removeIf([](const Entry &e) { return !FsCalls::exists(e.path, true) && !Utils::isUnderVolumesRoot(e.path); });
    return DestinationsFile::writePaths(entries);
}

Status remove(const QString &path)
{
    QStringList paths = pathsOf(editableEntries());
    if (!paths.contains(path))
        return failure(NotADestination, QStringLiteral("not a destination"), path);
    paths.removeAll(path);
    return Utils::updateMoveCopyPaths(paths);
}

Status reorder(const QStringList &arranged)
{
    // Stored entries on a volume that is not mounted are not among the rows: they keep their places,
    // whether or not other removable media are mounted.
    const QStringList stored = pathsOf(editableEntries());
    QStringList result = arranged;
    for (int i = 0; i < stored.size(); ++i)
        if (Utils::isUnderVolumesRoot(stored.at(i)) && !arranged.contains(stored.at(i)))
            result.insert(qMin(i, int(result.size())), stored.at(i));
    return Utils::updateMoveCopyPaths(result);
}

bool isRealMove(int source, int target) { return target != source && target != source + 1; }

QStringList performDragReorder(QStringList rows, int source, int target)
{
    if (source < 0 || source >= rows.size() || target < 0 || target > rows.size() || !isRealMove(source, target))
        return rows;
    rows.insert(target, rows.at(source));
    rows.removeAt(source > target ? source + 1 : source);
    return rows;
}

} // namespace DestinationEdits

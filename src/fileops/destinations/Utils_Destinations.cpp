#include "DestinationsFile.h"
#include "core/fs/FsCalls.h"
#include "core/fs/NativePath.h"
#include "core/fs/PathParts.h"
#include "core/plist/Plist.h"
#include "utils/Utils.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int kRecentCount = 3;

// Destinations are folders: a link to one counts as one.
bool exists(const QString &path) { return FsCalls::exists(path, true); }

QString supportFile(const QString &name)
{
    PathParts::makePath(Utils::QDappSupportPath(), 0700);
    return Utils::QDappSupportPath() + QChar('/') + name;
}

QString standardFolder(QStandardPaths::StandardLocation location)
{
    // The XDG user folders (~/.config/user-dirs.dirs), so "~/Dokumente" on a German system.
    return QStandardPaths::writableLocation(location);
}

// One row per folder: "/a/b/" and "/a/b" are the same destination, and the first place wins.
QStringList withoutDuplicates(const QStringList &paths)
{
    QStringList out;
    for (QString p : paths) {
        while (p.size() > 1 && p.endsWith(QLatin1Char('/')))
            p.chop(1);
        if (!p.isEmpty() && !out.contains(p))
            out.append(p);
    }
    return out;
}

} // namespace

QString Utils::moveCopyPathsPlistPath() { return supportFile(QStringLiteral("pathsToMove.plist")); }

QString Utils::pathForRecentDestnsPlist()
{
    const QString path = supportFile(QStringLiteral("recentDest.plist"));
    if (!QFileInfo::exists(path))
        (void)Plist::writeFileAtomically(path, QVariantMap());
    return path;
}

std::optional<QVariantList> Utils::movePathsDicsWithPathsAndNames()
{
    const DestinationsFile::Stored stored = DestinationsFile::readPaths();
    if (stored.state != DestinationsFile::State::Read)
        return std::nullopt;
    QVariantList list;
    for (const DestinationsFile::Entry &e : stored.entries)
        list.append(QVariantMap{{QStringLiteral("destPname"), e.name}, {QStringLiteral("destPath"), e.path}});
    return list;
}

QStringList Utils::movePathsFromPlistOfDics()
{
    const DestinationsFile::Stored stored = DestinationsFile::readPaths();
    // The older form: plain paths, turned into named entries once.
    if (stored.state == DestinationsFile::State::Read && stored.olderForm)
        (void)DestinationsFile::writePaths(stored.entries);
    return stored.paths();
}

Status Utils::updateMoveCopyPaths(const QStringList &paths)
{
    QList<DestinationsFile::Entry> entries;
    const DestinationsFile::Stored stored = DestinationsFile::readPaths();
    for (const QString &p : withoutDuplicates(paths)) {
        if (!exists(p) && !isUnderVolumesRoot(p)) // a destination on an unmounted volume stays stored
            continue;
        QString name = PathParts::lastComponent(p);
        for (const DestinationsFile::Entry &e : stored.entries)
            if (e.path == p)
                name = e.name;
        entries.append({name, p});
    }
    // An unchanged list is not written again: windows that follow the file would read it anew.
    if (stored.state == DestinationsFile::State::Read && !stored.olderForm && stored.entries == entries)
        return success();
    return DestinationsFile::writePaths(entries);
}

QStringList Utils::createMoveDestArr()
{
    // Read once, so that a damaged file is reported once.
    const DestinationsFile::Stored read = DestinationsFile::readPaths();
    if (read.state == DestinationsFile::State::Read && read.olderForm)
        (void)DestinationsFile::writePaths(read.entries);
    const QStringList stored = read.paths();
    QStringList list = withoutDuplicates(
        (read.state == DestinationsFile::State::Read && !stored.isEmpty()) ? stored : defFileMoveDestPaths(true) + stored);
    // A damaged file is kept for the user to mend; it is rewritten only once the list is changed.
    if (read.state != DestinationsFile::State::Damaged)
        (void)updateMoveCopyPaths(list);

    const QStringList removable = getListOfEjectableMediaPathsOnly();
    const QStringList snapshot = list;
    if (!removable.isEmpty()) {
        for (const QString &volume : removable)
            if (!list.contains(volume))
                list.insert(0, volume);
        for (const QString &p : snapshot)
            if (isUnderVolumesRoot(p) && !removable.contains(p) && !exists(p))
                list.removeAll(p);
    } else {
        for (const QString &p : snapshot) {
            if (isUnderVolumesRoot(p) ? !checkIfpathisInallButmountableVols(p) : !exists(p))
                list.removeAll(p);
        }
    }
    return list;
}

QStringList Utils::recentDestinations() { return DestinationsFile::readRecent(); }

void Utils::updateRecentDestnsPlistWithPath(const QString &path)
{
    QStringList recent = recentDestinations();
    // Only the older plain-string form of the favourites could hold the path itself.
    const DestinationsFile::Stored stored = DestinationsFile::readPaths();
    if (recent.contains(path) || (stored.olderForm && stored.paths().contains(path)))
        return;
    if (defFileMoveDestPaths(true).contains(path) || defFileMoveDestPaths(false).contains(path))
        return;
    if (recent.size() + 1 > kRecentCount)
        recent.removeFirst();
    recent.append(path);
    // Walks upwards and moves on after a removal too: of two gone paths side by side the second stays.
    for (int i = 0; i < recent.size(); ++i)
        if (!exists(recent.at(i)))
            recent.removeAt(i);
    (void)DestinationsFile::writeRecent(recent);
}

QStringList Utils::defFileMoveDestPaths(bool asTheyAre)
{
    QStringList folders{getDesktopFolderPath(), getDocumentsFodlerPath(), getMoviesFolderPath(),
                        getMusicFolderPath(),   getPicturesFolderPath(),  getDownloadsFolderPath()};
    if (!asTheyAre)
        for (QString &f : folders)
            f = nonSandboxPathFor(PathParts::lastComponent(f));
    return folders;
}

QStringList Utils::getAllFixedDirectoriesForFileMove()
{
    return {getDesktopFolderPath(), getDocumentsFodlerPath(), getPicturesFolderPath(),
            getMusicFolderPath(),   getMoviesFolderPath(),    getDownloadsFolderPath()};
}

QString Utils::getMeMoveDirPathByIndex(quint64 index)
{
    const QStringList folders = defFileMoveDestPaths(true);
    return index < quint64(folders.size()) ? folders.at(int(index)) : QString();
}

QString Utils::getDesktopFolderPath() { return standardFolder(QStandardPaths::DesktopLocation); }
QString Utils::getDocumentsFodlerPath() { return standardFolder(QStandardPaths::DocumentsLocation); }
QString Utils::getMoviesFolderPath() { return standardFolder(QStandardPaths::MoviesLocation); }
QString Utils::getMusicFolderPath() { return standardFolder(QStandardPaths::MusicLocation); }
QString Utils::getPicturesFolderPath() { return standardFolder(QStandardPaths::PicturesLocation); }
QString Utils::getDownloadsFolderPath() { return standardFolder(QStandardPaths::DownloadLocation); }

bool Utils::isUnderVolumesRoot(const QString &path)
{
    const QString user = QString::fromLocal8Bit(qgetenv("USER"));
    const QStringList roots{QStringLiteral("/media/") + user, QStringLiteral("/run/media/") + user, QStringLiteral("/mnt")};
    for (const QString &root : roots)
        if (path == root || path.startsWith(root + QChar('/')))
            return true;
    return false;
}

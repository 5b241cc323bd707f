#include "core/fs/FsCalls.h"
#include "core/fs/NativePath.h"
#include "core/fs/PathParts.h"
#include "core/plist/Plist.h"
#include "utils/Utils.h"

#include <QDir>
#include <QStandardPaths>

#include <sys/stat.h>
#include <unistd.h>

namespace {

const QString kName = QStringLiteral("destPname");
const QString kPath = QStringLiteral("destPath");
constexpr int kRecentCount = 3;

// Destinations are folders: a link to one counts as one.
bool exists(const QString &path) { return FsCalls::exists(path, true); }

QString supportFile(const QString &name)
{
    PathParts::makePath(Utils::QDappSupportPath(), 0700);
    return Utils::QDappSupportPath() + QChar('/') + name;
}

QVariantList readArray(const QString &path)
{
    const auto read = Plist::readFile(path);
    return read.ok() ? read.value().toList() : QVariantList();
}

void writeList(const QString &path, const QVariant &value)
{
    if (const Status s = Plist::writeFileAtomically(path, value); !s.ok())
        qWarning("could not write %s: %s", qPrintable(path), qPrintable(s.error().message));
}

QString standardFolder(QStandardPaths::StandardLocation location)
{
    return QStandardPaths::writableLocation(location);
}

} // namespace

QString Utils::moveCopyPathsPlistPath() { return supportFile(QStringLiteral("pathsToMove.plist")); }

QString Utils::pathForRecentDestnsPlist()
{
    const QString path = supportFile(QStringLiteral("recentDest.plist"));
    if (!exists(path))
        writeList(path, QVariantMap());
    return path;
}

std::optional<QVariantList> Utils::movePathsDicsWithPathsAndNames()
{
    const auto read = Plist::readFile(moveCopyPathsPlistPath());
    if (!read.ok() || read.value().metaType().id() != QMetaType::QVariantList)
        return std::nullopt;
    return read.value().toList();
}

QStringList Utils::movePathsFromPlistOfDics()
{
    const QVariantList stored = movePathsDicsWithPathsAndNames().value_or(QVariantList());
    QStringList paths;
    if (!stored.isEmpty() && stored.first().metaType().id() == QMetaType::QString) {
        // The older form: plain paths, turned into named entries once.
        QVariantList converted;
        for (const QVariant &v : stored) {
            paths.append(v.toString());
            converted.append(QVariantMap{{kName, PathParts::lastComponent(v.toString())}, {kPath, v.toString()}});
        }
        writeList(moveCopyPathsPlistPath(), converted);
        return paths;
    }
    for (const QVariant &v : stored)
        paths.append(v.toMap().value(kPath).toString());
    return paths;
}

void Utils::updateMoveCopyPaths(const QStringList &paths)
{
    QStringList kept;
    for (const QString &p : paths)
        if (exists(p) || isUnderVolumesRoot(p)) // a destination on an unmounted volume stays stored
            kept.append(p);
    QHash<QString, QString> names;
    for (const QVariant &v : movePathsDicsWithPathsAndNames().value_or(QVariantList())) {
        const QVariantMap entry = v.toMap();
        if (entry.contains(kPath))
            names.insert(entry.value(kPath).toString(), entry.value(kName).toString());
    }
    QVariantList entries;
    for (const QString &p : kept)
        entries.append(QVariantMap{{kName, names.value(p, PathParts::lastComponent(p))}, {kPath, p}});
    writeList(moveCopyPathsPlistPath(), entries);
}

QStringList Utils::createMoveDestArr()
{
    const QStringList stored = movePathsFromPlistOfDics();
    QStringList list = (exists(moveCopyPathsPlistPath()) && !stored.isEmpty()) ? stored : defFileMoveDestPaths(true) + stored;
    updateMoveCopyPaths(list);

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

QStringList Utils::recentDestinations()
{
    QStringList recent;
    for (const QVariant &v : readArray(pathForRecentDestnsPlist()))
        recent.append(v.toString());
    return recent;
}

void Utils::updateRecentDestnsPlistWithPath(const QString &path)
{
    QStringList recent = recentDestinations();
    const QVariantList stored = movePathsDicsWithPathsAndNames().value_or(QVariantList());
    // Only the older plain-string form can hold the path itself.
    if (recent.contains(path) || stored.contains(QVariant(path)))
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
    writeList(pathForRecentDestnsPlist(), recent);
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
QString Utils::getDocumentsFodlerPath() { return nonSandboxPathFor(QStringLiteral("Documents")); }
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

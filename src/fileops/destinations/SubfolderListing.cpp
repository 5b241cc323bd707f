#include "SubfolderListing.h"

#include "core/fs/NativePath.h"
#include "core/fs/NaturalOrder.h"


#include <dirent.h>
#include <sys/stat.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <memory>

namespace SubfolderListing {

namespace {

QByteArray resolved(const QByteArray &path)
{
    char buffer[PATH_MAX];
    return ::realpath(path.constData(), buffer) ? QByteArray(buffer) : path;
}

bool isFolder(const QByteArray &path, unsigned char type)
{
    if (type == DT_DIR)
        return true;
    if (type != DT_LNK && type != DT_UNKNOWN)
        return false;
    struct stat st{};
    return ::stat(path.constData(), &st) == 0 && S_ISDIR(st.st_mode);
}

// Calls `each` with each subfolder's path until it answers false; false if the stop check ended it.
template<typename Each>
bool forEachSubfolder(const QByteArray &folder, const std::function<bool()> &shouldStop, Each each)
{
    std::unique_ptr<DIR, int (*)(DIR *)> dir(::opendir(folder.constData()), &::closedir);
    if (!dir)
        return true;
    const QByteArray prefix = folder.endsWith('/') ? folder : folder + '/';
    while (const dirent *entry = ::readdir(dir.get())) {
        if (shouldStop && shouldStop())
            return false;
        if (entry->d_name[0] == '.')
            continue; // hidden, and "." and ".."
        const QByteArray path = prefix + entry->d_name;
        if (isFolder(path, entry->d_type) && !each(path))
            break;
    }
    return true;
}

} // namespace

std::optional<QStringList> subfoldersForParentFolderAtPathOneLevel(const QString &folder,
                                                                   const std::function<bool()> &shouldStop, Order order)
{
    QStringList paths;
    const bool complete = forEachSubfolder(resolved(NativePath::toNative(folder)), shouldStop, [&](const QByteArray &p) {
        paths.append(NativePath::fromNative(resolved(p)));
        return true;
    });
    if (!complete)
        return std::nullopt;
    if (order == Order::Sorted) // by the names shown, wherever a link led
        std::stable_sort(paths.begin(), paths.end(), [](const QString &a, const QString &b) {
            return NaturalOrder::compare(a.mid(a.lastIndexOf(QLatin1Char('/')) + 1), b.mid(b.lastIndexOf(QLatin1Char('/')) + 1)) < 0;
        });
    return paths;
}

bool hasSubfolders(const QString &folder)
{
    bool found = false;
    forEachSubfolder(resolved(NativePath::toNative(folder)), {}, [&](const QByteArray &) {
        found = true;
        return false;
    });
    return found;
}

std::optional<QList<Node>> createDicsForPaths(const QString &folder, const std::function<bool()> &shouldStop, Order order)
{
    const std::optional<QStringList> paths = subfoldersForParentFolderAtPathOneLevel(folder, shouldStop, order);
    if (!paths)
        return std::nullopt;
    QList<Node> nodes;
    nodes.reserve(paths->size());
    for (const QString &p : *paths) {
        if (shouldStop && shouldStop())
            return std::nullopt;
        nodes.append({p, hasSubfolders(p)});
    }
    return nodes;
}

} // namespace SubfolderListing

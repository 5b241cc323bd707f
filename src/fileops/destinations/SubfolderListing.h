#pragma once

// The folders directly below a folder, for the subfolder browser. Runs on a pool thread; the stop
// check is asked before each entry, so a newer fetch ends an older one between entries.

#include <QStringList>

#include <functional>
#include <optional>

namespace SubfolderListing {

enum class Order { Sorted, AsListed };

// Links in `folder` are resolved first, and each subfolder comes with its links resolved. Hidden
// entries are left out. An unreadable folder has no subfolders. nullopt: stopped.
std::optional<QStringList> subfoldersForParentFolderAtPathOneLevel(const QString &folder,
                                                                   const std::function<bool()> &shouldStop = {},
                                                                   Order order = Order::Sorted);
// Whether the folder has at least one subfolder that would be listed.
bool hasSubfolders(const QString &folder);

struct Node
{
    QString path;
    bool isExpndble = false;
};
// Each subfolder with whether it has subfolders of its own (one listing per child); nullopt: stopped.
std::optional<QList<Node>> createDicsForPaths(const QString &folder, const std::function<bool()> &shouldStop,
                                              Order order = Order::Sorted);

} // namespace SubfolderListing

#pragma once

// The rows of the destination lists, and which of them make no sense for the drop in hand.

#include <QList>
#include <QString>
#include <QStringList>

struct DestinationRow
{
    enum class Kind { StandardFolder, UserFolder, Volume };
    QString path;
    QString name;         // destNameForDestPath
    Kind kind = Kind::UserFolder;
    bool inactive = false; // grey, not selectable: the dropped item, inside it, or its own folder
    bool buttonHidden = false; // no subfolders to offer: the dropped item itself or inside it
    bool stored = false;       // in "pathsToMove.plist", so it can be renamed
};

namespace DestinationRows {

// `standardFolders`: defFileMoveDestPaths(true). `droppedPath`: the first dropped item, or empty
// where nothing is being dropped (the manager window), and then no row is inactive.
QList<DestinationRow> rowsFor(const QStringList &paths, const QStringList &standardFolders, const QString &droppedPath);

// `path` is `folder` or lies inside it (by whole path components).
bool isAtOrInside(const QString &path, const QString &folder);

} // namespace DestinationRows

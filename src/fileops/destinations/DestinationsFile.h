#pragma once

// The two stored lists of destinations: "pathsToMove.plist" (named favourites, in the table's order)
// and "recentDest.plist" (at most three paths). A damaged file is told apart from a missing one, so
// that nothing rewrites it until the user changes the list. Paths whose bytes are not UTF-8 are kept
// as <data> holding those bytes, as a string could not carry them.

#include "utils/Result.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

namespace DestinationsFile {

struct Entry
{
    QString name; // "destPname"
    QString path; // "destPath"
    bool operator==(const Entry &) const = default;
};

enum class State { Missing, Read, Damaged };

struct Stored
{
    State state = State::Missing;
    QList<Entry> entries;
    bool olderForm = false; // an array of plain paths, converted on the next read
    QStringList paths() const;
};

// Reads "pathsToMove.plist". A damaged file (not a property list, not an array, or entries of
// the wrong kind) logs one line and reads as no entries.
Stored readPaths();
// Written through a temporary file: a failed write leaves the old file as it was.
Status writePaths(const QList<Entry> &entries);

// "recentDest.plist": an empty dictionary (how the file is first made) is no recents; so is a
// damaged file, which logs one line.
QStringList readRecent();
Status writeRecent(const QStringList &paths);

QVariant encodePath(const QString &path);
QString decodePath(const QVariant &stored); // empty where the value is no path

} // namespace DestinationsFile

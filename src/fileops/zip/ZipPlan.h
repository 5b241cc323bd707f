#pragma once

#include "utils/Result.h"

#include <QByteArray>
#include <QList>
#include <QStringList>

// What goes into an archive of dropped items, and under which names. Walks by file descriptor with
// names kept as bytes; links are entries of their own and are never followed.
struct ZipEntry
{
    enum class Kind { File, Folder, Link };
    Kind kind = Kind::File;
    QByteArray source; // native absolute path
    QByteArray name;   // in the archive: relative, '/' between parts, a folder ends in '/'
    quint32 mode = 0;  // st_mode
    qint64 mtime = 0;  // seconds since the epoch
    quint64 size = 0;  // bytes of a file's data
};

struct ZipPlan
{
    QList<ZipEntry> entries;
    quint64 totalBytes = 0; // of every file: the scale of the progress

    // "Photos" gives "Photos.zip", "a.b.txt" gives "a.b.zip" beside it; several items give
    // "QuaydropZip.zip" in the first one's folder.
    static QString archivePath(const QStringList &paths);
    // Each item under its own name, from whichever folder it comes; inside a dropped folder, entries
    // whose name starts with a dot are left out at every level, while a dropped dot file is kept.
    // Fails, naming it, on the first item or folder that cannot be read.
    static Result<ZipPlan> build(const QStringList &paths);

    static constexpr const char *kErrorDomain = "Zip";
};

#pragma once

#include "utils/Result.h"

#include <QSet>
#include <QStringList>

#include <functional>

inline constexpr char kQDFileCopyErrorDomain[] = "kQDFileCopyErrorDomain";

// The only place where bytes of user files travel between folders. Runs on the caller's thread;
// a stop set from the progress handler ends the copy within one chunk.
class FileCopyHelper
{
public:
    // (bytes copied so far, total bytes, stop flag the handler may set, name of the current file)
    using ProgressHandler = std::function<void(quint64, quint64, bool *, const QString &)>;
    // Takes an existing destination item out of the way once its replacement is complete.
    using SetAside = std::function<Status(const QString &existingPath)>;

    enum Code { NotAFile = 1000, Cancelled = 1001, NotEnoughSpace = 1002, Failed = 1111 };

    // The copy flags of the original design: everything, exclusive, links not followed (+ recursive).
    static quint32 flagsForFile(const QString &path);

    static bool copyFileAt(const QString &src, const QString &dst, const ProgressHandler &progress,
                           quint64 *outFileSize, Error *error);
    static bool copyFolderAt(const QString &src, const QString &dst, const ProgressHandler &progress,
                             quint64 *outFileSize, Error *error);
    // Never an existing path: "Report.pdf" becomes "Report 1.pdf", "Photos" becomes "Photos 1".
    static QString destPathForDuplicatefile(const QString &src, const QString &destParFolder);
    // Sources listed in `replacing` overwrite the item of their name in destFolder, which is set aside
    // only once the new one is complete; every other collision gets a free name.
    static bool copyItemsToAnotherDrive(const QStringList &paths, const QString &destFolder,
                                        const ProgressHandler &progress, Error *error,
                                        const QSet<QString> &replacing = {}, const SetAside &setAside = {});

    static Error makeError(int code, int posixError = 0, const QString &fileName = QString());
};

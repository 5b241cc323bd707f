#pragma once

#include <QByteArray>

#include <cstdint>
#include <functional>

// Walks of real trees by file descriptor: symbolic links are never followed, names stay bytes.
namespace TreeWalk {

// (path of the entry that failed, errno)
using ErrorHandler = std::function<void(const QByteArray &path, int error)>;

// Allocated bytes (st_blocks * 512) of every entry below `dir` that is not a folder, hidden entries
// included. Unreadable folders are reported and passed over.
quint64 allocatedBytesBelow(const QByteArray &dir, const ErrorHandler &onError);

// Removes `path` and, for a real folder, everything in it. Returns false on the first entry that
// could not be removed, after trying all the others.
bool removeRecursively(const QByteArray &path, const ErrorHandler &onError);
// The same for the entry `name` of the open folder `dirFd`.
bool removeRecursivelyAt(int dirFd, const QByteArray &name, const ErrorHandler &onError);

} // namespace TreeWalk

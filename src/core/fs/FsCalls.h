#pragma once

// Small file-system calls shared by everything that touches user files, names kept as bytes.

#include "utils/Result.h"

#include <QByteArray>
#include <QString>

#include <fcntl.h>
#include <unistd.h>

namespace FsCalls {

// Closes its descriptor when it goes.
struct UniqueFd
{
    int fd = -1;
    explicit UniqueFd(int f = -1) : fd(f) {}
    ~UniqueFd()
    {
        if (fd >= 0)
            ::close(fd);
    }
    UniqueFd(const UniqueFd &) = delete;
    UniqueFd &operator=(const UniqueFd &) = delete;
    explicit operator bool() const { return fd >= 0; }
};

// Something is there (a dangling link counts; with followLinks only what a link leads to).
bool exists(const QString &path, bool followLinks = false);

// Gives `from` the name `to` only if that name is free: 0, or the errno (EEXIST when taken).
int renameNoReplace(int fromDir, const QByteArray &from, int toDir, const QByteArray &to);
int renameNoReplace(const QString &from, const QString &to);

// The whole file, opened by its bytes; a file larger than `maxBytes` (when given) is refused. A
// failure's info holds the "path" and the bare "reason".
Result<QByteArray> readWholeFile(const QString &path, qint64 maxBytes = -1);

} // namespace FsCalls

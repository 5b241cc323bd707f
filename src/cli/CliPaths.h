#pragma once

#include "utils/Result.h"

#include <QString>

#include <optional>

// Paths as the commands take them from a shell. An error names its path and gives the bare reason,
// so that the command line prints the path's own bytes.
namespace CliPaths {
// Relative to the working folder, "." and ".." resolved, bytes kept.
QString absolute(const QString &argument);
// Nothing when something is at `path` (links are not followed); else why not, in the system's words.
std::optional<Error> missing(const QString &path);
// Nothing when `path` is a folder (or a link to one); else "not a folder", or the system's words.
std::optional<Error> notAFolder(const QString &path);
} // namespace CliPaths

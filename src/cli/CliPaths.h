#pragma once

#include <QString>
#include <QTextStream>

// Paths as the commands take them from a shell.
namespace CliPaths {
// Relative to the working folder, "." and ".." resolved, bytes kept.
QString absolute(const QString &argument);
// True, with a line on `err`, when nothing is at `path` (links are not followed).
bool reportMissing(const QString &path, QTextStream &err, const char *suffix = "");
} // namespace CliPaths

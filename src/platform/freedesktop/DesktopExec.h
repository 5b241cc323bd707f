#pragma once

// An application's Exec line, as the Desktop Entry specification reads it: split into words with
// its quoting rules, and the field codes filled in with the files to open.

#include "DesktopEntries.h"
#include "platform/posix/Spawn.h"

#include <QStringList>

#include <optional>

namespace DesktopExec {

// The words of an Exec line (string escapes already undone); nothing for an unclosed quote.
std::optional<QStringList> split(const QString &exec);

// The bytes of the local file a file URI names ("file:///a%20b" gives "/a b"); empty for anything else.
QByteArray localPathOf(const QString &fileUri);

// The command lines that open `fileUris` (file URIs) with the application: one for all files with
// %F or %U, one per file with %f or %u, and the files left out where the line takes none. With no
// files, one command with the file codes removed. Empty for a malformed line.
QList<Spawn::Argv> commandsFor(const DesktopApplication &app, const QStringList &fileUris);

// The line's program and fixed arguments, every field code taken out: the start of a command that
// a caller finishes with arguments of its own (a mail program's compose options).
std::optional<Spawn::Argv> baseCommand(const DesktopApplication &app);

} // namespace DesktopExec

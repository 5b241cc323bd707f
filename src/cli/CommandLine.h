#pragma once

#include "CommandTable.h"

#include <QStringList>

class Console;
struct Invocation;

// "quaydrop COMMAND ARGS...": the actions without the tray, for scripts and file-manager menus.
namespace CommandLine {

// True when argv asks for a command, for help or for the version rather than the resident program.
bool wantsCommandLine(const QStringList &args);
// The process's exit code.
int run(const QStringList &args, Console &console);
// The whole process of a command: the application object, the texts, the platform services, the
// console on stdout and stderr, then run().
int runProcess(int argc, char **argv);

// A handler's own usage error ("give --width, --height or both"): the line, the usage, and 2.
int usageError(const Cli::Command &command, Console &console, const QString &what);

} // namespace CommandLine

#pragma once

#include "CommandTable.h"

#include <QObject>
#include <QStringList>

#include <functional>
#include <memory>

class Console;
struct Invocation;

// "quaydrop COMMAND ARGS...": the actions without the tray, for scripts and file-manager menus.
namespace CommandLine {

// True when argv asks for a command, for help or for the version rather than the resident program.
bool wantsCommandLine(const QStringList &args);
// The process's exit code.
int run(const QStringList &args, Console &console);
// The whole process of a command: the application object, the texts, the console on stdout and
// stderr, then run(). `desktopServices`, called once the application object exists, installs the
// platform services the full program offers (drives, file manager) for as long as what it returns
// lives; the light command line has none and hands the commands that need them on.
int runProcess(int argc, char **argv, const std::function<std::unique_ptr<QObject>()> &desktopServices = {});

// A handler's own usage error ("give --width, --height or both"): the line, the usage, and 2.
int usageError(const Cli::Command &command, Console &console, const QString &what);

} // namespace CommandLine

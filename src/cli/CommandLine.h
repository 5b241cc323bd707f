#pragma once

#include <QStringList>
#include <QTextStream>

#include <functional>

// "quaydrop COMMAND ARGS...": the actions without the tray, for scripts and file-manager menus.
// Results go to `out`, errors to `err`; the answer is the process's exit code.
namespace CommandLine {

struct Command
{
    QString name;
    QString arguments;
    QString summary;
    std::function<int(const QStringList &args, QTextStream &out, QTextStream &err)> run;
};

const QList<Command> &commands();
// True when argv asks for a command or for help rather than the resident program.
bool wantsCommandLine(const QStringList &args);
int run(const QStringList &args, QTextStream &out, QTextStream &err);

inline constexpr int kUsageError = 2;

} // namespace CommandLine

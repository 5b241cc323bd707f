#pragma once

// Starting other programs with arguments as exact bytes: file names that are not UTF-8 reach them
// unchanged (QProcess re-encodes its QString arguments), and no shell ever sees them.

#include "utils/Result.h"

#include <QByteArray>
#include <QList>

namespace Spawn {

using Argv = QList<QByteArray>; // the program first, searched on PATH unless it holds a "/"

struct Finished
{
    int exitCode = -1; // -1 when a signal ended it
    QByteArray out;
    QByteArray err;
};

// The program's full path on PATH, or empty.
QByteArray findProgram(const QByteArray &name);

// Runs to its end with `input` on its standard input, standard output and error collected; killed
// after `timeoutMs`. Blocks: call from a worker thread where it may take long.
Result<Finished> run(const Argv &argv, const QByteArray &input = {}, int timeoutMs = 30000);

// Started on its own, outliving this process (a mail program stays when Quaydrop quits); standard
// input from /dev/null. Fails when the program cannot be started at all.
Status detached(const Argv &argv);

// What one exec may carry: the kernel refuses a single argument above 128 KiB and all of them
// together (with the environment) above the system's limit.
bool fitsExecLimits(const Argv &argv);

} // namespace Spawn

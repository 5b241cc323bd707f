#include "ZipCommand.h"

#include "ArgumentParser.h"
#include "CliPaths.h"
#include "Console.h"
#include "ConsoleFrontEnd.h"
#include "core/fs/PathParts.h"
#include "fileops/zip/ZipJob.h"
#include "platform/freedesktop/FreedesktopTrash.h"
#include "platform/posix/UnixSignalWatcher.h"

#include <QEventLoop>

#include <cerrno>
#include <unistd.h>

int runZipCommand(const Invocation &invocation, Console &console)
{
    QStringList paths;
    for (const QString &a : invocation.arguments)
        paths.append(CliPaths::absolute(a));
    for (const QString &p : std::as_const(paths)) {
        if (const auto missing = CliPaths::missing(p)) {
            console.fail(*missing, " (nothing was zipped)");
            return Cli::kFailed;
        }
    }
    FreedesktopTrash trash;
    ZipJob job(paths, &trash);
    // The copy's progress line, fed with the zip's bytes.
    ConsoleProgress progress(console, ::isatty(STDERR_FILENO));
    const auto figures = std::make_shared<FileCopyParams>(paths, PathParts::parent(job.plannedPath()), true);
    QObject::connect(&job, &ZipJob::progress, [&](quint64 done, quint64 total, const QString &name) {
        if (name.isEmpty() || total == 0)
            return;
        figures->total = total;
        figures->current = done;
        progress.jobProgress(figures, int(done * 100 / total), name);
    });
    QEventLoop loop;
    QObject::connect(&job, &ZipJob::finished, &loop, &QEventLoop::quit);
    UnixSignalWatcher interrupts;
    QObject::connect(&interrupts, &UnixSignalWatcher::terminationRequested, &job, &ZipJob::cancel);
    job.start();
    loop.exec();

    const Result<QString> &result = job.result();
    progress.jobFinished(figures, result.ok() ? std::nullopt : std::optional<Error>(result.error()));
    if (!result.ok()) {
        if (result.error().code == ECANCELED) {
            console.fail(QStringLiteral("cancelled; no archive was written"));
            return Cli::kCancelled;
        }
        console.fail(result.error(), "; no archive was written");
        return Cli::kFailed;
    }
    console.out << result.value() << '\n';
    return 0;
}

#include "FileCommands.h"

#include "ArgumentParser.h"
#include "CliPaths.h"
#include "CommandLine.h"
#include "Console.h"
#include "ConsoleFrontEnd.h"
#include "fileops/orchestration/MoveCopyOrchestrator.h"
#include "platform/Platform.h"
#include "platform/freedesktop/FreedesktopTrash.h"
#include "platform/posix/UnixSignalWatcher.h"
#include "utils/Utils.h"

#include <QEventLoop>

#include <unistd.h>

namespace {

QString items(qsizetype n) { return n == 1 ? QStringLiteral("1 item") : QStringLiteral("%1 items").arg(n); }

int runTransfer(bool copy, const Invocation &invocation, Console &console)
{
    std::optional<ConflictAnswer> policy;
    int chosen = 0;
    for (const auto &[flag, answer] : {std::pair{"--keep-both", ConflictAnswer::KeepBoth},
                                        std::pair{"--skip", ConflictAnswer::Skip},
                                        std::pair{"--replace", ConflictAnswer::Replace}}) {
        if (invocation.has(flag)) {
            policy = answer;
            ++chosen;
        }
    }
    if (chosen > 1)
        return CommandLine::usageError(*invocation.command, console,
                                       QStringLiteral("choose one of --keep-both, --skip and --replace"));
    QStringList paths;
    for (const QString &a : invocation.arguments)
        paths.append(CliPaths::absolute(a));
    const QString dest = paths.takeLast();
    if (const auto wrong = CliPaths::notAFolder(dest)) {
        console.fail(*wrong);
        return Cli::kFailed;
    }
    for (const QString &p : std::as_const(paths)) {
        if (const auto missing = CliPaths::missing(p)) {
            console.fail(*missing, " (nothing was done)");
            return Cli::kFailed;
        }
    }

    ConsoleResolver resolver(policy, console);
    ConsoleAlerts alerts(console);
    ConsoleProgress progress(console, ::isatty(STDERR_FILENO));
    FreedesktopTrash trash;
    // The result is this command's own line; a notification would only repeat it.
    Platform services = Platform::current();
    services.notifications = nullptr;
    services.trash = &trash;
    Platform::install(services);

    MoveCopyOrchestrator engine(&resolver, &alerts, &progress, &trash);
    engine.isFileOperationCopy = copy;
    UnixSignalWatcher interrupts;
    QObject::connect(&interrupts, &UnixSignalWatcher::terminationRequested, &engine, &MoveCopyOrchestrator::cancelAll);

    const auto outcome = engine.copyitemsForFileCopy(paths, dest, Utils::checkIfMoveToSameVolume(paths.first(), dest));
    if (outcome == MoveCopyOrchestrator::Outcome::JobStarted) {
        QEventLoop loop;
        QObject::connect(&engine, &MoveCopyOrchestrator::allJobsFinished, &loop, &QEventLoop::quit);
        loop.exec();
    }
    Platform::install({});

    if (outcome == MoveCopyOrchestrator::Outcome::Refused)
        return Cli::kFailed; // the alert has said why
    if (progress.firstError) {
        if (progress.firstError->code == 1001) {
            console.fail(copy ? QStringLiteral("cancelled; nothing is half-written")
                              : QStringLiteral("cancelled; every source is where it was"));
            return Cli::kCancelled;
        }
        if (!alerts.shown)
            console.fail(*progress.firstError);
        return Cli::kFailed;
    }
    const qsizetype skipped = engine.lastSkipped().size();
    const qsizetype done = paths.size() - skipped - engine.lastRenameFailures();
    if (done > 0)
        console.out << (copy ? "copied " : "moved ") << items(done) << " to " << dest << '\n';
    else
        console.fail(QStringLiteral("every item was skipped; nothing was done"));
    if (engine.lastRenameFailures() > 0)
        console.fail(QStringLiteral("%1 could not be moved (QUAYDROP_VERBOSE=1 shows why)").arg(items(engine.lastRenameFailures())));
    if (resolver.unasked() > 0)
        console.fail(QStringLiteral("%1 skipped: the name is taken and there was nobody to ask; "
                                    "choose with --keep-both, --skip or --replace")
                         .arg(items(resolver.unasked())));
    return engine.lastRenameFailures() > 0 || resolver.unasked() > 0 ? Cli::kFailed : 0;
}

} // namespace

int runCopyCommand(const Invocation &invocation, Console &console) { return runTransfer(true, invocation, console); }
int runMoveCommand(const Invocation &invocation, Console &console) { return runTransfer(false, invocation, console); }

#include "FileCommands.h"

#include "CliPaths.h"
#include "CommandLine.h"
#include "ConsoleFrontEnd.h"
#include "core/fs/NativePath.h"
#include "fileops/orchestration/MoveCopyOrchestrator.h"
#include "platform/freedesktop/FreedesktopTrash.h"
#include "platform/posix/UnixSignalWatcher.h"
#include "utils/Utils.h"

#include <QEventLoop>



namespace {

constexpr int kCancelledExit = 130; // as a shell reports Ctrl+C

int runTransfer(bool copy, const QStringList &args, QTextStream &out, QTextStream &err)
{
    const char *usage = copy ? "usage: quaydrop copy SRC... DESTDIR [--keep-both|--skip|--replace]\n"
                             : "usage: quaydrop move SRC... DESTDIR [--keep-both|--skip|--replace]\n";
    std::optional<ConflictAnswer> policy;
    QStringList paths;
    for (const QString &a : args) {
        if (a == u"--keep-both")
            policy = ConflictAnswer::KeepBoth;
        else if (a == u"--skip")
            policy = ConflictAnswer::Skip;
        else if (a == u"--replace")
            policy = ConflictAnswer::Replace;
        else if (a.startsWith(u"--")) {
            err << "quaydrop: unknown option " << a << '\n' << usage;
            return CommandLine::kUsageError;
        } else
            paths.append(CliPaths::absolute(a));
    }
    if (paths.size() < 2) {
        err << usage;
        return CommandLine::kUsageError;
    }
    const QString dest = paths.takeLast();
    if (!Utils::isThisAFolderHere(dest)) {
        err << "quaydrop: " << NativePath::forDisplay(dest) << " is not a folder\n";
        return 1;
    }
    for (const QString &p : std::as_const(paths))
        if (CliPaths::reportMissing(p, err, " (nothing was done)"))
            return 1;

    ConsoleResolver resolver(policy, err);
    ConsoleAlerts alerts(err);
    ConsoleProgress progress(err);
    ConsoleNotifications notifications(out);
    FreedesktopTrash trash;
    Platform services = Platform::current();
    services.notifications = &notifications;
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

    switch (outcome) {
    case MoveCopyOrchestrator::Outcome::Refused:
        return 1;
    case MoveCopyOrchestrator::Outcome::NothingToDo:
        err << "quaydrop: every item was skipped; nothing was done\n";
        return 0;
    case MoveCopyOrchestrator::Outcome::Moved:
        return engine.lastRenameFailures() > 0 ? 1 : 0;
    default:
        break;
    }
    if (!progress.firstError)
        return 0;
    if (progress.firstError->code == 1001) {
        err << "quaydrop: cancelled; every source is where it was\n";
        return kCancelledExit;
    }
    if (!alerts.shown)
        err << "quaydrop: " << progress.firstError->message << '\n';
    return 1;
}

} // namespace

int runCopyCommand(const QStringList &args, QTextStream &out, QTextStream &err) { return runTransfer(true, args, out, err); }
int runMoveCommand(const QStringList &args, QTextStream &out, QTextStream &err) { return runTransfer(false, args, out, err); }

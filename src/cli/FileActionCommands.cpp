#include "FileActionCommands.h"

#include "ArgumentParser.h"
#include "CliPaths.h"
#include "CommandLine.h"
#include "Console.h"
#include "core/fs/NativePath.h"
#include "core/fs/PathParts.h"
#include "fileops/actions/BatchRename.h"
#include "fileops/actions/Gather.h"
#include "fileops/actions/NewItems.h"
#include "fileops/actions/TrashItems.h"
#include "fileops/actions/UndoLog.h"
#include "platform/Platform.h"
#include "platform/freedesktop/FreedesktopTrash.h"
#include "utils/Utils.h"

#include <cstdio>
#include <unistd.h>

namespace {

// The items as absolute paths; false, with the missing one named, when one is not there.
bool existingItems(const Invocation &invocation, Console &console, QStringList &paths, const char *suffix)
{
    for (const QString &a : invocation.arguments) {
        const QString p = CliPaths::absolute(a);
        if (const auto missing = CliPaths::missing(p)) {
            console.fail(*missing, suffix);
            return false;
        }
        paths.append(p);
    }
    return true;
}

int reportFailures(const QList<Error> &failures, Console &console)
{
    for (const Error &e : failures)
        console.fail(e);
    return failures.isEmpty() ? 0 : Cli::kFailed;
}

bool askOnTerminal(Console &console, const QString &question)
{
    if (!::isatty(STDIN_FILENO))
        return false;
    console.err << question << " [y/N] ";
    console.err.flush();
    char line[16] = {};
    return std::fgets(line, sizeof line, stdin) && (line[0] == 'y' || line[0] == 'Y');
}

} // namespace

int runNewCommand(const Invocation &invocation, Console &console)
{
    const std::optional<NewItems::Spec> spec = NewItems::forWord(invocation.arguments.value(0));
    const QString at = CliPaths::absolute(invocation.arguments.value(1));
    if (const auto missing = CliPaths::missing(at)) {
        console.fail(*missing, " (nothing was made)");
        return Cli::kFailed;
    }
    const Result<QString> made = NewItems::create(*spec, NewItems::folderFor(at, invocation.has("--inside") ? 1 : 0),
                                                  invocation.value("--name"));
    if (!made.ok()) {
        console.fail(made.error());
        return Cli::kFailed;
    }
    console.out << made.value() << '\n';
    return 0;
}

int runGatherCommand(const Invocation &invocation, Console &console)
{
    const QString name = invocation.value("--name").trimmed();
    if (name.isEmpty() || name.contains(QLatin1Char('/')))
        return CommandLine::usageError(*invocation.command, console, QStringLiteral("--name takes the name of one new folder"));
    QStringList paths;
    if (!existingItems(invocation, console, paths, " (nothing was moved)"))
        return Cli::kFailed;
    const Gather::Outcome out = Gather::moveSelectedFilesIntoFolder(paths, name);
    if (out.folder.isEmpty())
        return reportFailures(out.failures, console);
    UndoLog::record(QStringLiteral("gather"), out.steps, out.folder);
    console.out << out.folder << '\n';
    return reportFailures(out.failures, console);
}

int runRenameCommand(const Invocation &invocation, Console &console)
{
    const BatchRename::Request blank{{}, {}, invocation.value("--name"), invocation.value("--prefix"), invocation.value("--suffix")};
    if (blank.name.isEmpty() && blank.prefix.isEmpty() && blank.suffix.isEmpty())
        return CommandLine::usageError(*invocation.command, console, QStringLiteral("give --name, --prefix or --suffix"));
    if ((blank.name + blank.prefix + blank.suffix).contains(QLatin1Char('/')))
        return CommandLine::usageError(*invocation.command, console, QStringLiteral("a name cannot hold \"/\""));
    QStringList paths;
    if (!existingItems(invocation, console, paths, " (nothing was renamed)"))
        return Cli::kFailed;
    BatchRename::Request request = blank;
    request.paths = paths;
    request.folder = PathParts::parent(paths.first());
    const BatchRename::Outcome out = BatchRename::run(request);
    UndoLog::record(QStringLiteral("rename"), out.steps);
    for (const QString &p : out.renamed)
        console.out << p << '\n';
    return reportFailures(out.failures, console);
}

int runTrashCommand(const Invocation &invocation, Console &console)
{
    QStringList paths;
    for (const QString &a : invocation.arguments)
        paths.append(CliPaths::absolute(a));
    FreedesktopTrash trash;
    const TrashItems::Outcome out = TrashItems::trashFiles(paths, &trash, Platform::current().volumes);
    QList<Error> failures = out.failures;
    for (const QString &path : out.noTrash) {
        if (!askOnTerminal(console, QStringLiteral("%1 lies on a volume without a trash. Delete it for good?").arg(NativePath::forDisplay(path)))) {
            failures.append(Error{QStringLiteral("Trash"), 1, QString(),
                                  {{QStringLiteral("path"), path}, {QStringLiteral("reason"), QStringLiteral("no trash on its volume; left alone")}}});
            continue;
        }
        if (const Status s = TrashItems::deleteForGood(path); !s.ok())
            failures.append(s.error());
    }
    UndoLog::record(QStringLiteral("trash"), out.trashed);
    for (const UndoLog::Step &s : out.trashed)
        console.out << s.now << '\n';
    for (const QString &m : out.ejected)
        console.out << m << '\n';
    return reportFailures(failures, console);
}

int runRevealCommand(const Invocation &invocation, Console &console)
{
    QStringList paths;
    if (!existingItems(invocation, console, paths, ""))
        return Cli::kFailed;
    Workspace *workspace = Platform::current().workspace;
    if (!workspace) {
        console.fail(QStringLiteral("no file manager can be asked from here"));
        return Cli::kFailed;
    }
    if (const Status s = workspace->revealItems(paths); !s.ok()) {
        console.fail(s.error());
        return Cli::kFailed;
    }
    return 0;
}

int runUndoCommand(const Invocation &, Console &console)
{
    FreedesktopTrash trash;
    const Result<QStringList> restored = UndoLog::undo(QString(), &trash);
    if (!restored.ok()) {
        console.fail(restored.error().message);
        return Cli::kFailed;
    }
    for (const QString &p : restored.value())
        console.out << p << '\n';
    return 0;
}

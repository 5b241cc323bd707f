#include "DestinationsCommand.h"

#include "ArgumentParser.h"
#include "CliPaths.h"
#include "CommandLine.h"
#include "Console.h"
#include "fileops/destinations/DestinationEdits.h"
#include "fileops/destinations/DestinationRows.h"
#include "utils/Utils.h"

namespace {

int reported(const Status &s, Console &console)
{
    if (s.ok())
        return 0;
    console.fail(s.error());
    return Cli::kFailed;
}

} // namespace

int runDestinationsCommand(const Invocation &invocation, Console &console)
{
    const QStringList &args = invocation.arguments;
    const QString action = args.value(0, QStringLiteral("list"));
    const qsizetype wanted = action == u"list" ? 1 : action == u"rename" ? 3 : 2;
    if (args.size() > wanted)
        return CommandLine::usageError(*invocation.command, console,
                                       QStringLiteral("%1 takes %2").arg(action, action == u"list" ? QStringLiteral("nothing more")
                                                                              : action == u"rename" ? QStringLiteral("DIR and NAME")
                                                                                                    : QStringLiteral("DIR")));
    if (action != u"list" && args.size() < wanted)
        return CommandLine::usageError(*invocation.command, console,
                                       QStringLiteral("%1 is missing").arg(args.size() < 2 ? QStringLiteral("DIR") : QStringLiteral("NAME")));

    if (action == u"list") {
        const QStringList paths = Utils::createMoveDestArr();
        for (const DestinationRow &row : DestinationRows::rowsFor(paths, Utils::defFileMoveDestPaths(true), {}))
            console.out << row.name << '\t' << row.path << '\n';
        return 0;
    }
    const QString path = CliPaths::absolute(args.at(1));
    if (action == u"add") {
        const Status s = DestinationEdits::add(path, Utils::createMoveDestArr());
        if (s.ok())
            console.out << "added " << path << '\n';
        return reported(s, console);
    }
    if (action == u"remove") {
        const Status s = DestinationEdits::remove(path);
        if (s.ok())
            console.out << "removed " << path << '\n';
        return reported(s, console);
    }
    const Status s = DestinationEdits::rename(path, args.at(2));
    if (s.ok())
        console.out << "renamed " << path << " to " << DestinationEdits::destNameForDestPath(path) << '\n';
    return reported(s, console);
}

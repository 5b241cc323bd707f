#include "IntegrateCommand.h"

#include "ArgumentParser.h"
#include "Console.h"
#include "platform/freedesktop/FileManagerEntries.h"

int runIntegrateCommand(const Invocation &invocation, Console &console)
{
    using FileManagerEntries::Change;
    const bool thunar = invocation.arguments.value(0) == u"thunar";
    const bool remove = invocation.has("--remove");
    const QString where = thunar ? FileManagerEntries::thunarActionsFile() : FileManagerEntries::nautilusScriptsFolder();
    const Result<Change> change = thunar ? FileManagerEntries::integrateThunar(where, remove)
                                         : FileManagerEntries::integrateNautilus(where, remove);
    if (!change) {
        console.fail(change.error().message);
        return Cli::kFailed;
    }
    switch (change.value()) {
    case Change::Added: console.out << "\"Open in Quaydrop\" added to " << where << '\n'; break;
    case Change::AlreadyThere: console.out << "\"Open in Quaydrop\" is already in " << where << '\n'; break;
    case Change::Removed: console.out << "\"Open in Quaydrop\" removed from " << where << '\n'; break;
    case Change::NotThere: console.out << "\"Open in Quaydrop\" was not in " << where << '\n'; break;
    }
    if (thunar && change.value() != Change::AlreadyThere && change.value() != Change::NotThere)
        console.out << "Thunar reads it at its next start (thunar -q ends the running one).\n";
    return 0;
}

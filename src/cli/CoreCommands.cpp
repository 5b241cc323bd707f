#include "CoreCommands.h"

#include "ArgumentParser.h"
#include "CliPaths.h"
#include "Console.h"
#include "core/ledger/TimeSavedLedger.h"
#include "utils/Utils.h"

// A path that is not there gets its error line and nothing on standard output.
int runTypeCommand(const Invocation &invocation, Console &console)
{
    int status = 0;
    for (const QString &p : invocation.arguments) {
        const QString path = CliPaths::absolute(p);
        if (const auto missing = CliPaths::missing(path)) {
            console.fail(*missing);
            status = Cli::kFailed;
            continue;
        }
        console.out << Utils::determineFileType(path) << '\t' << p << '\n';
    }
    return status;
}

int runSizeCommand(const Invocation &invocation, Console &console)
{
    QStringList absolutePaths;
    int status = 0;
    for (const QString &p : invocation.arguments) {
        absolutePaths.append(CliPaths::absolute(p));
        if (const auto missing = CliPaths::missing(absolutePaths.last())) {
            console.fail(*missing);
            status = Cli::kFailed;
        }
    }
    // One walk: the readable text is the same as getTheSizeOfItemsInArr's for a non-empty list.
    const quint64 bytes = Utils::sizeOfItemsInArr(absolutePaths);
    console.out << Utils::getHumanReadableSizeFrom(bytes) << '\t' << bytes << " bytes\n";
    return status;
}

int runLedgerCommand(const Invocation &, Console &console)
{
    const auto values = Utils::getTimeSavedDictionaryValues();
    if (!values) {
        console.fail(QStringLiteral("%1: cannot be read").arg(Utils::getTimeSavedPlistPath()));
        return Cli::kFailed;
    }
    console.out << "This week: " << relativeTime(values->value(QStringLiteral("weeklySecSaved")).toULongLong()) << '\n'
                << "Total:     " << relativeTime(values->value(QStringLiteral("totalSecSaved")).toULongLong()) << '\n';
    return 0;
}

#include "CoreCommands.h"

#include "CliPaths.h"
#include "CommandLine.h"
#include "core/fs/NativePath.h"
#include "core/ledger/TimeSavedLedger.h"
#include "utils/Utils.h"





// Classification goes by name, so a path that does not exist still has a code; it is reported all the same.
int runTypeCommand(const QStringList &paths, QTextStream &out, QTextStream &err)
{
    if (paths.isEmpty()) {
        err << "usage: quaydrop type PATH...\n";
        return CommandLine::kUsageError;
    }
    int status = 0;
    for (const QString &p : paths) {
        const QString path = CliPaths::absolute(p);
        if (CliPaths::reportMissing(path, err))
            status = 1;
        out << Utils::determineFileType(path) << '\t' << NativePath::forDisplay(p) << '\n';
    }
    return status;
}

int runSizeCommand(const QStringList &paths, QTextStream &out, QTextStream &err)
{
    if (paths.isEmpty()) {
        err << "usage: quaydrop size PATH...\n";
        return CommandLine::kUsageError;
    }
    QStringList absolutePaths;
    int status = 0;
    for (const QString &p : paths) {
        absolutePaths.append(CliPaths::absolute(p));
        if (CliPaths::reportMissing(absolutePaths.last(), err))
            status = 1;
    }
    // One walk: the readable text is the same as getTheSizeOfItemsInArr's for a non-empty list.
    const quint64 bytes = Utils::sizeOfItemsInArr(absolutePaths);
    out << Utils::getHumanReadableSizeFrom(bytes) << '\t' << bytes << " bytes\n";
    return status;
}

int runLedgerCommand(const QStringList &args, QTextStream &out, QTextStream &err)
{
    if (!args.isEmpty()) {
        err << "usage: quaydrop ledger\n";
        return CommandLine::kUsageError;
    }
    const auto values = Utils::getTimeSavedDictionaryValues();
    if (!values) {
        err << "quaydrop: the time-saved ledger " << Utils::getTimeSavedPlistPath() << " cannot be read\n";
        return 1;
    }
    out << "This week: " << relativeTime(values->value(QStringLiteral("weeklySecSaved")).toULongLong()) << '\n'
        << "Total:     " << relativeTime(values->value(QStringLiteral("totalSecSaved")).toULongLong()) << '\n';
    return 0;
}

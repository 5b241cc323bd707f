#include "SendingCommands.h"

#include "ArgumentParser.h"
#include "CliPaths.h"
#include "CommandLine.h"
#include "CommandTable.h"
#include "Console.h"
#include "platform/cups/CupsPrint.h"
#include "platform/freedesktop/FreedesktopMail.h"
#include "platform/freedesktop/FreedesktopShare.h"
#include "sending/FileUris.h"
#include "sending/PrintDocument.h"
#include "sending/ShareTargets.h"

#include <QEventLoop>

#include <algorithm>
#include <optional>

namespace {

// The arguments as absolute paths; nothing when one of them is not there (said).
std::optional<QStringList> existingPaths(const Invocation &invocation, Console &console, const char *nothingDone)
{
    QStringList paths;
    for (const QString &a : invocation.arguments) {
        const QString path = CliPaths::absolute(a);
        if (const auto missing = CliPaths::missing(path)) {
            console.fail(*missing, nothingDone);
            return std::nullopt;
        }
        paths.append(path);
    }
    return paths;
}

// The desktop's mail, share and print services, for the one command this process runs.
struct SendingServices
{
    SendingServices()
    {
        Platform services = Platform::current();
        services.mail = &mail;
        services.share = &share;
        services.print = &print;
        Platform::install(services);
    }
    FreedesktopMail mail;
    FreedesktopShare share;
    CupsPrint print;
};

} // namespace

int runMailCommand(const Invocation &invocation, Console &console)
{
    SendingServices services;
    const auto paths = existingPaths(invocation, console, " (no mail was started)");
    if (!paths)
        return Cli::kFailed;
    MailService *mail = Platform::current().mail;
    if (!mail) {
        console.fail(QStringLiteral("no mail service on this desktop"));
        return Cli::kFailed;
    }
    std::optional<Status> result;
    QEventLoop loop;
    mail->composeWithAttachments(FileUris::fromPaths(*paths), [&](Status s) {
        result = s;
        loop.quit();
    });
    if (!result)
        loop.exec();
    if (!result->ok()) {
        console.fail(result->error().message);
        return Cli::kFailed;
    }
    console.out << mail->defaultClient().desktopFile << '\n';
    return 0;
}

int runShareCommand(const Invocation &invocation, Console &console)
{
    const bool list = invocation.has("--list");
    if (list == invocation.has("--to"))
        return CommandLine::usageError(*invocation.command, console, QStringLiteral("give either --list or --to TARGET"));
    SendingServices services;
    const auto paths = existingPaths(invocation, console, " (nothing was shared)");
    if (!paths)
        return Cli::kFailed;
    const QList<ShareTarget> targets = ShareTargets::forFiles(*paths, ShareTargets::Use::CommandLine);
    if (list) {
        for (const ShareTarget &t : targets)
            console.out << t.id << '\t' << t.title << '\n';
        return 0;
    }
    const QString target = invocation.value("--to");
    if (std::none_of(targets.cbegin(), targets.cend(), [&](const ShareTarget &t) { return t.id == target; })) {
        console.fail(QStringLiteral("no share target %1 here for these files (quaydrop share --list FILE lists them)").arg(target));
        return Cli::kFailed;
    }
    std::optional<Status> result;
    QEventLoop loop;
    ShareTargets::shareFiles(target, *paths, [&](Status s) {
        result = s;
        loop.quit();
    });
    if (!result)
        loop.exec();
    if (!result->ok()) {
        console.fail(result->error().message);
        return Cli::kFailed;
    }
    return 0;
}

int runPrintCommand(const Invocation &invocation, Console &console)
{
    SendingServices services;
    const auto paths = existingPaths(invocation, console, " (nothing was printed)");
    if (!paths)
        return Cli::kFailed;
    PrintService *service = Platform::current().print;
    if (!service) {
        console.fail(QStringLiteral("no printing system on this machine"));
        return Cli::kFailed;
    }
    const QString printer = invocation.has("--printer") ? invocation.value("--printer") : service->defaultPrinter();
    if (printer.isEmpty()) {
        console.fail(QStringLiteral("no default printer is set up; name one with --printer (lpstat -e lists them)"));
        return Cli::kFailed;
    }
    PrintOptions options;
    if (invocation.has("--copies"))
        options.copies = invocation.value("--copies").toInt();
    options.pageRanges = invocation.value("--pages");
    int status = 0;
    for (const QString &path : *paths) {
        const auto job = PrintDocument::print(*service, {path, invocation.value("--password").toUtf8(), printer, options, {}});
        if (!job.ok()) {
            console.fail(job.error(), " (not printed)");
            status = Cli::kFailed;
            continue;
        }
        console.out << printer << '-' << job.value() << '\t' << path << '\n';
    }
    return status;
}

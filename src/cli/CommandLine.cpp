#include "CommandLine.h"

#include <optional>

#include "ArgumentParser.h"
#include "Console.h"
#include "HelpText.h"

#include "core/fs/NativePath.h"
#include "core/texts/Texts.h"

#include <QCoreApplication>
#include <QFile>

#include <clocale>
#include <cstdio>
#include <optional>
#include <unistd.h>

namespace {

QStringList argumentsAsPaths(int argc, char **argv)
{
    // Not QCoreApplication::arguments(): those lose bytes of names that are not UTF-8.
    QStringList args;
    for (int i = 0; i < argc; ++i)
        args.append(NativePath::fromNative(QByteArray(argv[i])));
    return args;
}

// Commands speak through their own output; the program's log lines only with QUAYDROP_VERBOSE=1.
void quietLog(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type == QtCriticalMsg || type == QtFatalMsg)
        std::fprintf(stderr, "quaydrop: %s\n", qPrintable(message));
}

bool asksForHelp(const QString &first) { return first == u"--help" || first == u"-h" || first == u"help"; }

// Help, the version, a command that only reads and prints, and a word that is no command at all.
bool startsBare(const QStringList &args)
{
    const QString first = args.value(1);
    if (asksForHelp(first) || first == u"--version")
        return true;
    const Cli::Command *command = Cli::find(first);
    return !command || command->startsBare;
}

} // namespace

int CommandLine::runProcess(int argc, char **argv, const std::function<std::unique_ptr<QObject>()> &desktopServices)
{
    if (qEnvironmentVariableIntValue("QUAYDROP_VERBOSE") == 0)
        qInstallMessageHandler(quietLog);
    // A command with a window (edit) or one that lays text out (print) comes with the application its
    // caller made for it.
    const QStringList args = argumentsAsPaths(argc, argv);
    std::optional<QCoreApplication> app;
    if (QCoreApplication::instance()) {
        // made by the caller
    } else if (startsBare(args)) {
        // Of what the application object sets up, only the language of the system's error messages
        // and the character set they are written in matter here.
        std::setlocale(LC_CTYPE, "");
        std::setlocale(LC_MESSAGES, "");
    } else {
        app.emplace(argc, argv);
    }
    Texts::setStartupLanguageOnFirstUse();
    const std::unique_ptr<QObject> services = desktopServices ? desktopServices() : nullptr;
    // Unbuffered: each line goes out whole and in order, and a path keeps its bytes.
    QFile out, err;
    out.open(STDOUT_FILENO, QIODevice::WriteOnly | QIODevice::Unbuffered);
    err.open(STDERR_FILENO, QIODevice::WriteOnly | QIODevice::Unbuffered);
    Console console(out, err);
    return CommandLine::run(args, console);
}

bool CommandLine::wantsCommandLine(const QStringList &args) { return args.size() > 1; }

int CommandLine::usageError(const Cli::Command &command, Console &console, const QString &what)
{
    console.fail(QStringLiteral("%1: %2").arg(QLatin1String(command.name), what));
    console.err << "usage: " << HelpText::synopsis(command) << '\n';
    return Cli::kUsageError;
}

int CommandLine::run(const QStringList &args, Console &console)
{
    const QString first = args.value(1);
    if (asksForHelp(first)) {
        if (const Cli::Command *c = Cli::find(args.value(2)))
            HelpText::printCommand(*c, console.out);
        else
            HelpText::printOverview(console.out);
        return 0;
    }
    if (first == u"--version") {
        console.out << HelpText::versionLine() << '\n';
        return 0;
    }
    const Cli::Command *command = Cli::find(first);
    if (!command) {
        console.fail(first.startsWith(QChar('-')) ? QStringLiteral("unknown option %1").arg(first)
                                                  : QStringLiteral("unknown command \"%1\"").arg(first));
        console.err << "Try \"quaydrop --help\".\n";
        return Cli::kUsageError;
    }
    const auto parsed = ArgumentParser::parse(*command, args.mid(2));
    if (const auto *wrong = std::get_if<ArgumentParser::UsageError>(&parsed))
        return usageError(*command, console, wrong->what);
    const Invocation &invocation = std::get<Invocation>(parsed);
    if (invocation.helpAsked) {
        HelpText::printCommand(*command, console.out);
        return 0;
    }
    return command->run(invocation, console);
}

#include "HelpText.h"

#include "Console.h"

QString HelpText::optionCall(const Cli::Option &o)
{
    QString call = QLatin1String(o.name);
    if (o.kind != Cli::ValueKind::None)
        call += QChar(' ') + QLatin1String(o.valueName);
    if (*o.shortName)
        call += QStringLiteral(", ") + QLatin1String(o.shortName);
    return call;
}

namespace {

constexpr int kOptionColumn = 22;

void printOptions(const std::vector<Cli::Option> &options, const QString &indent, ConsoleStream &out)
{
    for (const Cli::Option &o : options) {
        const QString help = QLatin1String(o.help);
        const QString call = HelpText::optionCall(o);
        if (call.size() < kOptionColumn - 1)
            out << indent << call.leftJustified(kOptionColumn) << help << '\n';
        else
            out << indent << call << '\n' << indent << QString(kOptionColumn, QChar(' ')) << help << '\n';
    }
}

} // namespace

const char *const HelpText::kIntro =
    "Without a command, Quaydrop starts resident in the tray (or asks the running one to come forward).\n"
    "With one, it does that action and ends: results on standard output, progress and errors on\n"
    "standard error.\n";
const char *const HelpText::kExitStatus =
    "Exit status: 0 when everything was done, 1 when something could not be done, 2 for a\n"
    "usage error, 130 when stopped by Ctrl+C.\n";
const char *const HelpText::kDoubleDash = "what follows is an argument, even when it starts with \"-\"";

QString HelpText::synopsis(const Cli::Command &command) { return QStringLiteral("quaydrop ") + call(command); }

QString HelpText::call(const Cli::Command &command)
{
    QStringList parts{QLatin1String(command.name)};
    for (const Cli::Argument &a : command.arguments) {
        // A choice stands before the options: its words say more than a name would.
        if (a.kind == Cli::ArgumentKind::Choice)
            parts << (a.optional ? QStringLiteral("[%1]") : QStringLiteral("%1")).arg(a.choices.join(QChar('|')));
    }
    for (const Cli::Option &o : command.options) {
        const QString call = QLatin1String(o.name) +
                             (o.kind == Cli::ValueKind::None ? QString() : QChar(' ') + QLatin1String(o.valueName));
        parts << QStringLiteral("[%1]").arg(call);
    }
    for (const Cli::Argument &a : command.arguments) {
        if (a.kind != Cli::ArgumentKind::Choice)
            parts << (a.optional ? QStringLiteral("[%1]") : QStringLiteral("%1"))
                         .arg(QLatin1String(a.name) + (a.repeated ? QStringLiteral("...") : QString()));
    }
    return parts.join(QChar(' '));
}

void HelpText::printOverview(ConsoleStream &out)
{
    out << "Usage: quaydrop [COMMAND [OPTION...] ARGUMENT...]\n" << kIntro << "\nCommands:\n";
    for (const Cli::Command &c : Cli::commands()) {
        out << "  " << call(c) << '\n' << "      " << c.summary << '\n';
        printOptions(c.options, QStringLiteral("      "), out);
    }
    out << "\nOptions of every command, and alone:\n";
    printOptions(Cli::commonOptions(), QStringLiteral("  "), out);
    out << "  " << QStringLiteral("--").leftJustified(kOptionColumn) << kDoubleDash << "\n\n" << kExitStatus;
}

void HelpText::printCommand(const Cli::Command &command, ConsoleStream &out)
{
    out << "Usage: " << synopsis(command) << '\n' << command.summary << '\n';
    if (*command.details)
        out << '\n' << command.details << '\n';
    out << "\nOptions:\n";
    printOptions(command.options, QStringLiteral("  "), out);
    printOptions({Cli::commonOptions().front()}, QStringLiteral("  "), out);
    out << '\n' << kExitStatus;
}

QString HelpText::versionLine() { return QStringLiteral("quaydrop %1").arg(QLatin1String(QD_VERSION)); }

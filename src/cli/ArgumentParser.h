#pragma once

#include "CommandTable.h"

#include <QHash>
#include <QSet>
#include <QStringList>

#include <variant>

// One command's arguments as the table describes them, each option's value checked for its kind.
struct Invocation
{
    const Cli::Command *command = nullptr;
    QStringList arguments;          // the positional ones, in order
    QHash<QString, QString> values; // by option name, the last one given
    QSet<QString> flags;
    bool helpAsked = false;

    bool has(const char *option) const { return flags.contains(QLatin1String(option)) || values.contains(QLatin1String(option)); }
    QString value(const char *option) const { return values.value(QLatin1String(option)); }
};

namespace ArgumentParser {

// What is wrong with the arguments, in one line for a person.
struct UsageError
{
    QString what;
};

// "--name value", "--name=value", flags, "--" (what follows is positional), and the common --help/-h.
// The count of positional arguments and the words of a choice are checked here too.
std::variant<Invocation, UsageError> parse(const Cli::Command &command, const QStringList &args);

// Whether `text` is a value of `kind`; the phrase that says what the kind takes ("a whole number of
// pixels, 1 or more").
bool accepts(Cli::ValueKind kind, const QString &text);
QString describe(Cli::ValueKind kind);

} // namespace ArgumentParser

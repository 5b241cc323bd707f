#include "ArgumentParser.h"

#include <QRegularExpression>

using Cli::ArgumentKind;
using Cli::ValueKind;

namespace {

const Cli::Option *findOption(const Cli::Command &command, const QString &name)
{
    for (const Cli::Option &o : command.options)
        if (name == QLatin1String(o.name))
            return &o;
    return nullptr;
}

bool isNumberIn(const QString &text, double low, double high, bool whole)
{
    static const QRegularExpression number(QStringLiteral("^[0-9]+(\\.[0-9]+)?$"));
    static const QRegularExpression integer(QStringLiteral("^[0-9]+$"));
    if (!(whole ? integer : number).match(text).hasMatch())
        return false;
    bool ok = false;
    const double value = text.toDouble(&ok);
    return ok && value >= low && value <= high;
}

QString quoted(const QString &text) { return QStringLiteral("\"%1\"").arg(text); }

// Positional arguments to the table's arguments: the repeated one takes what the others leave.
std::optional<ArgumentParser::UsageError> checkPositional(const Cli::Command &command, const QStringList &given)
{
    const auto &wanted = command.arguments;
    qsizetype fixed = 0;
    qsizetype required = 0;
    bool repeated = false;
    for (const Cli::Argument &a : wanted) {
        if (a.repeated)
            repeated = true;
        else
            ++fixed;
        if (!a.optional)
            ++required;
    }
    const qsizetype least = required;
    if (given.size() < least) {
        // Name the first argument that is missing.
        const Cli::Argument &missing = wanted.at(size_t(std::min<qsizetype>(given.size(), qsizetype(wanted.size()) - 1)));
        return ArgumentParser::UsageError{QStringLiteral("%1 is missing").arg(QLatin1String(missing.name))};
    }
    if (!repeated && given.size() > fixed)
        return ArgumentParser::UsageError{QStringLiteral("unexpected argument %1").arg(quoted(given.at(fixed)))};
    // Only arguments before the repeated one stand at a fixed place from the start.
    for (qsizetype i = 0; i < qsizetype(wanted.size()) && i < given.size() && !wanted.at(size_t(i)).repeated; ++i) {
        const Cli::Argument &a = wanted.at(size_t(i));
        if (a.kind == ArgumentKind::Choice && !a.choices.contains(given.at(i)))
            return ArgumentParser::UsageError{QStringLiteral("%1 is one of %2, not %3")
                                                  .arg(QLatin1String(a.name), a.choices.join(QStringLiteral(", ")),
                                                       quoted(given.at(i)))};
    }
    return std::nullopt;
}

} // namespace

bool ArgumentParser::accepts(ValueKind kind, const QString &text)
{
    switch (kind) {
    case ValueKind::None:
        return false;
    case ValueKind::Pixels:
        return isNumberIn(text, 1, 1e9, true);
    case ValueKind::Percent:
        return isNumberIn(text, 0, 100, false);
    case ValueKind::Dpi:
        return isNumberIn(text, 30, 1000, false);
    case ValueKind::Folder:
        return !text.isEmpty();
    case ValueKind::Text:
        return true;
    case ValueKind::Turns:
        return isNumberIn(text, 1, 3, true);
    case ValueKind::Rectangle: {
        // Nine digits at most, so that every number fits an int.
        static const QRegularExpression rect(
            QStringLiteral("^0*[0-9]{1,9},0*[0-9]{1,9},0*[1-9][0-9]{0,8},0*[1-9][0-9]{0,8}$"));
        return rect.match(text).hasMatch();
    }
    case ValueKind::Count:
        return isNumberIn(text, 1, 999, true);
    case ValueKind::Pages: {
        static const QRegularExpression ranges(QStringLiteral("^[1-9][0-9]*(-[1-9][0-9]*)?(,[1-9][0-9]*(-[1-9][0-9]*)?)*$"));
        if (!ranges.match(text).hasMatch())
            return false;
        for (const QString &range : text.split(QLatin1Char(','))) {
            const QStringList ends = range.split(QLatin1Char('-'));
            if (ends.size() == 2 && ends.at(0).toLongLong() > ends.at(1).toLongLong())
                return false;
        }
        return true;
    }
    }
    return false;
}

QString ArgumentParser::describe(ValueKind kind)
{
    switch (kind) {
    case ValueKind::None:
        return QStringLiteral("no value");
    case ValueKind::Pixels:
        return QStringLiteral("a whole number of pixels, 1 or more");
    case ValueKind::Percent:
        return QStringLiteral("a number from 0 to 100");
    case ValueKind::Dpi:
        return QStringLiteral("a number of dots per inch from 30 to 1000");
    case ValueKind::Folder:
        return QStringLiteral("the path of a folder");
    case ValueKind::Text:
        return QStringLiteral("a text");
    case ValueKind::Turns:
        return QStringLiteral("1, 2 or 3 quarter turns clockwise");
    case ValueKind::Rectangle:
        return QStringLiteral("X,Y,W,H in whole pixels from the top left, W and H 1 or more");
    case ValueKind::Count:
        return QStringLiteral("a whole number from 1 to 999");
    case ValueKind::Pages:
        return QStringLiteral("pages from 1, such as 2, 1-3 or 1-3,7");
    }
    return {};
}

std::variant<Invocation, ArgumentParser::UsageError> ArgumentParser::parse(const Cli::Command &command,
                                                                            const QStringList &args)
{
    Invocation inv;
    inv.command = &command;
    bool optionsEnded = false;
    for (qsizetype i = 0; i < args.size(); ++i) {
        const QString &a = args.at(i);
        if (optionsEnded || a == u"-" || !a.startsWith(QChar('-'))) {
            inv.arguments.append(a);
            continue;
        }
        if (a == u"--") {
            optionsEnded = true;
            continue;
        }
        if (a == u"--help" || a == u"-h") {
            inv.helpAsked = true;
            continue;
        }
        const qsizetype equals = a.indexOf(QChar('='));
        const QString name = equals > 0 ? a.left(equals) : a;
        const Cli::Option *option = findOption(command, name);
        if (!option)
            return UsageError{QStringLiteral("unknown option %1").arg(name)};
        if (option->kind == ValueKind::None) {
            if (equals > 0)
                return UsageError{QStringLiteral("%1 takes no value").arg(name)};
            inv.flags.insert(name);
            continue;
        }
        QString value;
        if (equals > 0)
            value = a.mid(equals + 1);
        else if (i + 1 < args.size())
            value = args.at(++i);
        else
            return UsageError{QStringLiteral("%1 needs a value (%2)").arg(name, describe(option->kind))};
        if (!accepts(option->kind, value))
            return UsageError{QStringLiteral("%1 takes %2, not %3").arg(name, describe(option->kind), quoted(value))};
        inv.values.insert(name, value);
    }
    if (inv.helpAsked)
        return inv;
    if (auto wrong = checkPositional(command, inv.arguments))
        return *wrong;
    return inv;
}

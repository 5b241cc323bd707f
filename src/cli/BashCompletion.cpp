#include "BashCompletion.h"

#include "CommandTable.h"

#include <QStringList>

namespace {

QString argumentKind(const Cli::Argument &a)
{
    QString kind;
    switch (a.kind) {
    case Cli::ArgumentKind::Path: kind = QStringLiteral("path"); break;
    case Cli::ArgumentKind::File: kind = QStringLiteral("file"); break;
    case Cli::ArgumentKind::Folder: kind = QStringLiteral("folder"); break;
    case Cli::ArgumentKind::Text: kind = QStringLiteral("text"); break;
    case Cli::ArgumentKind::Choice: kind = QStringLiteral("choice:") + a.choices.join(QChar(',')); break;
    }
    return a.repeated ? kind + QChar('+') : kind;
}

QStringList optionNames(const std::vector<Cli::Option> &options, bool (*keep)(const Cli::Option &))
{
    QStringList names;
    for (const Cli::Option &o : options)
        if (keep(o)) {
            names << QLatin1String(o.name);
            if (*o.shortName)
                names << QLatin1String(o.shortName);
        }
    return names;
}

const char *kFunction = R"(
    local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD-1]}
    if [ "$COMP_CWORD" -eq 1 ]; then
        COMPREPLY=($(compgen -W "$commands $common --destinations" -- "$cur"))
        return
    fi
    local options="" takes_value="" takes_folder="" kinds=""
    _quaydrop_command "${COMP_WORDS[1]}" || return
    if [[ " $takes_value " == *" $prev "* ]]; then
        if [[ " $takes_folder " == *" $prev "* ]]; then
            compopt -o filenames 2>/dev/null
            COMPREPLY=($(compgen -d -- "$cur"))
        fi
        return
    fi
    if [[ $cur == -* ]]; then
        COMPREPLY=($(compgen -W "$options $common --" -- "$cur"))
        return
    fi
    # Which argument the word is: options and their values do not count.
    local i n=0 word
    for ((i = 2; i < COMP_CWORD; i++)); do
        word=${COMP_WORDS[i]}
        if [[ $word == -* ]]; then
            [[ " $takes_value " == *" $word "* ]] && ((i++))
            continue
        fi
        ((n++))
    done
    local kind=""
    for word in $kinds; do
        kind=$word
        [[ $kind == *+ ]] && break
        ((n-- == 0)) && break
        kind=""
    done
    case ${kind%+} in
    path | file) compopt -o filenames 2>/dev/null; COMPREPLY=($(compgen -f -- "$cur")) ;;
    folder) compopt -o filenames 2>/dev/null; COMPREPLY=($(compgen -d -- "$cur")) ;;
    choice:*) local words=${kind%+}; words=${words#choice:}; COMPREPLY=($(compgen -W "${words//,/ }" -- "$cur")) ;;
    esac
}
complete -F _quaydrop quaydrop
)";

} // namespace

QByteArray BashCompletion::write()
{
    QStringList names;
    QString cases;
    for (const Cli::Command &c : Cli::commands()) {
        names << QLatin1String(c.name);
        QStringList kinds;
        for (const Cli::Argument &a : c.arguments)
            kinds << argumentKind(a);
        cases += QStringLiteral("    %1) options=\"%2\" takes_value=\"%3\" takes_folder=\"%4\" kinds=\"%5\" ;;\n")
                     .arg(QLatin1String(c.name),
                          optionNames(c.options, [](const Cli::Option &) { return true; }).join(QChar(' ')),
                          optionNames(c.options, [](const Cli::Option &o) { return o.kind != Cli::ValueKind::None; })
                              .join(QChar(' ')),
                          optionNames(c.options, [](const Cli::Option &o) { return o.kind == Cli::ValueKind::Folder; })
                              .join(QChar(' ')),
                          kinds.join(QChar(' ')));
    }
    const QString common = optionNames(Cli::commonOptions(), [](const Cli::Option &) { return true; }).join(QChar(' '));
    QString script = QStringLiteral("# bash completion for quaydrop; written at build time from its table of commands.\n"
                                    "_quaydrop_command()\n{\n    case $1 in\n") +
                     cases + QStringLiteral("    *) return 1 ;;\n    esac\n}\n\n_quaydrop()\n{\n") +
                     QStringLiteral("    local commands=\"%1\" common=\"%2\"").arg(names.join(QChar(' ')), common) +
                     QString::fromUtf8(kFunction);
    return script.toUtf8();
}

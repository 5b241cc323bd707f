#include "ManPage.h"

#include "HelpText.h"

#include <QStringList>

namespace {

// Text as roff reads it: a backslash is printed, a line never starts a request, and "-" in an option
// stays a hyphen-minus so that it can be searched for and copied.
QString roff(QString text)
{
    text.replace(QChar('\\'), QStringLiteral("\\e")).replace(QChar('-'), QStringLiteral("\\-"));
    QStringList lines = text.split(QChar('\n'));
    for (QString &line : lines)
        if (line.startsWith(QChar('.')) || line.startsWith(QChar('\'')))
            line.prepend(QStringLiteral("\\&"));
    return lines.join(QChar('\n'));
}

// Help paragraphs are wrapped for a terminal; the manual lets man fill them to the reader's width.
QString paragraph(const char *text) { return roff(QString::fromUtf8(text).trimmed().replace(QChar('\n'), QChar(' '))); }

void options(const std::vector<Cli::Option> &list, QString &page)
{
    for (const Cli::Option &o : list)
        page += QStringLiteral(".TP\n.B %1\n%2\n").arg(roff(HelpText::optionCall(o)), roff(QLatin1String(o.help)));
}

} // namespace

QByteArray ManPage::write(const QString &date)
{
    QString page = QStringLiteral(".\\\" Written at build time from the table that prints quaydrop --help.\n"
                                  ".TH QUAYDROP 1 \"%1\" \"quaydrop %2\" \"User Commands\"\n")
                       .arg(date, QLatin1String(QD_VERSION));
    page += QStringLiteral(".SH NAME\nquaydrop \\- drop window for files, text and images, with actions that fit them\n");
    // Left-adjusted, as manual synopses are: justified, a long call would spread its words apart.
    page += QStringLiteral(".SH SYNOPSIS\n.ad l\n.B quaydrop\n.br\n");
    for (const Cli::Command &c : Cli::commands())
        page += QStringLiteral(".B quaydrop\n%1\n.br\n").arg(roff(HelpText::call(c)));
    page += QStringLiteral(".B quaydrop\n\\-\\-help | \\-\\-version\n.ad b\n");
    page += QStringLiteral(".SH DESCRIPTION\nQuaydrop is a resident tray utility: while you drag anything anywhere "
                           "on the screen, a small drop window appears next to the pointer, and a drop shows the "
                           "actions that fit what was dropped.\n.PP\n") +
            paragraph(HelpText::kIntro) + QChar('\n');
    page += QStringLiteral(".SH COMMANDS\n");
    for (const Cli::Command &c : Cli::commands()) {
        page += QStringLiteral(".TP\n.B %1\n%2\n").arg(roff(HelpText::call(c)), roff(QLatin1String(c.summary)));
        if (*c.details)
            page += QStringLiteral(".IP\n%1\n").arg(paragraph(c.details));
        if (!c.options.empty()) {
            page += QStringLiteral(".RS\n");
            options(c.options, page);
            page += QStringLiteral(".RE\n");
        }
    }
    page += QStringLiteral(".SH OPTIONS\nThese stand alone or follow any command.\n");
    options(Cli::commonOptions(), page);
    page += QStringLiteral(".TP\n.B \\-\\-\n%1\n").arg(roff(QLatin1String(HelpText::kDoubleDash)));
    page += QStringLiteral(".SH EXIT STATUS\n") + paragraph(HelpText::kExitStatus) + QChar('\n');
    page += QStringLiteral(".SH FILES\n"
                           ".TP\n.I ~/.config/com.velmora.Quaydrop/Quaydrop.conf\nthe options\n"
                           ".TP\n.I ~/.local/share/com.velmora.Quaydrop/\nthe destinations, the ledger and the "
                           "exclusion list\n");
    page += QStringLiteral(".SH SEE ALSO\n.BR xdg\\-open (1)\n");
    return page.toUtf8();
}

#include "CommandLine.h"

#include "CoreCommands.h"
#include "FileCommands.h"
#include "ImageCommands.h"

namespace {

void printHelp(QTextStream &out)
{
    out << "Usage: quaydrop [COMMAND ARGS...]\n"
           "Without a command, Quaydrop starts resident in the tray (or asks the running one to come forward).\n\n"
           "Commands:\n";
    for (const auto &c : CommandLine::commands()) {
        const QString call = QStringLiteral("%1 %2").arg(c.name, c.arguments);
        // A long call gets its summary on a line of its own.
        if (call.size() < 24)
            out << "  " << call.leftJustified(24) << c.summary << '\n';
        else
            out << "  " << call << '\n' << QString(26, QChar(' ')) << c.summary << '\n';
    }
    out << "  " << QStringLiteral("--help").leftJustified(24) << "show this text\n";
}

} // namespace

const QList<CommandLine::Command> &CommandLine::commands()
{
    static const QList<Command> table{
        {QStringLiteral("type"), QStringLiteral("PATH..."),
         QStringLiteral("print the panel code of each path (1 image, 2 text, 333 folder, 777 other)"), &runTypeCommand},
        {QStringLiteral("size"), QStringLiteral("PATH..."),
         QStringLiteral("print the size on disk of the paths together, readable and in bytes"), &runSizeCommand},
        {QStringLiteral("ledger"), QString(), QStringLiteral("print the time saved this week and in total"),
         &runLedgerCommand},
        {QStringLiteral("copy"), QStringLiteral("SRC... DESTDIR"),
         QStringLiteral("copy into DESTDIR; clashes: --keep-both, --skip, --replace, else ask"), &runCopyCommand},
        {QStringLiteral("move"), QStringLiteral("SRC... DESTDIR"),
         QStringLiteral("move into DESTDIR (a copy first across devices); same options"), &runMoveCommand},
        {QStringLiteral("resize"), QStringLiteral("--width W --height H [--dest DIR] FILE..."),
         QStringLiteral("write resized copies NAME_WxH.EXT (Lanczos), the source's type and resolution kept"),
         &runResizeCommand},
        {QStringLiteral("convert"), QStringLiteral("png|jpg|bmp|tiff|jp2 [--compression PERCENT] FILE..."),
         QStringLiteral("write each image in another type, under a free name beside the first"), &runConvertCommand},
        {QStringLiteral("pdf2img"), QStringLiteral("png|jpg|bmp|tiff [--dpi N] [--password P] FILE.pdf"),
         QStringLiteral("write each page as an image, Page_1 ..., into a new folder beside the PDF"),
         &runPdfToImagesCommand},
        {QStringLiteral("img2pdf"), QStringLiteral("[--merge] FILE..."),
         QStringLiteral("write a PDF of each image, or one of them all in natural name order"), &runImagesToPdfCommand},
    };
    return table;
}

bool CommandLine::wantsCommandLine(const QStringList &args) { return args.size() > 1; }

int CommandLine::run(const QStringList &args, QTextStream &out, QTextStream &err)
{
    const QString name = args.value(1);
    if (name == u"--help" || name == u"-h" || name == u"help") {
        printHelp(out);
        return 0;
    }
    for (const auto &c : commands()) {
        if (c.name == name)
            return c.run(args.mid(2), out, err);
    }
    err << "quaydrop: unknown command \"" << name << "\"\n";
    printHelp(err);
    return kUsageError;
}

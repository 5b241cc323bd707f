#include "PrintDocument.h"

#include "core/fs/NativePath.h"
#include "core/fs/PathParts.h"
#include "images/pdf/ImagesToPdf.h"
#include "images/pdf/PdfPages.h"
#include "images/pdf/TextToPdf.h"
#include "platform/posix/Spawn.h"
#include "core/fs/AtomicFile.h"
#include "utils/Utils.h"

#include <QFile>
#include <QMimeDatabase>
#include <QUuid>

namespace {

Error printError(int code, const QString &path, const QString &what)
{
    return Error{QStringLiteral("Print"), code, QStringLiteral("%1: %2").arg(NativePath::forDisplay(path), what),
                 {{QStringLiteral("path"), path}, {QStringLiteral("reason"), what}}};
}

// A file of ours in the private temporary folder, gone again when the job has been handed over
// (the printing system keeps its own copy).
class TemporaryPdf
{
public:
    TemporaryPdf()
        : path(Utils::tempFileOperationsFolder() + QStringLiteral("/print-") +
               QUuid::createUuid().toString(QUuid::WithoutBraces) + QStringLiteral(".pdf"))
    {
    }
    ~TemporaryPdf() { QFile::remove(path); }
    const QString path;
};

// qpdf writes the document again without its encryption; the password goes in on standard input,
// never on a command line that other users can read.
Status decrypt(const QString &source, const QByteArray &password, const QString &dest)
{
    if (Spawn::findProgram("qpdf").isEmpty())
        return printError(PrintDocument::NoDecrypter, source, QStringLiteral("qpdf is needed to print a locked PDF"));
    const auto ran = Spawn::run({"qpdf", "--password-file=-", "--decrypt", "--", NativePath::toNative(source),
                                 NativePath::toNative(dest)},
                                password + '\n', 120000);
    // 3: written, with warnings about a slightly damaged file.
    if (!ran.ok() || (ran.value().exitCode != 0 && ran.value().exitCode != 3))
        return printError(PrintDocument::Unreadable, source,
                          ran.ok() ? QString::fromLocal8Bit(ran.value().err).trimmed() : ran.error().message);
    return success();
}

Result<int> send(PrintService &service, const PrintDocument::Job &job, const QString &pdf, const PrintOptions &options)
{
    return service.printPdf(job.printer, pdf, NativePath::forDisplay(PathParts::lastComponent(job.path)), options);
}

Result<int> printPdf(PrintService &service, const PrintDocument::Job &job)
{
    const PdfPages::LockState state = PdfPages::inspect(job.path, job.password);
    if (!state.readable)
        return printError(PrintDocument::Unreadable, job.path, state.problem);
    if (!state.locked && !state.encrypted)
        return send(service, job, job.path, job.options);
    if (state.locked && job.password.isEmpty())
        return printError(PrintDocument::NeedsPassword, job.path, QStringLiteral("the PDF is locked"));
    if (!state.opens)
        return printError(PrintDocument::WrongPassword, job.path, QStringLiteral("the password does not open the PDF"));
    TemporaryPdf open;
    if (const Status s = decrypt(job.path, job.password, open.path); !s.ok())
        return s.error();
    return send(service, job, open.path, job.options);
}

Result<int> printImage(PrintService &service, const PrintDocument::Job &job)
{
    TemporaryPdf page;
    const auto written = ImagesToPdf::doExportAsPDFarr({job.path}, page.path, ImagesToPdf::UnreadableImages::Fail);
    if (!written.ok())
        return printError(PrintDocument::Unreadable, job.path, written.error().message);
    // The page is the picture's own size: the printing system fits it and turns it to the paper.
    PrintOptions options = job.options;
    options.fitToPage = true;
    options.orientation = PrintOptions::Orientation::Unset;
    return send(service, job, page.path, options);
}

Result<int> printText(PrintService &service, const PrintDocument::Job &job)
{
    const auto pdf = TextToPdf::layOut(job.path, job.layout.isValid() ? job.layout : TextToPdf::defaultLayout());
    if (!pdf.ok())
        return printError(PrintDocument::Unreadable, job.path, pdf.error().message);
    TemporaryPdf laidOut;
    if (const Status s = AtomicFile::writeFile(laidOut.path, pdf.value(), AtomicFile::Mode::KeepExisting); !s.ok())
        return s.error();
    // Laid out on the chosen paper already, turned as chosen.
    PrintOptions options = job.options;
    options.orientation = PrintOptions::Orientation::Unset;
    return send(service, job, laidOut.path, options);
}

} // namespace

PrintDocument::Kind PrintDocument::kindOf(const QString &path)
{
    static const QMimeDatabase db;
    const QMimeType byName = db.mimeTypeForFile(NativePath::forDisplay(PathParts::lastComponent(path)), QMimeDatabase::MatchExtension);
    if (PdfFiles::hasPdfContent(path) || byName.name() == QLatin1String("application/pdf"))
        return Kind::Pdf;
    switch (Utils::determineFileType(path)) {
    case 1: return Kind::Image;
    case 2: return Kind::Text; // a document the layout refuses, if it is no text, says so
    default: return Kind::None;
    }
}

Result<int> PrintDocument::print(PrintService &service, const Job &job)
{
    switch (kindOf(job.path)) {
    case Kind::Pdf: return printPdf(service, job);
    case Kind::Image: return printImage(service, job);
    case Kind::Text: return printText(service, job);
    case Kind::None: break;
    }
    return printError(NotPrintable, job.path, QStringLiteral("this is no PDF, image or text that can be printed"));
}

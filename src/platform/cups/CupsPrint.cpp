#include "CupsPrint.h"

#include "core/fs/NativePath.h"
#include "platform/posix/OnDemandLibrary.h"

#include <cups/cups.h>

namespace {

// libcups's calls, opened on the first print: linked, it would map its TLS and Kerberos libraries
// into the resident program for good.
struct Cups
{
    decltype(&cupsAddOption) addOption = nullptr;
    decltype(&cupsFreeOptions) freeOptions = nullptr;
    decltype(&cupsGetDests2) getDests = nullptr;
    decltype(&cupsGetNamedDest) getNamedDest = nullptr;
    decltype(&cupsFreeDests) freeDests = nullptr;
    decltype(&cupsGetOption) getOption = nullptr;
    decltype(&cupsPrintFile2) printFile = nullptr;
    decltype(&cupsLastError) lastError = nullptr;
    decltype(&cupsLastErrorString) lastErrorString = nullptr;
    QString missing; // why the library could not be used; empty when it can
};

const Cups &cups()
{
    static const Cups calls = [] {
        Cups c;
        OnDemandLibrary library("cups", 2);
        const bool all = library.resolve(c.addOption, "cupsAddOption") && library.resolve(c.freeOptions, "cupsFreeOptions")
            && library.resolve(c.getDests, "cupsGetDests2") && library.resolve(c.getNamedDest, "cupsGetNamedDest")
            && library.resolve(c.freeDests, "cupsFreeDests") && library.resolve(c.getOption, "cupsGetOption")
            && library.resolve(c.printFile, "cupsPrintFile2") && library.resolve(c.lastError, "cupsLastError")
            && library.resolve(c.lastErrorString, "cupsLastErrorString");
        if (!all)
            c.missing = library.errorString();
        return c;
    }();
    return calls;
}

Error printError(int code, const QString &message)
{
    return Error{QStringLiteral("Print"), code, message};
}

const char *sidesKeyword(PrintOptions::Sides sides)
{
    switch (sides) {
    case PrintOptions::Sides::TwoSidedLongEdge: return "two-sided-long-edge";
    case PrintOptions::Sides::TwoSidedShortEdge: return "two-sided-short-edge";
    case PrintOptions::Sides::OneSided: break;
    }
    return "one-sided";
}

// The job's options in IPP's words; freed with cupsFreeOptions.
int optionsFor(const PrintOptions &o, cups_option_t **options)
{
    int n = 0;
    *options = nullptr;
    n = cups().addOption("copies", QByteArray::number(qMax(1, o.copies)).constData(), n, options);
    n = cups().addOption("multiple-document-handling",
                      o.collate ? "separate-documents-collated-copies" : "separate-documents-uncollated-copies", n, options);
    n = cups().addOption("sides", sidesKeyword(o.sides), n, options);
    if (!o.pageRanges.isEmpty())
        n = cups().addOption("page-ranges", o.pageRanges.toLatin1().constData(), n, options);
    if (o.orientation != PrintOptions::Orientation::Unset)
        n = cups().addOption("orientation-requested", o.orientation == PrintOptions::Orientation::Landscape ? "4" : "3", n,
                          options);
    if (o.fitToPage)
        n = cups().addOption("print-scaling", "fit", n, options);
    if (!o.media.isEmpty())
        n = cups().addOption("media", o.media.toLatin1().constData(), n, options);
    return n;
}

} // namespace

QList<PrinterInfo> CupsPrint::printers() const
{
    QList<PrinterInfo> found;
    const Cups &c = cups();
    if (!c.missing.isEmpty()) {
        qWarning("no printing system: %s", qPrintable(c.missing));
        return found;
    }
    cups_dest_t *dests = nullptr;
    const int count = c.getDests(CUPS_HTTP_DEFAULT, &dests);
    for (int i = 0; i < count; ++i) {
        if (dests[i].instance)
            continue; // an instance is a set of options of a queue already listed
        PrinterInfo p;
        p.name = QString::fromUtf8(dests[i].name);
        p.description = QString::fromUtf8(c.getOption("printer-info", dests[i].num_options, dests[i].options));
        p.isDefault = dests[i].is_default != 0;
        found.append(p);
    }
    c.freeDests(count, dests);
    return found;
}

QString CupsPrint::defaultPrinter() const
{
    const Cups &c = cups();
    if (!c.missing.isEmpty())
        return {};
    cups_dest_t *dest = c.getNamedDest(CUPS_HTTP_DEFAULT, nullptr, nullptr);
    const QString name = dest ? QString::fromUtf8(dest->name) : QString();
    c.freeDests(dest ? 1 : 0, dest);
    return name;
}

Result<int> CupsPrint::printPdf(const QString &printer, const QString &pdfPath, const QString &title,
                                const PrintOptions &options)
{
    if (printer.isEmpty())
        return printError(NoPrinter, QStringLiteral("no printer was chosen"));
    const Cups &c = cups();
    if (!c.missing.isEmpty())
        return printError(NoPrintingSystem, QStringLiteral("the printing system cannot be reached: %1").arg(c.missing));
    // A queue removed since the dialog listed it.
    cups_dest_t *dest = c.getNamedDest(CUPS_HTTP_DEFAULT, printer.toUtf8().constData(), nullptr);
    if (!dest)
        return printError(PrinterGone, QStringLiteral("the printer %1 is not there any more").arg(printer));
    c.freeDests(1, dest);
    cups_option_t *list = nullptr;
    const int n = optionsFor(options, &list);
    const QByteArray file = NativePath::toNative(pdfPath);
    const int job = c.printFile(CUPS_HTTP_DEFAULT, printer.toUtf8().constData(), file.constData(),
                                   title.toUtf8().constData(), n, list);
    c.freeOptions(n, list);
    if (job > 0)
        return job;
    const ipp_status_t status = c.lastError();
    const QString why = QString::fromUtf8(c.lastErrorString());
    if (status == IPP_STATUS_ERROR_NOT_FOUND)
        return printError(PrinterGone, QStringLiteral("the printer %1 is not there any more (%2)").arg(printer, why));
    return printError(Refused, QStringLiteral("the printer %1 did not take the job: %2").arg(printer, why));
}

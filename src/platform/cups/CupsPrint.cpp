#include "CupsPrint.h"

#include "core/fs/NativePath.h"

#include <cups/cups.h>

namespace {

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
    n = cupsAddOption("copies", QByteArray::number(qMax(1, o.copies)).constData(), n, options);
    n = cupsAddOption("multiple-document-handling",
                      o.collate ? "separate-documents-collated-copies" : "separate-documents-uncollated-copies", n, options);
    n = cupsAddOption("sides", sidesKeyword(o.sides), n, options);
    if (!o.pageRanges.isEmpty())
        n = cupsAddOption("page-ranges", o.pageRanges.toLatin1().constData(), n, options);
    if (o.orientation != PrintOptions::Orientation::Unset)
        n = cupsAddOption("orientation-requested", o.orientation == PrintOptions::Orientation::Landscape ? "4" : "3", n,
                          options);
    if (o.fitToPage)
        n = cupsAddOption("print-scaling", "fit", n, options);
    if (!o.media.isEmpty())
        n = cupsAddOption("media", o.media.toLatin1().constData(), n, options);
    return n;
}

} // namespace

QList<PrinterInfo> CupsPrint::printers() const
{
    QList<PrinterInfo> found;
    cups_dest_t *dests = nullptr;
    const int count = cupsGetDests2(CUPS_HTTP_DEFAULT, &dests);
    for (int i = 0; i < count; ++i) {
        if (dests[i].instance)
            continue; // an instance is a set of options of a queue already listed
        PrinterInfo p;
        p.name = QString::fromUtf8(dests[i].name);
        p.description = QString::fromUtf8(cupsGetOption("printer-info", dests[i].num_options, dests[i].options));
        p.isDefault = dests[i].is_default != 0;
        found.append(p);
    }
    cupsFreeDests(count, dests);
    return found;
}

QString CupsPrint::defaultPrinter() const
{
    cups_dest_t *dest = cupsGetNamedDest(CUPS_HTTP_DEFAULT, nullptr, nullptr);
    const QString name = dest ? QString::fromUtf8(dest->name) : QString();
    cupsFreeDests(dest ? 1 : 0, dest);
    return name;
}

Result<int> CupsPrint::printPdf(const QString &printer, const QString &pdfPath, const QString &title,
                                const PrintOptions &options)
{
    if (printer.isEmpty())
        return printError(NoPrinter, QStringLiteral("no printer was chosen"));
    // A queue removed since the dialog listed it.
    cups_dest_t *dest = cupsGetNamedDest(CUPS_HTTP_DEFAULT, printer.toUtf8().constData(), nullptr);
    if (!dest)
        return printError(PrinterGone, QStringLiteral("the printer %1 is not there any more").arg(printer));
    cupsFreeDests(1, dest);
    cups_option_t *list = nullptr;
    const int n = optionsFor(options, &list);
    const QByteArray file = NativePath::toNative(pdfPath);
    const int job = cupsPrintFile2(CUPS_HTTP_DEFAULT, printer.toUtf8().constData(), file.constData(),
                                   title.toUtf8().constData(), n, list);
    cupsFreeOptions(n, list);
    if (job > 0)
        return job;
    const ipp_status_t status = cupsLastError();
    const QString why = QString::fromUtf8(cupsLastErrorString());
    if (status == IPP_STATUS_ERROR_NOT_FOUND)
        return printError(PrinterGone, QStringLiteral("the printer %1 is not there any more (%2)").arg(printer, why));
    return printError(Refused, QStringLiteral("the printer %1 did not take the job: %2").arg(printer, why));
}

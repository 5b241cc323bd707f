#pragma once

#include "platform/Platform.h"

// The printing system through libcups, on the server the environment names (CUPS_SERVER, the
// user's client.conf) or the local one. A PDF is handed over as it is; CUPS's own filters apply
// the page range, copies, sides and orientation.
class CupsPrint : public PrintService
{
public:
    QList<PrinterInfo> printers() const override;
    QString defaultPrinter() const override;
    Result<int> printPdf(const QString &printer, const QString &pdfPath, const QString &title,
                         const PrintOptions &options) override;
};

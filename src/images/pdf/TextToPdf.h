#pragma once

#include "utils/Result.h"

#include <QPageLayout>
#include <QString>

namespace TextToPdf {

// The paper of the user's country (Letter in North America, else A4), portrait, 20 mm margins.
QPageLayout defaultLayout();
// The PDF of the document laid out on pages of `layout`; needs a QGuiApplication for fonts.
Result<QByteArray> layOut(const QString &sourcePath, const QPageLayout &layout);

// Lays a text document out on pages (fitted to the page width, as many pages as it needs) and writes
// them as a PDF at `destPath`, which appears only when complete; an existing file is kept (EEXIST).
// HTML and Markdown keep their formatting; anything else is read as plain text. Needs a
// QGuiApplication for fonts.
Status saveAsPDF(const QString &sourcePath, const QString &destPath);

} // namespace TextToPdf

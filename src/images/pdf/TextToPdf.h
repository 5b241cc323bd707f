#pragma once

#include "utils/Result.h"

#include <QString>

namespace TextToPdf {

// Lays a text document out on pages (fitted to the page width, as many pages as it needs) and writes
// them as a PDF at `destPath`, which appears only when complete; an existing file is kept (EEXIST).
// HTML and Markdown keep their formatting; anything else is read as plain text. Needs a
// QGuiApplication for fonts.
Status saveAsPDF(const QString &sourcePath, const QString &destPath);

} // namespace TextToPdf

#pragma once

// What a dropped document becomes for the printer. A PDF goes as it is (decrypted into the private
// temporary folder first when it is locked), so its text stays text; an image becomes a page of its
// own that the printing system fits to the printable area and turns to the paper; a text, HTML or
// Markdown document is laid out on the chosen paper as Save as PDF does.

#include "platform/Platform.h"

#include <QPageLayout>

namespace PrintDocument {

enum ErrorCode { Unreadable = 1, NeedsPassword, WrongPassword, NotPrintable, NoDecrypter };
enum class Kind { None, Pdf, Image, Text };

Kind kindOf(const QString &path);

struct Job
{
    QString path;
    QByteArray password; // of a locked PDF
    QString printer;
    PrintOptions options;
    QPageLayout layout; // the paper a text is laid out on; invalid: the default paper
};

// Prepares the document and hands it to the printing system; the job's number. Nothing reaches the
// printer when the document cannot be read or opened. Blocks (layout, decryption, the server): call
// it from a worker thread in an application with a QGuiApplication (fonts).
Result<int> print(PrintService &service, const Job &job);

} // namespace PrintDocument

#pragma once

#include <QByteArray>

// quaydrop(1) in roff, written from the table of commands and the paragraphs of --help, so that the
// manual and the help never tell two stories.
namespace ManPage {

// `date` is the page's date as "2026-11-23" (the build's, or SOURCE_DATE_EPOCH's).
QByteArray write(const QString &date);

} // namespace ManPage

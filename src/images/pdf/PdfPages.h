#pragma once

// What a PDF is and how its pages become images, without rendering anything.

#include <QByteArray>
#include <QSize>
#include <QSizeF>
#include <QString>

namespace PdfPages {

// 1 "png", 3 "bmp", 4 "tiff", any other tag "jpg".
QString extensionForImgType(qint64 tag);
// Below 30 (or no number) becomes 150, above 1000 becomes 1000.
float clampedDpi(float dpi);
// The page's size in points times dpi / 72, each side rounded; a side below one pixel is empty.
QSize targetPixels(const QSizeF &pagePoints, float dpi);
// The file name of page `index` (from 0), without extension: "Page_1", "Page_2", ...
QString pageBaseName(int index);

struct LockState
{
    bool readable = false;
    bool locked = false;    // a password is needed to read it
    bool encrypted = false; // encrypted, though it may open without a password
    bool opens = false;     // it can be read, with the password given if it is locked
    int pages = 0;          // once it opens
    QString problem;        // why it is not readable
};
// Asked of the image worker, which reads the file; a worker that stopped on it makes it unreadable.
LockState inspect(const QString &path, const QByteArray &password = {});
// Whether the password opens it for reading.
bool unlockWithPassword(const QString &path, const QByteArray &password);

} // namespace PdfPages

namespace PdfFiles {
// By what the file holds, whatever its name: a regular file with the PDF header in its first kilobyte.
bool hasPdfContent(const QString &path);
} // namespace PdfFiles

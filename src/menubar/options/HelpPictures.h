#pragma once

#include <QImage>
#include <QString>

// The two help pictures of the options panel, drawn from what the program knows, so that they always
// match the running version and its language: what the panels' buttons do, and how the time saved is
// counted.
namespace HelpPictures {

QImage buttonsPicture();
QImage timeSavedPicture();
// Writes the picture as a JPEG in the program's cache folder; the path, or empty when it cannot.
QString writeJpeg(const QImage &picture, const QString &name);

} // namespace HelpPictures

#pragma once

#include <QByteArray>
#include <QString>

// Paths are QStrings throughout the program, but Linux file names are bytes. Bytes that are not
// valid UTF-8 are carried as the lone surrogates U+DC80..U+DCFF (the "surrogateescape" scheme), so a
// name read from the file system converts back to exactly the same bytes.
namespace NativePath {

QString fromNative(const QByteArray &bytes);
QByteArray toNative(const QString &path);
// What a person should see: escaped bytes become U+FFFD.
QString forDisplay(const QString &path);

} // namespace NativePath

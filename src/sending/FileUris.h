#pragma once

#include <QStringList>

// File URIs as RFC 8089 and 3986 write them: every byte of the name but the unreserved characters
// and "/" percent-encoded, so that commas, quotes, "&", "%", newlines and bytes that are not UTF-8
// pass any list, query or command line unharmed.
namespace FileUris {

QString fromPath(const QString &path); // an absolute path, with NativePath's bytes
QStringList fromPaths(const QStringList &paths);

} // namespace FileUris

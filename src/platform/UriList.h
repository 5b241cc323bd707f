#pragma once

#include <QByteArray>
#include <QList>

// text/uri-list, the form in which X11 drags and drops carry file names.
namespace UriList {
// The local files of the list as the bytes of their names (percent-decoded, never through a text
// encoding, so that names that are not UTF-8 survive). Other schemes and other hosts are left out.
QList<QByteArray> localPathBytes(const QByteArray &uriList);
} // namespace UriList

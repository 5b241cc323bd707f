#pragma once

#include <QStringList>

// What a drag offers, in the order the drop window prefers: file names, a URL, text, image data, a
// file the source will write where it is told (X Direct Save).
namespace DragContent {

enum class Kind { None, Files, Url, String, Image, Promise };

// `types` as the source offers them; `hasFiles` whether its uri-list names local files.
Kind availableType(const QStringList &types, bool hasFiles);
// A URL counts only where an image comes with it: its data, or a file the source writes or hands over.
bool urlLeadsToImage(const QStringList &types);
// The name for bytes dragged without a file, from the name the source suggests (or the last part of
// the address they came from): never a path, and with the extension their content calls for.
QString fileNameForDraggedData(const QString &suggested, const QByteArray &data);

// Bundle-id prefixes of image editors, whose own drags would raise the window all the time.
const QStringList &imgEditingAppsToExcl();

} // namespace DragContent

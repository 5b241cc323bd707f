#pragma once

#include <QStringList>

// What a drag offers, in the order the drop window prefers: file names, a URL, text, image data, a
// file the source will write where it is told (X Direct Save).
namespace DragContent {

enum class Kind { None, Files, Url, String, Image, Promise };

// `types` as the source offers them; `hasFiles` whether its uri-list names local files.
Kind availableType(const QStringList &types, bool hasFiles);
// A URL counts only where an image comes with it.
bool urlLeadsToImage(const QStringList &types);

// Bundle-id prefixes of image editors, whose own drags would raise the window all the time.
const QStringList &imgEditingAppsToExcl();

} // namespace DragContent

#pragma once

#include <QStringList>
#include <QtGlobal>

// Names an encoder. The panels' buttons and the encoders agree on these numbers.
namespace ImageTypeCode {
constexpr quint64 TIFF = 0;
constexpr quint64 BMP = 1;
constexpr quint64 GIF = 2;
constexpr quint64 JPEG = 3;
constexpr quint64 PNG = 4;
constexpr quint64 JPEG2000 = 5;
} // namespace ImageTypeCode

namespace PageImageTypes {
// The lower-case extensions that can become a page of a PDF, in their fixed order.
QStringList supportImageTypes();
// An existing file, no folder, whose lower-cased extension is in that list.
bool isPageImage(const QString &path);
} // namespace PageImageTypes

#pragma once

#include "utils/Result.h"

#include <QByteArray>
#include <QImage>

// A whole picture encoded for an ImageTypeCode by the toolkit's own writers (JPEG, PNG, BMP, TIFF), with
// the image's resolution and colour profile; GIF and JPEG 2000, which those writers lack, go through
// the image library. A type without transparency is laid on white.
namespace PictureEncoder {

Result<QByteArray> encode(const QImage &pixels, quint64 code);

} // namespace PictureEncoder

#pragma once

// Turning and flipping a JPEG without decoding it, as `jpegtran -rotate` does: the DCT blocks are moved,
// never requantised, and every marker (EXIF, colour profile, comments) is kept.

#include "utils/Result.h"

#include <QByteArray>

namespace LosslessJpeg {

enum class Op { None, FlipHorizontal, FlipVertical, Transpose, Transverse, Rotate90, Rotate180, Rotate270 };

// The one operation that first stands up a JPEG stored with this EXIF orientation (1 to 8) and then turns
// it `clockwiseTurns` quarter turns clockwise.
Op forOrientationAndTurns(int orientation, int clockwiseTurns);

// The transformed JPEG. Fails, changing nothing, when the data is damaged or incomplete, or when the
// picture is not made of whole blocks on an edge that the operation moves (those blocks cannot be moved
// losslessly; the caller then decodes and encodes instead).
Result<QByteArray> transformed(const QByteArray &jpeg, Op op);

} // namespace LosslessJpeg

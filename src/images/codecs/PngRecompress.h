#pragma once

#include "utils/Result.h"

#include <QByteArray>
#include <QString>

namespace PngRecompress {

// Whether the file starts with the PNG signature.
bool isPng(const QString &path);

// The PNG at `source` deflated again at level trunc(factor x 9) (factor clamped to 0..1), every
// chunk of the source kept and the pixels untouched. A file that is no PNG, or whose data are
// damaged, fails in the words every image reader uses; nothing is ever written for it.
Result<QByteArray> recompress(const QString &source, float factor);

} // namespace PngRecompress

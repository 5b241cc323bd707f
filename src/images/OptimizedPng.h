#pragma once

// A PNG of the kind that starts with a "CgBI" chunk (premultiplied alpha, samples as blue, green,
// red, alpha, raw deflate), and the small image helpers that travel with it.

#include "images/BitmapImageRep.h"

#include <QByteArray>
#include <QList>

namespace OptimizedPng {

// The 32-bit value big-endian, then four zero bytes: the writer's chunk lengths and CRCs are this wide.
void appendUInt(QByteArray &data, quint32 value);
// Row filter Sub over premultiplied blue, green, red, alpha: (W x 4 + 1) x H bytes.
QByteArray filteredRows(const QImage &image);
// The whole file; empty for an image without pixels.
QByteArray optimizedData(const QImage &image);
// The same from encoded bytes; empty, and logged, when they do not decode.
QByteArray optimizedData(const QByteArray &encoded);

// The encoder a file name's lower-cased extension asks for: png 4, gif 2, jpg/jpeg 3, else TIFF.
quint64 fileTypeForFile(const QString &fileName);

} // namespace OptimizedPng

namespace AnimatedGif {
// The frames at one constant rate: each frame repeated delay / gcd times, delays in 1/100 s.
QList<QImage> framesOfAnimatedImageWithAnimatedGIFData(const QByteArray &data);
} // namespace AnimatedGif

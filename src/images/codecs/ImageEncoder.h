#pragma once

#include "images/codecs/VipsSupport.h"

#include <optional>

namespace ImageEncoder {

// The JPEG quality when none is asked for.
inline constexpr int kDefaultJpegQuality = 85;

// Encodes with the encoder an ImageTypeCode names, keeping the image's resolution. `factor` runs from
// 0.0 (smallest file) to 1.0 (best): the JPEG quality, lossless JPEG 2000 at 1.0; the lossless
// encoders take it and ignore it. A format without transparency is laid on white.
Result<QByteArray> encode(const vips::VImage &image, quint64 code, std::optional<float> factor = std::nullopt);
// The same, streamed into the open file `fd` as the pixels are computed: a large image is never
// whole in memory. A decoder that meets damage on the way fails the whole write.
Status encodeToFile(const vips::VImage &image, quint64 code, std::optional<float> factor, int fd);

} // namespace ImageEncoder

#pragma once

#include "images/codecs/VipsSupport.h"

namespace Resampler {

// One Lanczos-3 pass with its own horizontal and vertical scale, edges clamped, cut to exactly
// ceil(width) x ceil(height) pixels. The resolution is the source's, so the point size shrinks or
// grows with the pixels. Refuses a target below one pixel.
Result<vips::VImage> lanczosScale(const vips::VImage &source, double width, double height);

} // namespace Resampler

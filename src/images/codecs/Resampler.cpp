#include "Resampler.h"

#include "images/BitmapImageRep.h"

#include <algorithm>
#include <cmath>

using vips::VImage;

Result<VImage> Resampler::lanczosScale(const VImage &source, double width, double height)
{
    if (!(width >= 1.0) || !(height >= 1.0))
        return VipsSupport::error(QString(), QStringLiteral("a size below one pixel (%1 x %2)").arg(width).arg(height));
    const int targetW = int(std::ceil(width));
    const int targetH = int(std::ceil(height));
    if (qint64(targetW) * targetH > VipsSupport::kMaxPixels)
        return VipsSupport::error(QString(), QStringLiteral("%1 x %2 pixels is too large a result").arg(targetW).arg(targetH));
    const double dpi = VipsSupport::dotsPerInch(source);
    // Up to a reduction of 4, a gap of 0 keeps libvips from a box pre-shrink: the whole scale is one
    // Lanczos pass. Beyond, one pass would weigh thousands of source pixels for each result pixel (a
    // 16,000-wide picture made 100 wide: half a minute): a box shrink first brings it within twice
    // the size, then Lanczos, as libvips's own thumbnailer does, at a difference no eye sees.
    constexpr double kExactUpTo = 4.0;
    const double reduction = std::max(source.width() / width, source.height() / height);
    const double gap = reduction <= kExactUpTo ? 0.0 : 2.0;
    return VipsSupport::guarded<VImage>(QString(), [&] {
        // Transparent pixels would bleed their colour into the edges: resample premultiplied.
        const bool alpha = source.has_alpha();
        const VImage in = alpha ? source.premultiply() : source;
        VImage scaled = in.resize(width / source.width(), VImage::option()
                                                              ->set("vscale", height / source.height())
                                                              ->set("kernel", VIPS_KERNEL_LANCZOS3)
                                                              ->set("gap", gap));
        if (alpha)
            scaled = scaled.unpremultiply().cast(source.format());
        if (scaled.width() != targetW || scaled.height() != targetH) {
            // The scaler rounds its size; the edge pixels stretch to fill, or the excess is cut.
            scaled = scaled.embed(0, 0, targetW, targetH, VImage::option()->set("extend", VIPS_EXTEND_COPY));
        }
        // Both axes keep the source's horizontal resolution, as the point size is derived from it.
        return VipsSupport::withResolution(scaled, dpi, dpi);
    });
}

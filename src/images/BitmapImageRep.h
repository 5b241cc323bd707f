#pragma once

#include <QImage>
#include <QSizeF>

// Pixels plus the size they claim on a page or screen, in points (72 to the inch); their ratio is
// the resolution. What the rest of the program calls an image.
struct BitmapImageRep
{
    QImage pixels;
    QSizeF size; // points

    int pixelsWide() const { return pixels.width(); }
    int pixelsHigh() const { return pixels.height(); }
    bool isValid() const { return !pixels.isNull() && size.width() > 0 && size.height() > 0; }

    // The point size follows the resolution the image carries (72 dots per inch when it has none).
    static BitmapImageRep fromImage(QImage image);
    // The pixels tagged with the resolution that `size` gives them, ready for an encoder.
    QImage taggedPixels() const;
};

namespace Resolution {
constexpr double kPointsPerInch = 72.0;
constexpr double kMillimetresPerInch = 25.4;
// A resolution stored in whole dots per metre, or rounded through millimetres, comes back a hair off
// (72 dpi is kept as 2835 dots per metre, 72.009 dpi): such values snap to the whole number.
double snapped(double dotsPerInch);
double fromDotsPerMeter(int dotsPerMeter);
int toDotsPerMeter(double dotsPerInch);
} // namespace Resolution

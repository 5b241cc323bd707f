#include "BitmapImageRep.h"

#include <cmath>

double Resolution::snapped(double dotsPerInch)
{
    const double whole = std::round(dotsPerInch);
    return std::abs(dotsPerInch - whole) <= 0.02 ? whole : dotsPerInch;
}

double Resolution::fromDotsPerMeter(int dotsPerMeter)
{
    return dotsPerMeter > 0 ? snapped(dotsPerMeter * kMillimetresPerInch / 1000.0) : kPointsPerInch;
}

int Resolution::toDotsPerMeter(double dotsPerInch)
{
    return int(std::lround(dotsPerInch * 1000.0 / kMillimetresPerInch));
}

BitmapImageRep BitmapImageRep::fromImage(QImage image)
{
    const double dpiX = Resolution::fromDotsPerMeter(image.dotsPerMeterX());
    const double dpiY = Resolution::fromDotsPerMeter(image.dotsPerMeterY());
    const QSizeF points(image.width() * Resolution::kPointsPerInch / dpiX,
                        image.height() * Resolution::kPointsPerInch / dpiY);
    return {std::move(image), points};
}

QImage BitmapImageRep::taggedPixels() const
{
    QImage tagged = pixels;
    if (size.width() > 0 && size.height() > 0) {
        tagged.setDotsPerMeterX(Resolution::toDotsPerMeter(pixels.width() * Resolution::kPointsPerInch / size.width()));
        tagged.setDotsPerMeterY(Resolution::toDotsPerMeter(pixels.height() * Resolution::kPointsPerInch / size.height()));
    }
    return tagged;
}

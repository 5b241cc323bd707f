#include "BitmapImageRep.h"

#include "utils/Utils.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

#include <cmath>

namespace {

// A point is 1/72 inch on every screen; a screen shows devicePixelRatio pixels for each point.
double dpiOf(const QScreen *screen)
{
    const double ratio = screen ? screen->devicePixelRatio() : 1.0;
    return Resolution::kPointsPerInch * ratio;
}

const QScreen *mainScreen()
{
    return qobject_cast<QGuiApplication *>(QCoreApplication::instance()) ? QGuiApplication::primaryScreen() : nullptr;
}

} // namespace

QSizeF Utils::pixelSizeForImg(const BitmapImageRep &image)
{
    return QSizeF(image.pixelsWide(), image.pixelsHigh());
}

QSizeF Utils::convertPixelSizeToPointSize(const QSizeF &pixels)
{
    const double scale = getDisplScale();
    return QSizeF(pixels.width() / scale, pixels.height() / scale);
}

double Utils::getDisplScale()
{
    const QScreen *screen = mainScreen();
    return screen ? screen->devicePixelRatio() : 1.0;
}

QString Utils::roundedFloat(float value)
{
    // Any fraction rounds away from zero (2.1 is 3, -2.1 is -3), written without group separators.
    const double away = value < 0 ? std::floor(double(value)) : std::ceil(double(value));
    return QString::number(away == 0.0 ? 0.0 : away, 'f', 0);
}

float Utils::getcurrentDPIForImg(const BitmapImageRep &image)
{
    const double dpi = double(image.pixelsWide()) * 72.0 / image.size.width();
    return std::ceil(float(dpi));
}

BitmapImageRep &Utils::getBitmap(BitmapImageRep &bitmap, double dpi)
{
    const double screen = currentScreenDPI();
    if (dpi == 0.0)
        dpi = screen;
    // The screen's resolution, and not 72, stands in the numerator.
    bitmap.size = QSizeF(std::ceil(float(screen * bitmap.pixelsWide() / dpi)),
                         std::ceil(float(screen * bitmap.pixelsHigh() / dpi)));
    return bitmap;
}

double Utils::currentScreenDPI()
{
    const double dpi = dpiOf(mainScreen());
    qInfo("MainScreenDPI %f", dpi);
    return dpi;
}

double Utils::dpiForWindow(const QWindow *window)
{
    return dpiOf(window ? window->screen() : mainScreen());
}

float Utils::roundToNearest5Des(float value)
{
    const float rounded = value < 0.5f ? 0.5f : std::floor(value * 2.0f) * 0.5f;
    qInfo("Rounded> %f", double(rounded));
    return rounded;
}

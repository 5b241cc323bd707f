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

double Utils::dpiForWindow(const QWindow *window)
{
    return dpiOf(window ? window->screen() : mainScreen());
}


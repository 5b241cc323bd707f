#pragma once

#include <QPointF>
#include <QRectF>
#include <QScreen>

// Between Qt's device-independent points and the window system's pixels, for one screen: a screen's
// points start at its top left pixel and run at its scale from there, also past its edges.
namespace ScreenPixels {

inline QPointF toPixels(const QScreen *screen, QPointF points)
{
    const QPointF origin = screen->geometry().topLeft();
    return origin + (points - origin) * screen->devicePixelRatio();
}

inline QPointF toPoints(const QScreen *screen, QPointF pixels)
{
    const QPointF origin = screen->geometry().topLeft();
    return origin + (pixels - origin) / screen->devicePixelRatio();
}

inline QRectF pixelRect(const QScreen *screen)
{
    return QRectF(screen->geometry().topLeft(), QSizeF(screen->geometry().size()) * screen->devicePixelRatio());
}

} // namespace ScreenPixels

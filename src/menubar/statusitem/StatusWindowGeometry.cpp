#include "StatusWindowGeometry.h"

#include <algorithm>

QRectF StatusWindowGeometry::frameYUp(const QRectF &i, const QSizeF &w, double margin)
{
    return QRectF(i.x() - w.width() * 0.5 + i.width() * 0.5, i.y() - w.height() - margin, w.width(), w.height());
}

QRectF StatusWindowGeometry::frameOnScreen(const QRectF &icon, const QSizeF &w, double margin, const QRectF &screen,
                                           bool *above)
{
    double x = icon.x() - w.width() * 0.5 + icon.width() * 0.5;
    double y = icon.bottom() + margin;
    const bool flip = y + w.height() > screen.bottom() && icon.top() - margin - w.height() >= screen.top();
    if (flip)
        y = icon.top() - margin - w.height();
    x = std::clamp(x, screen.left(), std::max(screen.left(), screen.right() - w.width()));
    y = std::clamp(y, screen.top(), std::max(screen.top(), screen.bottom() - w.height()));
    if (above)
        *above = flip;
    return QRectF(x, y, w.width(), w.height());
}

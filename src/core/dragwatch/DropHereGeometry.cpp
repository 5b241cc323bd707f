#include "DropHereGeometry.h"

#include "core/panels/PanelCatalog.h"

namespace DropHereGeometry {

QRectF getMeDropHereFrameFromDeltaX(qreal dx, qreal dy, const QPointF &m)
{
    const qreal side = PanelCatalog::kDropTargetSide;
    if (dx == 0 && dy == 0)
        return QRectF(m.x() - 45, m.y(), side, side);
    if (dy <= 0)
        return QRectF(m.x() - 45, m.y() - 190, side, side);
    return QRectF(m.x() - 45, m.y() + 90, side, side);
}

QRectF centredOn(const QRectF &frame, const QRectF &screen)
{
    return QRectF(screen.width() * 0.5 - frame.width() * 0.5 + screen.x(),
                  screen.height() * 0.5 - frame.height() * 0.5 + screen.y(), frame.width(), frame.height());
}

QRectF keepOpenRectLocal(const QRectF &b)
{
    return QRectF(b.x() - 50, b.y() - 85, b.width() + 100, b.height() + 170);
}

QRectF keepOpenRectGlobal(const QRectF &b)
{
    return QRectF(b.x() - 50, b.y() - 50, b.width() + 100, b.height() + 100);
}

bool pointInRect(const QPointF &p, const QRectF &r)
{
    return p.x() >= r.left() && p.x() < r.left() + r.width() && p.y() >= r.top() && p.y() < r.top() + r.height();
}

} // namespace DropHereGeometry

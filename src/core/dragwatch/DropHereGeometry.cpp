#include "DropHereGeometry.h"

#include "core/panels/PanelCatalog.h"
#include "core/panels/PanelFrame.h"

#include <algorithm>

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

bool coversPointer(const QRectF &f, const QPointF &m)
{
    return f.x() < m.x() + 1 && f.x() + f.width() > m.x() && f.y() < m.y() && f.y() + f.height() > m.y() - 1;
}

QRectF besidePointer(qreal dx, qreal dy, const QPointF &m, const QRectF &visible)
{
    const QRectF preferred = getMeDropHereFrameFromDeltaX(dx, dy, m);
    const qreal side = preferred.width();
    // The other side keeps the distance from the pointer, at least the pointer's own pixel.
    const bool above = preferred.y() >= m.y();
    const qreal gap = std::max<qreal>(above ? preferred.y() - m.y() : m.y() - (preferred.y() + side), 1);
    const QRectF mirrored(preferred.x(), above ? m.y() - gap - side : m.y() + gap, side, side);
    const QRectF right(m.x() + side / 2, m.y() - side / 2, side, side);
    const QRectF left(m.x() - side / 2 - side, m.y() - side / 2, side, side);
    for (const QRectF &candidate : {preferred, mirrored, right, left}) {
        const QRectF placed = PanelFrame::clampedInto(candidate, visible);
        if (!coversPointer(placed, m))
            return placed;
    }
    return PanelFrame::clampedInto(preferred, visible); // a screen smaller than the window and its margins
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

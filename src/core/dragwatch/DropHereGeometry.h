#pragma once

#include <QPointF>
#include <QRectF>

// Where the drop window opens and how far the pointer may wander before it closes, in the y-up
// space of the layout rules.
namespace DropHereGeometry {

// Out of the drag's way: above the pointer for a downward drag, below it otherwise, and with its
// bottom edge at the pointer for the hot key (no movement). Always 90 by 90.
QRectF getMeDropHereFrameFromDeltaX(qreal dx, qreal dy, const QPointF &mouseLoc);

// Where the drop window opens: the side `getMeDropHereFrameFromDeltaX` gives where there is room in
// `visible` (the visible frame of the pointer's screen), else the other side, else left or right of
// the pointer; always inside `visible` and never under the pointer, which would hover it before the
// drop.
QRectF besidePointer(qreal dx, qreal dy, const QPointF &mouseLoc, const QRectF &visible);
// Whether a frame covers the pixel the pointer is on (y-up: the pixel below the point).
bool coversPointer(const QRectF &frame, const QPointF &mouseLoc);

// The window centred on its screen.
QRectF centredOn(const QRectF &frame, const QRectF &screen);

// The rectangles, around the window's own bounds, inside which the pointer keeps it open: the
// window's own pointer tracking is more forgiving below and above than the global one.
QRectF keepOpenRectLocal(const QRectF &bounds);
QRectF keepOpenRectGlobal(const QRectF &bounds);
bool pointInRect(const QPointF &point, const QRectF &rect); // half-open, as the system tests it

} // namespace DropHereGeometry

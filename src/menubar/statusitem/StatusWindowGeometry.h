#pragma once

#include <QRectF>

// Where the panel hangs: centred under the tray icon, `margin` below it.
namespace StatusWindowGeometry {

// In y-up screen space, as the formula has always been written: x = i.x - w/2 + i.w/2,
// y = i.y - h - margin. No clamp.
QRectF frameYUp(const QRectF &iconYUp, const QSizeF &window, double margin);

// The same in the screen's y-down space, kept on the screen: trays sit at any edge on Linux, so a
// panel that would leave the screen below the icon hangs above it, and one that would leave it at a
// side is pushed back in. `above` tells which way it went.
QRectF frameOnScreen(const QRectF &icon, const QSizeF &window, double margin, const QRectF &screen, bool *above = nullptr);

} // namespace StatusWindowGeometry

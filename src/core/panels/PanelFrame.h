#pragma once

#include <QRectF>
#include <QSizeF>

// Window geometry in the y-up space of the program's layout rules: origin at the bottom left of the
// primary screen, y growing upward. Frameless windows: frame and content rectangles are the same.
namespace PanelFrame {

// The drop window resized to a panel of height `height`: top-left corner kept, 210 wide, then
// clamped into `visible` (left and bottom first, then right and top overflow).
QRectF panelFrame(const QRectF &windowFrame, qreal height, const QRectF &visible);

// A frame moved into `visible`: a left or lower edge outside goes to the visible edge first, then a
// right or upper overflow is subtracted.
QRectF clampedInto(QRectF frame, const QRectF &visible);

// The crop editor's first frame for an image: `minSize` is the editor's minimum content size and
// `viewWidth` the width of its image view.
QRectF properWindowFrameToFit(const QSizeF &image, const QSizeF &minSize, qreal viewWidth, const QPointF &origin);

// Between y-up and Qt's y-down space, given the height of the primary screen. Its own inverse.
QRectF flipped(const QRectF &rect, qreal primaryScreenHeight);

} // namespace PanelFrame

#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>

#include <optional>

// The crop frame's rules, in the y-up point space of the view that holds the frame (origin bottom
// left). The frame is the view's rectangle; the dashed crop rectangle lies 5 points inside it, so that
// the handles on its edges are never cut off. Widgets convert to Qt's y-down space at their edge only.
namespace CropFrame {

inline constexpr double kInset = 5.0;
// The smallest frame: a crop rectangle of one point.
inline constexpr double kMinSide = 11.0;

// The crop rectangle of a frame view of this size, in the view's own space.
QRectF cropFrame(const QSizeF &bounds);

// What the frame must stay in: the delegate's answer when it is at least 1 x 1, else the holder's bounds.
QRectF boundsFrame(const std::optional<QRectF> &delegateAnswer, const QSizeF &superviewBounds);

// At least 11 x 11, pushed right and up onto the limit, then left and down; the size is never reduced,
// so a frame wider than the limit ends with its right edge on the limit.
QRectF ensureInsideBoundsFrame(const QRectF &r, const QRectF &limit);

// The overlap of two rectangles, or the zero rectangle when they do not overlap (touching is not overlap).
QRectF intersection(const QRectF &a, const QRectF &b);

// The index of the dot within 5 points of `point` (view space), the first in the dots' order; none when
// the frame is hidden or no dot is that near.
std::optional<int> clickedDotForPoint(const QPointF &point, const QSizeF &viewBounds, bool hidden);

// The frame for a drag of (dx, dy) from `oldFrame`: a slide without a dot, keeping the size; with a dot,
// resized by it and cut to the limit.
QRectF calculateFrameWithOldFrame(const QRectF &oldFrame, float dx, float dy, std::optional<int> movingDot,
                                  const QRectF &limit);

} // namespace CropFrame

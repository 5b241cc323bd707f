#include "CropFrame.h"

#include "CropDot.h"

#include <algorithm>
#include <cmath>

namespace CropFrame {

QRectF cropFrame(const QSizeF &bounds)
{
    return QRectF(kInset, kInset, bounds.width() - 2 * kInset, bounds.height() - 2 * kInset);
}

QRectF boundsFrame(const std::optional<QRectF> &delegateAnswer, const QSizeF &superviewBounds)
{
    if (delegateAnswer && delegateAnswer->width() >= 1.0 && delegateAnswer->height() >= 1.0)
        return *delegateAnswer;
    return QRectF(QPointF(0, 0), superviewBounds);
}

QRectF ensureInsideBoundsFrame(const QRectF &r, const QRectF &limit)
{
    const double width = std::max(r.width(), kMinSide);
    const double height = std::max(r.height(), kMinSide);
    double x = r.x();
    double y = r.y();
    if (x < limit.x())
        x = limit.x();
    if (y < limit.y())
        y = limit.y();
    if (x + width > limit.x() + limit.width())
        x = limit.x() + limit.width() - width;
    if (y + height > limit.y() + limit.height())
        y = limit.y() + limit.height() - height;
    return QRectF(x, y, width, height);
}

QRectF intersection(const QRectF &a, const QRectF &b)
{
    const double left = std::max(a.left(), b.left());
    const double right = std::min(a.x() + a.width(), b.x() + b.width());
    const double bottom = std::max(a.y(), b.y());
    const double top = std::min(a.y() + a.height(), b.y() + b.height());
    if (right <= left || top <= bottom)
        return QRectF(0, 0, 0, 0);
    return QRectF(left, bottom, right - left, top - bottom);
}

std::optional<int> clickedDotForPoint(const QPointF &point, const QSizeF &viewBounds, bool hidden)
{
    if (hidden)
        return std::nullopt;
    const auto &dots = CropDot::dots();
    for (int i = 0; i < int(dots.size()); ++i) {
        const QPointF p = dots[i].convertToView(viewBounds);
        if (std::abs(point.x() - p.x()) <= kInset && std::abs(point.y() - p.y()) <= kInset)
            return i;
    }
    return std::nullopt;
}

QRectF calculateFrameWithOldFrame(const QRectF &oldFrame, float dx, float dy, std::optional<int> movingDot,
                                  const QRectF &limit)
{
    if (!movingDot)
        return ensureInsideBoundsFrame(oldFrame.translated(double(dx), double(dy)), limit);
    const QRectF moved = CropDot::dots().at(size_t(*movingDot)).frameWithOldFrame(oldFrame, dx, dy);
    return ensureInsideBoundsFrame(intersection(ensureInsideBoundsFrame(moved, limit), limit), limit);
}

} // namespace CropFrame

#include "PanelFrame.h"

#include "PanelCatalog.h"

#include <algorithm>

namespace PanelFrame {

QRectF clampedInto(QRectF f, const QRectF &visible)
{
    if (f.x() < visible.x())
        f.moveLeft(visible.x());
    if (f.y() < visible.y())
        f.moveTop(visible.y()); // y-up: "top" of QRectF is the bottom edge here
    const qreal rightExcess = f.x() + f.width() - (visible.x() + visible.width());
    if (rightExcess > 0)
        f.moveLeft(f.x() - rightExcess);
    const qreal topExcess = f.y() + f.height() - (visible.y() + visible.height());
    if (topExcess > 0)
        f.moveTop(f.y() - topExcess);
    return f;
}

QRectF panelFrame(const QRectF &windowFrame, qreal height, const QRectF &visible)
{
    return clampedInto(QRectF(windowFrame.x(), windowFrame.y() + windowFrame.height() - height,
                              PanelCatalog::kPanelWidth, height),
                       visible);
}

QRectF properWindowFrameToFit(const QSizeF &image, const QSizeF &minSize, qreal viewWidth, const QPointF &origin)
{
    const qreal margin = 2 * (minSize.width() / 2 - viewWidth / 2);
    qreal w = minSize.width();
    qreal h = minSize.height();
    if (minSize.height() > minSize.width() && image.height() > 0) {
        const qreal s = (minSize.height() - 100) / image.height();
        w = image.width() * s + margin;
        h = image.height() * s + 100;
    }
    if (w > h && image.width() > 0) {
        const qreal s = (minSize.width() - margin) / image.width();
        w = image.width() * s + margin;
        h = image.height() * s + 100;
    }
    return QRectF(origin, QSizeF(w, std::max(h, minSize.height())));
}

QRectF flipped(const QRectF &rect, qreal primaryScreenHeight)
{
    return QRectF(rect.x(), primaryScreenHeight - rect.y() - rect.height(), rect.width(), rect.height());
}

} // namespace PanelFrame

#include "CropSuper.h"

#include "CropView.h"
#include "core/panels/PanelFrame.h"

#include <QMouseEvent>

CropSuper::CropSuper(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("cropSuper"));
    setMouseTracking(true);
    cropV = new CropView(this);
}

QRectF CropSuper::fromYUp(const QRectF &yUp) const
{
    return PanelFrame::flipped(yUp, height());
}

namespace {
// NSPointInRect: the left and bottom edges belong to the rectangle, the right and top do not.
bool pointInRect(const QPointF &p, const QRectF &r)
{
    return p.x() >= r.x() && p.x() < r.x() + r.width() && p.y() >= r.y() && p.y() < r.y() + r.height();
}
} // namespace

void CropSuper::mousePressEvent(QMouseEvent *event)
{
    const QPointF point = toYUp(event->position());
    const QRectF frame = cropV->frameYUp();
    if (event->button() != Qt::LeftButton || cropV->isHidden() || !pointInRect(point, frame)) {
        QWidget::mousePressEvent(event);
        return;
    }
    m_isCropDragging = true;
    cropV->prepareForDragWithPoint(point - frame.topLeft());
    m_beginDragLoc = point;
    m_beginFrame = frame;
    cropV->setFocus(Qt::MouseFocusReason);
}

void CropSuper::mouseMoveEvent(QMouseEvent *event)
{
    const QPointF point = toYUp(event->position());
    if (!m_isCropDragging) {
        updateCursor(point);
        QWidget::mouseMoveEvent(event);
        return;
    }
    // Always from where the drag began, never from the previous step.
    const float dx = float(point.x() - m_beginDragLoc.x());
    const float dy = float(point.y() - m_beginDragLoc.y());
    cropV->setFrameYUp(cropV->calculateFrameWithOldFrame(m_beginFrame, dx, dy));
    if (CropViewDelegate *delegate = cropV->delegate())
        delegate->draggedCroppedView();
}

void CropSuper::mouseReleaseEvent(QMouseEvent *event)
{
    if (!m_isCropDragging) {
        QWidget::mouseReleaseEvent(event);
        return;
    }
    cropV->finishedDrag();
    m_isCropDragging = false;
    updateCursor(toYUp(event->position()));
}

void CropSuper::updateCursor(const QPointF &yUp)
{
    const QRectF frame = cropV->frameYUp();
    if (cropV->isHidden() || !pointInRect(yUp, frame)) {
        unsetCursor();
        return;
    }
    // A resize cursor over each handle, by the axes it changes; a move cursor elsewhere in the frame.
    static const Qt::CursorShape shapes[] = {Qt::SizeBDiagCursor, Qt::SizeHorCursor, Qt::SizeFDiagCursor,
                                             Qt::SizeVerCursor,   Qt::SizeVerCursor, Qt::SizeFDiagCursor,
                                             Qt::SizeHorCursor,   Qt::SizeBDiagCursor};
    const auto dot = cropV->clickedDotForPoint(yUp - frame.topLeft());
    setCursor(dot ? shapes[*dot] : Qt::SizeAllCursor);
}

#include "AKPaintView.h"

#include <QMouseEvent>
#include <QPainter>
#include <QUndoStack>

namespace {

// One stroke on the undo stack: the session before it and after it.
class PaintSnapshotCommand : public QUndoCommand
{
public:
    PaintSnapshotCommand(AKPaintView *view, QVariantList before, QVariantList after)
        : m_view(view), m_before(std::move(before)), m_after(std::move(after))
    {
    }
    void redo() override { m_view->applySessionDataArray(m_after); }
    void undo() override { m_view->applySessionDataArray(m_before); }

private:
    AKPaintView *m_view;
    QVariantList m_before;
    QVariantList m_after;
};

} // namespace

AKPaintView::AKPaintView(QWidget *parent) : QWidget(parent), m_control(tool, [this] { update(); })
{
    setObjectName(QStringLiteral("paintView"));
    setAttribute(Qt::WA_TranslucentBackground);
    setMouseTracking(true);
    setPaintingEnabled(false);
}

void AKPaintView::setPaintingEnabled(bool enabled)
{
    setAttribute(Qt::WA_TransparentForMouseEvents, !enabled);
    setCursor(enabled ? Qt::CrossCursor : Qt::ArrowCursor);
    m_hover = QPointF(-1, -1);
    update();
}

QSize AKPaintView::backingSize() const
{
    return (QSizeF(size()) * devicePixelRatioF()).toSize();
}

QPointF AKPaintView::normalised(const QPointF &point) const
{
    return QPointF(point.x() / width() - 0.5, point.y() / height() - 0.5);
}

void AKPaintView::paintStepFromPoint(const QPointF &from, const QPointF &to)
{
    paintSession.addStep(AKPaintStep(tool.brushColor, from, to, tool.pointSize, tool.hardness, tool.eraser,
                                     tool.pointAlpha, tool.brushPixelStep, QSizeF(backingSize())));
}

void AKPaintView::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || width() < 1 || height() < 1)
        return;
    m_dragging = true;
    m_firstLocation = normalised(event->position());
}

void AKPaintView::mouseMoveEvent(QMouseEvent *event)
{
    m_hover = event->position();
    if (m_dragging && width() >= 1 && height() >= 1) {
        const QPointF next = normalised(event->position());
        paintStepFromPoint(m_firstLocation, next);
        m_firstLocation = next;
    }
    update();
}

void AKPaintView::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !m_dragging)
        return;
    m_dragging = false;
    // A click without a drag added nothing, but is still an undo step, as it always was.
    updatePaintCanvasBySessionDataArray(paintSession.dataArray());
    Q_EMIT strokeFinished();
}

void AKPaintView::leaveEvent(QEvent *)
{
    m_hover = QPointF(-1, -1);
    update();
}

void AKPaintView::updatePaintCanvasBySessionDataArray(const QVariantList &dataArray)
{
    if (m_undoStack)
        m_undoStack->push(new PaintSnapshotCommand(this, m_prevDataArray, dataArray)); // runs redo() now
    else
        applySessionDataArray(dataArray);
}

void AKPaintView::applySessionDataArray(const QVariantList &dataArray)
{
    paintSession.setDataArray(dataArray);
    m_prevDataArray = dataArray;
    update();
}

void AKPaintView::cleanEverythingDrawn()
{
    paintSession.clear();
    update();
}

void AKPaintView::refreshWithCropFrame(const QRectF &crop)
{
    paintSession.refreshWithCropFrame(crop, QSizeF(size()));
    update();
}

void AKPaintView::refreshStepsWithFrameSize(const QSizeF &coming)
{
    paintSession.refreshStepsWithFrameSize(coming, QSizeF(size()));
    update();
}

void AKPaintView::rotate90Clockwise(bool clockwise)
{
    paintSession.rotate90Clockwise(clockwise);
    update();
}

QImage AKPaintView::snapshotWithSize(QSize pixels)
{
    PaintRenderer renderer;
    return renderer.snapshotWithSize(paintSession.steps(), pixels, tool);
}

void AKPaintView::syncLayer()
{
    if (!backingSize().isEmpty())
        m_layer.sync(paintSession, backingSize(), tool);
}

void AKPaintView::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    const QSize backing = backingSize();
    if (!backing.isEmpty()) {
        m_layer.sync(paintSession, backing, tool);
        m_layer.setDevicePixelRatio(devicePixelRatioF());
        p.drawImage(QPointF(0, 0), m_layer.image());
    }
    // In paint mode the pointer carries the brush's outline, black and white to show on any picture.
    if (!testAttribute(Qt::WA_TransparentForMouseEvents) && rect().contains(m_hover.toPoint())) {
        const qreal radius = std::max<qreal>(1.0, tool.pointSize / devicePixelRatioF() / 2);
        p.setRenderHint(QPainter::Antialiasing);
        p.setBrush(Qt::NoBrush);
        p.setPen(QPen(QColor(255, 255, 255, 200), 1.5));
        p.drawEllipse(m_hover, radius, radius);
        p.setPen(QPen(QColor(0, 0, 0, 200), 0.75));
        p.drawEllipse(m_hover, radius, radius);
    }
}

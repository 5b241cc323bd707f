#include "CropView.h"

#include "CropSuper.h"
#include "editor/crop/CropDot.h"

#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>

#include <cmath>

namespace {

// One handle: a 10-point blue disc with a soft inner shadow and a darker rim.
void drawDot(QPainter &p, QPointF at)
{
    const QRectF oval(at.x() - 5, at.y() - 5, 10, 10);
    QPainterPath path;
    path.addEllipse(oval);
    p.fillPath(path, QColor::fromRgbF(0.339f, 0.766f, 1.0f));
    // The inner shadow: black offset by a tenth of a point, blurred by 3, seen only inside the disc.
    QRadialGradient shade(at + QPointF(-0.1, 0.1), 5.0);
    shade.setColorAt(0.0, QColor(0, 0, 0, 0));
    shade.setColorAt(0.55, QColor(0, 0, 0, 0));
    shade.setColorAt(1.0, QColor(0, 0, 0, 110));
    p.save();
    p.setClipPath(path);
    p.fillRect(oval, shade);
    p.restore();
    p.setPen(QPen(QColor::fromRgbF(0.115f, 0.568f, 0.829f), 0.5));
    p.setBrush(Qt::NoBrush);
    p.drawEllipse(oval);
}

} // namespace

CropView::CropView(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("imgCropView"));
    // The holder tracks the mouse through the frame.
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::ClickFocus);
}

void CropView::setFrameYUp(const QRectF &frame)
{
    m_frame = frame;
    if (auto *holder = qobject_cast<CropSuper *>(parentWidget()))
        setGeometry(holder->fromYUp(frame).toAlignedRect());
    update();
}

QRectF CropView::boundsFrame() const
{
    std::optional<QRectF> answer;
    if (m_delegate)
        answer = m_delegate->boundsFrameForCropView();
    return CropFrame::boundsFrame(answer, parentWidget() ? QSizeF(parentWidget()->size()) : QSizeF());
}

std::optional<int> CropView::clickedDotForPoint(const QPointF &point) const
{
    return CropFrame::clickedDotForPoint(point, m_frame.size(), isHidden());
}

QRectF CropView::calculateFrameWithOldFrame(const QRectF &oldFrame, float dx, float dy) const
{
    return CropFrame::calculateFrameWithOldFrame(oldFrame, dx, dy, m_currMovingDot, boundsFrame());
}

void CropView::paintEvent(QPaintEvent *)
{
    auto *holder = qobject_cast<CropSuper *>(parentWidget());
    if (!holder)
        return;
    QPainter p(this);
    // Drawn in the frame's own y-up space, placed where the fractional frame lies inside this widget.
    const QPointF exact = holder->fromYUp(m_frame).topLeft() - QPointF(pos());
    p.translate(exact.x(), exact.y() + m_frame.height());
    p.scale(1, -1);
    // Half-point lines fall on pixel centres.
    const QRectF crop = cropFrame().adjusted(0.5, 0.5, -0.5, -0.5);
    p.setPen(QPen(QColor::fromRgbF(0.85f, 0.8f, 0.8f), 1.0));
    p.drawRect(crop);
    QPen dashes(Qt::black, 1.0);
    dashes.setDashPattern({2.0, 2.0});
    dashes.setCapStyle(Qt::FlatCap);
    p.setPen(dashes);
    p.drawRect(crop);
    p.setRenderHint(QPainter::Antialiasing);
    for (const CropDot &dot : CropDot::dots())
        drawDot(p, dot.convertToView(m_frame.size()));
}

void CropView::keyPressEvent(QKeyEvent *event)
{
    if (m_delegate)
        m_delegate->eventHappened(event);
    else
        event->ignore();
}

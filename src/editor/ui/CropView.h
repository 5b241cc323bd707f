#pragma once

#include "editor/crop/CropFrame.h"

#include <QWidget>

#include <optional>

class QKeyEvent;

// What the crop frame asks of the window that owns it (y-up points of the frame's holder).
class CropViewDelegate
{
public:
    virtual ~CropViewDelegate() = default;
    // The rectangle the frame must stay in.
    virtual QRectF boundsFrameForCropView() const = 0;
    // After each step of a drag, so the size fields can follow.
    virtual void draggedCroppedView() = 0;
    // A key pressed while the frame has the focus.
    virtual void eventHappened(QKeyEvent *event) = 0;
};

// The dashed crop rectangle with its eight round handles. Its frame is kept in the y-up points of its
// holder (CropSuper) and may be fractional; the widget covers the whole points around it and draws the
// frame where it lies exactly. Mouse tracking is the holder's.
class CropView : public QWidget
{
    Q_OBJECT
public:
    explicit CropView(QWidget *parent = nullptr);

    void setDelegate(CropViewDelegate *delegate) { m_delegate = delegate; }
    CropViewDelegate *delegate() const { return m_delegate; }
    QRectF frameYUp() const { return m_frame; }
    void setFrameYUp(const QRectF &frame);
    void setFrameOrigin(const QPointF &origin) { setFrameYUp(QRectF(origin, m_frame.size())); }

    // The crop rectangle in the frame's own space (its bounds inset by 5).
    QRectF cropFrame() const { return CropFrame::cropFrame(m_frame.size()); }
    QRectF boundsFrame() const;
    std::optional<int> clickedDotForPoint(const QPointF &point) const;
    void prepareForDragWithPoint(const QPointF &point) { m_currMovingDot = clickedDotForPoint(point); }
    QRectF calculateFrameWithOldFrame(const QRectF &oldFrame, float dx, float dy) const;
    QRectF ensureInsideBoundsFrame(const QRectF &r) const { return CropFrame::ensureInsideBoundsFrame(r, boundsFrame()); }
    bool isChangingSize() const { return m_currMovingDot.has_value(); }
    void finishedDrag() { m_currMovingDot.reset(); }

    float imgScRatio = 0; // the picture's scale when the editor opened; kept, read by nothing

protected:
    void paintEvent(QPaintEvent *) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    CropViewDelegate *m_delegate = nullptr;
    QRectF m_frame;
    std::optional<int> m_currMovingDot;
};

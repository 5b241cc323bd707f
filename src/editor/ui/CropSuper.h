#pragma once

#include <QWidget>

class CropView;

// The editor's work area: it holds the picture, the paint layer and the crop frame, and tracks the
// mouse for the frame. Frame geometry is kept in y-up points (origin bottom left), as the frame's rules
// are stated; the two conversions below are the only place where it meets Qt's y-down coordinates.
class CropSuper : public QWidget
{
    Q_OBJECT
public:
    explicit CropSuper(QWidget *parent = nullptr);

    CropView *cropV = nullptr;

    QPointF toYUp(const QPointF &qtPoint) const { return QPointF(qtPoint.x(), height() - qtPoint.y()); }
    QRectF fromYUp(const QRectF &yUp) const; // also its own inverse
    bool isCropDragging() const { return m_isCropDragging; }

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    void updateCursor(const QPointF &yUp);

    bool m_isCropDragging = false;
    QPointF m_beginDragLoc;
    QRectF m_beginFrame;
};

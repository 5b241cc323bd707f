#pragma once

#include "editor/paint/AKPaintControl.h"
#include "editor/paint/AKPaintSession.h"
#include "editor/paint/PaintRenderer.h"

#include <QWidget>

class QUndoStack;

// The transparent layer over the picture on which strokes are painted. A drag records segments in
// normalised points (y down); the finished strokes are drawn into a cached layer at the screen's pixel
// size, and the same strokes are drawn again at any size for saving. Each stroke is one undo step
// holding a snapshot of the whole session before and after it.
class AKPaintView : public QWidget
{
    Q_OBJECT
public:
    explicit AKPaintView(QWidget *parent = nullptr);

    AKPaintSession paintSession;
    PaintTool tool; // the next stroke's settings, and what a redraw leaves behind
    AKPaintControl &control() { return m_control; }

    void setUndoStack(QUndoStack *stack) { m_undoStack = stack; }
    // Whether the mouse paints (paint mode) or passes through to the crop frame.
    void setPaintingEnabled(bool enabled);
    bool hasDrawings() const { return !paintSession.steps().isEmpty(); }

    // The undo step of a stroke: the session becomes `dataArray`, and the one it replaces is kept for
    // undo. Undo and redo come back here with the older or newer list.
    void updatePaintCanvasBySessionDataArray(const QVariantList &dataArray);
    void applySessionDataArray(const QVariantList &dataArray); // no undo step
    const QVariantList &sessionPrevDataArray() const { return m_prevDataArray; }
    void cleanEverythingDrawn(); // the undo history stays: an undo brings the strokes back

    // How the strokes follow the picture (arguments in this view's y-down points).
    void refreshWithCropFrame(const QRectF &crop);
    void refreshStepsWithFrameSize(const QSizeF &coming);
    void rotate90Clockwise(bool clockwise);

    // The strokes alone at this pixel size, transparent elsewhere; null for an empty size.
    QImage snapshotWithSize(QSize pixels);
    // The layer's pixel size on screen.
    QSize backingSize() const;
    // Brings the cached layer up to the session now rather than at the next repaint.
    void syncLayer();

Q_SIGNALS:
    void strokeFinished();

protected:
    void paintEvent(QPaintEvent *) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void leaveEvent(QEvent *) override;

private:
    QPointF normalised(const QPointF &point) const;
    void paintStepFromPoint(const QPointF &from, const QPointF &to);

    AKPaintControl m_control;
    StrokeLayer m_layer;
    QUndoStack *m_undoStack = nullptr;
    QVariantList m_prevDataArray;
    QPointF m_firstLocation;
    bool m_dragging = false;
    QPointF m_hover{-1, -1};
};

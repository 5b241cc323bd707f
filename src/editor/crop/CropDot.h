#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>

#include <array>

// One handle of the crop frame. Its position is a fraction of the crop rectangle (0, 0.5 or 1 on each
// axis), and the four steps say how a drag of the handle moves the frame's origin and changes its size.
// Geometry is in the frame's y-up point space.
struct CropDot
{
    QPointF position;
    float moveXStep = 0;
    float moveYStep = 0;
    float changeWidthStep = 0;
    float changeHeightStep = 0;

    static CropDot cropDotWithPosition(QPointF position, float moveXstep, float moveYstep, float changeWidthStep,
                                       float changeHeightStep);

    // The frame after the pointer moved by (dx, dy) from where the drag began.
    QRectF frameWithOldFrame(const QRectF &old, float dx, float dy) const;
    // Where the dot sits in a view of this size: on the crop rectangle, inset 5 from the view's edges.
    QPointF convertToView(const QSizeF &viewBounds) const;

    // The eight dots in their fixed order, which is also the tie-break of hit testing: bottom left, left
    // middle, top left, bottom middle, top middle, bottom right, right middle, top right.
    static const std::array<CropDot, 8> &dots();
};

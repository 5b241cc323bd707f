#pragma once

#include "AKPaintSession.h"
#include "BrushImages.h"
#include "PaintTool.h"

#include <QImage>
#include <QList>

#include <memory>

// Dab centres along a segment, in a list kept for the life of the thread: 64 at first, doubled each
// time a segment needs more, never shrunk, so drawing allocates nothing once warmed up.
class DabBuffer
{
public:
    static DabBuffer &shared();
    void ensureCapacity(qsizetype count);
    qsizetype capacity() const { return m_capacity; }
    float *data() { return m_xy.get(); } // x, y pairs

private:
    qsizetype m_capacity = 0;
    std::unique_ptr<float[]> m_xy;
};

// Draws strokes on the CPU exactly as the brush stamps were always drawn by the graphics card: round
// dabs of the stamp every brushPixelStep pixels along each segment, a dab of pointSize pixels scaled by
// the surface, sampled bilinearly, and blended premultiplied (one, one minus source alpha); an eraser dab
// multiplies what is there by one minus the stamp's alpha. Targets are premultiplied ARGB images.
class PaintRenderer
{
public:
    // The dabs of one segment from normalised a to b on a surface of this size: n = ceil(length / step),
    // at least 1, at t = i / n, so the end point is the next segment's first dab. The centres go into
    // the buffer as x, y pairs in the graphics card's y-up pixels. Returns n.
    static qsizetype dabsAlongSegment(QPointF a, QPointF b, QSizeF surface, float brushPixelStep, DabBuffer &buffer);

    // Adds steps [from, end) to `target` (premultiplied ARGB, its size is the surface). `tool` is left with
    // the values of the last step drawn, its size scaled to the surface, as a redraw leaves the view.
    void drawSteps(QImage &target, const QList<AKPaintStep> &steps, qsizetype from, PaintTool &tool);
    // The layer of every step at this size, on a transparent image; null for an empty size.
    QImage snapshotWithSize(const QList<AKPaintStep> &steps, QSize size, PaintTool &tool);

private:
    const BrushTexture &textureFor(const PaintTool &tool);

    BrushTexture m_texture;
    int m_textureHardness = -1;
    float m_textureAlpha = -1;
};

// The finished strokes drawn once into a layer kept between repaints: appended steps are added to it,
// anything else (undo, clear, a crop or turn, a new size) redraws it whole.
class StrokeLayer
{
public:
    // Brings the layer up to the session at this pixel size; true when its pixels changed.
    bool sync(const AKPaintSession &session, QSize pixels, PaintTool &tool);
    const QImage &image() const { return m_image; }
    // Set on the layer itself: on a copy it would copy the whole layer at every repaint.
    void setDevicePixelRatio(qreal ratio) { m_image.setDevicePixelRatio(ratio); }
    void invalidate() { m_drawn = -1; }

private:
    PaintRenderer m_renderer;
    QImage m_image;
    quint64 m_generation = 0;
    qsizetype m_drawn = -1; // -1: nothing valid
};

#pragma once

#include "AKPaintStep.h"

#include <QList>
#include <QRectF>

// What has been painted: the segments in drawing order. No bitmap is kept; the layer is drawn from
// these at any size. The arithmetic that makes strokes follow a crop, a turn or a new view size works
// on the normalised points and the backing sizes here.
class AKPaintSession
{
public:
    AKPaintSession() = default;
    explicit AKPaintSession(const QVariantList &dataArray);

    const QList<AKPaintStep> &steps() const { return m_steps; }
    void addStep(const AKPaintStep &step);
    void clear();
    // clear(), then one step per serialised element, in order. An empty list leaves the session empty.
    void setDataArray(const QVariantList &dataArray);
    QVariantList dataArray() const;

    // Counts every change that is not an append: a drawn layer that saw an older generation is redrawn
    // whole, one that saw this generation needs only the steps added since.
    quint64 generation() const { return m_generation; }

    // The crop rectangle `crop` (paint view space, y down) becomes the whole view: points inside it end
    // within +-0.5, those outside beyond (kept, clipped when drawn); then the backing sizes shrink by the
    // crop's share of `frame`. Ignored when either is under 1 x 1.
    void refreshWithCropFrame(const QRectF &crop, const QSizeF &frame);
    // The view goes from `frame` to `coming`: backing sizes scale by frame / coming per axis, so a dab
    // keeps its size relative to the picture. Ignored when either is under 1 x 1.
    void refreshStepsWithFrameSize(const QSizeF &coming, const QSizeF &frame);
    void refreshStepsSizeWithSx(float sx, float sy);
    // A quarter turn about the centre, in the y-down space: clockwise (x, y) -> (-y, x).
    void rotate90Clockwise(bool clockwise);

private:
    QList<AKPaintStep> m_steps;
    quint64 m_generation = 0;
};

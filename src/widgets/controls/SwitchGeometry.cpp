#include "SwitchGeometry.h"

QRectF SwitchGeometry::rectForKnob(const QSizeF &track, const State &s)
{
    const double height = track.height() - 2.0;
    const double width = (track.width() - 2.0) / (s.active ? 1.38 : 1.8180339336395264);
    const bool left = (!s.on && !s.dragged) || (s.dragged && !s.draggingTowardsOn);
    const double x = left ? 1.0 : track.width() - width - 1.0;
    return QRectF(x, 1.0, width, height);
}

bool SwitchGeometry::draggingTowardsOn(double x, double width) { return x >= width / 2.0; }

bool SwitchGeometry::stateAfterRelease(const State &s) { return s.dragged ? s.draggingTowardsOn : !s.on; }

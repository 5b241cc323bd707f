#pragma once

#include <QRectF>

// Where the knob of an on/off switch sits, for a track of `track` size: narrower at rest, wider while
// the finger is on it, at the left when off (or dragged towards off), else at the right.
namespace SwitchGeometry {

struct State
{
    bool on = false;
    bool active = false;  // pressed
    bool dragged = false;
    bool draggingTowardsOn = false;
};

QRectF rectForKnob(const QSizeF &track, const State &state);
// A drag's end: true when the pointer is in the right half.
bool draggingTowardsOn(double x, double width);
// The state after the button comes up.
bool stateAfterRelease(const State &state);

} // namespace SwitchGeometry

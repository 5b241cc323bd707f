#pragma once

#include "AKPaintStep.h"

#include <QImage>

// The brush settings of the paint view. They serve twice: as the settings of the next stroke, and as
// what a redraw leaves behind, the values of the last segment drawn (its size scaled to the surface).
// So after an undo the controls can be set from here to match the stroke now on top.
struct PaintTool
{
    float pointSize = 5.1f;
    QImage brush; // null until a stroke or a control asks for one
    PaintColor brushColor{0, 1, 0, 1};
    float brushPixelStep = 0.51f;
    float pointAlpha = 1.0f;
    float hardness = 1.0f;
    bool eraser = false;
};

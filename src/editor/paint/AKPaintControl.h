#pragma once

#include "PaintTool.h"

#include <functional>

// The tool settings behind the editor's brush controls: it turns a line width into the renderer's dab
// size and spacing, and passes each setting to the paint view's tool.
class AKPaintControl
{
public:
    // `changed` runs after each setting reaches the tool (the view repaints its cursor, for one).
    explicit AKPaintControl(PaintTool &tool, std::function<void()> changed = {});

    // No eraser, green, alpha 1, hardness 1, line width 5, in that order.
    void loadDefaults();
    void setEraser(bool eraser);
    void setColor(const PaintColor &color);
    void setAlpha(float alpha);
    void setHardness(float hardness);
    // pointSize = ((1 - hardness) x 0.6 + 1.02) x w, the dab spacing a tenth of it.
    void setLineWidth(float width);
    QImage brushImage() const;

    float lineWidth() const { return m_lineWidth; }
    const PaintColor &color() const { return m_color; }
    float alpha() const { return m_alpha; }
    float hardness() const { return m_hardness; }
    bool eraser() const { return m_eraser; }

private:
    void notify() const;

    PaintTool &m_tool;
    std::function<void()> m_changed;
    float m_lineWidth = 0;
    PaintColor m_color;
    float m_alpha = 1;
    float m_hardness = 1;
    bool m_eraser = false;
};

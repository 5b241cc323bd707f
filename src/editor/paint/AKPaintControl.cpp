#include "AKPaintControl.h"

#include "BrushImages.h"

AKPaintControl::AKPaintControl(PaintTool &tool, std::function<void()> changed) : m_tool(tool), m_changed(std::move(changed))
{
    loadDefaults();
}

void AKPaintControl::loadDefaults()
{
    setEraser(false);
    setColor({0, 1, 0, 1});
    setAlpha(1.0f);
    setHardness(1.0f);
    setLineWidth(5.0f);
}

void AKPaintControl::setEraser(bool eraser)
{
    m_eraser = eraser;
    m_tool.eraser = eraser;
    notify();
}

void AKPaintControl::setColor(const PaintColor &color)
{
    m_color = color;
    m_tool.brushColor = color;
    notify();
}

void AKPaintControl::setAlpha(float alpha)
{
    m_alpha = alpha;
    m_tool.pointAlpha = alpha;
    m_tool.brush = brushImage();
    notify();
}

void AKPaintControl::setHardness(float hardness)
{
    m_hardness = hardness;
    m_tool.hardness = hardness;
    m_tool.brush = brushImage();
    notify();
}

void AKPaintControl::setLineWidth(float width)
{
    m_lineWidth = width;
    const float pointSize = float(((1.0 - double(m_hardness)) * 0.6 + 1.02) * double(width));
    m_tool.pointSize = pointSize;
    m_tool.brushPixelStep = float(double(pointSize) * 0.1);
    m_tool.brush = brushImage();
    notify();
}

QImage AKPaintControl::brushImage() const
{
    return BrushImages::brushImageWithHardness(m_hardness, m_eraser, m_alpha);
}

void AKPaintControl::notify() const
{
    if (m_changed)
        m_changed();
}

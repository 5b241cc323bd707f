// The brush controls, and undo and redo of strokes.

#include "CropImgWC.h"

#include "AKPaintView.h"
#include "EditorIcons.h"

#include <QButtonGroup>
#include <QColorDialog>
#include <QLineEdit>
#include <QSlider>
#include <QTimer>
#include <QToolButton>
#include <QUndoStack>

#include <cmath>

namespace {
QColor toQColor(const PaintColor &c)
{
    return QColor::fromRgbF(float(c.red), float(c.green), float(c.blue), float(c.alpha));
}
} // namespace

void CropImgWC::brushEraserChanged(int segment)
{
    paintView->control().setEraser(segment == 1);
}

void CropImgWC::colorChanged(const QColor &color)
{
    if (color.isValid()) {
        paintView->control().setColor({color.redF(), color.greenF(), color.blueF(), color.alphaF()});
        syncBrushControls();
        return;
    }
    // The well was pressed: a colour dialog that reports each choice as it is made.
    if (!m_colorDialog) {
        m_colorDialog = new QColorDialog(this);
        m_colorDialog->setObjectName(QStringLiteral("brushColorDialog"));
        connect(m_colorDialog, &QColorDialog::currentColorChanged, this, &CropImgWC::colorChanged);
    }
    m_colorDialog->setCurrentColor(toQColor(paintView->tool.brushColor));
    m_colorDialog->show();
    m_colorDialog->raise();
}

void CropImgWC::brushSizeChanged(int sliderValue)
{
    if (stepForBrushValue == 0.0f)
        stepForBrushValue = 1.0f;
    const float value = std::round(float(sliderValue) / stepForBrushValue) * stepForBrushValue;
    brushSizeSlider->setValue(int(value));
    brusSizeLbl->setText(QString::number(qint64(value)));
    // Straight to the paint view: the slider's size has no hardness factor, and the spacing stays.
    paintView->tool.pointSize = float(brushSizeSlider->value());
    paintView->update();
}

void CropImgWC::undoPressed()
{
    m_undoStack->undo();
    QTimer::singleShot(100, this, &CropImgWC::UndoManagerChange);
}

void CropImgWC::redoPressed()
{
    m_undoStack->redo();
    QTimer::singleShot(100, this, &CropImgWC::UndoManagerChange);
}

void CropImgWC::UndoManagerChange()
{
    // The redraw leaves the last segment's settings in the paint view; the controls follow them.
    paintView->syncLayer();
    syncBrushControls();
}

void CropImgWC::syncBrushControls()
{
    const PaintTool &tool = paintView->tool;
    brushColorWell->setIcon(EditorIcons::swatch(toQColor(tool.brushColor)));
    drawingSegment->button(tool.eraser ? 1 : 0)->setChecked(true);
    brushSizeSlider->setValue(int(tool.pointSize));
    brusSizeLbl->setText(QString::number(qint64(tool.pointSize)));
}

// The crop frame, crops and quarter turns, the size fields and the keys.

#include "CropImgWC.h"

#include "AKPaintView.h"
#include "CropSuper.h"
#include "EditorImageView.h"
#include "ResizePopover.h"
#include "editor/crop/EditorGeometry.h"
#include "widgets/controls/ITSwitch.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QSlider>

float CropImgWC::displayScale() const
{
    return EditorGeometry::getScaleForRealImgSize(imgToRotateOrCrop->imagePoints(),
                                                  QRectF(QPointF(), QSizeF(imgToRotateOrCrop->size())));
}

QRectF CropImgWC::getImgRectInsideImgView() const
{
    return imgToRotateOrCrop->imgRectYUp();
}

// The image view fills the work area, so its origin there is (0, 0).
QRectF CropImgWC::boundsFrameForCropView() const
{
    return EditorGeometry::boundsFrameForCropView(getImgRectInsideImgView(), QPointF(0, 0));
}

QRectF CropImgWC::getImgRect() const
{
    return EditorGeometry::getImgRect(getImgRectInsideImgView(), QPointF(0, 0));
}

QRect CropImgWC::paintViewGeometry(const QRectF &innerYUp) const
{
    return cropSuper->fromYUp(innerYUp).toRect();
}

QRectF CropImgWC::makeCropViewFitImgBounds(bool refreshStrokes)
{
    imgToRotateOrCrop->setGeometry(cropSuper->rect());
    const QRectF f = boundsFrameForCropView();
    imgCropView->setFrameYUp(f);
    const QRectF inner = f.adjusted(CropFrame::kInset, CropFrame::kInset, -CropFrame::kInset, -CropFrame::kInset);
    const QRect geometry = paintViewGeometry(inner);
    if (refreshStrokes)
        paintView->refreshStepsWithFrameSize(QSizeF(geometry.size()));
    paintView->setGeometry(geometry);
    // The brush size shown follows the paint view's, which a redraw may have scaled.
    const int size = int(paintView->tool.pointSize);
    brusSizeLbl->setText(QString::number(size));
    brushSizeSlider->setValue(size);
    return imgCropView->frameYUp();
}

QString CropImgWC::getcropImgSizeDimensions() const
{
    const double k = EditorGeometry::pixelsPerPoint(pixelSize(), imgToRotateOrCrop->imagePoints());
    const QSize size = EditorGeometry::getcropImgSizeDimensions(imgCropView->cropFrame(), displayScale(), k);
    return QStringLiteral("%1x%2").arg(size.width()).arg(size.height());
}

void CropImgWC::updateCropSizeValues()
{
    const QStringList parts = getcropImgSizeDimensions().split(QLatin1Char('x'));
    cropSizeWidthTF->setText(parts.value(0));
    cropSizeHeightTF->setText(parts.value(1));
}

void CropImgWC::draggedCroppedView()
{
    updateCropSizeValues();
}

void CropImgWC::showPictureImage()
{
    imgToRotateOrCrop->setImage(picture.image().pixels, picture.image().size);
}

void CropImgWC::cropImage()
{
    if (!ensureFullPicture())
        return;
    // The crop rectangle, in the work area's y-up points; the image view lies at its origin.
    const QRectF crop = imgCropView->frameYUp().adjusted(CropFrame::kInset, CropFrame::kInset, -CropFrame::kInset,
                                                          -CropFrame::kInset);
    const QRectF paintYDown = cropSuper->fromYUp(crop).translated(-QPointF(paintView->pos()));
    paintView->refreshWithCropFrame(paintYDown);
    const QRectF o = getImgRectInsideImgView();
    const double k = EditorGeometry::pixelsPerPoint(pixelSize(), imgToRotateOrCrop->imagePoints());
    const auto area = EditorGeometry::cropArea(crop, o, displayScale(), k);
    const QRect rows = EditorGeometry::toImageRows(area.pixelsYUp, pixelSize().height());
    if (!picture.crop(rows, area.points)) {
        qWarning("crop outside the picture (%d, %d, %d x %d): nothing cropped", rows.x(), rows.y(), rows.width(), rows.height());
        return;
    }
    m_modified = true;
    showPictureImage();
    makeCropViewFitImgBounds();
}

void CropImgWC::rotate(bool clockwise)
{
    if (!ensureFullPicture())
        return;
    picture.rotate(clockwise);
    showPictureImage();
    // The fields show the turned picture's pixels; the frame's former size is dropped.
    cropSizeWidthTF->setText(QString::number(pixelSize().width()));
    cropSizeHeightTF->setText(QString::number(pixelSize().height()));
    paintView->rotate90Clockwise(clockwise);
    m_modified = true;
    makeCropViewFitImgBounds();
}

void CropImgWC::changeCropAlignment(int tag)
{
    const QRectF frame = EditorGeometry::getImgRectForImgRect(getImgRect(), imgCropView->frameYUp().size(), tag);
    imgCropView->setFrameYUp(frame);
    updateCropSizeValues();
}

void CropImgWC::refreshCropSizeBtnAction()
{
    cropSizeWidthTF->setText(QString::number(pixelSize().width()));
    cropSizeHeightTF->setText(QString::number(pixelSize().height()));
    makeCropViewFitImgBounds();
}

bool CropImgWC::isPaintMode() const
{
    return cropVisblSwitch->isOn();
}

void CropImgWC::setPaintMode(bool on)
{
    if (cropVisblSwitch->isOn() != on)
        cropVisblSwitch->setOn(on);
    imgCropView->setVisible(!on);
    paintView->setPaintingEnabled(on);
    cropTools->setEnabled(!on);
    drawingTbox->setEnabled(on);
    if (!on)
        imgCropView->setFocus();
}

CropSizeEntry::Field CropImgWC::fieldKind(QLineEdit *field) const
{
    using F = CropSizeEntry::Field;
    if (field == brusSizeLbl)
        return F::Brush;
    if (field == cropSizeWidthTF)
        return F::CropWidth;
    if (field == cropSizeHeightTF)
        return F::CropHeight;
    if (field == resizeimgPopover->resizeWTxtFld)
        return F::ResizeWidth;
    if (field == resizeimgPopover->resizeHtxtFld)
        return F::ResizeHeight;
    return F::None;
}

CropSizeEntry::Context CropImgWC::entryContext() const
{
    CropSizeEntry::Context c;
    c.sliderMin = brushSizeSlider->minimum();
    c.sliderMax = brushSizeSlider->maximum();
    c.pixelWidth = pixelSize().width();
    c.pixelHeight = pixelSize().height();
    c.scale = displayScale();
    c.popoverShown = resizeimgPopover->isShown();
    return c;
}

void CropImgWC::textDidChange(QLineEdit *field)
{
    if (field == brusSizeLbl) {
        const QString fixed = CropSizeEntry::fixedBrushField(field->text(), brushSizeSlider->minimum(), brushSizeSlider->maximum());
        if (fixed != field->text()) {
            field->setText(fixed);
            return;
        }
        const float value = float(CropSizeEntry::valueOf(fixed));
        brushSizeSlider->setValue(int(value));
        paintView->tool.pointSize = value;
        paintView->update();
        return;
    }
    if (field != cropSizeWidthTF && field != cropSizeHeightTF)
        return;
    const QSize p = pixelSize();
    for (auto [edit, max] : {std::pair{cropSizeWidthTF, p.width()}, std::pair{cropSizeHeightTF, p.height()}}) {
        const QString fixed = CropSizeEntry::fixedCropField(edit->text(), max);
        if (fixed != edit->text())
            edit->setText(fixed);
    }
    const double k = EditorGeometry::pixelsPerPoint(p, imgToRotateOrCrop->imagePoints());
    imgCropView->setFrameYUp(EditorGeometry::frameForTypedSize(
        imgCropView->frameYUp(), CropSizeEntry::valueOf(cropSizeWidthTF->text()),
        CropSizeEntry::valueOf(cropSizeHeightTF->text()), displayScale(), k, imgCropView->boundsFrame()));
}

void CropImgWC::textDidEndEditing(QLineEdit *field)
{
    if (field != brusSizeLbl)
        return;
    const double value = CropSizeEntry::valueOf(field->text());
    if (value >= brushSizeSlider->minimum() && value <= brushSizeSlider->maximum()) {
        brushSizeSlider->setValue(int(value));
        paintView->control().setLineWidth(float(value));
    }
}

bool CropImgWC::fieldKeyPress(QLineEdit *field, QKeyEvent *event)
{
    const bool ctrl = event->modifiers().testFlag(Qt::ControlModifier);
    if (ctrl && event->key() == Qt::Key_Z) {
        revertCropChanges();
        return true;
    }
    if (ctrl && event->key() == Qt::Key_S) {
        if (!resizeimgPopover->isShown())
            saveCropRotateResult();
        return true;
    }
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        if (resizeimgPopover->isShown())
            resizeDonePressed();
        else if (!isPaintMode())
            cropImage();
        return true;
    }
    if (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down) {
        if (const auto next = CropSizeEntry::steppedField(fieldKind(field), field->text(), event->key() == Qt::Key_Up, entryContext())) {
            field->setText(*next);
            textDidChange(field);
        }
        return true;
    }
    return false;
}

bool CropImgWC::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress)
        if (auto *field = qobject_cast<QLineEdit *>(watched))
            if (fieldKind(field) != CropSizeEntry::Field::None && fieldKeyPress(field, static_cast<QKeyEvent *>(event)))
                return true;
    return QWidget::eventFilter(watched, event);
}

void CropImgWC::nudge(double dx, double dy)
{
    imgCropView->setFrameOrigin(imgCropView->frameYUp().topLeft() + QPointF(dx, dy));
    imgCropView->setFrameYUp(imgCropView->ensureInsideBoundsFrame(imgCropView->frameYUp()));
}

void CropImgWC::perform(const std::vector<EditorKeys::Action> &actions)
{
    using A = EditorKeys::Action;
    for (A action : actions) {
        switch (action) {
        case A::NudgeLeft: nudge(-1, 0); break;
        case A::NudgeRight: nudge(1, 0); break;
        case A::NudgeDown: nudge(0, -1); break;
        case A::NudgeUp: nudge(0, 1); break;
        case A::CropImage: cropImage(); break;
        case A::Revert: revertCropChanges(); break;
        case A::RotateLeft: rotateBy90Left(); break;
        case A::RotateRight: rotateBy90right(); break;
        case A::Save: saveCropRotateResult(); break;
        case A::ShowResize: showResizePopOver(); break;
        }
    }
}

void CropImgWC::eventHappened(QKeyEvent *event)
{
    if (imgCropView->isHidden())
        return;
    keyPressEvent(event);
}

void CropImgWC::keyPressEvent(QKeyEvent *event)
{
    const auto actions = EditorKeys::actionsFor(event->key(), event->modifiers().testFlag(Qt::ControlModifier),
                                                isPaintMode(), resizeimgPopover->isShown());
    if (actions.empty()) {
        QWidget::keyPressEvent(event);
        return;
    }
    perform(actions);
    event->accept();
}

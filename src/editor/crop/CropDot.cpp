#include "CropDot.h"

#include "CropFrame.h"

CropDot CropDot::cropDotWithPosition(QPointF position, float moveXstep, float moveYstep, float changeWidthStep,
                                     float changeHeightStep)
{
    return {position, moveXstep, moveYstep, changeWidthStep, changeHeightStep};
}

QRectF CropDot::frameWithOldFrame(const QRectF &old, float dx, float dy) const
{
    // Each product in single precision, each sum in double: the frame follows the pointer to the bit.
    return QRectF(old.x() + double(moveXStep * dx), old.y() + double(moveYStep * dy),
                  old.width() + double(changeWidthStep * dx), old.height() + double(changeHeightStep * dy));
}

QPointF CropDot::convertToView(const QSizeF &viewBounds) const
{
    const double inset = CropFrame::kInset;
    return QPointF(position.x() * (viewBounds.width() - 2 * inset) + inset,
                   position.y() * (viewBounds.height() - 2 * inset) + inset);
}

const std::array<CropDot, 8> &CropDot::dots()
{
    static const std::array<CropDot, 8> table{
        cropDotWithPosition({0, 0}, 1, 1, -1, -1),   cropDotWithPosition({0, 0.5}, 1, 0, -1, 0),
        cropDotWithPosition({0, 1}, 1, 0, -1, 1),    cropDotWithPosition({0.5, 0}, 0, 1, 0, -1),
        cropDotWithPosition({0.5, 1}, 0, 0, 0, 1),   cropDotWithPosition({1, 0}, 0, 1, 1, -1),
        cropDotWithPosition({1, 0.5}, 0, 0, 1, 0),   cropDotWithPosition({1, 1}, 0, 0, 1, 1),
    };
    return table;
}

#include "EditorGeometry.h"

#include "CropFrame.h"

#include <algorithm>
#include <cmath>

namespace EditorGeometry {

float getScaleForRealImgSize(const QSizeF &real, const QRectF &cell)
{
    if (real.width() < 1.0 || real.height() < 1.0)
        return 0.0f;
    return float(std::min({1.0, cell.width() / real.width(), cell.height() / real.height()}));
}

QSizeF getScaledImgSizeForRealImgSize(const QSizeF &real, const QRectF &cell)
{
    const double s = getScaleForRealImgSize(real, cell);
    return QSizeF(real.width() * s, real.height() * s);
}

QRectF getImgRectInsideImgView(const QSizeF &imagePoints, const QSizeF &viewBounds)
{
    const QSizeF size = getScaledImgSizeForRealImgSize(imagePoints, QRectF(QPointF(0, 0), viewBounds));
    return QRectF(viewBounds.width() * 0.5 - size.width() * 0.5, viewBounds.height() * 0.5 - size.height() * 0.5,
                  size.width(), size.height());
}

QRectF boundsFrameForCropView(const QRectF &imgRectInImageView, const QPointF &imageViewOriginInHolder)
{
    const double d = CropFrame::kInset;
    return imgRectInImageView.translated(imageViewOriginInHolder).adjusted(-d, -d, d, d);
}

float roundToNearest5Des(float value)
{
    return value < 0.5f ? 0.5f : std::floor(value * 2.0f) * 0.5f;
}

QRectF getImgRect(const QRectF &imgRectInImageView, const QPointF &imageViewOriginInHolder)
{
    const QRectF r = imgRectInImageView.translated(imageViewOriginInHolder);
    return QRectF(r.x(), r.y(), roundToNearest5Des(float(r.width())), roundToNearest5Des(float(r.height())));
}

QRectF getImgRectForImgRect(const QRectF &i, const QSizeF &z, int alignment)
{
    const double d = CropFrame::kInset;
    switch (alignment) {
    case 0:
        return QRectF(i.x() + (i.width() - z.width()) * 0.5, i.y() + (i.height() - z.height()) * 0.5, z.width(),
                      z.height());
    case 1:
        return QRectF(i.x() - d, i.y() - d, z.width(), z.height());
    case 2:
        return QRectF(i.x() + i.width() - z.width() + d, i.y() - d, z.width(), z.height());
    case 3:
        return QRectF(i.x() - d, i.y() + i.height() - z.height() + d, z.width(), z.height());
    case 4:
        return QRectF(i.x() + i.width() - z.width() + d, i.y() + i.height() - z.height() + d, z.width(), z.height());
    default:
        return QRectF(0, 0, 0, 0);
    }
}

double pixelsPerPoint(const QSize &pixels, const QSizeF &points)
{
    return points.width() > 0 ? pixels.width() / points.width() : 1.0;
}

QSize getcropImgSizeDimensions(const QRectF &cropRect, float scale, double k)
{
    if (scale <= 0.0f)
        return QSize(0, 0);
    return QSize(int(std::lroundf(float(cropRect.width() / scale * k))),
                 int(std::lroundf(float(cropRect.height() / scale * k))));
}

CropArea cropArea(const QRectF &r, const QRectF &o, float scale, double k)
{
    if (scale <= 0.0f)
        return {};
    const double s = scale;
    const QRectF points((r.x() - o.x()) / s, (r.y() - o.y()) / s, r.width() / s, r.height() / s);
    const QRect pixels(int(std::lroundf(float(points.x() * k))), int(std::lroundf(float(points.y() * k))),
                       int(std::lroundf(float(points.width() * k))), int(std::lroundf(float(points.height() * k))));
    return {pixels, QSizeF(std::lroundf(float(points.width())), std::lroundf(float(points.height())))};
}

QRectF frameForTypedSize(const QRectF &frame, double widthField, double heightField, float scale, double k,
                         const QRectF &limit)
{
    const double d = CropFrame::kInset;
    const double width = double(float(widthField * scale)) / k;
    const double height = double(float(heightField * scale)) / k;
    const QRectF crop(frame.x() + d, frame.y() + d, width, height);
    return CropFrame::ensureInsideBoundsFrame(crop.adjusted(-d, -d, d, d), limit);
}

QRect toImageRows(const QRect &yUp, int imageHeight)
{
    return QRect(yUp.x(), imageHeight - yUp.y() - yUp.height(), yUp.width(), yUp.height());
}

} // namespace EditorGeometry

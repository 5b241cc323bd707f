#pragma once

#include <QRect>
#include <QRectF>
#include <QSize>
#include <QSizeF>

// The editor window's arithmetic between the picture and its views, in y-up points (origin bottom left)
// like the crop frame. The picture is shown at a scale s that never enlarges it, centred in the image
// view; the crop frame's rectangle is turned into image pixels with the factor k = pixel width / point
// width, which serves both axes.
namespace EditorGeometry {

// min(1, view / picture) per axis, in single precision; 0 for a picture under one point.
float getScaleForRealImgSize(const QSizeF &real, const QRectF &cell);
QSizeF getScaledImgSizeForRealImgSize(const QSizeF &real, const QRectF &cell);
// Where the picture lies in the image view (bounds at the origin), centred, unrounded.
QRectF getImgRectInsideImgView(const QSizeF &imagePoints, const QSizeF &viewBounds);
// The limit of the crop frame: that rectangle moved into the frame's holder and outset by 5, so the crop
// rectangle reaches exactly the picture's edges.
QRectF boundsFrameForCropView(const QRectF &imgRectInImageView, const QPointF &imageViewOriginInHolder);
// The picture's rectangle for the alignment buttons, with each side rounded down to half points.
QRectF getImgRect(const QRectF &imgRectInImageView, const QPointF &imageViewOriginInHolder);
float roundToNearest5Des(float value);

// The frame of a given size placed by an alignment tag: 0 centre, 1 bottom left, 2 bottom right, 3 top
// left, 4 top right. Any other tag gives the zero rectangle.
QRectF getImgRectForImgRect(const QRectF &imgRect, const QSizeF &cropFrameSize, int alignment);

// Pixels per point of the picture, from its width.
double pixelsPerPoint(const QSize &pixels, const QSizeF &points);
// The crop rectangle's size in image pixels, as the size fields show it.
QSize getcropImgSizeDimensions(const QRectF &cropRect, float scale, double k);

// The crop: the crop rectangle (in image view space) as whole image pixels, y up from the picture's
// bottom edge, and the point size the cropped picture takes.
struct CropArea
{
    QRect pixelsYUp;
    QSizeF points;
};
CropArea cropArea(const QRectF &cropRectInImageView, const QRectF &imgRectInImageView, float scale, double k);

// The frame for sizes typed into the fields: the crop rectangle keeps its bottom left corner and takes
// (field x s) / k points per side, then the frame is kept inside the limit.
QRectF frameForTypedSize(const QRectF &frame, double widthField, double heightField, float scale, double k,
                         const QRectF &limit);

// Between the y-up pixel rows of the editor's arithmetic and an image's y-down rows.
QRect toImageRows(const QRect &yUp, int imageHeight);

} // namespace EditorGeometry

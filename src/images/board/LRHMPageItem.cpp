#include "LRHMPageItem.h"

#include "core/fs/PathParts.h"

#include <QRandomGenerator>

#include <cmath>

LRHMPageItem::LRHMPageItem(const QString &path) : filePath(path)
{
    identify = createIdentifyWith(fileName());
}

QString LRHMPageItem::fileName() const
{
    return filePath.isEmpty() ? QString() : PathParts::splitExtension(PathParts::lastComponent(filePath)).name;
}

QString LRHMPageItem::createIdentifyWith(const QString &fileName)
{
    return QStringLiteral("%1_%2").arg(fileName).arg(QRandomGenerator::global()->bounded(qint64(1) << 31));
}

void LRHMPageItem::appendCGTransform(const QTransform &t)
{
    transform = transform * t;
}

QTransform LRHMTransformManager::rotateTransformWith(const QRectF &, double angle)
{
    const double r = angle * M_PI / 180.0;
    return QTransform(std::cos(r), std::sin(r), -std::sin(r), std::cos(r), 0, 0);
}

QTransform LRHMTransformManager::verticalFlipTransformWith(const QRectF &rect)
{
    // Scale (1, -1), then translate by (0, -height) in the scaled space: translated first when applied.
    return QTransform::fromTranslate(0, -rect.height()) * QTransform::fromScale(1, -1);
}

QTransform LRHMTransformManager::horizontalFlipTransformWith(const QRectF &rect)
{
    return QTransform::fromTranslate(-rect.width(), 0) * QTransform::fromScale(-1, 1);
}

QSize PageGeometry::transformedSize(const QSize &size, const QTransform &transform)
{
    const QRectF box = transform.mapRect(QRectF(QPointF(0, 0), QSizeF(size)));
    // Rounding noise of the sines (6e-17) must not cost a pixel.
    return QSize(int(box.width() + 1e-6), int(box.height() + 1e-6));
}

QTransform PageGeometry::forYDown(const QTransform &yUp)
{
    const QTransform flip = QTransform::fromScale(1, -1);
    const QTransform t = flip * yUp * flip;
    // Quarter turns leave 6e-17 where a 0 belongs; snapped, the picture is turned without resampling.
    auto snap = [](qreal v) { return std::abs(v - std::round(v)) < 1e-9 ? std::round(v) : v; };
    return QTransform(snap(t.m11()), snap(t.m12()), snap(t.m21()), snap(t.m22()), t.dx(), t.dy());
}

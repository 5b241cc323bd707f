#include "AKPaintStep.h"

#include <QStringList>

AKPaintStep::AKPaintStep(const PaintColor &color, QPointF start, QPointF end, float pointSize, float hardness,
                         bool eraser, float alpha, float brushPixelStep, QSizeF backingSize)
    : color(color), start(start), end(end), eraser(eraser), pointSize(pointSize), hardness(hardness), alpha(alpha),
      brushPixelStep(brushPixelStep), backingSize(backingSize)
{
}

AKPaintStep::AKPaintStep(const QVariantList &data)
{
    start = pointFromString(data.value(0).toString());
    end = pointFromString(data.value(1).toString());
    color = {data.value(2).toFloat(), data.value(3).toFloat(), data.value(4).toFloat(), data.value(5).toFloat()};
    pointSize = data.value(6).toFloat();
    hardness = data.value(7).toFloat();
    eraser = data.value(8).toBool();
    alpha = data.value(9).toFloat();
    brushPixelStep = data.value(10).toFloat();
    backingSize = sizeFromString(data.value(11).toString());
}

QVariantList AKPaintStep::data() const
{
    return {stringFromPair(start.x(), start.y()),
            stringFromPair(end.x(), end.y()),
            float(color.red),
            float(color.green),
            float(color.blue),
            float(color.alpha),
            pointSize,
            hardness,
            eraser,
            alpha,
            brushPixelStep,
            stringFromPair(backingSize.width(), backingSize.height())};
}

QString stringFromPair(double first, double second)
{
    return QString::asprintf("{%.15g, %.15g}", first, second);
}

namespace {
std::pair<double, double> pairFromString(const QString &text)
{
    QString inner = text.trimmed();
    if (inner.startsWith(QLatin1Char('{')))
        inner.remove(0, 1);
    if (inner.endsWith(QLatin1Char('}')))
        inner.chop(1);
    const QStringList parts = inner.split(QLatin1Char(','));
    return {parts.value(0).trimmed().toDouble(), parts.value(1).trimmed().toDouble()};
}
} // namespace

QPointF pointFromString(const QString &text)
{
    const auto [x, y] = pairFromString(text);
    return QPointF(x, y);
}

QSizeF sizeFromString(const QString &text)
{
    const auto [w, h] = pairFromString(text);
    return QSizeF(w, h);
}

#pragma once

#include <QPointF>
#include <QSizeF>
#include <QVariantList>

// A brush colour as the strokes keep it: four components from 0 to 1.
struct PaintColor
{
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;

    bool operator==(const PaintColor &) const = default;
};

// One straight segment of a stroke with every brush setting in force when it was drawn. Points are
// normalised to the paint view, y down: (x / width - 0.5, y / height - 0.5), so the centre is (0, 0)
// and the corners lie at +-0.5 whatever size the layer is drawn at.
class AKPaintStep
{
public:
    AKPaintStep() = default;
    AKPaintStep(const PaintColor &color, QPointF start, QPointF end, float pointSize, float hardness, bool eraser,
                float alpha, float brushPixelStep, QSizeF backingSize);
    // From the 12 values of data(), in their order; nothing is checked.
    explicit AKPaintStep(const QVariantList &data);

    // Start and end as "{x, y}" text, the colour's components narrowed to single precision, the brush
    // values, and the backing size as "{w, h}": the form the undo history keeps.
    QVariantList data() const;

    PaintColor color;
    QPointF start;
    QPointF end;
    bool eraser = false;
    float pointSize = 0;      // diameter in pixels of the backingSize surface
    float hardness = 1;       // 0 to 1
    float alpha = 1;          // 0 to 1
    float brushPixelStep = 0; // dab spacing along the segment, in pixels of the surface drawn on
    QSizeF backingSize;       // pixel size of the surface pointSize refers to

    bool operator==(const AKPaintStep &) const = default;
};

// The "{x, y}" text of two numbers, at the full precision of a double (15 significant digits), and back.
// Reading is lenient: what is missing reads as 0.
QString stringFromPair(double first, double second);
QPointF pointFromString(const QString &text);
QSizeF sizeFromString(const QString &text);

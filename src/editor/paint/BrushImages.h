#pragma once

#include <QImage>

#include <vector>

namespace BrushImages {

// The brush stamp for a hardness: "Brush_hardness_%i" of the Brushes resources with the hardness cut to
// a whole number before it is multiplied by 100, so anything below 1 is the soft stamp (0) and 1 the
// hard one (100). The eraser flag is not looked at. An alpha other than exactly 1 fades a copy. A missing
// stamp gives a null image, which paints nothing.
QImage brushImageWithHardness(float hardness, bool eraser, float alpha);
QString resourceName(float hardness);

} // namespace BrushImages

// A stamp as the renderer samples it: each texel's four values from 0 to 1. The stamp is premultiplied
// with its alpha first (A, R, G, B in memory) and those bytes are read as R, G, B, A, the pairing the
// stamps have always been uploaded with; for the white stamps all four come out equal.
struct BrushTexture
{
    int width = 0;
    int height = 0;
    std::vector<float> texels; // width x height x 4, rows from the stamp's top

    static BrushTexture fromImage(const QImage &brush);
    bool isNull() const { return width == 0 || height == 0; }
};

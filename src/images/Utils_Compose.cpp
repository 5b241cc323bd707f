#include "BitmapImageRep.h"

#include "utils/Utils.h"

#include <QPainter>

#include <algorithm>

BitmapImageRep Utils::combineBgIm(const BitmapImageRep &background, const BitmapImageRep &foreground)
{
    if (!background.isValid() || !foreground.isValid())
        return {};
    // Both lie at the bottom-left corner; the result covers both and its point size is its pixel size.
    const int w = std::max(background.pixelsWide(), foreground.pixelsWide());
    const int h = std::max(background.pixelsHigh(), foreground.pixelsHigh());
    QImage out(w, h, QImage::Format_ARGB32_Premultiplied);
    out.fill(Qt::transparent);
    QPainter painter(&out);
    painter.drawImage(0, h - background.pixelsHigh(), background.pixels);
    painter.drawImage(0, h - foreground.pixelsHigh(), foreground.pixels);
    painter.end();
    return {out, QSizeF(w, h)};
}

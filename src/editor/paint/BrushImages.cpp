#include "BrushImages.h"

#include <QPainter>

namespace BrushImages {

QString resourceName(float hardness)
{
    return QStringLiteral(":/Brushes/Brush_hardness_%1.png").arg(int(hardness) * 100);
}

QImage brushImageWithHardness(float hardness, bool, float alpha)
{
    QImage stamp(resourceName(hardness));
    if (stamp.isNull() || alpha == 1.0f)
        return stamp;
    QImage faded(stamp.size(), QImage::Format_ARGB32_Premultiplied);
    faded.fill(Qt::transparent);
    QPainter painter(&faded);
    painter.setOpacity(alpha);
    painter.drawImage(0, 0, stamp);
    return faded;
}

} // namespace BrushImages

BrushTexture BrushTexture::fromImage(const QImage &brush)
{
    BrushTexture texture;
    if (brush.isNull())
        return texture;
    const QImage premultiplied = brush.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    texture.width = premultiplied.width();
    texture.height = premultiplied.height();
    texture.texels.resize(size_t(texture.width) * size_t(texture.height) * 4);
    float *out = texture.texels.data();
    for (int y = 0; y < texture.height; ++y) {
        const auto *row = reinterpret_cast<const QRgb *>(premultiplied.constScanLine(y));
        for (int x = 0; x < texture.width; ++x) {
            // Alpha first in memory, read as red; red as green; green as blue; blue as alpha.
            const QRgb p = row[x];
            *out++ = qAlpha(p) / 255.0f;
            *out++ = qRed(p) / 255.0f;
            *out++ = qGreen(p) / 255.0f;
            *out++ = qBlue(p) / 255.0f;
        }
    }
    return texture;
}

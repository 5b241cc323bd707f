#include "PaintRenderer.h"

#include <algorithm>
#include <cmath>

DabBuffer &DabBuffer::shared()
{
    thread_local DabBuffer buffer;
    return buffer;
}

void DabBuffer::ensureCapacity(qsizetype count)
{
    if (count <= m_capacity)
        return;
    qsizetype capacity = m_capacity == 0 ? 64 : m_capacity;
    while (capacity < count)
        capacity *= 2;
    auto grown = std::make_unique<float[]>(size_t(capacity) * 2);
    if (m_xy)
        std::copy(m_xy.get(), m_xy.get() + m_capacity * 2, grown.get());
    m_xy = std::move(grown);
    m_capacity = capacity;
}

qsizetype PaintRenderer::dabsAlongSegment(QPointF a, QPointF b, QSizeF surface, float brushPixelStep, DabBuffer &buffer)
{
    const double w = surface.width();
    const double h = surface.height();
    const double sx = (a.x() + 0.5) * w;
    const double sy = h - (a.y() + 0.5) * h;
    const double ex = (b.x() + 0.5) * w;
    const double ey = h - (b.y() + 0.5) * h;
    const double dx = ex - sx;
    const double dy = ey - sy;
    const float count = std::ceil(float(std::sqrt(dx * dx + dy * dy)) / brushPixelStep);
    // A zero or broken spacing still lays the segment's first dab.
    const qsizetype n = std::isfinite(count) && count >= 1.0f ? qsizetype(count) : 1;
    buffer.ensureCapacity(n);
    float *xy = buffer.data();
    for (qsizetype i = 0; i < n; ++i) {
        const double t = double(i) / double(n);
        xy[2 * i] = float(sx + dx * t);
        xy[2 * i + 1] = float(sy + dy * t);
    }
    return n;
}

namespace {

struct Dab
{
    float red, green, blue, alpha; // the brush colour, not premultiplied (the stamp carries coverage)
    bool eraser;
    float size;
    const BrushTexture *texture;
};

// One texture axis for a run of pixels: the two texels each pixel centre falls between and the weight of
// the second, wrapping at the stamp's edges as a repeating texture does.
struct Tap
{
    int first, second;
    float weight;
};

inline Tap tapAt(float coordinate, int texels)
{
    const float u = coordinate * float(texels) - 0.5f;
    const float floor = std::floor(u);
    int i0 = int(floor) % texels;
    if (i0 < 0)
        i0 += texels;
    const int i1 = (i0 + 1) % texels;
    return {i0, i1, u - floor};
}

inline quint32 toByte(float value)
{
    return quint32(std::clamp(value + 0.5f, 0.0f, 255.0f));
}

// Stamps one dab centred on (x, y) in image pixels (y down): every pixel whose centre lies in the square
// of side `size` around the centre takes the stamp's bilinear sample at that point, and the blend.
void stamp(QImage &target, float x, float y, const Dab &dab)
{
    const BrushTexture &tex = *dab.texture;
    const float half = dab.size * 0.5f;
    const int c0 = std::max(0, int(std::ceil(x - half - 0.5f)));
    const int c1 = std::min(target.width() - 1, int(std::ceil(x + half - 0.5f)) - 1);
    const int r0 = std::max(0, int(std::ceil(y - half - 0.5f)));
    const int r1 = std::min(target.height() - 1, int(std::ceil(y + half - 0.5f)) - 1);
    if (c0 > c1 || r0 > r1)
        return;
    thread_local std::vector<Tap> columns;
    columns.resize(size_t(c1 - c0 + 1));
    for (int c = c0; c <= c1; ++c)
        columns[size_t(c - c0)] = tapAt(0.5f + (float(c) + 0.5f - x) / dab.size, tex.width);
    const float *texels = tex.texels.data();
    const int stride = tex.width * 4;
    for (int r = r0; r <= r1; ++r) {
        const Tap row = tapAt(0.5f + (float(r) + 0.5f - y) / dab.size, tex.height);
        const float *line0 = texels + row.first * stride;
        const float *line1 = texels + row.second * stride;
        auto *pixels = reinterpret_cast<QRgb *>(target.scanLine(r));
        for (int c = c0; c <= c1; ++c) {
            const Tap &col = columns[size_t(c - c0)];
            float sample[4];
            for (int k = 0; k < 4; ++k) {
                const float top = line0[col.first * 4 + k] + (line0[col.second * 4 + k] - line0[col.first * 4 + k]) * col.weight;
                const float bottom = line1[col.first * 4 + k] + (line1[col.second * 4 + k] - line1[col.first * 4 + k]) * col.weight;
                sample[k] = top + (bottom - top) * row.weight;
            }
            const QRgb d = pixels[c];
            if (dab.eraser) {
                // The eraser's colour is opaque black whatever the brush colour: only the stamp counts.
                const float keep = 1.0f - sample[3];
                pixels[c] = qRgba(int(toByte(float(qRed(d)) * keep)), int(toByte(float(qGreen(d)) * keep)),
                                  int(toByte(float(qBlue(d)) * keep)), int(toByte(float(qAlpha(d)) * keep)));
                continue;
            }
            const float sourceAlpha = sample[3] * dab.alpha;
            if (sourceAlpha <= 0.0f && sample[0] <= 0.0f && sample[1] <= 0.0f && sample[2] <= 0.0f)
                continue;
            const float keep = 1.0f - sourceAlpha;
            pixels[c] = qRgba(int(toByte(sample[0] * dab.red * 255.0f + float(qRed(d)) * keep)),
                              int(toByte(sample[1] * dab.green * 255.0f + float(qGreen(d)) * keep)),
                              int(toByte(sample[2] * dab.blue * 255.0f + float(qBlue(d)) * keep)),
                              int(toByte(sourceAlpha * 255.0f + float(qAlpha(d)) * keep)));
        }
    }
}

} // namespace

const BrushTexture &PaintRenderer::textureFor(const PaintTool &tool)
{
    const int hardness = int(tool.hardness) * 100;
    if (hardness != m_textureHardness || tool.pointAlpha != m_textureAlpha) {
        m_texture = BrushTexture::fromImage(tool.brush);
        m_textureHardness = hardness;
        m_textureAlpha = tool.pointAlpha;
    }
    return m_texture;
}

void PaintRenderer::drawSteps(QImage &target, const QList<AKPaintStep> &steps, qsizetype from, PaintTool &tool)
{
    if (target.isNull() || from >= steps.size())
        return;
    const QSizeF surface(target.width(), target.height());
    DabBuffer &buffer = DabBuffer::shared();
    for (qsizetype i = std::max<qsizetype>(0, from); i < steps.size(); ++i) {
        const AKPaintStep &step = steps[i];
        if (tool.hardness != step.hardness || tool.pointAlpha != step.alpha || tool.brush.isNull()) {
            tool.brush = BrushImages::brushImageWithHardness(step.hardness, step.eraser, step.alpha);
            tool.hardness = step.hardness;
            tool.pointAlpha = step.alpha;
            m_textureHardness = -1;
        }
        const float sx = step.backingSize.width() >= 1.0 ? float(surface.width() / step.backingSize.width()) : 1.0f;
        const float sy = step.backingSize.height() >= 1.0 ? float(surface.height() / step.backingSize.height()) : 1.0f;
        const float scale = std::sqrt(sx * sy);
        tool.brushColor = step.color;
        tool.eraser = step.eraser;
        tool.pointSize = step.pointSize * scale;
        tool.brushPixelStep = step.brushPixelStep;

        const BrushTexture &texture = textureFor(tool);
        if (texture.isNull())
            continue;
        // Point sizes below one pixel are drawn at one, as a graphics card clamps them.
        const Dab dab{float(tool.brushColor.red), float(tool.brushColor.green), float(tool.brushColor.blue),
                      float(tool.brushColor.alpha), tool.eraser, std::max(1.0f, tool.pointSize), &texture};
        const qsizetype n = dabsAlongSegment(step.start, step.end, surface, tool.brushPixelStep, buffer);
        const float *xy = buffer.data();
        for (qsizetype k = 0; k < n; ++k)
            stamp(target, xy[2 * k], float(surface.height()) - xy[2 * k + 1], dab);
    }
}

QImage PaintRenderer::snapshotWithSize(const QList<AKPaintStep> &steps, QSize size, PaintTool &tool)
{
    if (size.width() < 1 || size.height() < 1)
        return {};
    QImage layer(size, QImage::Format_ARGB32_Premultiplied);
    if (layer.isNull())
        return {};
    layer.fill(Qt::transparent);
    drawSteps(layer, steps, 0, tool);
    return layer;
}

bool StrokeLayer::sync(const AKPaintSession &session, QSize pixels, PaintTool &tool)
{
    const bool whole = m_drawn < 0 || m_image.size() != pixels || session.generation() != m_generation ||
                       session.steps().size() < m_drawn;
    if (whole) {
        if (m_image.size() != pixels)
            m_image = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
        m_image.fill(Qt::transparent);
        m_drawn = 0;
        m_generation = session.generation();
    }
    if (session.steps().size() == m_drawn)
        return whole;
    m_renderer.drawSteps(m_image, session.steps(), m_drawn, tool);
    m_drawn = session.steps().size();
    return true;
}

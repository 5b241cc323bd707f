#include "EditorImageView.h"

#include "core/panels/PanelFrame.h"
#include "editor/crop/EditorGeometry.h"

#include <QPainter>

EditorImageView::EditorImageView(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("imgToRotateOrCrop"));
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void EditorImageView::setImage(const QImage &pixels, const QSizeF &points)
{
    m_pixels = pixels;
    m_points = points;
    m_scaled = QPixmap();
    m_announced = false;
    update();
}

void EditorImageView::clear()
{
    setImage(QImage(), QSizeF());
}

QRectF EditorImageView::imgRectYUp() const
{
    return EditorGeometry::getImgRectInsideImgView(m_points, QSizeF(size()));
}

void EditorImageView::paintEvent(QPaintEvent *)
{
    if (m_pixels.isNull())
        return;
    const QRectF shown = PanelFrame::flipped(imgRectYUp(), height());
    const qreal ratio = devicePixelRatioF();
    const QSize device = (shown.size() * ratio).toSize().expandedTo(QSize(1, 1));
    if (m_scaled.size() != device) {
        // Halved fast while far too large, then smoothed once: a 24-megapixel picture scales quickly.
        QImage source = m_pixels;
        while (source.width() > device.width() * 4 && source.height() > device.height() * 4)
            source = source.scaled(source.size() / 2, Qt::IgnoreAspectRatio, Qt::FastTransformation);
        m_scaled = QPixmap::fromImage(source.scaled(device, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
        m_scaled.setDevicePixelRatio(ratio);
    }
    QPainter p(this);
    p.drawPixmap(shown.topLeft(), m_scaled);
    if (!m_announced) {
        m_announced = true;
        Q_EMIT pictureShown();
    }
}

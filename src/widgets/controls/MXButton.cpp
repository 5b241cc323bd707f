#include "MXButton.h"

#include <QPainter>

MXButton::MXButton(const QString &text, QWidget *parent) : QPushButton(text, parent)
{
    QFont f = font();
    f.setPointSizeF(10.0);
    setFont(f);
    setCursor(Qt::PointingHandCursor);
}

void MXButton::setCornerRadius(double radius)
{
    m_radius = radius;
    update();
}

void MXButton::setBackgroundColor(const QColor &color)
{
    m_background = color;
    update();
}

void MXButton::setHighlightColor(const QColor &color)
{
    m_highlight = color;
    update();
}

void MXButton::setTextColor(const QColor &color)
{
    m_text = color;
    update();
}

void MXButton::setHighlightTextColor(const QColor &color)
{
    m_highlightText = color;
    update();
}

void MXButton::setPadding(const QMargins &padding)
{
    m_padding = padding;
    updateGeometry();
}

QSize MXButton::sizeHint() const
{
    const QSize text = fontMetrics().size(Qt::TextShowMnemonic, this->text());
    return QSize(text.width() + m_padding.left() + m_padding.right() + 8,
                 text.height() + m_padding.top() + m_padding.bottom() + 8);
}

void MXButton::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.setRenderHint(QPainter::TextAntialiasing, subpixelAntialiasing);
    p.setOpacity(isEnabled() ? 1.0 : 0.5);
    p.setPen(Qt::NoPen);
    p.setBrush(m_background);
    p.drawRoundedRect(QRectF(rect()), m_radius, m_radius);
    if (isDown()) {
        // Pressed: the highlight laid over the background.
        p.setBrush(m_highlight);
        p.drawRoundedRect(QRectF(rect()), m_radius, m_radius);
    }
    if (hasFocus()) {
        p.setPen(QPen(palette().color(QPalette::Highlight), 1.5));
        p.setBrush(Qt::NoBrush);
        p.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), m_radius, m_radius);
    }
    p.setPen(isDown() ? m_highlightText : m_text);
    p.drawText(rect().marginsRemoved(m_padding), Qt::AlignCenter | Qt::TextShowMnemonic, text());
}

#include "RMBorderlessButton.h"

#include <QPainter>

RMBorderlessButton::RMBorderlessButton(const QString &text, QWidget *parent) : QPushButton(text, parent)
{
    QFont f = font();
    f.setBold(true);
    setFont(f);
    setFlat(true);
    setCursor(Qt::PointingHandCursor);
}

QColor RMBorderlessButton::dimmedColor(const QColor &c)
{
    return QColor::fromRgbF(std::max(0.0f, c.redF() - 0.2f), std::max(0.0f, c.greenF() - 0.2f),
                            std::max(0.0f, c.blueF() - 0.2f), c.alphaF());
}

void RMBorderlessButton::setColor(const QColor &color)
{
    m_color = color;
    update();
}

QSize RMBorderlessButton::sizeHint() const { return fontMetrics().size(Qt::TextShowMnemonic, text()) + QSize(4, 4); }

void RMBorderlessButton::enterEvent(QEnterEvent *event)
{
    if (isEnabled()) {
        m_tempColor = m_color;
        setColor(dimmedColor(m_color));
    }
    QPushButton::enterEvent(event);
}

void RMBorderlessButton::leaveEvent(QEvent *event)
{
    if (isEnabled() && m_tempColor.isValid())
        setColor(m_tempColor);
    QPushButton::leaveEvent(event);
}

void RMBorderlessButton::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.setOpacity(isEnabled() ? 1.0 : 0.5);
    p.setPen(isDown() && dimWhileClicked ? dimmedColor(m_color) : m_color);
    p.drawText(rect(), Qt::AlignCenter | Qt::TextShowMnemonic, text());
    if (hasFocus()) {
        QFontMetrics fm(font());
        const QRect text = fm.boundingRect(rect(), Qt::AlignCenter, this->text());
        p.drawLine(text.bottomLeft() + QPoint(0, 1), text.bottomRight() + QPoint(0, 1));
    }
}

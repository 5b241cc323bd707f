#include "ActionButton.h"

#include <QPainter>
#include <QPainterPath>
#include <QTimerEvent>

namespace {
constexpr int kImageTop = 4;
constexpr int kLabelPadding = 2;
constexpr int kTitlePadding = 6;
} // namespace

ActionButton::ActionButton(QWidget *parent) : QToolButton(parent)
{
    setAutoRaise(true);
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
}

void ActionButton::setImages(const QPixmap &normal, const QPixmap &hover)
{
    m_normal = normal;
    m_hover = hover;
    setToolButtonStyle(normal.isNull() ? Qt::ToolButtonTextOnly : Qt::ToolButtonTextUnderIcon);
    update();
}

void ActionButton::setBusy(bool busy)
{
    if (busy == m_busy)
        return;
    m_busy = busy;
    if (busy && !m_spinTimer)
        m_spinTimer = startTimer(80);
    if (!busy && m_spinTimer) {
        killTimer(m_spinTimer);
        m_spinTimer = 0;
    }
    update();
}

void ActionButton::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_spinTimer)
        return QToolButton::timerEvent(event);
    m_spinAngle = (m_spinAngle + 30) % 360;
    update();
}

void ActionButton::enterEvent(QEnterEvent *event)
{
    m_hovered = true;
    update();
    QToolButton::enterEvent(event);
}

void ActionButton::leaveEvent(QEvent *event)
{
    m_hovered = false;
    update();
    QToolButton::leaveEvent(event);
}

void ActionButton::paintEvent(QPaintEvent *event)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const QRectF r = QRectF(rect()).adjusted(1, 1, -1, -1);
    const QPalette pal = palette();
    if (isEnabled() && (m_hovered || isDown())) {
        QColor tile = pal.color(QPalette::Highlight);
        tile.setAlphaF(isDown() ? 0.28 : 0.14);
        p.setPen(Qt::NoPen);
        p.setBrush(tile);
        p.drawRoundedRect(r, 7, 7);
    } else if (!hasImages()) {
        // Title buttons sit on a quiet tile so that they read as buttons.
        QColor tile = pal.color(QPalette::ButtonText);
        tile.setAlphaF(0.07);
        p.setPen(Qt::NoPen);
        p.setBrush(tile);
        p.drawRoundedRect(r, 7, 7);
    }
    if (hasFocus() && isEnabled()) {
        // The keyboard's place: an outline only, so that it never reads as the pointer's.
        p.setPen(QPen(pal.color(QPalette::Highlight), 1.2));
        p.setBrush(Qt::NoBrush);
        p.drawRoundedRect(r, 7, 7);
    }
    if (m_busy) {
        const qreal d = std::min(width(), height()) * 0.45;
        const QRectF arc(width() / 2.0 - d / 2, height() / 2.0 - d / 2, d, d);
        p.setPen(QPen(pal.color(QPalette::ButtonText), 2.0, Qt::SolidLine, Qt::RoundCap));
        p.drawArc(arc, -m_spinAngle * 16, 270 * 16);
        return;
    }
    if (!isEnabled())
        p.setOpacity(0.35);
    p.setPen(pal.color(QPalette::ButtonText));
    if (hasImages()) {
        const QPixmap &pixmap = (m_hovered && isEnabled()) ? m_hover : m_normal;
        const QSize side = pixmap.deviceIndependentSize().toSize();
        p.drawPixmap(QPoint((width() - side.width()) / 2, kImageTop), pixmap);
        p.setFont(labelFont());
        p.drawText(labelRect(), Qt::AlignHCenter | Qt::AlignTop | Qt::TextSingleLine, text());
        return;
    }
    p.setFont(labelFont());
    p.drawText(labelRect(), Qt::AlignCenter | Qt::TextSingleLine, text());
}

void ActionButton::setLabelFont(const QFont &font)
{
    m_labelFont = font;
    m_hasLabelFont = true;
    update();
}

QFont ActionButton::labelFont() const { return hasImages() && m_hasLabelFont ? m_labelFont : font(); }

QRect ActionButton::labelRect() const
{
    if (!hasImages())
        return rect().adjusted(kTitlePadding, 0, -kTitlePadding, 0);
    const int top = kImageTop + m_normal.deviceIndependentSize().toSize().height() + 2;
    return QRect(kLabelPadding, top, width() - 2 * kLabelPadding, height() - top);
}

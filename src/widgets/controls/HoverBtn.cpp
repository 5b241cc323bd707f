#include "HoverBtn.h"

#include <QEvent>

HoverBtn::HoverBtn(QWidget *parent) : QToolButton(parent)
{
    setAutoRaise(true);
    setCursor(Qt::PointingHandCursor);
}

void HoverBtn::setImages(const QPixmap &active, const QPixmap &rollover, const QPixmap &inactive, const QPixmap &pressed)
{
    m_active = active;
    m_rollover = rollover;
    m_inactive = inactive;
    m_pressed = pressed;
    setIconSize(active.deviceIndependentSize().toSize());
    updateImage();
}

void HoverBtn::show(const QString &which)
{
    m_shown = which;
    const QPixmap &p = which == u"rollover" ? m_rollover : which == u"inactive" ? m_inactive
                                                      : which == u"pressed"    ? m_pressed
                                                                               : m_active;
    setIcon(QIcon(p));
}

void HoverBtn::updateImage() { show(isEnabled() ? (m_inside ? QStringLiteral("rollover") : QStringLiteral("active")) : QStringLiteral("inactive")); }

void HoverBtn::enterEvent(QEnterEvent *event)
{
    m_inside = true;
    updateImage();
    QToolButton::enterEvent(event);
}

void HoverBtn::leaveEvent(QEvent *event)
{
    m_inside = false;
    updateImage();
    QToolButton::leaveEvent(event);
}

void HoverBtn::mousePressEvent(QMouseEvent *event)
{
    if (isEnabled())
        show(QStringLiteral("pressed"));
    QToolButton::mousePressEvent(event);
}

void HoverBtn::mouseReleaseEvent(QMouseEvent *event)
{
    QToolButton::mouseReleaseEvent(event);
    updateImage();
}

void HoverBtn::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::EnabledChange)
        updateImage();
    QToolButton::changeEvent(event);
}

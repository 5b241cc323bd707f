#include "Spinner.h"

#include <QPainter>
#include <QTimerEvent>

Spinner::Spinner(QWidget *parent, int side) : QWidget(parent)
{
    setFixedSize(side, side);
}

void Spinner::start()
{
    if (!m_timer)
        m_timer = startTimer(60);
}

void Spinner::stop()
{
    if (m_timer)
        killTimer(m_timer);
    m_timer = 0;
}

void Spinner::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != m_timer)
        return QWidget::timerEvent(event);
    m_angle = (m_angle + 24) % 360;
    update();
}

void Spinner::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const QRectF r = QRectF(rect()).adjusted(3, 3, -3, -3);
    QColor track = palette().color(QPalette::WindowText);
    track.setAlphaF(0.15);
    p.setPen(QPen(track, 3));
    p.drawEllipse(r);
    p.setPen(QPen(palette().color(QPalette::Highlight), 3, Qt::SolidLine, Qt::RoundCap));
    p.drawArc(r, -m_angle * 16, 100 * 16);
}

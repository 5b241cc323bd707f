#include "MDBorderlessWindow.h"

#include <QPainter>
#include <QVariantAnimation>

MDBorderlessWindow::MDBorderlessWindow(QWidget *parent) : QWidget(parent, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint)
{
    setAttribute(Qt::WA_TranslucentBackground);
    setMouseTracking(true);
    m_fade = new QVariantAnimation(this);
    m_fade->setDuration(kFadeMs);
    connect(m_fade, &QVariantAnimation::valueChanged, this, [this](const QVariant &v) { setWindowOpacity(v.toDouble()); });
}

void MDBorderlessWindow::fadeIn()
{
    m_fade->stop();
    disconnect(m_fade, &QVariantAnimation::finished, this, nullptr);
    setWindowOpacity(0.0);
    show();
    raise();
    activateWindow();
    m_fade->setStartValue(0.0);
    m_fade->setEndValue(1.0);
    m_fade->start();
}

void MDBorderlessWindow::fadeOut()
{
    m_fade->stop();
    m_fade->setStartValue(windowOpacity());
    m_fade->setEndValue(0.0);
    connect(m_fade, &QVariantAnimation::finished, this, &QWidget::hide, Qt::SingleShotConnection);
    m_fade->start();
}

void MDBorderlessWindow::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.setPen(QColor(0, 0, 0, 40));
    p.setBrush(palette().color(QPalette::Window));
    p.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 10, 10);
}

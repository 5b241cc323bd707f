#include "JMOverlayView.h"

#include "JMModalOverlay.h"

#include <QEvent>
#include <QMouseEvent>
#include <QPainter>

JMOverlayView::JMOverlayView(JMModalOverlay *overlay, QWidget *parent) : QWidget(parent), m_overlay(overlay)
{
    setObjectName(QStringLiteral("JMOverlayView"));
    setFocusPolicy(Qt::StrongFocus);
    m_card = new JMOverlayCard(this);
    // It covers the window as long as it is up, through the window's changes of size.
    parent->installEventFilter(this);
    setGeometry(parent->rect());
    placeCard(); // now: a window not yet shown delivers its resize events late
}

void JMOverlayView::placeCard()
{
    m_card->setGeometry(rect().adjusted(kCardInset, kCardInset, -kCardInset, -kCardInset));
}

bool JMOverlayView::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == parentWidget() && event->type() == QEvent::Resize)
        setGeometry(parentWidget()->rect());
    return QWidget::eventFilter(watched, event);
}

void JMOverlayView::resizeEvent(QResizeEvent *) { placeCard(); }

void JMOverlayView::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.setCompositionMode(QPainter::CompositionMode_SourceOver);
    p.fillRect(rect(), backgroundColor);
}

void JMOverlayView::mousePressEvent(QMouseEvent *event)
{
    // The overlay is modal: a press on the background never reaches the panel below.
    event->accept();
    if (m_overlay->shouldCloseWhenClickOnBackground && !m_card->geometry().contains(event->position().toPoint()))
        m_overlay->performClose();
}

JMOverlayCard::JMOverlayCard(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("JMOverlayContainer"));
}

void JMOverlayCard::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    QColor edge = palette().color(QPalette::WindowText);
    edge.setAlphaF(0.22);
    p.setPen(QPen(edge, 1.0));
    p.setBrush(palette().color(QPalette::Window));
    p.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 8, 8);
}

void JMOverlayCard::mousePressEvent(QMouseEvent *event)
{
    event->accept(); // a stray click between the fields changes nothing
}

#include "JMOverlayView.h"

#include "JMModalOverlay.h"

#include <QMouseEvent>
#include <QPainter>

JMOverlayView::JMOverlayView(JMModalOverlay *overlay, QWidget *parent) : QWidget(parent), m_overlay(overlay)
{
    setObjectName(QStringLiteral("JMOverlayView"));
    setFocusPolicy(Qt::StrongFocus);
}

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
    if (m_overlay->shouldCloseWhenClickOnBackground)
        m_overlay->performClose();
}

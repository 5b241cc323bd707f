#include "DropWindow.h"

#include "core/panels/PanelFrame.h"

#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <QStackedLayout>

DropWindow::DropWindow(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("window"));
    setWindowTitle(QStringLiteral("Quaydrop drop window"));
    setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus);
    setAttribute(Qt::WA_ShowWithoutActivating);
    m_stack = new QStackedLayout(this);
    m_stack->setContentsMargins(1, 1, 1, 1);
}

void DropWindow::addView(QWidget *view)
{
    if (m_stack->indexOf(view) < 0)
        m_stack->addWidget(view);
}

void DropWindow::setContentView(QWidget *view)
{
    if (view == m_content)
        return;
    if (view)
        addView(view);
    if (view)
        m_stack->setCurrentWidget(view);
    m_content = view;
}

void DropWindow::setTakesFocus(bool takes)
{
    if (takes == m_takesFocus)
        return;
    m_takesFocus = takes;
    const bool wasVisible = isVisible();
    setWindowFlag(Qt::WindowDoesNotAcceptFocus, !takes);
    setAttribute(Qt::WA_ShowWithoutActivating, !takes);
    if (wasVisible)
        show(); // changing flags hides a window
}

qreal DropWindow::primaryScreenHeight()
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    return screen ? screen->geometry().height() : 0;
}

QRectF DropWindow::visibleFrameYUp()
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    if (!screen)
        return {};
    return PanelFrame::flipped(screen->availableGeometry(), primaryScreenHeight());
}

QRectF DropWindow::frameYUp() const
{
    return PanelFrame::flipped(QRectF(geometry()), primaryScreenHeight());
}

void DropWindow::setFrameYUp(const QRectF &frame)
{
    const QRect r = PanelFrame::flipped(frame, primaryScreenHeight()).toRect();
    setFixedSize(r.size());
    move(r.topLeft());
}

void DropWindow::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.fillRect(rect(), palette().color(QPalette::Window));
    QColor edge = palette().color(QPalette::WindowText);
    edge.setAlphaF(0.25);
    p.setPen(edge);
    p.drawRect(rect().adjusted(0, 0, -1, -1));
}

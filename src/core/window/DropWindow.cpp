#include "DropWindow.h"

#include "core/panels/PanelFrame.h"
#include "platform/ScreenPixels.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QScreen>
#include <QStackedLayout>
#include <QWindow>

#include <algorithm>
#include <limits>

DropWindow::DropWindow(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("window"));
    setWindowTitle(QStringLiteral("Quaydrop drop window"));
    setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::WindowDoesNotAcceptFocus);
    setAttribute(Qt::WA_ShowWithoutActivating);
    m_stack = new QStackedLayout(this);
    m_stack->setContentsMargins(1, 1, 1, 1);
}

void DropWindow::prepareFirstShow()
{
    // A first show loads fonts and styles, lays out every view and makes the window's buffers: done
    // here, once, off the screen, rather than when the first drag waits for the window.
    setAttribute(Qt::WA_DontShowOnScreen);
    show();
    hide();
    setAttribute(Qt::WA_DontShowOnScreen, false);
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
    setAttribute(Qt::WA_ShowWithoutActivating, !takes);
    const Qt::WindowFlags flags = windowFlags().setFlag(Qt::WindowDoesNotAcceptFocus, !takes);
    if (!isVisible() || !windowHandle()) {
        setWindowFlags(flags);
        return;
    }
    // On screen, the window system is told in place: setWindowFlags() would unmap and map the window
    // again, and a window manager that sees both at once may leave it unmapped.
    overrideWindowFlags(flags);
    windowHandle()->setFlags(flags);
}

qreal DropWindow::primaryScreenHeight()
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    return screen ? screen->geometry().height() : 0;
}

const QScreen *DropWindow::screenAtYUp(QPointF pointYUp)
{
    const QPointF point(pointYUp.x(), primaryScreenHeight() - pointYUp.y());
    if (const QScreen *screen = QGuiApplication::screenAt(point.toPoint()))
        return screen;
    // Between or beside the screens: the nearest one.
    const QScreen *nearest = QGuiApplication::primaryScreen();
    qreal best = std::numeric_limits<qreal>::max();
    const auto screens = QGuiApplication::screens();
    for (const QScreen *screen : screens) {
        const QRectF g = screen->geometry();
        const qreal dx = std::max({g.left() - point.x(), 0.0, point.x() - g.right()});
        const qreal dy = std::max({g.top() - point.y(), 0.0, point.y() - g.bottom()});
        if (dx * dx + dy * dy < best) {
            best = dx * dx + dy * dy;
            nearest = screen;
        }
    }
    return nearest;
}

QRectF DropWindow::visibleFrameYUp(QPointF at)
{
    const QScreen *screen = screenAtYUp(at);
    return screen ? PanelFrame::flipped(screen->availableGeometry(), primaryScreenHeight()) : QRectF();
}

QRectF DropWindow::screenFrameYUp(QPointF at)
{
    const QScreen *screen = screenAtYUp(at);
    return screen ? PanelFrame::flipped(screen->geometry(), primaryScreenHeight()) : QRectF();
}

QPointF DropWindow::inItsScreensScale(QPointF global) const
{
    const QScreen *own = screen();
    const QScreen *on = QGuiApplication::screenAt(global.toPoint());
    if (!own || !on || own == on)
        return global;
    return ScreenPixels::toPoints(own, ScreenPixels::toPixels(on, global));
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

void DropWindow::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Paste))
        Q_EMIT pastePressed();
    else if (event->key() == Qt::Key_Escape && event->modifiers() == Qt::NoModifier)
        Q_EMIT escapePressed();
    else if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) &&
             (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier)
        Q_EMIT returnPressed();
    else
        QWidget::keyPressEvent(event);
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

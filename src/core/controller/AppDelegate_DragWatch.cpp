#include "AppDelegate.h"

#include "core/dragwatch/DragContent.h"
#include "core/dragwatch/DropHereGeometry.h"
#include "core/dragwatch/HotKeyBinding.h"
#include "core/intake/SingleItemDropGate.h"
#include "core/panels/PanelFrame.h"
#include "core/window/DropWindow.h"
#include "utils/Utils.h"

#include <QApplication>
#include <QMouseEvent>
#include <QScreen>

QPointF AppDelegate::yUp(QPointF p) const
{
    return QPointF(p.x(), DropWindow::primaryScreenHeight() - p.y());
}

void AppDelegate::installDragWatcher()
{
    if (m_platform.hotKeyBinder)
        m_hotKey = new HotKeyBinding(m_platform.hotKeyBinder, this);
    if (!m_platform.pointerMonitor) {
        qInfo("no drag watcher on this display: the window opens by the hot key only");
        return;
    }
    connect(m_platform.pointerMonitor, &PointerMonitor::leftMouseDragged, this,
            [this](QPointF at, qreal dx, qreal dy) { leftMouseDragged(yUp(at), dx, dy); });
    connect(m_platform.pointerMonitor, &PointerMonitor::mouseMoved, this,
            [this](QPointF at) { mouseMovedWhileWindowUp(yUp(at), false); });
}

QString AppDelegate::bundleIdOfTheAppWhereTheCursorIs(QPointF location) const
{
    if (!m_platform.windowSystem)
        return {};
    return m_platform.windowSystem->applicationIdAt(QPointF(location.x(), DropWindow::primaryScreenHeight() - location.y()));
}

bool AppDelegate::isFinderFrontMostAndOwnesMenuBar() const
{
    return m_platform.windowSystem && m_platform.workspace &&
           m_platform.windowSystem->frontmostApplicationId() == m_platform.workspace->defaultFileManagerId();
}

void AppDelegate::leftMouseDragged(QPointF location, qreal deltaX, qreal deltaY)
{
    // 1. A drag elsewhere dismisses a panel.
    if (windowIsVsbl() && oneofThePanelsIsShown) {
        orderOutTheWindow();
        return;
    }
    if (!Utils::QuaydropIsOFFSate() || !m_platform.dragPasteboard)
        return;
    // 3.-4. Each drag is looked at once: the count is taken before any test of its content.
    const qint64 count = m_platform.dragPasteboard->changeCount();
    if (count == myPbrdChangeCount)
        return;
    myPbrdChangeCount = count;
    const QStringList types = m_platform.dragPasteboard->types();
    // Some sources (Qt's among them) answer only the window they are dropping on: their content is
    // learnt at the drop, and the content tests are passed over.
    if (!types.isEmpty()) {
        const QStringList files = types.contains(QLatin1String("text/uri-list")) ? m_platform.dragPasteboard->filePaths()
                                                                                 : QStringList();
        const DragContent::Kind kind = DragContent::availableType(types, !files.isEmpty());
        if (kind == DragContent::Kind::None)
            return;
        if (kind == DragContent::Kind::Url && !DragContent::urlLeadsToImage(types))
            return;
        if (kind == DragContent::Kind::Files && !SingleItemDropGate::passes(files))
            return;
    }
    const bool hotKeyMode = Utils::isShortcutEnabled();
    const QString app = bundleIdOfTheAppWhereTheCursorIs(location);
    const QString front = m_platform.windowSystem ? m_platform.windowSystem->frontmostApplicationId() : QString();
    for (const QString &prefix : DragContent::imgEditingAppsToExcl())
        if (((!app.isEmpty() && app.startsWith(prefix)) || (!front.isEmpty() && front.startsWith(prefix))) && !hotKeyMode)
            return;
    if (!app.isEmpty() && Utils::exclBndlIDAppsArray().contains(app) && !hotKeyMode)
        return;
    const QString fileManager = m_platform.workspace ? m_platform.workspace->defaultFileManagerId() : QString();
    if ((app.isEmpty() || app != fileManager) && Utils::exclAllButFinderValue())
        return;
    if (!mouseDraggedBool) {
        mouseDraggedBool = true;
        if (!hotKeyMode) {
            showhideWindow(float(deltaX), float(deltaY));
            showPanelWithIndex(DropPanelDropTarget);
        }
    }
}

void AppDelegate::showhideWindow(float deltaX, float deltaY)
{
    if (windowIsVsbl() || !Utils::QuaydropIsOFFSate())
        return;
    const QPoint cursor = QCursor::pos();
    const QPointF mouse = yUp(cursor);
    QRectF frame = DropHereGeometry::getMeDropHereFrameFromDeltaX(deltaX, deltaY, mouse);
    frame = PanelFrame::clampedInto(frame, DropWindow::visibleFrameYUp());
    setPointerMonitors(true);
    window->setFrameYUp(frame);
    // On a display left of or below the primary one the frame comes out negative: beside the pointer.
    if (frame.x() < 0 || frame.y() < 0) {
        frame.moveTopLeft(mouse - QPointF(frame.width(), frame.height()));
        window->setFrameYUp(frame);
    }
    if (Utils::dropHereWindowAlignment() == 1) {
        const QScreen *screen = QGuiApplication::screenAt(cursor);
        if (!screen)
            screen = QGuiApplication::primaryScreen();
        const QRectF screenYUp = PanelFrame::flipped(screen->geometry(), DropWindow::primaryScreenHeight());
        window->setFrameYUp(DropHereGeometry::centredOn(window->frameYUp(), screenYUp));
    }
    dontActivatePrevFrontMostApp = false;
    if (m_platform.windowSystem)
        m_platform.windowSystem->rememberFocusedWindow();
    window->show();
    window->raise();
    shouldNotCloseYet = false;
}

void AppDelegate::showPanelHKNotif()
{
    if (!Utils::isShortcutEnabled())
        return;
    if (windowIsVsbl()) {
        orderOutTheWindow();
        return;
    }
    showhideWindow(0, 0);
    showPanelWithIndex(DropPanelDropTarget);
}

void AppDelegate::setPointerMonitors(bool on)
{
    if (on == mouseToFromWindowCenterEventMonitor)
        return;
    mouseToLocalMon = mouseToFromWindowCenterEventMonitor = on;
    if (on)
        qApp->installEventFilter(this);
    else
        qApp->removeEventFilter(this);
    if (m_platform.pointerMonitor)
        m_platform.pointerMonitor->setMotionTracking(on);
}

bool AppDelegate::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseMove && watched->isWidgetType() &&
        static_cast<QWidget *>(watched)->window() == window) {
        const auto *move = static_cast<QMouseEvent *>(event);
        mouseMovedWhileWindowUp(yUp(move->globalPosition()), true);
    }
    return false; // the window's own handling goes on
}

void AppDelegate::mouseMovedWhileWindowUp(QPointF location, bool local)
{
    if (windowSheetIsActive() || !windowIsVsbl())
        return;
    const QRectF bounds = window->frameYUp();
    const QRectF keepOpen = local ? DropHereGeometry::keepOpenRectLocal(bounds) : DropHereGeometry::keepOpenRectGlobal(bounds);
    const bool inside = DropHereGeometry::pointInRect(location, keepOpen);
    const bool hotKeyMode = Utils::isShortcutEnabled();
    if (!inside && !hotKeyMode && !emptyContviewIsShown && !shouldNotCloseYet) {
        orderOutTheWindow();
        return;
    }
    // In hot-key mode the waiting drop target stays; only a panel closes.
    if (oneofThePanelsIsShown && !inside && hotKeyMode && !emptyContviewIsShown && !shouldNotCloseYet) {
        orderOutTheWindow();
        return;
    }
    // The pointer's return arms closing again.
    if (shouldNotCloseYet && inside && !emptyContviewIsShown &&
        !(local && QApplication::activeModalWidget()))
        shouldNotCloseYet = false;
}

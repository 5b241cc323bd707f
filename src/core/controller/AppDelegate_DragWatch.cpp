#include "AppDelegate.h"

#include "core/dragwatch/DragContent.h"
#include "core/dragwatch/DropHereGeometry.h"
#include "core/dragwatch/HotKeyBinding.h"
#include "core/intake/SingleItemDropGate.h"
#include "core/window/DropWindow.h"
#include "platform/desktops/ShortcutHost.h"
#include "utils/Utils.h"

#include <QApplication>
#include <QCursor>
#include <QMouseEvent>
#include <QLoggingCategory>

Q_DECLARE_LOGGING_CATEGORY(lcWindow)

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
            [this](QPointF at) { mouseMovedWhileWindowUp(yUp(window->inItsScreensScale(at)), false); });
    if (m_platform.dragPasteboard) {
        connect(m_platform.dragPasteboard, &DragPasteboard::changed, this, &AppDelegate::dragPasteboardChanged);
        connect(m_platform.dragPasteboard, &DragPasteboard::contentLearned, this, &AppDelegate::dragContentLearned);
    }
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

void AppDelegate::dragPasteboardChanged()
{
    // The drag's start itself raises the window, with the pointer where it was seen last: nothing
    // waits for its next motion.
    const PointerDrag drag = m_platform.pointerMonitor ? m_platform.pointerMonitor->currentDrag() : PointerDrag();
    if (!drag.leftButtonDown)
        return; // no left-button drag, or one inside our own windows
    if (drag.deltaX == 0 && drag.deltaY == 0)
        return; // started at the press itself: its first motion tells the way it goes
    if (windowIsVsbl() && oneofThePanelsIsShown)
        orderOutTheWindow(); // a drag elsewhere dismisses a panel, and this one raises the window
    dragHandler(yUp(drag.location), drag.deltaX, drag.deltaY);
}

void AppDelegate::leftMouseDragged(QPointF location, qreal deltaX, qreal deltaY)
{
    // 1. A drag elsewhere dismisses a panel.
    if (windowIsVsbl() && oneofThePanelsIsShown) {
        orderOutTheWindow();
        return;
    }
    dragHandler(location, deltaX, deltaY);
}

void AppDelegate::dragHandler(QPointF location, qreal deltaX, qreal deltaY)
{
    if (!Utils::QuaydropIsOFFSate() || !m_platform.dragPasteboard)
        return;
    // Each drag is looked at once: the count is taken before any test.
    const qint64 count = m_platform.dragPasteboard->changeCount();
    if (count == myPbrdChangeCount)
        return;
    myPbrdChangeCount = count;
    const bool hotKeyMode = Utils::isShortcutEnabled();
    const QString app = bundleIdOfTheAppWhereTheCursorIs(location);
    const QString front = m_platform.windowSystem ? m_platform.windowSystem->frontmostApplicationId() : QString();
    for (const QString &prefix : DragContent::imgEditingAppsToExcl())
        if (((!app.isEmpty() && app.startsWith(prefix)) || (!front.isEmpty() && front.startsWith(prefix))) && !hotKeyMode)
            return;
    if (!app.isEmpty() && Utils::exclBndlIDAppsArray().contains(app) && !hotKeyMode)
        return;
    // The file manager is looked up only where the setting asks for it: the first look-up runs a program.
    if (Utils::exclAllButFinderValue() &&
        (app.isEmpty() || !m_platform.workspace || app != m_platform.workspace->defaultFileManagerId()))
        return;
    if (mouseDraggedBool)
        return;
    mouseDraggedBool = true;
    if (!hotKeyMode) {
        showhideWindow(float(deltaX), float(deltaY), location);
        showPanelWithIndex(DropPanelDropTarget);
    }
    // What is dragged is learnt with the window already up: a source may be slow to tell.
    m_platform.dragPasteboard->learnContent();
}

bool AppDelegate::dragContentIsTaken() const
{
    const QStringList types = m_platform.dragPasteboard->types();
    // A source that did not tell in time (Qt's answer only the window they drop on) is judged at the drop.
    if (types.isEmpty())
        return true;
    const QStringList files = types.contains(QLatin1String("text/uri-list")) ? m_platform.dragPasteboard->filePaths()
                                                                             : QStringList();
    const DragContent::Kind kind = DragContent::availableType(types, !files.isEmpty());
    if (kind == DragContent::Kind::None)
        return false;
    if (kind == DragContent::Kind::Url && !DragContent::urlLeadsToImage(types))
        return false;
    return kind != DragContent::Kind::Files || SingleItemDropGate::passes(files);
}

void AppDelegate::dragContentLearned(qint64 count)
{
    if (count != myPbrdChangeCount || !mouseDraggedBool || dragContentIsTaken())
        return;
    qCDebug(lcWindow, "the drag offers nothing the window takes");
    mouseDraggedBool = false;
    // Only the waiting drop target goes: a drop already taken, or the hot key's window, stays.
    if (!Utils::isShortcutEnabled() && windowIsVsbl() && !oneofThePanelsIsShown && !emptyContviewIsShown)
        orderOutTheWindow();
}

void AppDelegate::showhideWindow(float deltaX, float deltaY, std::optional<QPointF> mouseYUp)
{
    if (windowIsVsbl() || !Utils::QuaydropIsOFFSate())
        return;
    const QPointF mouse = mouseYUp.value_or(yUp(QCursor::pos()));
    // Everything on the screen under the pointer, in its own size and scale.
    QRectF frame = DropHereGeometry::besidePointer(deltaX, deltaY, mouse, DropWindow::visibleFrameYUp(mouse));
    // On Wayland X11 sees the pointer only over X11 windows: without a drag's own position (hot key,
    // file manager entry) where it was last seen may be far from it, so the window goes to the middle.
    const bool pointerUnseen = !mouseYUp && ShortcutHosts::detect() != ShortcutHost::X11Grab;
    if (Utils::dropHereWindowAlignment() == 1 || pointerUnseen)
        frame = DropHereGeometry::centredOn(frame, DropWindow::screenFrameYUp(mouse));
    setPointerMonitors(true);
    window->setFrameYUp(frame);
    dontActivatePrevFrontMostApp = false;
    window->show();
    window->raise();
    shouldNotCloseYet = false;
    if (m_platform.windowSystem) {
        m_platform.windowSystem->flush();
        // Asked of the server once the window is on its way.
        m_platform.windowSystem->rememberFocusedWindow();
    }
}

void AppDelegate::showPanelHKNotif()
{
    if (Utils::isShortcutEnabled())
        toggleDropWindow();
}

void AppDelegate::toggleDropWindow()
{
    if (windowIsVsbl()) {
        orderOutTheWindow();
        return;
    }
    showhideWindow(0, 0);
    showPanelWithIndex(DropPanelDropTarget);
    // Nothing is being dragged: the window takes the keys (Escape, Ctrl+V).
    window->setTakesFocus(true);
    window->activateWindow();
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
        // A button held is a drag inside the window (a slider, a text selection): only moves count.
        if (move->buttons() == Qt::NoButton)
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
        qCDebug(lcWindow) << "the pointer went off to" << location << "outside" << keepOpen;
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

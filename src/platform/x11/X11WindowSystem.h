#pragma once

#include "platform/Platform.h"
#include "platform/freedesktop/DesktopEntries.h"

#include <QHash>

#include <future>
#include <optional>

#include <xcb/xcb.h>

class X11Connection;

// Which application a window belongs to, read from the window stack (the window manager's
// _NET_CLIENT_LIST_STACKING, else the root's children), WM_CLASS, _NET_WM_PID and the desktop files;
// the active window from _NET_ACTIVE_WINDOW, else the input focus.
class X11WindowSystem : public WindowSystem
{
    Q_OBJECT
public:
    explicit X11WindowSystem(X11Connection *x, QObject *parent = nullptr);
    QString applicationIdAt(QPointF screenPoint) const override;
    QString frontmostApplicationId() const override;
    void rememberFocusedWindow() override;
    void restoreRememberedFocus() override;
    void flush() override;
    void handle(xcb_generic_event_t *event);

private:
    QList<quint32> topLevelsFrontToBack() const;
    std::optional<QRect> frameOf(quint32 window) const;
    quint32 clientOf(quint32 window) const; // the window with WM_CLASS in a window manager's frame
    quint32 activeWindow() const;
    QString applicationOf(quint32 window) const;
    QString readApplicationOf(quint32 window) const;
    const DesktopEntries &entries() const;

    X11Connection *m_x;
    quint32 m_remembered = 0;
    quint32 m_lastActive = 0;
    mutable QHash<quint32, QString> m_applications; // of the windows on screen
    // Read in the background from the start, so that no drag waits for the desktop files.
    std::shared_future<DesktopEntries> m_entries;
};

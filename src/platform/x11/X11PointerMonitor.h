#pragma once

#include "platform/Platform.h"

#include <xcb/xcb.h>

class X11Connection;

// Left-button drags and, while asked, pointer motion, from XInput 2 raw events on the root window. A
// press inside the program's own windows is told apart at the press: nothing of it is reported, as
// a global monitor never sees a program's own events.
class X11PointerMonitor : public PointerMonitor
{
    Q_OBJECT
public:
    explicit X11PointerMonitor(X11Connection *x, QObject *parent = nullptr);
    void setMotionTracking(bool on) override { m_tracking = on; }
    PointerDrag currentDrag() const override;
    // The windows the left button went down in, innermost first: a drag's source keeps what it offers
    // on its own window.
    const QList<quint32> &pressWindows() const { return m_pressWindows; }
    void handle(xcb_generic_event_t *event);

Q_SIGNALS:
    void serverTime(quint32 time); // of each pointer motion

private:
    QPointF pointer() const;
    void pressed();
    X11Connection *m_x;
    bool m_buttonDown = false;
    bool m_pressIsOurs = false;
    bool m_tracking = false;
    QList<quint32> m_pressWindows;
    PointerDrag m_drag;
};

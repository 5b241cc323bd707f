#include "X11PointerMonitor.h"

#include "X11Connection.h"

#include <QLoggingCategory>

#include <xcb/xinput.h>

#include <algorithm>

Q_DECLARE_LOGGING_CATEGORY(lcDrag)

X11PointerMonitor::X11PointerMonitor(X11Connection *x, QObject *parent) : PointerMonitor(parent), m_x(x)
{
    struct
    {
        xcb_input_event_mask_t head;
        quint32 mask;
    } selection{{XCB_INPUT_DEVICE_ALL_MASTER, 1},
                XCB_INPUT_XI_EVENT_MASK_RAW_MOTION | XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS |
                    XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE};
    xcb_input_xi_select_events(x->connection(), x->root(), 1, &selection.head);
    xcb_flush(x->connection());
}

PointerDrag X11PointerMonitor::currentDrag() const
{
    PointerDrag drag = m_drag;
    drag.leftButtonDown = m_buttonDown && !m_pressIsOurs;
    return drag;
}

QPointF X11PointerMonitor::pointer() const
{
    auto *reply = xcb_query_pointer_reply(m_x->connection(), xcb_query_pointer(m_x->connection(), m_x->root()), nullptr);
    if (!reply)
        return m_drag.location;
    const QPointF at(reply->root_x, reply->root_y);
    free(reply);
    return X11Connection::toLogical(at);
}

void X11PointerMonitor::pressed()
{
    m_buttonDown = true;
    QPoint root;
    const QList<quint32> chain = m_x->windowsUnderPointer(&root);
    m_pressIsOurs = std::any_of(chain.cbegin(), chain.cend(), [this](quint32 w) { return m_x->isOwnWindow(w); });
    m_pressWindows.clear();
    for (auto it = chain.crbegin(); it != chain.crend(); ++it)
        m_pressWindows.append(*it);
    m_drag = PointerDrag{};
    m_drag.location = X11Connection::toLogical(root);
    if (m_pressIsOurs)
        qCDebug(lcDrag, "press inside our own window 0x%x: not watched", chain.isEmpty() ? 0u : chain.last());
}

void X11PointerMonitor::handle(xcb_generic_event_t *event)
{
    if ((event->response_type & 0x7f) != XCB_GE_GENERIC)
        return;
    auto *ge = reinterpret_cast<xcb_ge_generic_event_t *>(event);
    if (ge->extension != m_x->xinputOpcode())
        return;
    switch (ge->event_type) {
    case XCB_INPUT_RAW_BUTTON_PRESS:
        if (reinterpret_cast<xcb_input_raw_button_press_event_t *>(event)->detail == 1)
            pressed();
        break;
    case XCB_INPUT_RAW_BUTTON_RELEASE:
        if (reinterpret_cast<xcb_input_raw_button_release_event_t *>(event)->detail == 1 && m_buttonDown) {
            m_buttonDown = false;
            const bool ours = std::exchange(m_pressIsOurs, false);
            if (!ours)
                Q_EMIT leftMouseReleased(pointer());
        }
        break;
    case XCB_INPUT_RAW_MOTION: {
        if (!m_buttonDown && !m_tracking)
            return;
        if (m_buttonDown && m_pressIsOurs)
            return; // a slider, a text field, a scroll bar of ours: not a drag to watch
        auto *raw = reinterpret_cast<xcb_input_raw_motion_event_t *>(event);
        Q_EMIT serverTime(raw->time);
        // The deltas of the axes present, in order: x first, then y.
        qreal delta[2] = {0, 0};
        int found = 0;
        const quint32 *mask = xcb_input_raw_button_press_valuator_mask(raw);
        const xcb_input_fp3232_t *values = xcb_input_raw_button_press_axisvalues(raw);
        for (int axis = 0; axis < 2 && axis < raw->valuators_len * 32; ++axis) {
            if (!(mask[axis / 32] & (1u << (axis % 32))))
                continue;
            const xcb_input_fp3232_t &v = values[found++];
            delta[axis] = v.integral + v.frac / 4294967296.0;
        }
        const QPointF at = pointer();
        if (m_buttonDown) {
            m_drag.location = at;
            m_drag.deltaX += delta[0];
            m_drag.deltaY += delta[1];
            Q_EMIT leftMouseDragged(at, delta[0], delta[1]);
        }
        // Plain motion only: while the button is held the pointer is dragging, not wandering off.
        if (m_tracking && !m_buttonDown)
            Q_EMIT mouseMoved(at);
        break;
    }
    default:
        break;
    }
}

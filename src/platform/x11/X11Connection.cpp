#include "X11Connection.h"

#include "platform/ScreenPixels.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QScreen>
#include <QSocketNotifier>
#include <QTimer>

#include <xcb/xcb.h>
#include <xcb/xfixes.h>
#include <xcb/xinput.h>

#include <poll.h>

#include <algorithm>
#include <cstdlib>

std::unique_ptr<X11Connection> X11Connection::open()
{
    int screenNumber = 0;
    xcb_connection_t *c = xcb_connect(nullptr, &screenNumber);
    if (!c || xcb_connection_has_error(c)) {
        if (c)
            xcb_disconnect(c);
        return nullptr;
    }
    std::unique_ptr<X11Connection> self(new X11Connection);
    self->m_c = c;
    xcb_screen_iterator_t it = xcb_setup_roots_iterator(xcb_get_setup(c));
    for (int i = 0; i < screenNumber && it.rem; ++i)
        xcb_screen_next(&it);
    self->m_root = it.data->root;

    const xcb_query_extension_reply_t *xfixes = xcb_get_extension_data(c, &xcb_xfixes_id);
    const xcb_query_extension_reply_t *xinput = xcb_get_extension_data(c, &xcb_input_id);
    if (!xfixes || !xfixes->present || !xinput || !xinput->present) {
        qWarning("drag watcher: the X server lacks XFixes or XInput; drags are not seen");
        return nullptr;
    }
    free(xcb_xfixes_query_version_reply(c, xcb_xfixes_query_version(c, 5, 0), nullptr));
    auto *xi = xcb_input_xi_query_version_reply(c, xcb_input_xi_query_version(c, 2, 2), nullptr);
    const bool xi2 = xi && xi->major_version >= 2;
    free(xi);
    if (!xi2) {
        qWarning("drag watcher: the X server has no XInput 2; drags are not seen");
        return nullptr;
    }
    self->m_xfixesFirstEvent = xfixes->first_event;
    self->m_xinputOpcode = xinput->major_opcode;

    // A window of our own, never shown, to receive converted selections.
    self->m_requestor = xcb_generate_id(c);
    xcb_create_window(c, XCB_COPY_FROM_PARENT, self->m_requestor, self->m_root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    xcb_flush(c);

    const xcb_setup_t *own = xcb_get_setup(c);
    self->m_idSpaces.append({own->resource_id_base, own->resource_id_mask});
    // The windows Qt makes for the program come from Qt's own connection.
    if (auto *qt = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr; qt && qt->connection()) {
        const xcb_setup_t *setup = xcb_get_setup(qt->connection());
        self->m_idSpaces.append({setup->resource_id_base, setup->resource_id_mask});
    }

    self->m_notifier = new QSocketNotifier(xcb_get_file_descriptor(c), QSocketNotifier::Read, self.get());
    connect(self->m_notifier, &QSocketNotifier::activated, self.get(), &X11Connection::readEvents);
    return self;
}

X11Connection::~X11Connection()
{
    for (xcb_generic_event_t *e : std::as_const(m_deferred))
        free(e);
    if (m_c)
        xcb_disconnect(m_c);
}

quint32 X11Connection::atom(const char *name)
{
    const QByteArray key(name);
    if (const auto it = m_atoms.constFind(key); it != m_atoms.cend())
        return it.value();
    auto *reply = xcb_intern_atom_reply(m_c, xcb_intern_atom(m_c, 0, quint16(key.size()), name), nullptr);
    const quint32 value = reply ? reply->atom : quint32(XCB_ATOM_NONE);
    free(reply);
    m_atoms.insert(key, value);
    return value;
}

QString X11Connection::atomName(quint32 atom)
{
    if (const auto it = m_atomNames.constFind(atom); it != m_atomNames.cend())
        return it.value();
    auto *reply = xcb_get_atom_name_reply(m_c, xcb_get_atom_name(m_c, atom), nullptr);
    if (!reply)
        return {};
    const QString name = QString::fromLatin1(xcb_get_atom_name_name(reply), xcb_get_atom_name_name_length(reply));
    free(reply);
    m_atomNames.insert(atom, name); // atoms live as long as the server
    return name;
}

std::optional<QByteArray> X11Connection::property(quint32 window, quint32 prop, quint32 type)
{
    auto *reply = xcb_get_property_reply(m_c, xcb_get_property(m_c, 0, window, prop, type, 0, 1 << 20), nullptr);
    if (!reply || reply->type == XCB_ATOM_NONE) {
        free(reply);
        return std::nullopt;
    }
    // The length is in bytes already, whatever the item size.
    const QByteArray value(static_cast<const char *>(xcb_get_property_value(reply)), xcb_get_property_value_length(reply));
    free(reply);
    return value;
}

std::optional<QByteArray> X11Connection::convertSelection(quint32 selection, quint32 target, quint32 time, int timeoutMs,
                                                         quint32 requestor)
{
    if (!requestor)
        requestor = m_requestor;
    // Whatever came meanwhile is handled once the caller is done.
    struct Resume
    {
        X11Connection *self;
        ~Resume()
        {
            if (!self->m_deferred.isEmpty())
                QTimer::singleShot(0, self, &X11Connection::readEvents);
        }
    } resume{this};
    const quint32 into = atom("QUAYDROP_SELECTION");
    xcb_convert_selection(m_c, requestor, selection, target, into, time);
    xcb_flush(m_c);
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < timeoutMs) {
        while (xcb_generic_event_t *e = xcb_poll_for_event(m_c)) {
            if ((e->response_type & 0x7f) == XCB_SELECTION_NOTIFY) {
                auto *notify = reinterpret_cast<xcb_selection_notify_event_t *>(e);
                // A refusal may name no target at all.
                if (notify->requestor == requestor && notify->selection == selection &&
                    (notify->target == target || notify->property == XCB_ATOM_NONE)) {
                    const bool refused = notify->property == XCB_ATOM_NONE;
                    free(e);
                    if (refused)
                        return std::nullopt;
                    auto value = property(requestor, into, XCB_GET_PROPERTY_TYPE_ANY);
                    xcb_delete_property(m_c, requestor, into);
                    xcb_flush(m_c);
                    return value;
                }
            }
            m_deferred.append(e);
        }
        if (xcb_connection_has_error(m_c))
            return std::nullopt;
        pollfd fd{xcb_get_file_descriptor(m_c), POLLIN, 0};
        ::poll(&fd, 1, int(qMax<qint64>(1, timeoutMs - clock.elapsed())));
    }
    return std::nullopt;
}

quint32 X11Connection::createHiddenChild(quint32 parent)
{
    const quint32 window = xcb_generate_id(m_c);
    const xcb_void_cookie_t made = xcb_create_window_checked(m_c, XCB_COPY_FROM_PARENT, window, parent, 0, 0, 1, 1, 0,
                                                             XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    if (xcb_generic_error_t *error = xcb_request_check(m_c, made)) {
        free(error);
        return 0;
    }
    return window;
}

void X11Connection::destroyWindow(quint32 window)
{
    xcb_destroy_window(m_c, window);
    xcb_flush(m_c);
}

void X11Connection::readEvents()
{
    // What a conversion set aside first, in the order it came.
    while (!m_deferred.isEmpty()) {
        xcb_generic_event_t *e = m_deferred.takeFirst();
        dispatch(e);
        free(e);
    }
    while (xcb_generic_event_t *e = xcb_poll_for_event(m_c)) {
        dispatch(e);
        free(e);
    }
    if (xcb_connection_has_error(m_c)) {
        qWarning("drag watcher: the connection to the X server was lost");
        m_notifier->setEnabled(false);
    }
}

void X11Connection::dispatch(xcb_generic_event_t *event)
{
    for (const Handler &handler : std::as_const(m_handlers))
        handler(event);
}

void X11Connection::sendClientMessage(quint32 window, quint32 type, const std::array<quint32, 5> &data)
{
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window;
    message.type = type;
    std::copy(data.begin(), data.end(), message.data.data32);
    xcb_send_event(m_c, 0, m_root, XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                   reinterpret_cast<const char *>(&message));
    xcb_flush(m_c);
}

bool X11Connection::isOwnWindow(quint32 window) const
{
    for (const IdSpace &space : m_idSpaces)
        if (window && (window & ~space.mask) == space.base)
            return true;
    return false;
}

QList<quint32> X11Connection::windowsUnderPointer(QPoint *rootPosition)
{
    QList<quint32> chain;
    quint32 window = m_root;
    // Down to the innermost window that holds the pointer; a few levels at most.
    for (int depth = 0; depth < 16; ++depth) {
        auto *reply = xcb_query_pointer_reply(m_c, xcb_query_pointer(m_c, window), nullptr);
        if (!reply)
            break;
        if (depth == 0 && rootPosition)
            *rootPosition = QPoint(reply->root_x, reply->root_y);
        const quint32 child = reply->same_screen ? reply->child : quint32(XCB_WINDOW_NONE);
        free(reply);
        if (child == XCB_WINDOW_NONE)
            break;
        chain.append(child);
        window = child;
    }
    return chain;
}

void X11Connection::watchProperties(quint32 window, bool on)
{
    const quint32 mask = on ? quint32(XCB_EVENT_MASK_PROPERTY_CHANGE) : 0u;
    xcb_change_window_attributes(m_c, window, XCB_CW_EVENT_MASK, &mask);
    xcb_flush(m_c);
}

QPointF X11Connection::toLogical(QPointF native)
{
    const auto screens = QGuiApplication::screens();
    for (const QScreen *screen : screens)
        if (ScreenPixels::pixelRect(screen).contains(native))
            return ScreenPixels::toPoints(screen, native);
    return native;
}

QPointF X11Connection::toNative(QPointF logical)
{
    const QScreen *screen = QGuiApplication::screenAt(logical.toPoint());
    return screen ? ScreenPixels::toPixels(screen, logical) : logical;
}

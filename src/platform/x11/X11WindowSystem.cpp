#include "X11WindowSystem.h"

#include "X11Connection.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QLoggingCategory>
#include <QRect>

#include <unistd.h>

Q_DECLARE_LOGGING_CATEGORY(lcDrag)

namespace {

template <typename Reply>
struct Freed
{
    Reply *reply;
    ~Freed() { free(reply); }
    Reply *operator->() const { return reply; }
    explicit operator bool() const { return reply != nullptr; }
};

} // namespace

X11WindowSystem::X11WindowSystem(X11Connection *x, QObject *parent)
    : WindowSystem(parent), m_x(x), m_entries(std::async(std::launch::async, [] { return DesktopEntries::load(); }))
{
    // The window manager announces each newly active window on the root.
    const quint32 mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(x->connection(), x->root(), XCB_CW_EVENT_MASK, &mask);
    xcb_flush(x->connection());
}

const DesktopEntries &X11WindowSystem::entries() const
{
    return m_entries.get();
}

QList<quint32> X11WindowSystem::topLevelsFrontToBack() const
{
    QList<quint32> windows;
    if (const auto stacking = m_x->property(m_x->root(), m_x->atom("_NET_CLIENT_LIST_STACKING"), XCB_ATOM_WINDOW)) {
        const auto *ids = reinterpret_cast<const quint32 *>(stacking->constData());
        for (qsizetype i = stacking->size() / 4 - 1; i >= 0; --i)
            windows.append(ids[i]);
        return windows;
    }
    // No window manager: the root's children, bottom first.
    xcb_connection_t *c = m_x->connection();
    Freed tree{xcb_query_tree_reply(c, xcb_query_tree(c, m_x->root()), nullptr)};
    if (!tree)
        return windows;
    const xcb_window_t *children = xcb_query_tree_children(tree.reply);
    for (int i = xcb_query_tree_children_length(tree.reply) - 1; i >= 0; --i)
        windows.append(children[i]);
    return windows;
}

std::optional<QRect> X11WindowSystem::frameOf(quint32 window) const
{
    xcb_connection_t *c = m_x->connection();
    Freed attributes{xcb_get_window_attributes_reply(c, xcb_get_window_attributes(c, window), nullptr)};
    if (!attributes || attributes->map_state != XCB_MAP_STATE_VIEWABLE || attributes->_class == XCB_WINDOW_CLASS_INPUT_ONLY)
        return std::nullopt;
    Freed geometry{xcb_get_geometry_reply(c, xcb_get_geometry(c, window), nullptr)};
    if (!geometry)
        return std::nullopt;
    Freed at{xcb_translate_coordinates_reply(c, xcb_translate_coordinates(c, window, m_x->root(), 0, 0), nullptr)};
    if (!at)
        return std::nullopt;
    return QRect(at->dst_x, at->dst_y, geometry->width, geometry->height);
}

quint32 X11WindowSystem::clientOf(quint32 window) const
{
    if (m_x->property(window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING))
        return window;
    xcb_connection_t *c = m_x->connection();
    Freed tree{xcb_query_tree_reply(c, xcb_query_tree(c, window), nullptr)};
    if (!tree)
        return 0;
    const xcb_window_t *children = xcb_query_tree_children(tree.reply);
    // Frames hold the client one or two levels down.
    for (int i = 0; i < xcb_query_tree_children_length(tree.reply); ++i)
        if (m_x->property(children[i], XCB_ATOM_WM_CLASS, XCB_ATOM_STRING))
            return children[i];
    for (int i = 0; i < xcb_query_tree_children_length(tree.reply); ++i) {
        Freed inner{xcb_query_tree_reply(c, xcb_query_tree(c, children[i]), nullptr)};
        if (!inner)
            continue;
        const xcb_window_t *grand = xcb_query_tree_children(inner.reply);
        for (int j = 0; j < xcb_query_tree_children_length(inner.reply); ++j)
            if (m_x->property(grand[j], XCB_ATOM_WM_CLASS, XCB_ATOM_STRING))
                return grand[j];
    }
    return 0;
}

QString X11WindowSystem::applicationOf(quint32 window) const
{
    // A window keeps its application: asked of the server once per window, as drags must not wait.
    if (const auto it = m_applications.constFind(window); it != m_applications.cend())
        return it.value();
    const QString app = readApplicationOf(window);
    if (!app.isEmpty()) {
        if (m_applications.size() > 256)
            m_applications.clear();
        m_applications.insert(window, app);
    }
    return app;
}

QString X11WindowSystem::readApplicationOf(quint32 window) const
{
    const quint32 client = clientOf(window);
    if (!client)
        return {};
    const QByteArray wmClass = m_x->property(client, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING).value_or(QByteArray());
    const QList<QByteArray> parts = wmClass.split('\0');
    const QString instance = QString::fromLocal8Bit(parts.value(0));
    const QString className = QString::fromLocal8Bit(parts.value(1));
    QString program;
    if (const auto pid = m_x->property(client, m_x->atom("_NET_WM_PID"), XCB_ATOM_CARDINAL); pid && pid->size() >= 4) {
        const quint32 value = *reinterpret_cast<const quint32 *>(pid->constData());
        if (value == quint32(::getpid()))
            return QStringLiteral(QD_BUNDLE_ID);
        program = QFileInfo(QStringLiteral("/proc/%1/exe").arg(value)).symLinkTarget();
        program = QFileInfo(program).fileName();
    }
    const QString id = entries().idForWindow(instance, className, program);
    return id.isEmpty() ? className : id;
}

QString X11WindowSystem::applicationIdAt(QPointF screenPoint) const
{
    const QPoint point = X11Connection::toNative(screenPoint).toPoint();
    const QList<quint32> windows = topLevelsFrontToBack();
    // Windows gone from the screen take their entries along, before their numbers come round again.
    for (auto it = m_applications.begin(); it != m_applications.end();)
        it = windows.contains(it.key()) ? std::next(it) : m_applications.erase(it);
    // All questions first, the answers after: one round trip to the server, however many windows.
    xcb_connection_t *c = m_x->connection();
    struct Asked
    {
        xcb_get_window_attributes_cookie_t attributes;
        xcb_get_geometry_cookie_t geometry;
        xcb_translate_coordinates_cookie_t origin;
    };
    QList<Asked> asked;
    asked.reserve(windows.size());
    for (const quint32 window : windows)
        asked.append({xcb_get_window_attributes(c, window), xcb_get_geometry(c, window),
                      xcb_translate_coordinates(c, window, m_x->root(), 0, 0)});
    quint32 found = 0;
    for (qsizetype i = 0; i < windows.size(); ++i) {
        Freed attributes{xcb_get_window_attributes_reply(c, asked[i].attributes, nullptr)};
        Freed geometry{xcb_get_geometry_reply(c, asked[i].geometry, nullptr)};
        Freed origin{xcb_translate_coordinates_reply(c, asked[i].origin, nullptr)};
        // Menus, tooltips and a drag's own image float above the windows without belonging to one.
        if (found || !attributes || !geometry || !origin || attributes->map_state != XCB_MAP_STATE_VIEWABLE ||
            attributes->_class == XCB_WINDOW_CLASS_INPUT_ONLY || attributes->override_redirect)
            continue;
        if (QRect(origin->dst_x, origin->dst_y, geometry->width, geometry->height).contains(point))
            found = windows[i];
    }
    if (!found)
        return {};
    const QString app = applicationOf(found);
    qCDebug(lcDrag) << "window under the pointer:" << Qt::hex << found << "of" << app;
    return app;
}

quint32 X11WindowSystem::activeWindow() const
{
    if (const auto active = m_x->property(m_x->root(), m_x->atom("_NET_ACTIVE_WINDOW"), XCB_ATOM_WINDOW);
        active && active->size() >= 4)
        return *reinterpret_cast<const quint32 *>(active->constData());
    xcb_connection_t *c = m_x->connection();
    Freed focus{xcb_get_input_focus_reply(c, xcb_get_input_focus(c), nullptr)};
    if (!focus || focus->focus <= XCB_INPUT_FOCUS_POINTER_ROOT)
        return 0;
    return focus->focus;
}

QString X11WindowSystem::frontmostApplicationId() const
{
    const quint32 window = activeWindow();
    return window ? applicationOf(window) : QString();
}

void X11WindowSystem::rememberFocusedWindow()
{
    const quint32 window = activeWindow();
    // Our own window is no place to hand focus back to.
    if (window && !m_x->isOwnWindow(window))
        m_remembered = window;
}

void X11WindowSystem::flush()
{
    // Qt sends what a window asked for when its event loop comes round; a window raised in the middle
    // of an event should not wait for that.
    if (auto *qt = qGuiApp ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr; qt && qt->connection())
        xcb_flush(qt->connection());
}

void X11WindowSystem::restoreRememberedFocus()
{
    if (!m_remembered || !frameOf(m_remembered))
        return; // gone or hidden meanwhile
    if (m_x->property(m_x->root(), m_x->atom("_NET_SUPPORTED"), XCB_ATOM_ATOM)) {
        // Source 2: a request on the user's behalf, which window managers do not refuse as focus stealing.
        m_x->sendClientMessage(m_remembered, m_x->atom("_NET_ACTIVE_WINDOW"), {2, XCB_CURRENT_TIME, 0, 0, 0});
        return;
    }
    xcb_set_input_focus(m_x->connection(), XCB_INPUT_FOCUS_POINTER_ROOT, m_remembered, XCB_CURRENT_TIME);
    xcb_flush(m_x->connection());
}

void X11WindowSystem::handle(xcb_generic_event_t *event)
{
    if ((event->response_type & 0x7f) != XCB_PROPERTY_NOTIFY)
        return;
    auto *notify = reinterpret_cast<xcb_property_notify_event_t *>(event);
    if (notify->window != m_x->root() || notify->atom != m_x->atom("_NET_ACTIVE_WINDOW"))
        return;
    const quint32 window = activeWindow();
    if (!window || window == m_lastActive)
        return;
    m_lastActive = window;
    const QString app = applicationOf(window);
    if (!app.isEmpty())
        Q_EMIT applicationActivated(app);
}

#include "X11Desktop.h"

std::unique_ptr<X11Desktop> X11Desktop::open()
{
    auto connection = X11Connection::open();
    if (!connection)
        return nullptr;
    auto desktop = std::make_unique<X11Desktop>();
    desktop->pointer = std::make_unique<X11PointerMonitor>(connection.get());
    desktop->pasteboard = std::make_unique<X11DragPasteboard>(connection.get(), desktop->pointer.get());
    desktop->windows = std::make_unique<X11WindowSystem>(connection.get());
    desktop->hotKeys = std::make_unique<X11HotKeyBinder>(connection.get());
    connection->addEventHandler([p = desktop->pasteboard.get()](xcb_generic_event_t *e) { p->handle(e); });
    connection->addEventHandler([m = desktop->pointer.get()](xcb_generic_event_t *e) { m->handle(e); });
    connection->addEventHandler([w = desktop->windows.get()](xcb_generic_event_t *e) { w->handle(e); });
    connection->addEventHandler([k = desktop->hotKeys.get()](xcb_generic_event_t *e) { k->handle(e); });
    QObject::connect(desktop->pointer.get(), &X11PointerMonitor::serverTime, desktop->pasteboard.get(),
                     &X11DragPasteboard::noteMotionTime);
    desktop->connection = std::move(connection);
    return desktop;
}

// The services go before the connection they talk through.
X11Desktop::~X11Desktop()
{
    hotKeys.reset();
    windows.reset();
    pasteboard.reset();
    pointer.reset();
}

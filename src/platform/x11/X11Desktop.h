#pragma once

#include "X11Connection.h"
#include "X11DragPasteboard.h"
#include "X11HotKeyBinder.h"
#include "X11PointerMonitor.h"
#include "X11WindowSystem.h"

#include <memory>

// The X11 services on one connection of their own. Null where there is no X11 display.
struct X11Desktop
{
    static std::unique_ptr<X11Desktop> open();
    ~X11Desktop();
    std::unique_ptr<X11Connection> connection;
    std::unique_ptr<X11DragPasteboard> pasteboard;
    std::unique_ptr<X11PointerMonitor> pointer;
    std::unique_ptr<X11WindowSystem> windows;
    std::unique_ptr<X11HotKeyBinder> hotKeys;
};

#pragma once

#include "platform/Platform.h"

#include <xcb/xcb.h>

class X11Connection;

// The global key as a key grab on the root window. The grab is repeated with Caps Lock and Num Lock
// on, which X11 counts as modifiers, so the key works whatever their state.
class X11HotKeyBinder : public HotKeyBinder
{
    Q_OBJECT
public:
    explicit X11HotKeyBinder(X11Connection *x, QObject *parent = nullptr);
    ~X11HotKeyBinder() override;
    Status bind(const QString &portableKeys) override;
    void unbind() override;
    void handle(xcb_generic_event_t *event);

    // The X keysym and modifier mask of "Ctrl+Alt+F"; keysym 0 for what a grab cannot express.
    struct Grab
    {
        quint32 keysym = 0;
        quint16 modifiers = 0;
    };
    static Grab grabFor(const QString &portableKeys);

private:
    xcb_keycode_t keycodeFor(quint32 keysym) const;

    X11Connection *m_x;
    xcb_keycode_t m_keycode = 0;
    quint16 m_modifiers = 0;
    quint32 m_lastReleaseTime = 0;
};

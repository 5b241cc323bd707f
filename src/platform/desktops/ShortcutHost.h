#pragma once

#include <QByteArray>

// Who can hold Quaydrop's global key in this session. On X11 the program grabs it itself; on Wayland
// no client may, so the desktop holds it: GNOME as a custom shortcut, KDE Plasma through kglobalaccel.
// Elsewhere on Wayland the user binds `quaydrop toggle` in the desktop's own settings.
enum class ShortcutHost { X11Grab, Gnome, KGlobalAccel, None };

namespace ShortcutHosts {
// From XDG_SESSION_TYPE, WAYLAND_DISPLAY and XDG_CURRENT_DESKTOP ("ubuntu:GNOME", "KDE").
ShortcutHost detect(const QByteArray &sessionType, const QByteArray &waylandDisplay, const QByteArray &currentDesktop);
ShortcutHost detect();
} // namespace ShortcutHosts

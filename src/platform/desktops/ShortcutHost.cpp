#include "ShortcutHost.h"

#include <QList>

ShortcutHost ShortcutHosts::detect(const QByteArray &sessionType, const QByteArray &waylandDisplay,
                                   const QByteArray &currentDesktop)
{
    if (sessionType != "wayland" && waylandDisplay.isEmpty())
        return ShortcutHost::X11Grab;
    for (const QByteArray &desktop : currentDesktop.split(':')) {
        if (desktop == "GNOME")
            return ShortcutHost::Gnome;
        if (desktop == "KDE")
            return ShortcutHost::KGlobalAccel;
    }
    return ShortcutHost::None;
}

ShortcutHost ShortcutHosts::detect()
{
    return detect(qgetenv("XDG_SESSION_TYPE"), qgetenv("WAYLAND_DISPLAY"), qgetenv("XDG_CURRENT_DESKTOP"));
}

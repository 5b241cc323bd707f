#pragma once

#include "platform/Platform.h"

#include <QDBusConnection>

// The desktop picture of the desktop in use, told by XDG_CURRENT_DESKTOP: GNOME and Unity, Cinnamon and
// MATE through their gsettings schemas, KDE Plasma through its shell's scripting over D-Bus, XFCE
// through xfconf on every monitor and workspace, else the desktop portal where one answers, else feh on
// a bare window manager. Each setter reads its value back: a desktop that did not take the picture is an
// error naming that desktop, never a silent success.
class DesktopWallpaper : public WallpaperService
{
public:
    enum class Desktop { Gnome, Cinnamon, Mate, Kde, Xfce, Other };

    explicit DesktopWallpaper(QDBusConnection bus = QDBusConnection::sessionBus(),
                              QString currentDesktop = qEnvironmentVariable("XDG_CURRENT_DESKTOP"));

    // The first name of the colon-separated list that is a desktop with a setter of its own.
    static Desktop detect(const QString &xdgCurrentDesktop);

    QString currentWallpaper() const override;
    Status setWallpaper(const QString &imagePath) override;

private:
    QString desktopName() const;
    Status refused(const QString &why) const;

    QDBusConnection m_bus;
    QString m_currentDesktop;
    Desktop m_desktop;
};

#pragma once

#include "platform/Platform.h"

// The hot key on GNOME, Wayland included: a custom keyboard shortcut of GNOME's own settings
// (org.gnome.settings-daemon.plugins.media-keys) that runs `quaydrop toggle`. GNOME Shell holds the
// key; a press reaches the running program through its instance socket, not through activated().
// The user's other custom shortcuts are left as they are, in their order.
class GnomeShortcutBinder : public HotKeyBinder
{
    Q_OBJECT
public:
    static constexpr const char *kPath = "/org/gnome/settings-daemon/plugins/media-keys/custom-keybindings/quaydrop/";

    // Whether this machine has GNOME's schema for custom shortcuts.
    static bool available();
    // "Ctrl+Alt+F" as GNOME writes it: "<Control><Alt>f"; empty when a key has no GNOME name.
    static QString accelerator(const QString &portableKeys);

    // `command` is what the shortcut runs: this program's path and "toggle".
    explicit GnomeShortcutBinder(QString command, QObject *parent = nullptr);
    Status bind(const QString &portableKeys) override;
    void unbind() override;

private:
    QString m_command;
};

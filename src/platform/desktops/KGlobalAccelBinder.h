#pragma once

#include "platform/Platform.h"

#include <QStringList>

// The hot key on KDE Plasma, Wayland included: a global shortcut registered with kglobalaccel over
// D-Bus under the component "quaydrop"; its presses come back as activated(). The shortcut shows in
// Plasma's settings, where the user can change it too.
class KGlobalAccelBinder : public HotKeyBinder
{
    Q_OBJECT
public:
    // Whether kglobalaccel answers on the session bus.
    static bool available();
    explicit KGlobalAccelBinder(QObject *parent = nullptr);
    Status bind(const QString &portableKeys) override;
    void unbind() override;

private Q_SLOTS:
    void shortcutPressed(const QString &component, const QString &action, qlonglong timestamp);

private:
    const QStringList m_actionId;
    bool m_listening = false;
};

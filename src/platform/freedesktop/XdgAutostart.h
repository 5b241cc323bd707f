#pragma once

#include "platform/Platform.h"

// Launch at login as an XDG autostart entry: $XDG_CONFIG_HOME/autostart/com.velmora.Quaydrop.desktop.
class XdgAutostart : public LoginItemService
{
public:
    // `executable` is what the entry starts.
    explicit XdgAutostart(QString executable) : m_executable(std::move(executable)) {}
    static QString entryPath();
    bool isEnabled() const override;
    Status setEnabled(bool enabled) override;

private:
    QString m_executable;
};

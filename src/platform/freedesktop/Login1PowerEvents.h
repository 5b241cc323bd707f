#pragma once

#include "platform/Platform.h"

#include <QDBusConnection>

// Sleep and wake from systemd-logind (or elogind): PrepareForSleep(false) on the system bus is the
// wake. Only signals from the owner of org.freedesktop.login1 count.
class Login1PowerEvents : public PowerEvents
{
    Q_OBJECT
public:
    explicit Login1PowerEvents(QDBusConnection systemBus = QDBusConnection::systemBus(), QObject *parent = nullptr);
    // False where there is no system bus to listen on: then no wake is ever reported.
    bool isListening() const { return m_listening; }

private Q_SLOTS:
    void onPrepareForSleep(bool goingToSleep);

private:
    QDBusConnection m_bus;
    bool m_listening = false;
};

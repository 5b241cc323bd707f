#include "Login1PowerEvents.h"

#include <QDBusError>

Login1PowerEvents::Login1PowerEvents(QDBusConnection systemBus, QObject *parent)
    : PowerEvents(parent), m_bus(std::move(systemBus))
{
    if (!m_bus.isConnected()) {
        qWarning("no system bus (%s): the temp folder is not emptied on wake", qPrintable(m_bus.lastError().message()));
        return;
    }
    m_listening = m_bus.connect(QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1"),
                                QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("PrepareForSleep"),
                                this, SLOT(onPrepareForSleep(bool)));
    if (!m_listening)
        qWarning("cannot listen for wake on the system bus: %s", qPrintable(m_bus.lastError().message()));
}

void Login1PowerEvents::onPrepareForSleep(bool goingToSleep)
{
    if (!goingToSleep)
        Q_EMIT didWake();
}

// Its meta-object code of its own (see SingleInstance.cpp).
#include "moc_Login1PowerEvents.cpp"

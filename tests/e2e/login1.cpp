// A stand-in for systemd-logind on a private system bus: owns org.freedesktop.login1 and sends
// Manager.PrepareForSleep for each argument ("sleep" = true, "wake" = false), then leaves.
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>

#include <cstdio>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    QDBusConnection bus = QDBusConnection::systemBus();
    if (!bus.isConnected() || !bus.registerService(QStringLiteral("org.freedesktop.login1"))) {
        std::fprintf(stderr, "login1: cannot own org.freedesktop.login1: %s\n", qPrintable(bus.lastError().message()));
        return 1;
    }
    for (const QString &arg : app.arguments().mid(1)) {
        QDBusMessage signal = QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/login1"),
                                                         QStringLiteral("org.freedesktop.login1.Manager"),
                                                         QStringLiteral("PrepareForSleep"));
        signal << (arg == QLatin1String("sleep"));
        bus.send(signal);
    }
    // A call answered by the bus comes back after everything sent before it was handled.
    bus.interface()->serviceOwner(QStringLiteral("org.freedesktop.login1"));
    return 0;
}

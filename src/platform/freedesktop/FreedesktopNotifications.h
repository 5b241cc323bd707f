#pragma once

#include "platform/Platform.h"

#include <QDBusConnection>
#include <QHash>
#include <QPointer>

// org.freedesktop.Notifications: a notification with a "default" action, whose invocation (a
// click on it) comes back as activated() with the user info it was sent with. Where no server answers
// (no session bus, or no notification daemon on it), the fallback tells it instead.
class FreedesktopNotifications : public NotificationService
{
    Q_OBJECT
public:
    explicit FreedesktopNotifications(QDBusConnection bus = QDBusConnection::sessionBus(), QObject *parent = nullptr);

    // Sent without waiting for the server; a failure is logged when its answer comes.
    Status deliver(const QString &title, const QString &body, const QVariantMap &userInfo) override;
    // Its clicks come back as this service's own.
    void setFallback(NotificationService *fallback);
    // Body markup that notification servers interpret is escaped.
    static QString escapedBody(const QString &body);
    int pendingCount() const { return int(m_userInfo.size()); }

private Q_SLOTS:
    void onActionInvoked(uint id, const QString &actionKey);
    void onNotificationClosed(uint id, uint reason);

private:
    Status deliverElsewhere(const QString &title, const QString &body, const QVariantMap &userInfo, const QString &why);

    QDBusConnection m_bus;
    QPointer<NotificationService> m_fallback;
    QHash<uint, QVariantMap> m_userInfo;
};

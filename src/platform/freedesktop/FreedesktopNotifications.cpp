#include "FreedesktopNotifications.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace {
const QString kService = QStringLiteral("org.freedesktop.Notifications");
const QString kPath = QStringLiteral("/org/freedesktop/Notifications");
const QString kInterface = QStringLiteral("org.freedesktop.Notifications");
} // namespace

FreedesktopNotifications::FreedesktopNotifications(QDBusConnection bus, QObject *parent)
    : NotificationService(parent), m_bus(std::move(bus))
{
    m_bus.connect(kService, kPath, kInterface, QStringLiteral("ActionInvoked"), this,
                  SLOT(onActionInvoked(uint, QString)));
    m_bus.connect(kService, kPath, kInterface, QStringLiteral("NotificationClosed"), this,
                  SLOT(onNotificationClosed(uint, uint)));
}

QString FreedesktopNotifications::escapedBody(const QString &body)
{
    return body.toHtmlEscaped();
}

Status FreedesktopNotifications::deliver(const QString &title, const QString &body, const QVariantMap &userInfo)
{
    if (!m_bus.isConnected())
        return deliverElsewhere(title, body, userInfo, QStringLiteral("no session bus: %1").arg(m_bus.lastError().message()));
    QDBusMessage call = QDBusMessage::createMethodCall(kService, kPath, kInterface, QStringLiteral("Notify"));
    QVariantMap hints;
    hints.insert(QStringLiteral("sound-name"), QStringLiteral("message-new-instant"));
    hints.insert(QStringLiteral("desktop-entry"), QStringLiteral(QD_BUNDLE_ID));
    // The "default" action is a click on the notification itself; Undo is a button of its own.
    QStringList actions{QStringLiteral("default"), QString()};
    if (const QString undo = userInfo.value(QStringLiteral("undoTitle")).toString(); !undo.isEmpty())
        actions << QString::fromLatin1(kUndoAction) << undo;
    call << QStringLiteral("Quaydrop") << uint(0) << QStringLiteral("document-send") << title << escapedBody(body)
         << actions << hints << int(-1);
    auto *watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, userInfo, title, body](QDBusPendingCallWatcher *w) {
        const QDBusPendingReply<uint> reply = *w;
        w->deleteLater();
        if (reply.isError()) {
            if (const Status s = deliverElsewhere(title, body, userInfo, reply.error().message()); !s.ok())
                qWarning("notification \"%s\" not shown: %s", qPrintable(title), qPrintable(s.error().message));
            return;
        }
        m_userInfo.insert(reply.value(), userInfo);
    });
    return success();
}

void FreedesktopNotifications::setFallback(NotificationService *fallback)
{
    if (m_fallback)
        disconnect(m_fallback, nullptr, this, nullptr);
    m_fallback = fallback;
    if (fallback)
        connect(fallback, &NotificationService::activated, this, &NotificationService::activated);
}

Status FreedesktopNotifications::deliverElsewhere(const QString &title, const QString &body, const QVariantMap &userInfo,
                                                  const QString &why)
{
    if (!m_fallback)
        return Error{QStringLiteral("Notifications"), 1, why};
    qInfo("no notification server (%s): told in Quaydrop's own balloon", qPrintable(why));
    return m_fallback->deliver(title, body, userInfo);
}

void FreedesktopNotifications::onActionInvoked(uint id, const QString &actionKey)
{
    const auto it = m_userInfo.constFind(id);
    if (it == m_userInfo.cend())
        return; // another program's notification
    const QVariantMap info = it.value();
    m_userInfo.erase(it);
    if (actionKey == QLatin1String("default"))
        Q_EMIT activated(info);
    else if (actionKey == QLatin1String(kUndoAction)) {
        QVariantMap undo = info;
        undo.insert(QString::fromLatin1(kActivationActionKey), QString::fromLatin1(kUndoAction));
        Q_EMIT activated(undo);
    }
    // The delivered notification goes once it was used.
    QDBusMessage close = QDBusMessage::createMethodCall(kService, kPath, kInterface, QStringLiteral("CloseNotification"));
    close << id;
    m_bus.asyncCall(close);
}

void FreedesktopNotifications::onNotificationClosed(uint id, uint)
{
    m_userInfo.remove(id);
}

// Its meta-object code of its own (see SingleInstance.cpp).
#include "moc_FreedesktopNotifications.cpp"

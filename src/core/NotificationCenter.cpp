#include "NotificationCenter.h"

NotificationCenter &NotificationCenter::defaultCenter()
{
    static NotificationCenter center;
    return center;
}

void NotificationCenter::post(const QString &name, const QVariantMap &userInfo) { Q_EMIT posted(name, userInfo); }

QMetaObject::Connection NotificationCenter::observe(const QString &name, QObject *context,
                                                    std::function<void(const QVariantMap &)> handler)
{
    return connect(this, &NotificationCenter::posted, context,
                   [name, handler = std::move(handler)](const QString &posted, const QVariantMap &info) {
                       if (posted == name)
                           handler(info);
                   });
}

void NotificationCenter::removeObserver(QObject *context) { disconnect(this, nullptr, context, nullptr); }

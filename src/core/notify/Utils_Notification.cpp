#include "core/NotificationCenter.h"
#include "core/plist/Plist.h"
#include "platform/Platform.h"
#include "utils/Utils.h"

#include <QFileInfo>

namespace {
constexpr qsizetype kMaxUserInfoBytes = 15000; // notification servers take small payloads only
}

void Utils::postSimpleNotificationWithTitle(const QString &title, const QString &body, const QString &,
                                            const QVariantMap &userInfo)
{
    const QStringList paths = userInfo.value(QStringLiteral("filePaths")).toStringList();
    if (!enableUserNotifWhenDoneSwitchValue() || paths.isEmpty())
        return;
    QVariantMap info = userInfo;
    const auto archived = Plist::serialize(QVariant(paths));
    if (!archived.ok() || archived.value().size() > kMaxUserInfoBytes)
        info.insert(QStringLiteral("filePaths"), QStringList{QFileInfo(paths.first()).absolutePath()});
    NotificationService *service = Platform::current().notifications;
    if (!service) {
        qWarning("%s: %s", qPrintable(title), qPrintable(body));
        return;
    }
    if (const Status s = service->deliver(title, body, info); !s.ok())
        qWarning("notification not shown: %s", qPrintable(s.error().message));
}

void Utils::postShouldNotCloseWindowYetNotif(bool shouldNotClose)
{
    NotificationCenter::defaultCenter().post(QString::fromLatin1(NotificationName::ShouldNotCloseYet),
                                             {{QStringLiteral("closeYet"), shouldNotClose}});
}

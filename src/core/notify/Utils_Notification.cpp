#include "core/NotificationCenter.h"
#include "core/plist/Plist.h"
#include "core/texts/Texts.h"
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
    const bool opens = !userInfo.value(QStringLiteral("OpenPath")).toString().isEmpty();
    if (!enableUserNotifWhenDoneSwitchValue() || (paths.isEmpty() && !opens))
        return;
    QVariantMap info = userInfo;
    // An operation that can be taken back offers Undo beside the click.
    if (!info.value(QStringLiteral("undoID")).toString().isEmpty())
        info.insert(QStringLiteral("undoTitle"), Texts::localized("Undo"));
    const auto archived = Plist::serialize(QVariant(paths));
    if (!paths.isEmpty() && (!archived.ok() || archived.value().size() > kMaxUserInfoBytes))
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

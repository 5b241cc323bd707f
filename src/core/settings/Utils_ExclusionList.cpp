#include "core/plist/Plist.h"
#include "utils/Utils.h"

#include <QDir>
#include <QFile>

QString Utils::pathForExlAppsPlist()
{
    const QString path = QDappSupportPath() + QStringLiteral("/exclAppList.plist");
    if (!QFile::exists(path)) {
        // The first file holds an empty dictionary, which every reader takes for an empty list.
        QDir().mkpath(QDappSupportPath());
        QFile file(path);
        const auto empty = Plist::serialize(QVariantMap());
        if (!empty.ok() || !file.open(QIODevice::WriteOnly) || file.write(empty.value()) != empty.value().size())
            qWarning("exclusion list: %s could not be written", qPrintable(path));
    }
    return path;
}

QStringList Utils::exclBndlIDAppsArray()
{
    // Read without creating: the drag watcher asks on every drag.
    const auto root = Plist::readFile(QDappSupportPath() + QStringLiteral("/exclAppList.plist"));
    if (!root.ok() || root.value().typeId() != QMetaType::QVariantList)
        return {};
    return root.value().toStringList();
}

void Utils::updateExlAppsPlistWithBundleId(const QString &applicationId, bool remove)
{
    const QString path = pathForExlAppsPlist();
    QStringList apps = exclBndlIDAppsArray();
    if (!remove && !apps.contains(applicationId))
        apps.append(applicationId);
    if (remove && !apps.isEmpty())
        apps.removeAll(applicationId);
    // Written in every case, as an array from now on.
    if (const Status written = Plist::writeFileAtomically(path, QVariant(apps)); !written.ok())
        qWarning("exclusion list not saved: %s", qPrintable(written.error().message));
}

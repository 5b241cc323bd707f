#include "core/plist/Plist.h"
#include "utils/Utils.h"

#include <QDir>
#include <QFile>

namespace {

const QString kCur = QStringLiteral("curWP");
const QString kOld1 = QStringLiteral("oldWP1");
const QString kOld2 = QStringLiteral("oldWP2");

} // namespace

QString Utils::pathForWPFolder()
{
    const QString folder = QDappSupportPath() + QStringLiteral("/QD_WP");
    if (!QDir().mkpath(folder))
        qWarning("wallpaper: the folder %s could not be made", qPrintable(folder));
    return folder;
}

QString Utils::getWallpapersPlistPath()
{
    const QString path = pathForWPFolder() + QStringLiteral("/WPs.plist");
    if (!QFile::exists(path))
        saveChangesToWPPlist(QString(""), QString(""), QString(""));
    return path;
}

std::optional<QVariantMap> Utils::getWallpapersPlistDictionaryValues()
{
    const auto root = Plist::readFile(getWallpapersPlistPath());
    if (!root.ok() || root.value().typeId() != QMetaType::QVariantMap)
        return std::nullopt;
    return root.value().toMap();
}

Status Utils::saveChangesToWPPlist(const QString &curWP, const QString &oldWP1, const QString &oldWP2)
{
    const QString path = pathForWPFolder() + QStringLiteral("/WPs.plist");
    const Status written = Plist::writeFileAtomically(path, QVariantMap{{kCur, curWP}, {kOld1, oldWP1}, {kOld2, oldWP2}});
    if (!written.ok())
        qWarning("wallpaper list not saved: %s", qPrintable(written.error().message));
    return written;
}

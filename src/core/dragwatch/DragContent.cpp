#include "DragContent.h"

#include <QMimeDatabase>

namespace DragContent {

namespace {
bool anyImage(const QStringList &types)
{
    for (const QString &t : types)
        if (t.startsWith(QLatin1String("image/")))
            return true;
    return false;
}
} // namespace

Kind availableType(const QStringList &types, bool hasFiles)
{
    const bool uriList = types.contains(QLatin1String("text/uri-list"));
    if (uriList && hasFiles)
        return Kind::Files;
    if (uriList || types.contains(QLatin1String("text/x-moz-url")))
        return Kind::Url;
    for (const QString &t : types)
        if (t.startsWith(QLatin1String("text/plain")) || t == QLatin1String("UTF8_STRING") || t == QLatin1String("STRING") ||
            t == QLatin1String("TEXT"))
            return Kind::String;
    if (anyImage(types))
        return Kind::Image;
    if (types.contains(QLatin1String("XdndDirectSave0")))
        return Kind::Promise;
    return Kind::None;
}

bool urlLeadsToImage(const QStringList &types)
{
    // A browser hands over an image of a page as a file it writes where the drop says, or as its bytes.
    return anyImage(types) || types.contains(QLatin1String("XdndDirectSave0")) ||
           types.contains(QLatin1String("application/octet-stream"));
}

QString fileNameForDraggedData(const QString &suggested, const QByteArray &data)
{
    QString name = suggested.section(QLatin1Char('/'), -1);
    name.remove(QChar(0));
    while (name.startsWith(QLatin1Char('.')))
        name.remove(0, 1); // no hidden file, and never "." or ".."
    if (name.isEmpty())
        name = QStringLiteral("image");
    // Within what a file system takes, the extension kept.
    constexpr int kMaxNameBytes = 200;
    while (name.toUtf8().size() > kMaxNameBytes) {
        const int dot = name.lastIndexOf(QLatin1Char('.'));
        name.remove(dot > 0 && name.size() - dot < 16 ? dot - 1 : name.size() - 1, 1);
    }
    // The panel goes by the extension: "show.php" that holds a PNG becomes "show.php.png".
    static const QMimeDatabase db;
    const QMimeType type = db.mimeTypeForData(data);
    const QString extension = name.contains(QLatin1Char('.')) ? name.section(QLatin1Char('.'), -1) : QString();
    if (!type.isDefault() && !type.preferredSuffix().isEmpty() && !type.suffixes().contains(extension, Qt::CaseInsensitive))
        name += QLatin1Char('.') + type.preferredSuffix();
    return name;
}

const QStringList &imgEditingAppsToExcl()
{
    static const QStringList prefixes = {"com.adobe", "com.pixelmatorteam", "com.bohemiancoding", "org.gimp.GIMP",
                                         "gimp", "org.kde.krita", "krita", "org.inkscape.Inkscape", "inkscape"};
    return prefixes;
}

} // namespace DragContent

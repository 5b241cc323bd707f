#include "DragContent.h"

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
    return anyImage(types);
}

const QStringList &imgEditingAppsToExcl()
{
    static const QStringList prefixes = {"com.adobe", "com.pixelmatorteam", "com.bohemiancoding", "org.gimp.GIMP",
                                         "gimp", "org.kde.krita", "krita", "org.inkscape.Inkscape", "inkscape"};
    return prefixes;
}

} // namespace DragContent

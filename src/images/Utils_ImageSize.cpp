#include "utils/Utils.h"

#include <QImageReader>

std::optional<QVariantMap> Utils::getImageDimensionsAtPath(const QString &path)
{
    // The header is enough: nothing is decoded, so a huge or broken image costs nothing here.
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    const QSize size = reader.size();
    if (!size.isValid() || size.isEmpty())
        return std::nullopt;
    return QVariantMap{{QStringLiteral("kImgWidth"), float(size.width())},
                       {QStringLiteral("kImgHeight"), float(size.height())}};
}

QString Utils::getImageDimensionsAsStringImgPath(const QString &path)
{
    const auto dims = getImageDimensionsAtPath(path);
    if (!dims)
        return {};
    return QStringLiteral("%1x%2").arg(qint64(dims->value(QStringLiteral("kImgWidth")).toFloat()))
        .arg(qint64(dims->value(QStringLiteral("kImgHeight")).toFloat()));
}

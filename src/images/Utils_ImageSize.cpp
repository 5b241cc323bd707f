#include "images/vips/VipsSupport.h"

#include "utils/Utils.h"

QVariantMap Utils::getImageDimensionsAtPath(const QString &path)
{
    // The header is enough: nothing is decoded, so a huge or broken image costs nothing here.
    const QSizeF size = getImageDimensionsAtPathInSize(path);
    return QVariantMap{{QStringLiteral("kImgWidth"), float(size.width())},
                       {QStringLiteral("kImgHeight"), float(size.height())}};
}

QSizeF Utils::getImageDimensionsAtPathInSize(const QString &path)
{
    const auto size = VipsSupport::headerSize(path);
    return size.ok() ? QSizeF(size.value()) : QSizeF(0, 0);
}

QString Utils::getImageDimensionsAsStringImgPath(const QString &path)
{
    const QSizeF size = getImageDimensionsAtPathInSize(path);
    return QStringLiteral("%1x%2").arg(qint64(size.width())).arg(qint64(size.height()));
}

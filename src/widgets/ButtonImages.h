#pragma once

#include <QPixmap>
#include <QString>

class QPalette;

// The two images of a panel button, normal and hover, for an image stem such as "07.mail". The
// desktop's icon theme supplies the picture where it has one; else a bundled line drawing in the
// palette's text colour, so it reads on light and dark themes alike.
namespace ButtonImages {

struct Pair
{
    QPixmap normal;
    QPixmap hover;
};

Pair forStem(const QString &stem, int side, const QPalette &palette, qreal devicePixelRatio = 1.0);
// The freedesktop icon name that stands for a stem, or empty.
QString themeIconName(const QString &stem);
// Whether a bundled drawing exists for the stem.
bool hasBundledImage(const QString &stem);

} // namespace ButtonImages

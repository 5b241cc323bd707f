#include "ButtonImages.h"

#include <QFile>
#include <QHash>
#include <QIcon>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>

namespace {

QString bundledPath(const QString &stem)
{
    return QStringLiteral(":/buttons/%1.svg").arg(stem);
}

QPixmap drawBundled(const QString &stem, int side, const QColor &color, qreal dpr)
{
    // Panels set their images each time they open: each drawing is rendered once per colour and size.
    static QHash<QString, QPixmap> rendered;
    const QString key = QStringLiteral("%1|%2|%3|%4").arg(stem).arg(side).arg(color.name(QColor::HexArgb)).arg(dpr);
    if (const auto it = rendered.constFind(key); it != rendered.cend())
        return it.value();
    QFile file(bundledPath(stem));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QByteArray svg = file.readAll();
    svg.replace("#000000", color.name().toLatin1());
    QSvgRenderer renderer(svg);
    QPixmap pixmap(QSize(side, side) * dpr);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    renderer.render(&p);
    p.end();
    pixmap.setDevicePixelRatio(dpr);
    rendered.insert(key, pixmap);
    return pixmap;
}

bool desktopHasIconTheme()
{
    const QString theme = QIcon::themeName();
    return !theme.isEmpty() && theme != QLatin1String("hicolor");
}

} // namespace

namespace ButtonImages {

QString themeIconName(const QString &stem)
{
    static const QHash<QString, QString> names = {
        {"01.bg", "preferences-desktop-wallpaper"}, {"02.share", "emblem-shared"},
        {"03.zip", "package-x-generic"},            {"05.resize", "zoom-fit-best"},
        {"06.move", "go-jump"},                     {"07.mail", "mail-message-new"},
        {"08.finder", "system-file-manager"},       {"09.save", "document-save"},
        {"13.pdf", "x-office-document"},            {"14.print", "document-print"},
        {"15.in.folder", "folder-new"},             {"16.add", "document-new"},
        {"trash", "user-trash"},                    {"convertImg", "view-refresh"},
        {"searchInFinder", "edit-find"},            {"rename", "insert-text"},
        {"NSFolder", "folder"},                     {"folder3", "folder"},
        {"Drive2", "drive-removable-media"},        {"expand", "go-next"},
        {"Black_Remove", "list-remove"},            {"NSActionTemplate", "document-edit"},
        {"done", "dialog-ok"},                      {"recentDest", "document-open-recent"},
        {"addDest", "list-add"},
    };
    return names.value(stem);
}

bool hasBundledImage(const QString &stem)
{
    return QFile::exists(bundledPath(stem));
}

Pair forStem(const QString &stem, int side, const QPalette &palette, qreal dpr)
{
    Pair pair;
    const QString themeName = themeIconName(stem);
    if (desktopHasIconTheme() && !themeName.isEmpty() && QIcon::hasThemeIcon(themeName)) {
        const QIcon icon = QIcon::fromTheme(themeName);
        pair.normal = icon.pixmap(QSize(side, side), dpr, QIcon::Normal);
        pair.hover = icon.pixmap(QSize(side, side), dpr, QIcon::Active);
    } else {
        pair.normal = drawBundled(stem, side, palette.color(QPalette::ButtonText), dpr);
        pair.hover = drawBundled(stem, side, palette.color(QPalette::Highlight), dpr);
    }
    return pair;
}

} // namespace ButtonImages

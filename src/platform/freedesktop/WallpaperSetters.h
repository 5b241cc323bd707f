#pragma once

// The setters behind DesktopWallpaper, one per way a desktop keeps its picture. Each answers an error
// message (empty on success) and reads back what it wrote.

#include <QDBusConnection>
#include <QString>

namespace WallpaperSetters {

// gsettings: a schema's keys as the desktop defines them.
struct GSettingsKeys
{
    const char *schema;
    const char *pictureKey;     // "picture-uri" (a file URI) or "picture-filename" (a path)
    const char *darkPictureKey; // "picture-uri-dark", or null where the schema has none
    bool takesUri;
};
QString setWithGSettings(const GSettingsKeys &keys, const QString &imagePath);
QString readWithGSettings(const GSettingsKeys &keys);

QString setOnPlasma(const QDBusConnection &bus, const QString &imagePath);
QString readFromPlasma(const QDBusConnection &bus);

QString setWithXfconf(const QDBusConnection &bus, const QString &imagePath);
QString readFromXfconf(const QDBusConnection &bus);

bool portalAnswers(const QDBusConnection &bus);
QString setWithPortal(const QDBusConnection &bus, const QString &imagePath);

bool fehInstalled();
QString setWithFeh(const QString &imagePath);
QString readFromFeh(); // the picture ~/.fehbg sets, else empty

} // namespace WallpaperSetters

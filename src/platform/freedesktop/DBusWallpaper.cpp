// The setters that speak D-Bus: KDE Plasma's shell scripting, XFCE's xfconf and the desktop portal.

#include "WallpaperSetters.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusUnixFileDescriptor>
#include <QDBusVariant>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonValue>
#include <QRegularExpression>
#include <QUrl>

#include <fcntl.h>
#include <unistd.h>

namespace WallpaperSetters {

namespace {

constexpr int kCallTimeoutMs = 5000;

QDBusMessage call(const QDBusConnection &bus, const QString &service, const QString &path, const QString &interface,
                  const QString &method, const QVariantList &arguments, int timeoutMs = kCallTimeoutMs)
{
    QDBusMessage m = QDBusMessage::createMethodCall(service, path, interface, method);
    m.setArguments(arguments);
    return QDBusConnection(bus).call(m, QDBus::Block, timeoutMs);
}

QString errorOf(const QDBusMessage &reply)
{
    return reply.type() == QDBusMessage::ErrorMessage ? reply.errorMessage().isEmpty() ? reply.errorName() : reply.errorMessage()
                                                      : QString();
}

QString pathOf(const QString &stored)
{
    const QUrl url(stored);
    return url.isLocalFile() ? url.toLocalFile() : stored;
}

// ---- KDE Plasma ----

const QString kPlasmaService = QStringLiteral("org.kde.plasmashell");
const QString kPlasmaPath = QStringLiteral("/PlasmaShell");
const QString kPlasmaInterface = QStringLiteral("org.kde.PlasmaShell");

QString evaluatePlasmaScript(const QDBusConnection &bus, const QString &script, QString *output)
{
    const QDBusMessage reply = call(bus, kPlasmaService, kPlasmaPath, kPlasmaInterface, QStringLiteral("evaluateScript"), {script});
    if (const QString e = errorOf(reply); !e.isEmpty())
        return QStringLiteral("the Plasma shell did not answer (%1)").arg(e);
    if (output)
        *output = reply.arguments().value(0).toString().trimmed();
    return {};
}

// ---- XFCE ----

const QString kXfconfService = QStringLiteral("org.xfce.Xfconf");
const QString kXfconfPath = QStringLiteral("/org/xfce/Xfconf");
const QString kChannel = QStringLiteral("xfce4-desktop");
// When xfdesktop has not written any yet: the first monitor's first workspace.
const QString kFirstBackdrop = QStringLiteral("/backdrop/screen0/monitor0/workspace0/last-image");

QStringList xfceImageProperties(const QDBusConnection &bus, QString *error)
{
    const QDBusMessage reply = call(bus, kXfconfService, kXfconfPath, kXfconfService, QStringLiteral("GetAllProperties"),
                                    {kChannel, QStringLiteral("/backdrop")});
    QStringList found;
    if (reply.type() == QDBusMessage::ErrorMessage) {
        // An empty channel is an error to xfconf, not an empty answer.
        if (!reply.errorName().endsWith(QLatin1String("InvalidChannel")) && !reply.errorName().endsWith(QLatin1String("InvalidProperty")))
            *error = QStringLiteral("xfconf did not answer (%1)").arg(errorOf(reply));
        return found;
    }
    const QVariantMap all = qdbus_cast<QVariantMap>(reply.arguments().value(0));
    static const QRegularExpression image(QStringLiteral("^/backdrop/screen\\d+/monitor[^/]+/workspace\\d+/last-image$"));
    for (auto it = all.cbegin(); it != all.cend(); ++it)
        if (image.match(it.key()).hasMatch())
            found << it.key();
    return found;
}

QString xfconfSet(const QDBusConnection &bus, const QString &property, const QVariant &value)
{
    return errorOf(call(bus, kXfconfService, kXfconfPath, kXfconfService, QStringLiteral("SetProperty"),
                        {kChannel, property, QVariant::fromValue(QDBusVariant(value))}));
}

QString xfconfGet(const QDBusConnection &bus, const QString &property)
{
    const QDBusMessage reply = call(bus, kXfconfService, kXfconfPath, kXfconfService, QStringLiteral("GetProperty"), {kChannel, property});
    return reply.type() == QDBusMessage::ErrorMessage ? QString()
                                                      : qdbus_cast<QDBusVariant>(reply.arguments().value(0)).variant().toString();
}

// ---- the desktop portal ----

const QString kPortalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString kPortalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString kWallpaperInterface = QStringLiteral("org.freedesktop.portal.Wallpaper");

} // namespace

QString setOnPlasma(const QDBusConnection &bus, const QString &imagePath)
{
    const QString uri = QUrl::fromLocalFile(imagePath).toString(QUrl::FullyEncoded);
    const QString literal = QString::fromUtf8(QJsonDocument::fromVariant(QVariantList{uri}).toJson(QJsonDocument::Compact));
    // Every desktop (one per screen and activity) gets the picture plugin and the picture.
    const QString script = QStringLiteral(
        "var uri = %1[0];\n"
        "var all = desktops();\n"
        "for (var i = 0; i < all.length; ++i) {\n"
        "    var d = all[i];\n"
        "    d.wallpaperPlugin = \"org.kde.image\";\n"
        "    d.currentConfigGroup = [\"Wallpaper\", \"org.kde.image\", \"General\"];\n"
        "    d.writeConfig(\"Image\", uri);\n"
        "}\n").arg(literal);
    if (const QString e = evaluatePlasmaScript(bus, script, nullptr); !e.isEmpty())
        return e;
    const QString back = readFromPlasma(bus);
    if (back != imagePath)
        return QStringLiteral("the Plasma shell kept \"%1\"").arg(back);
    return {};
}

QString readFromPlasma(const QDBusConnection &bus)
{
    QString out;
    evaluatePlasmaScript(bus,
                         QStringLiteral("var d = desktops()[0];\n"
                                        "d.currentConfigGroup = [\"Wallpaper\", \"org.kde.image\", \"General\"];\n"
                                        "print(d.readConfig(\"Image\"));\n"),
                         &out);
    return pathOf(out);
}

QString setWithXfconf(const QDBusConnection &bus, const QString &imagePath)
{
    QString error;
    QStringList properties = xfceImageProperties(bus, &error);
    if (!error.isEmpty())
        return error;
    if (properties.isEmpty())
        properties << kFirstBackdrop;
    for (const QString &property : properties) {
        // xfdesktop reloads only on a change: the same path again would show nothing new.
        xfconfSet(bus, property, QString());
        if (const QString e = xfconfSet(bus, property, imagePath); !e.isEmpty())
            return QStringLiteral("xfconf refused %1 (%2)").arg(property, e);
        if (xfconfGet(bus, property) != imagePath)
            return QStringLiteral("xfconf did not keep %1").arg(property);
    }
    return {};
}

QString readFromXfconf(const QDBusConnection &bus)
{
    QString error;
    const QStringList properties = xfceImageProperties(bus, &error);
    return xfconfGet(bus, properties.isEmpty() ? kFirstBackdrop : properties.first());
}

bool portalAnswers(const QDBusConnection &bus)
{
    // The portal service may run without a backend that sets wallpapers: ask for the interface's version.
    const QDBusMessage reply = call(bus, kPortalService, kPortalPath, QStringLiteral("org.freedesktop.DBus.Properties"),
                                    QStringLiteral("Get"), {kWallpaperInterface, QStringLiteral("version")}, 2000);
    return reply.type() == QDBusMessage::ReplyMessage;
}

QString setWithPortal(const QDBusConnection &bus, const QString &imagePath)
{
    const int fd = ::open(QFile::encodeName(imagePath).constData(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return QStringLiteral("cannot read %1").arg(imagePath);
    const QDBusUnixFileDescriptor descriptor(fd); // holds its own duplicate
    ::close(fd);
    const QVariantMap options{{QStringLiteral("show-preview"), false}, {QStringLiteral("set-on"), QStringLiteral("both")}};
    // The portal answers with a request handle at once; the desktop applies the picture after that.
    const QDBusMessage reply = call(bus, kPortalService, kPortalPath, kWallpaperInterface, QStringLiteral("SetWallpaperFile"),
                                    {QString(), QVariant::fromValue(descriptor), options});
    if (const QString e = errorOf(reply); !e.isEmpty())
        return QStringLiteral("the desktop portal refused (%1)").arg(e);
    return {};
}

} // namespace WallpaperSetters

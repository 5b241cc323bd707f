#include "FreedesktopShare.h"

#include "DesktopExec.h"
#include "MimeApps.h"
#include "platform/posix/Spawn.h"

#include <QDBusMessage>
#include <QDateTime>
#include <QUrl>

namespace {

const QString kKdeConnect = QStringLiteral("kdeconnect:");
const QString kOpenWith = QStringLiteral("open-with:");
const QString kBluetooth = QStringLiteral("bluetooth");

Error shareError(const QString &message)
{
    return Error{QStringLiteral("Share"), 1, message};
}

// A tool that ran to its end: its exit status and its complaint become the error.
Status ranWell(const Result<Spawn::Finished> &ran, const QByteArray &tool)
{
    if (!ran.ok())
        return ran.error();
    if (ran.value().exitCode != 0)
        return shareError(QStringLiteral("%1 failed: %2")
                              .arg(QString::fromUtf8(tool), QString::fromLocal8Bit(ran.value().err).trimmed()));
    return success();
}

bool has(const char *program) { return !Spawn::findProgram(program).isEmpty(); }

} // namespace

QList<ShareTarget> FreedesktopShare::kdeConnectDevices() const
{
    QList<ShareTarget> devices;
    if (!has("kdeconnect-cli"))
        return devices;
    // "ID NAME" per reachable, paired device.
    const auto ran = Spawn::run({"kdeconnect-cli", "--list-available", "--id-name-only"}, {}, 5000);
    if (!ran.ok() || ran.value().exitCode != 0)
        return devices;
    for (const QByteArray &line : ran.value().out.split('\n')) {
        const QString text = QString::fromUtf8(line).trimmed();
        const qsizetype blank = text.indexOf(QLatin1Char(' '));
        if (blank <= 0)
            continue;
        devices.append({kKdeConnect + text.left(blank), text.mid(blank + 1), QStringLiteral("kdeconnect")});
    }
    return devices;
}

QList<ShareTarget> FreedesktopShare::fileTargets(const QStringList &mimeTypes) const
{
    QList<ShareTarget> targets = kdeConnectDevices();
    if (has("bluetooth-sendto") || has("bluedevil-sendfile"))
        targets.append({kBluetooth, QStringLiteral("Bluetooth"), QStringLiteral("bluetooth")});
    // Applications that open every one of the types, in the first type's order (its default first).
    const MimeApps apps = MimeApps::load(DesktopEntries::load());
    QStringList common;
    for (qsizetype i = 0; i < mimeTypes.size(); ++i) {
        const QStringList those = apps.applicationsFor(mimeTypes.at(i));
        if (i == 0) {
            common = those;
            continue;
        }
        common.removeIf([&those](const QString &id) { return !those.contains(id); });
    }
    for (const QString &id : std::as_const(common))
        if (const DesktopApplication *app = apps.entries().byId(id))
            targets.append({kOpenWith + id, app->name, app->iconName});
    return targets;
}

QList<ShareTarget> FreedesktopShare::textTargets() const { return kdeConnectDevices(); }

Status FreedesktopShare::shareFiles(const QString &targetId, const QStringList &fileUris)
{
    if (fileUris.isEmpty())
        return shareError(QStringLiteral("nothing to share"));
    if (targetId.startsWith(kKdeConnect)) {
        // One file a run: that is what every version of kdeconnect-cli takes.
        const QByteArray device = targetId.mid(kKdeConnect.size()).toUtf8();
        for (const QString &uri : fileUris) {
            const Status s = ranWell(Spawn::run({"kdeconnect-cli", "--device", device, "--share", uri.toLatin1()}), "kdeconnect-cli");
            if (!s.ok())
                return s;
        }
        return success();
    }
    if (targetId == kBluetooth) {
        // Both tools show their own device chooser and stay up while they send.
        if (has("bluetooth-sendto")) {
            Spawn::Argv argv{"bluetooth-sendto"};
            for (const QString &uri : fileUris)
                argv.append(uri.toLatin1());
            return Spawn::detached(argv);
        }
        Spawn::Argv argv{"bluedevil-sendfile"};
        for (const QString &uri : fileUris)
            argv << QByteArray("--files") << uri.toLatin1();
        return Spawn::detached(argv);
    }
    if (targetId.startsWith(kOpenWith)) {
        const MimeApps apps = MimeApps::load(DesktopEntries::load());
        const DesktopApplication *app = apps.entries().byId(targetId.mid(kOpenWith.size()));
        if (!app)
            return shareError(QStringLiteral("%1 is not installed any more").arg(targetId.mid(kOpenWith.size())));
        const QList<Spawn::Argv> commands = DesktopExec::commandsFor(*app, fileUris);
        if (commands.isEmpty())
            return shareError(QStringLiteral("the desktop file of %1 cannot be read").arg(app->name));
        for (const Spawn::Argv &argv : commands)
            if (const Status s = Spawn::detached(argv); !s.ok())
                return s;
        return success();
    }
    return shareError(QStringLiteral("there is no share target %1").arg(targetId));
}

Status FreedesktopShare::shareText(const QString &targetId, const QString &text)
{
    if (!targetId.startsWith(kKdeConnect))
        return shareError(QStringLiteral("there is no share target %1 for text").arg(targetId));
    return ranWell(Spawn::run({"kdeconnect-cli", "--device", targetId.mid(kKdeConnect.size()).toUtf8(), "--share-text",
                               text.toUtf8()}),
                   "kdeconnect-cli");
}

QString FreedesktopShare::fileManagerId() const
{
    return MimeApps::load(DesktopEntries::load()).defaultFor(QStringLiteral("inode/directory"));
}

bool FreedesktopShare::canSearchFiles() const
{
    const QString fm = fileManagerId().toLower();
    return (fm.contains(QLatin1String("dolphin")) && has("dolphin")) ||
           (fm.contains(QLatin1String("nautilus")) && has("nautilus")) || has("catfish");
}

Status FreedesktopShare::searchFiles(const QString &text, const QString &folderUri)
{
    const QString fm = fileManagerId().toLower();
    if (fm.contains(QLatin1String("dolphin")) && has("dolphin")) {
        // KIO's file name search, started in the folder.
        const QString url = QStringLiteral("filenamesearch:?search=%1&url=%2")
                                .arg(QString::fromLatin1(QUrl::toPercentEncoding(text)),
                                     QString::fromLatin1(QUrl::toPercentEncoding(folderUri)));
        return Spawn::detached({"dolphin", "--new-window", url.toLatin1()});
    }
    if (fm.contains(QLatin1String("nautilus")) && has("nautilus")) {
        // Nautilus searches through the shell's search provider interface, which starts it on the bus.
        QDBusMessage call = QDBusMessage::createMethodCall(QStringLiteral("org.gnome.Nautilus"),
                                                           QStringLiteral("/org/gnome/Nautilus/SearchProvider"),
                                                           QStringLiteral("org.gnome.Shell.SearchProvider2"),
                                                           QStringLiteral("LaunchSearch"));
        call << QStringList{text} << quint32(QDateTime::currentSecsSinceEpoch());
        const QDBusMessage reply = (m_bus ? *m_bus : QDBusConnection::sessionBus()).call(call, QDBus::Block, 10000);
        if (reply.type() == QDBusMessage::ErrorMessage)
            return shareError(QStringLiteral("Nautilus did not search: %1").arg(reply.errorMessage()));
        return success();
    }
    if (has("catfish")) {
        const QByteArray folder = DesktopExec::localPathOf(folderUri);
        return Spawn::detached({"catfish", "--start", "--", folder, text.toUtf8()});
    }
    return shareError(QStringLiteral("no file manager here can search"));
}

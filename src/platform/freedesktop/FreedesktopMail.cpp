#include "FreedesktopMail.h"

#include "DesktopExec.h"
#include "MailClients.h"
#include "MimeApps.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusUnixFileDescriptor>
#include <QTimer>

#include <fcntl.h>
#include <unistd.h>

namespace {

const QString kPortalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString kMailtoType = QStringLiteral("x-scheme-handler/mailto");

Error mailError(int code, const QString &message)
{
    return Error{QStringLiteral("Mail"), code, message};
}

} // namespace

FreedesktopMail::FreedesktopMail(QObject *parent) : QObject(parent) {}

FreedesktopMail::FreedesktopMail(QDBusConnection bus, QObject *parent) : QObject(parent), m_bus(std::move(bus)) {}

QDBusConnection FreedesktopMail::bus() const
{
    if (!m_bus)
        m_bus = QDBusConnection::sessionBus();
    return *m_bus;
}

std::optional<DesktopApplication> FreedesktopMail::defaultApplication() const
{
    // Read at each use: the user may pick another mail program while Quaydrop runs.
    const MimeApps apps = MimeApps::load(DesktopEntries::load());
    const QString id = apps.defaultFor(kMailtoType);
    if (const DesktopApplication *app = apps.entries().byId(id))
        return *app;
    return std::nullopt;
}

bool FreedesktopMail::portalAnswers() const
{
    const QDBusConnection b = bus();
    if (!b.isConnected() || !b.interface())
        return false;
    return b.interface()->isServiceRegistered(kPortalService).value() ||
           b.interface()->activatableServiceNames().value().contains(kPortalService);
}

MailClient FreedesktopMail::defaultClient() const
{
    MailClient client;
    if (const auto app = defaultApplication()) {
        client.desktopFile = app->id + QLatin1String(".desktop");
        client.name = app->name;
        client.iconName = app->iconName;
        client.takesAttachments = MailClients::formOf(*app) != MailClients::Form::None;
    }
    if (!client.takesAttachments)
        client.takesAttachments = portalAnswers();
    return client;
}

void FreedesktopMail::composeWithAttachments(const QStringList &fileUris, std::function<void(Status)> done)
{
    // Answered on the next turn of the event loop, as the portal's answer is.
    auto finish = [this, done](Status s) { QTimer::singleShot(0, this, [done, s] { done(s); }); };
    const auto app = defaultApplication();
    if (app) {
        if (const auto command = MailClients::composeCommand(*app, fileUris)) {
            if (!Spawn::fitsExecLimits(*command)) {
                finish(mailError(TooLong, QStringLiteral("the names of %1 files are more than %2 can be given at once")
                                              .arg(fileUris.size())
                                              .arg(app->name)));
                return;
            }
            const Status started = Spawn::detached(*command);
            finish(started.ok() ? started : Status(mailError(NotStarted, started.error().message)));
            return;
        }
    }
    if (portalAnswers()) {
        composeThroughPortal(fileUris, done);
        return;
    }
    if (!app)
        finish(mailError(NoMailProgram, QStringLiteral("no mail program is set up for mailto: links")));
    else
        finish(mailError(NoAttachments, QStringLiteral("%1 takes no attachments from other programs").arg(app->name)));
}

void FreedesktopMail::composeThroughPortal(const QStringList &fileUris, std::function<void(Status)> done)
{
    QList<QDBusUnixFileDescriptor> fds;
    for (const QString &uri : fileUris) {
        const QByteArray path = DesktopExec::localPathOf(uri);
        // O_PATH: the portal learns which file it is without this program opening it for reading.
        const int fd = path.isEmpty() ? -1 : ::open(path.constData(), O_PATH | O_CLOEXEC);
        if (fd < 0) {
            QTimer::singleShot(0, this, [done, uri] {
                done(mailError(NotStarted, QStringLiteral("cannot open %1 for the mail portal").arg(uri)));
            });
            return;
        }
        fds.append(QDBusUnixFileDescriptor(fd)); // takes a duplicate
        ::close(fd);
    }
    QDBusMessage call = QDBusMessage::createMethodCall(kPortalService, QStringLiteral("/org/freedesktop/portal/desktop"),
                                                       QStringLiteral("org.freedesktop.portal.Email"),
                                                       QStringLiteral("ComposeEmail"));
    qDBusRegisterMetaType<QList<QDBusUnixFileDescriptor>>();
    QVariantMap options;
    options.insert(QStringLiteral("attachment_fds"), QVariant::fromValue(fds));
    call << QString() << options;
    auto *watcher = new QDBusPendingCallWatcher(bus().asyncCall(call, 10000), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [done](QDBusPendingCallWatcher *w) {
        w->deleteLater();
        const QDBusPendingReply<QDBusObjectPath> reply = *w;
        if (reply.isError()) {
            done(mailError(NoAttachments,
                           QStringLiteral("the desktop's mail portal did not take the message: %1").arg(reply.error().message())));
            return;
        }
        done(success());
    });
}

Status FreedesktopMail::openMailto(const QString &mailtoUrl)
{
    const auto app = defaultApplication();
    if (!app)
        return mailError(NoMailProgram, QStringLiteral("no mail program is set up for mailto: links"));
    const QList<Spawn::Argv> commands = DesktopExec::commandsFor(*app, {mailtoUrl});
    if (commands.isEmpty())
        return mailError(NotStarted, QStringLiteral("the desktop file of %1 cannot be read").arg(app->name));
    return Spawn::detached(commands.first());
}

Status FreedesktopMail::launchDefaultClient()
{
    const auto app = defaultApplication();
    if (!app)
        return mailError(NoMailProgram, QStringLiteral("no mail program is set up for mailto: links"));
    const QList<Spawn::Argv> commands = DesktopExec::commandsFor(*app, {});
    if (commands.isEmpty())
        return mailError(NotStarted, QStringLiteral("the desktop file of %1 cannot be read").arg(app->name));
    return Spawn::detached(commands.first());
}

// Its meta-object code of its own (see SingleInstance.cpp).
#include "moc_FreedesktopMail.cpp"

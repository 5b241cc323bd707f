#include "KGlobalAccelBinder.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusReply>
#include <QKeySequence>

namespace {

const QString kService = QStringLiteral("org.kde.kglobalaccel");
const QString kPath = QStringLiteral("/kglobalaccel");
const QString kInterface = QStringLiteral("org.kde.KGlobalAccel");
const QString kComponentInterface = QStringLiteral("org.kde.kglobalaccel.Component");
// kglobalaccel's flags: set the key now, and do not load a key remembered from an earlier run instead.
constexpr uint kSetPresent = 2;
constexpr uint kNoAutoloading = 4;

QDBusMessage call(const QString &method, const QVariantList &arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(kService, kPath, kInterface, method);
    message.setArguments(arguments);
    return QDBusConnection::sessionBus().call(message, QDBus::Block, 3000);
}

Error kdeError(const QDBusMessage &reply)
{
    return Error{QStringLiteral("KGlobalAccel"), 1, QStringLiteral("kglobalaccel: %1").arg(reply.errorMessage())};
}

} // namespace

bool KGlobalAccelBinder::available()
{
    const QDBusConnection bus = QDBusConnection::sessionBus();
    return bus.isConnected() && bus.interface()->isServiceRegistered(kService).value();
}

KGlobalAccelBinder::KGlobalAccelBinder(QObject *parent)
    // component, action, and the names Plasma's settings show for them
    : HotKeyBinder(parent),
      m_actionId{QStringLiteral("quaydrop"), QStringLiteral("toggle"), QStringLiteral("Quaydrop"),
                 QStringLiteral("Open or close the drop window")}
{
    qDBusRegisterMetaType<QList<int>>();
}

Status KGlobalAccelBinder::bind(const QString &portableKeys)
{
    const QKeySequence sequence = QKeySequence::fromString(portableKeys, QKeySequence::PortableText);
    if (sequence.count() != 1)
        return Error{QStringLiteral("KGlobalAccel"), 2, QStringLiteral("%1 is not one key").arg(portableKeys)};
    if (QDBusMessage reply = call(QStringLiteral("doRegister"), {m_actionId}); reply.type() == QDBusMessage::ErrorMessage)
        return kdeError(reply);
    const QList<int> keys{sequence[0].toCombined()};
    const QDBusMessage set = call(QStringLiteral("setShortcut"),
                                  {m_actionId, QVariant::fromValue(keys), kSetPresent | kNoAutoloading});
    if (set.type() == QDBusMessage::ErrorMessage)
        return kdeError(set);
    // kglobalaccel answers with the keys it gave; another action holding ours leaves the list empty.
    const QList<int> given = qdbus_cast<QList<int>>(set.arguments().value(0));
    if (!given.contains(keys.first()))
        return Error{QStringLiteral("KGlobalAccel"), 3, QStringLiteral("%1 is held by another global shortcut").arg(portableKeys)};
    if (!m_listening) {
        const QDBusReply<QDBusObjectPath> component = call(QStringLiteral("getComponent"), {m_actionId.first()});
        if (!component.isValid())
            return Error{QStringLiteral("KGlobalAccel"), 1, component.error().message()};
        m_listening = QDBusConnection::sessionBus().connect(kService, component.value().path(), kComponentInterface,
                                                            QStringLiteral("globalShortcutPressed"), this,
                                                            SLOT(shortcutPressed(QString, QString, qlonglong)));
    }
    return success();
}

void KGlobalAccelBinder::unbind()
{
    // Plasma forgets the action, so no stale entry stays in its settings.
    call(QStringLiteral("unRegister"), {m_actionId});
}

void KGlobalAccelBinder::shortcutPressed(const QString &component, const QString &action, qlonglong)
{
    if (component == m_actionId.at(0) && action == m_actionId.at(1))
        Q_EMIT activated();
}

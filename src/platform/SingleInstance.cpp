#include "SingleInstance.h"

#include "core/fs/NativePath.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QLockFile>
#include <QThread>
#include <QLocalServer>
#include <QLocalSocket>
#include <QStandardPaths>

#include <cctype>

namespace {
constexpr int kConnectTimeoutMs = 1500;
const QByteArray kActivate = "activate";
const QByteArray kToggle = "toggle";
const QByteArray kPanel = "panel";
} // namespace

QString SingleInstance::sessionKey(const QByteArray &x11Display, const QByteArray &waylandDisplay)
{
    QByteArray key;
    if (!x11Display.isEmpty()) {
        // [host]:display[.screen]: the screen is the same session; "unix" is the local host.
        const qsizetype colon = x11Display.lastIndexOf(':');
        QByteArray host = colon < 0 ? QByteArray() : x11Display.left(colon);
        QByteArray number = colon < 0 ? x11Display : x11Display.mid(colon + 1);
        if (const qsizetype dot = number.indexOf('.'); dot >= 0)
            number.truncate(dot);
        if (host == "unix")
            host.clear();
        key = "x11-" + (host.isEmpty() ? number : host + '-' + number);
    } else if (!waylandDisplay.isEmpty()) {
        // A name in the runtime folder ("wayland-0") or an absolute socket path.
        key = waylandDisplay.mid(waylandDisplay.lastIndexOf('/') + 1);
        if (!key.startsWith("wayland"))
            key.prepend("wayland-");
    } else {
        key = "nodisplay";
    }
    for (char &c : key)
        if (!(std::isalnum(static_cast<unsigned char>(c)) || c == '-' || c == '_' || c == '.'))
            c = '_';
    return QString::fromLatin1(key);
}

QString SingleInstance::defaultSocketPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) + QStringLiteral("/" QD_BUNDLE_ID ".") +
           sessionKey(qgetenv("DISPLAY"), qgetenv("WAYLAND_DISPLAY")) + QStringLiteral(".instance");
}

SingleInstance::SingleInstance(QString socketPath, QObject *parent)
    : QObject(parent), m_socketPath(std::move(socketPath))
{
}

SingleInstance::Role SingleInstance::claim()
{
    // The lock decides who is first; a lock left by a process that died is taken over.
    m_lock = std::make_unique<QLockFile>(m_socketPath + QStringLiteral(".lock"));
    m_lock->setStaleLockTime(0);
    if (!m_lock->tryLock(0)) {
        // The owner may still be setting up its socket: give it a moment.
        QDeadlineTimer deadline(kConnectTimeoutMs * 2);
        while (!deadline.hasExpired()) {
            if (send(m_socketPath, {}))
                return Role::Secondary;
            QThread::msleep(50);
        }
        m_error = QStringLiteral("another Quaydrop holds %1 but does not answer").arg(m_socketPath);
        return Role::Failed;
    }
    QLocalServer::removeServer(m_socketPath);
    m_server = new QLocalServer(this);
    m_server->setSocketOptions(QLocalServer::UserAccessOption);
    if (!m_server->listen(m_socketPath)) {
        m_error = m_server->errorString();
        return Role::Failed;
    }
    acceptConnections();
    return Role::Primary;
}

SingleInstance::~SingleInstance() = default;

QByteArray SingleInstance::encode(const Request &request)
{
    switch (request.kind) {
    case Request::Kind::Activate:
        return kActivate + '\n';
    case Request::Kind::Toggle:
        return kToggle + '\n';
    case Request::Kind::Panel:
        break;
    }
    QByteArray line = kPanel;
    for (const QString &path : request.paths)
        line += ' ' + NativePath::toNative(path).toPercentEncoding("/");
    return line + '\n';
}

std::optional<SingleInstance::Request> SingleInstance::decode(QByteArray line)
{
    if (line.endsWith('\n'))
        line.chop(1);
    if (line == kActivate)
        return Request{};
    if (line == kToggle)
        return Request{Request::Kind::Toggle};
    QList<QByteArray> words = line.split(' ');
    if (words.size() < 2 || words.takeFirst() != kPanel)
        return std::nullopt;
    Request request{Request::Kind::Panel};
    for (const QByteArray &word : words) {
        if (word.isEmpty())
            return std::nullopt;
        request.paths << NativePath::fromNative(QByteArray::fromPercentEncoding(word));
    }
    return request;
}

bool SingleInstance::send(const QString &socketPath, const Request &request)
{
    QLocalSocket socket;
    socket.connectToServer(socketPath);
    if (!socket.waitForConnected(kConnectTimeoutMs))
        return false;
    socket.write(encode(request));
    if (!socket.waitForBytesWritten(kConnectTimeoutMs))
        return false;
    socket.disconnectFromServer();
    if (socket.state() != QLocalSocket::UnconnectedState)
        socket.waitForDisconnected(kConnectTimeoutMs);
    return true;
}

void SingleInstance::acceptConnections()
{
    connect(m_server, &QLocalServer::newConnection, this, [this] {
        while (QLocalSocket *client = m_server->nextPendingConnection()) {
            connect(client, &QLocalSocket::disconnected, client, &QObject::deleteLater);
            connect(client, &QLocalSocket::readyRead, this, [this, client] {
                while (client->canReadLine()) {
                    const std::optional<Request> request = decode(client->readLine());
                    if (!request) {
                        qWarning("instance socket: a request that is not understood was ignored");
                        continue;
                    }
                    switch (request->kind) {
                    case Request::Kind::Activate: Q_EMIT activationRequested(); break;
                    case Request::Kind::Toggle: Q_EMIT toggleRequested(); break;
                    case Request::Kind::Panel: Q_EMIT panelRequested(request->paths); break;
                    }
                }
            });
        }
    });
}

// Its own meta-object code here rather than in the library-wide one, so that a program that never
// uses it (the command line) does not link it and what it links.
#include "moc_SingleInstance.cpp"

#include "SingleInstance.h"

#include <QDir>
#include <QLocalServer>
#include <QLocalSocket>
#include <QStandardPaths>

namespace {
constexpr int kConnectTimeoutMs = 1500;
const QByteArray kActivate = "activate\n";
} // namespace

QString SingleInstance::defaultSocketPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) +
           QStringLiteral("/" QD_BUNDLE_ID ".instance");
}

SingleInstance::SingleInstance(QString socketPath, QObject *parent)
    : QObject(parent), m_socketPath(std::move(socketPath))
{
}

SingleInstance::Role SingleInstance::claim()
{
    m_server = new QLocalServer(this);
    m_server->setSocketOptions(QLocalServer::UserAccessOption);
    if (m_server->listen(m_socketPath)) {
        acceptConnections();
        return Role::Primary;
    }
    if (notifyRunningInstance())
        return Role::Secondary;
    // Nobody answers: the socket was left behind by a process that died.
    QLocalServer::removeServer(m_socketPath);
    if (m_server->listen(m_socketPath)) {
        acceptConnections();
        return Role::Primary;
    }
    m_error = m_server->errorString();
    return Role::Failed;
}

bool SingleInstance::notifyRunningInstance()
{
    QLocalSocket socket;
    socket.connectToServer(m_socketPath);
    if (!socket.waitForConnected(kConnectTimeoutMs))
        return false;
    socket.write(kActivate);
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
                    if (client->readLine() == kActivate)
                        Q_EMIT activationRequested();
                }
            });
        }
    });
}

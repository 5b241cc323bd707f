#include "SingleInstance.h"

#include <QDeadlineTimer>
#include <QLockFile>
#include <QThread>
#include <QLocalServer>
#include <QLocalSocket>

namespace {
constexpr int kConnectTimeoutMs = 1500;
} // namespace

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

#include "SingleInstance.h"

#include "core/fs/NativePath.h"

#include <QDeadlineTimer>
#include <QLockFile>
#include <QSocketNotifier>
#include <QThread>

#include <cerrno>
#include <cstring>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

// The socket is plain POSIX with a notifier on the event loop: the resident program links no network
// library for one listening socket.

namespace {
constexpr int kConnectTimeoutMs = 1500;
constexpr qsizetype kMaxLine = 1 << 20; // a panel for many files is long; a stream without an end is not
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
    const QByteArray path = NativePath::toNative(m_socketPath);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (size_t(path.size()) >= sizeof address.sun_path) {
        m_error = QStringLiteral("the socket path %1 is too long").arg(m_socketPath);
        return Role::Failed;
    }
    std::memcpy(address.sun_path, path.constData(), size_t(path.size()));
    // We hold the lock: a socket file there was left by a run that ended.
    ::unlink(path.constData());
    m_listener = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    // Only this user may ask: the file is made without access for anyone else.
    const mode_t before = ::umask(0077);
    const bool listening = m_listener >= 0 && ::bind(m_listener, reinterpret_cast<const sockaddr *>(&address), sizeof address) == 0 &&
                           ::listen(m_listener, 16) == 0;
    const int why = errno;
    ::umask(before);
    if (!listening) {
        m_error = QStringLiteral("cannot listen on %1: %2").arg(m_socketPath, QString::fromLocal8Bit(std::strerror(why)));
        return Role::Failed;
    }
    auto *acceptor = new QSocketNotifier(m_listener, QSocketNotifier::Read, this);
    connect(acceptor, &QSocketNotifier::activated, this, &SingleInstance::acceptConnections);
    return Role::Primary;
}

SingleInstance::~SingleInstance()
{
    if (m_listener < 0)
        return;
    ::close(m_listener);
    ::unlink(NativePath::toNative(m_socketPath).constData());
}

void SingleInstance::acceptConnections()
{
    for (;;) {
        const int client = ::accept4(m_listener, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
        if (client < 0)
            return; // none waiting (EAGAIN), or a connection that went before it was taken
        auto *reader = new QSocketNotifier(client, QSocketNotifier::Read, this);
        connect(reader, &QSocketNotifier::activated, this, [this, reader, client, buffer = QByteArray()]() mutable {
            char chunk[4096];
            ssize_t n;
            while ((n = ::read(client, chunk, sizeof chunk)) > 0)
                buffer.append(chunk, n);
            for (qsizetype end; (end = buffer.indexOf('\n')) >= 0;) {
                const std::optional<Request> request = decode(buffer.left(end + 1));
                buffer.remove(0, end + 1);
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
            const bool ended = n == 0 || (n < 0 && errno != EAGAIN && errno != EINTR);
            if (ended || buffer.size() > kMaxLine) {
                reader->setEnabled(false);
                reader->deleteLater();
                ::close(client);
            }
        });
    }
}

// Its own meta-object code here rather than in the library-wide one, so that a program that never
// uses it (the command line) does not link it and what it links.
#include "moc_SingleInstance.cpp"

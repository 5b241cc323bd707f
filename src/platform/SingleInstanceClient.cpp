#include "SingleInstance.h"

// The side of the instance socket that commands use: plain POSIX, so that the light command line
// (`quaydrop toggle` on a hot key) links no network library. The listening side is SingleInstance.cpp.

#include "core/fs/NativePath.h"

#include <QStandardPaths>

#include <cctype>
#include <cerrno>
#include <cstring>

#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

namespace {
constexpr int kTimeoutMs = 1500;
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
    const QByteArray path = NativePath::toNative(socketPath);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.isEmpty() || size_t(path.size()) >= sizeof address.sun_path)
        return false;
    std::memcpy(address.sun_path, path.constData(), size_t(path.size()));
    const int fd = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (fd < 0)
        return false;
    // A program that hangs must not hang the command: the writes give up after the timeout.
    const timeval timeout{kTimeoutMs / 1000, (kTimeoutMs % 1000) * 1000};
    ::setsockopt(fd, SOL_SOCKET, SO_SNDTIMEO, &timeout, sizeof timeout);
    int connected;
    do
        connected = ::connect(fd, reinterpret_cast<const sockaddr *>(&address), sizeof address);
    while (connected != 0 && errno == EINTR);
    bool sent = connected == 0;
    const QByteArray line = encode(request);
    for (qsizetype done = 0; sent && done < line.size();) {
        const ssize_t n = ::send(fd, line.constData() + done, size_t(line.size() - done), MSG_NOSIGNAL);
        if (n < 0 && errno == EINTR)
            continue;
        sent = n > 0;
        done += n > 0 ? n : 0;
    }
    // The program reads what was written before it sees the end of the connection.
    ::close(fd);
    return sent;
}

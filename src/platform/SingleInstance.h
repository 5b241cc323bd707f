#pragma once

#include <QObject>
#include <QStringList>

#include <memory>
#include <optional>

class QLockFile;

// One resident process per desktop session. The first start listens on a private socket; a later start
// finds it, asks it to come forward and leaves. The socket is named after the display, because one user's
// sessions share their runtime folder (and the fallback /tmp/runtime-$USER): two X servers of one user,
// or a test display beside the desktop, each get their own program. Commands (`quaydrop toggle`,
// `quaydrop panel FILE...`) reach the running program the same way.
class SingleInstance : public QObject
{
    Q_OBJECT
public:
    // $XDG_RUNTIME_DIR/com.velmora.Quaydrop.<session>.instance
    static QString defaultSocketPath();
    // The session's name in a file name: "x11-1" for DISPLAY ":1" or ":1.0", "x11-host-10" for
    // "host:10.0", "wayland-0" for a Wayland display; "nodisplay" where neither is set.
    static QString sessionKey(const QByteArray &x11Display, const QByteArray &waylandDisplay);

    explicit SingleInstance(QString socketPath = defaultSocketPath(), QObject *parent = nullptr);
    ~SingleInstance() override;

    // What a later start or a command asks of the running program: one line on the socket, each path
    // percent-encoded from its bytes so that no name can break the line.
    struct Request
    {
        enum class Kind { Activate, Toggle, Panel } kind = Kind::Activate;
        QStringList paths = {}; // for Panel
    };
    static QByteArray encode(const Request &request);
    static std::optional<Request> decode(QByteArray line);
    // Hands `request` to the program listening at `socketPath`; false when none answers.
    static bool send(const QString &socketPath, const Request &request);

    enum class Role { Primary, Secondary, Failed };
    // Primary: this process now owns the socket. Secondary: another process got the request.
    Role claim();
    QString errorString() const { return m_error; }

Q_SIGNALS:
    // A later start asked this process to come forward.
    void activationRequested();
    void toggleRequested();
    void panelRequested(const QStringList &paths);

private:
    void acceptConnections();

    QString m_socketPath;
    QString m_error;
    int m_listener = -1;
    std::unique_ptr<QLockFile> m_lock;
};

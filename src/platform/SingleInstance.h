#pragma once

#include <QObject>
#include <QString>

#include <memory>

class QLocalServer;
class QLockFile;

// One resident process per user session. The first start listens on a private socket; a later start
// finds it, asks it to come forward and leaves.
class SingleInstance : public QObject
{
    Q_OBJECT
public:
    // $XDG_RUNTIME_DIR/com.velmora.Quaydrop.instance
    static QString defaultSocketPath();

    explicit SingleInstance(QString socketPath = defaultSocketPath(), QObject *parent = nullptr);
    ~SingleInstance() override;

    enum class Role { Primary, Secondary, Failed };
    // Primary: this process now owns the socket. Secondary: another process got the request.
    Role claim();
    QString errorString() const { return m_error; }

Q_SIGNALS:
    // A later start asked this process to come forward.
    void activationRequested();

private:
    bool notifyRunningInstance();
    void acceptConnections();

    QString m_socketPath;
    QString m_error;
    QLocalServer *m_server = nullptr;
    std::unique_ptr<QLockFile> m_lock;
};

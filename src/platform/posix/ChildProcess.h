#pragma once

#include "utils/Result.h"

#include <QByteArray>
#include <QList>

#include <sys/types.h>

#include <memory>
#include <optional>

// A helper program started without a shell, talking over one local socket that is its standard
// input and output; its standard error is ours. Usable from any thread, one at a time: nothing here
// needs an event loop. The process is killed and reaped when the object goes.
class ChildProcess
{
public:
    ~ChildProcess();
    ChildProcess(const ChildProcess &) = delete;
    ChildProcess &operator=(const ChildProcess &) = delete;

    // ENOENT for a missing program, EACCES for one that may not be run.
    static Result<std::unique_ptr<ChildProcess>> start(const QByteArray &program, const QList<QByteArray> &arguments);

    pid_t pid() const { return m_pid; }
    int socket() const { return m_fd; }

    // Writes everything, waiting while the socket is full; false once the other end is gone.
    bool writeAll(const char *data, qint64 size);
    // Waits up to `timeoutMs` for bytes and appends what came. Answers the number read: 0 when
    // nothing came in time, -1 when the other end is closed.
    qint64 readSome(QByteArray &into, int timeoutMs);

    // How it ended, once it has: "exit status N" or the signal's name. Waits up to `timeoutMs`.
    std::optional<QString> waitForExit(int timeoutMs);
    // Ends it at once (SIGKILL) and reaps it.
    void kill();
    // Closes our end: a well-behaved helper takes that as the sign to leave.
    void closeSocket();
    bool exitedBySignal() const { return m_signalled; }

private:
    ChildProcess(pid_t pid, int fd) : m_pid(pid), m_fd(fd) {}

    pid_t m_pid = -1;
    int m_fd = -1;
    bool m_reaped = false;
    bool m_signalled = false;
    QString m_exit;
};

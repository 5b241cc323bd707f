#include "ChildProcess.h"

#include <QDeadlineTimer>
#include <QThread>

#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <vector>

extern char **environ;

ChildProcess::~ChildProcess()
{
    closeSocket();
    if (!m_reaped && !waitForExit(0))
        kill();
}

Result<std::unique_ptr<ChildProcess>> ChildProcess::start(const QByteArray &program, const QList<QByteArray> &arguments)
{
    // A socket rather than two pipes: a write to a helper that died fails with EPIPE instead of
    // sending SIGPIPE to the whole program.
    int pair[2];
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, pair) != 0)
        return Error{QStringLiteral("Process"), errno, QString::fromLocal8Bit(strerror(errno))};
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, pair[1], STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, pair[1], STDOUT_FILENO);
    std::vector<char *> argv;
    argv.push_back(const_cast<char *>(program.constData()));
    for (const QByteArray &a : arguments)
        argv.push_back(const_cast<char *>(a.constData()));
    argv.push_back(nullptr);
    pid_t pid = -1;
    const int err = ::posix_spawn(&pid, program.constData(), &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    ::close(pair[1]);
    if (err != 0) {
        ::close(pair[0]);
        return Error{QStringLiteral("Process"), err, QString::fromLocal8Bit(strerror(err))};
    }
    return std::unique_ptr<ChildProcess>(new ChildProcess(pid, pair[0]));
}

bool ChildProcess::writeAll(const char *data, qint64 size)
{
    while (size > 0 && m_fd >= 0) {
        const ssize_t n = ::send(m_fd, data, size_t(size), MSG_NOSIGNAL);
        if (n < 0) {
            if (errno == EINTR)
                continue;
            if (errno != EAGAIN)
                return false;
            pollfd p{m_fd, POLLOUT, 0};
            ::poll(&p, 1, 100);
            continue;
        }
        data += n;
        size -= n;
    }
    return size == 0;
}

qint64 ChildProcess::readSome(QByteArray &into, int timeoutMs)
{
    if (m_fd < 0)
        return -1;
    pollfd p{m_fd, POLLIN, 0};
    const int ready = ::poll(&p, 1, timeoutMs);
    if (ready == 0 || (ready < 0 && errno == EINTR))
        return 0;
    char buffer[1 << 16];
    const ssize_t n = ::recv(m_fd, buffer, sizeof buffer, 0);
    if (n > 0) {
        into.append(buffer, n);
        return n;
    }
    if (n < 0 && (errno == EINTR || errno == EAGAIN))
        return 0;
    return -1;
}

std::optional<QString> ChildProcess::waitForExit(int timeoutMs)
{
    if (m_reaped)
        return m_exit;
    const QDeadlineTimer deadline(timeoutMs);
    for (;;) {
        int status = 0;
        const pid_t got = ::waitpid(m_pid, &status, WNOHANG);
        if (got == m_pid) {
            m_reaped = true;
            m_signalled = WIFSIGNALED(status);
            m_exit = m_signalled ? QString::fromLocal8Bit(strsignal(WTERMSIG(status)))
                                 : QStringLiteral("exit status %1").arg(WEXITSTATUS(status));
            return m_exit;
        }
        if (got < 0 && errno != EINTR) {
            // Reaped elsewhere (a handler of SIGCHLD): it is gone all the same.
            m_reaped = true;
            m_exit = QStringLiteral("ended");
            return m_exit;
        }
        if (deadline.hasExpired())
            return std::nullopt;
        QThread::msleep(2);
    }
}

void ChildProcess::kill()
{
    if (m_reaped)
        return;
    ::kill(m_pid, SIGKILL);
    waitForExit(5000);
}

void ChildProcess::closeSocket()
{
    if (m_fd >= 0)
        ::close(m_fd);
    m_fd = -1;
}

#include "Spawn.h"

#include <QDeadlineTimer>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <vector>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

extern char **environ;

namespace {

constexpr qsizetype kMaxOneArgument = 32 * 4096; // MAX_ARG_STRLEN of Linux

Error spawnError(const QByteArray &program, int err)
{
    return Error{QStringLiteral("Spawn"), err,
                 QStringLiteral("%1: %2").arg(QString::fromLocal8Bit(program), QString::fromLocal8Bit(std::strerror(err)))};
}

bool isExecutableFile(const QByteArray &path)
{
    struct stat st;
    return ::stat(path.constData(), &st) == 0 && S_ISREG(st.st_mode) && ::access(path.constData(), X_OK) == 0;
}

// Pointers into `argv` for exec; valid while `argv` is.
std::vector<char *> pointersOf(const Spawn::Argv &argv)
{
    std::vector<char *> p;
    p.reserve(size_t(argv.size()) + 1);
    for (const QByteArray &a : argv)
        p.push_back(const_cast<char *>(a.constData()));
    p.push_back(nullptr);
    return p;
}

struct Pipe
{
    int fd[2] = {-1, -1};
    bool open() { return ::pipe2(fd, O_CLOEXEC) == 0; }
    void close(int end)
    {
        if (fd[end] >= 0)
            ::close(fd[end]);
        fd[end] = -1;
    }
    ~Pipe()
    {
        close(0);
        close(1);
    }
};

// Writing to a program that stopped reading must give EPIPE, not end this process. The child gets
// its signals back to their defaults at the spawn.
void ignoreSigpipe()
{
    struct sigaction current;
    if (::sigaction(SIGPIPE, nullptr, &current) == 0 && current.sa_handler == SIG_DFL)
        ::signal(SIGPIPE, SIG_IGN);
}

} // namespace

QByteArray Spawn::findProgram(const QByteArray &name)
{
    if (name.isEmpty())
        return {};
    if (name.contains('/'))
        return isExecutableFile(name) ? name : QByteArray();
    const QByteArray path = qgetenv("PATH");
    for (const QByteArray &dir : path.split(':')) {
        const QByteArray candidate = (dir.isEmpty() ? QByteArray(".") : dir) + '/' + name;
        if (isExecutableFile(candidate))
            return candidate;
    }
    return {};
}

bool Spawn::fitsExecLimits(const Argv &argv)
{
    qsizetype total = 0;
    for (const QByteArray &a : argv) {
        if (a.size() + 1 > kMaxOneArgument)
            return false;
        total += a.size() + 1 + qsizetype(sizeof(char *));
    }
    for (char **e = environ; e && *e; ++e)
        total += qsizetype(std::strlen(*e)) + 1 + qsizetype(sizeof(char *));
    const long limit = ::sysconf(_SC_ARG_MAX);
    // Some room is kept for what the program's own start adds (its path, the auxiliary vector).
    return limit <= 0 || total + 4096 < limit;
}

namespace {

// The program's path for argv, or why it cannot be started.
Result<QByteArray> startable(const Spawn::Argv &argv)
{
    if (argv.isEmpty())
        return spawnError(QByteArray("(nothing)"), EINVAL);
    const QByteArray program = Spawn::findProgram(argv.first());
    if (program.isEmpty())
        return spawnError(argv.first(), ENOENT);
    if (!Spawn::fitsExecLimits(argv))
        return spawnError(argv.first(), E2BIG);
    return program;
}

} // namespace

Result<Spawn::Finished> Spawn::run(const Argv &argv, const QByteArray &input, int timeoutMs)
{
    const Result<QByteArray> found = startable(argv);
    if (!found.ok())
        return found.error();
    const QByteArray program = found.value();
    ignoreSigpipe();

    Pipe in, out, err;
    if (!in.open() || !out.open() || !err.open())
        return spawnError(argv.first(), errno);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, in.fd[0], STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, out.fd[1], STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, err.fd[1], STDERR_FILENO);
    posix_spawnattr_t attr;
    posix_spawnattr_init(&attr);
    sigset_t all, none;
    sigfillset(&all);
    sigemptyset(&none);
    posix_spawnattr_setsigdefault(&attr, &all);
    posix_spawnattr_setsigmask(&attr, &none);
    posix_spawnattr_setflags(&attr, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);
    std::vector<char *> args = pointersOf(argv);
    pid_t pid = -1;
    const int spawned = ::posix_spawn(&pid, program.constData(), &actions, &attr, args.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    posix_spawnattr_destroy(&attr);
    if (spawned != 0)
        return spawnError(argv.first(), spawned);
    in.close(0);
    out.close(1);
    err.close(1);

    Finished finished;
    qsizetype written = 0;
    if (input.isEmpty())
        in.close(1);
    else // a full pipe must not block us while the program waits for us to read its output
        ::fcntl(in.fd[1], F_SETFL, ::fcntl(in.fd[1], F_GETFL) | O_NONBLOCK);
    QDeadlineTimer deadline(timeoutMs);
    bool timedOut = false;
    while (out.fd[0] >= 0 || err.fd[0] >= 0) {
        pollfd fds[3];
        int n = 0;
        auto watch = [&](int fd, short events) {
            if (fd >= 0)
                fds[n++] = pollfd{fd, events, 0};
        };
        watch(out.fd[0], POLLIN);
        watch(err.fd[0], POLLIN);
        watch(in.fd[1], POLLOUT);
        const int left = int(qMax<qint64>(0, deadline.remainingTime()));
        const int ready = ::poll(fds, nfds_t(n), left);
        if (ready < 0 && errno == EINTR)
            continue;
        if (ready <= 0) {
            timedOut = true;
            break;
        }
        for (int i = 0; i < n; ++i) {
            if (!fds[i].revents)
                continue;
            if (fds[i].fd == in.fd[1]) {
                const ssize_t w = ::write(in.fd[1], input.constData() + written, size_t(input.size() - written));
                if (w > 0)
                    written += w;
                if ((w < 0 && errno != EAGAIN && errno != EINTR) || written == input.size())
                    in.close(1);
                continue;
            }
            char buffer[16384];
            const ssize_t r = ::read(fds[i].fd, buffer, sizeof buffer);
            if (r > 0) {
                (fds[i].fd == out.fd[0] ? finished.out : finished.err).append(buffer, r);
            } else if (r == 0 || errno != EINTR) {
                if (fds[i].fd == out.fd[0])
                    out.close(0);
                else
                    err.close(0);
            }
        }
    }
    in.close(1);
    if (timedOut)
        ::kill(pid, SIGKILL);
    int status = 0;
    while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
    }
    if (timedOut)
        return spawnError(argv.first(), ETIMEDOUT);
    finished.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return finished;
}

Status Spawn::detached(const Argv &argv)
{
    const Result<QByteArray> found = startable(argv);
    if (!found.ok())
        return found.error();
    const QByteArray program = found.value();
    std::vector<char *> args = pointersOf(argv);
    Pipe report; // the grandchild's errno when its exec fails; closed by a successful exec
    if (!report.open())
        return spawnError(argv.first(), errno);

    // Two forks, so that the program is nobody's child here and nothing has to wait for it. Between
    // fork and exec only async-signal-safe calls.
    const pid_t middle = ::fork();
    if (middle < 0)
        return spawnError(argv.first(), errno);
    if (middle == 0) {
        ::setsid();
        const pid_t grandchild = ::fork();
        if (grandchild != 0)
            ::_exit(grandchild < 0 ? 1 : 0);
        sigset_t none;
        sigemptyset(&none);
        ::sigprocmask(SIG_SETMASK, &none, nullptr);
        for (int s = 1; s < NSIG; ++s)
            ::signal(s, SIG_DFL);
        const int devnull = ::open("/dev/null", O_RDONLY);
        if (devnull >= 0) {
            ::dup2(devnull, STDIN_FILENO);
            if (devnull != STDIN_FILENO)
                ::close(devnull);
        }
        ::execve(program.constData(), args.data(), environ);
        const int e = errno;
        [[maybe_unused]] const ssize_t w = ::write(report.fd[1], &e, sizeof e);
        ::_exit(127);
    }
    report.close(1);
    int status = 0;
    while (::waitpid(middle, &status, 0) < 0 && errno == EINTR) {
    }
    int childErrno = 0;
    ssize_t r;
    do {
        r = ::read(report.fd[0], &childErrno, sizeof childErrno);
    } while (r < 0 && errno == EINTR);
    if (r == ssize_t(sizeof childErrno))
        return spawnError(argv.first(), childErrno);
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
        return spawnError(argv.first(), EAGAIN);
    return success();
}

#include "UnixSignalWatcher.h"

#include <QSocketNotifier>

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <cerrno>

namespace {
int g_pipe[2] = {-1, -1};

void onSignal(int number)
{
    const int saved = errno;
    const unsigned char byte = static_cast<unsigned char>(number);
    [[maybe_unused]] const auto n = write(g_pipe[1], &byte, 1);
    errno = saved;
}
} // namespace

UnixSignalWatcher::UnixSignalWatcher(QObject *parent) : QObject(parent)
{
    if (g_pipe[0] < 0 && pipe2(g_pipe, O_CLOEXEC | O_NONBLOCK) != 0) {
        qWarning("cannot watch for SIGTERM: %s", strerror(errno));
        return;
    }
    m_notifier = new QSocketNotifier(g_pipe[0], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, &UnixSignalWatcher::drain);

    struct sigaction action = {};
    action.sa_handler = onSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    sigaction(SIGTERM, &action, nullptr);
    sigaction(SIGINT, &action, nullptr);
}

UnixSignalWatcher::~UnixSignalWatcher()
{
    signal(SIGTERM, SIG_DFL);
    signal(SIGINT, SIG_DFL);
}

void UnixSignalWatcher::drain()
{
    unsigned char byte;
    while (read(g_pipe[0], &byte, 1) == 1)
        Q_EMIT terminationRequested(byte);
}

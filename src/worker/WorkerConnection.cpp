#include "WorkerConnection.h"

#include "Protocol.h"
#include "platform/posix/ChildProcess.h"

#include "core/fs/NativePath.h"

#include <QDeadlineTimer>

namespace {

constexpr int kHelloMs = 10000; // a loaded machine may take a while to start anything
constexpr int kPollMs = 20;

Error workerError(WorkerErrors::Code code, const QString &reason)
{
    return Error{QString::fromLatin1(WorkerErrors::kDomain), code, reason, {{QStringLiteral("reason"), reason}}};
}

} // namespace

WorkerConnection::WorkerConnection(std::unique_ptr<ChildProcess> process, const WorkerLimits &limits)
    : m_process(std::move(process)), m_limits(limits), m_lastUse(std::chrono::steady_clock::now())
{
}

WorkerConnection::~WorkerConnection() { close(); }

qint64 WorkerConnection::pid() const { return m_process ? m_process->pid() : -1; }

Result<std::unique_ptr<WorkerConnection>> WorkerConnection::start(const QString &program, const WorkerLimits &limits)
{
    const QList<QByteArray> arguments{"--memory", QByteArray::number(limits.memoryBytes), "--processor-seconds",
                                      QByteArray::number(limits.processorSecondsPerItem), "--idle-seconds",
                                      // The program closes idle workers itself; this is for a program that stopped.
                                      QByteArray::number(limits.idleSeconds + 5)};
    auto started = ChildProcess::start(NativePath::toNative(program), arguments);
    if (!started.ok())
        return workerError(WorkerErrors::Unavailable,
                           QStringLiteral("the image worker cannot be started (%1: %2)")
                               .arg(NativePath::forDisplay(program), started.error().message));
    std::unique_ptr<WorkerConnection> connection(new WorkerConnection(std::move(started.value()), limits));
    ChildProcess &process = *connection->m_process;
    const QDeadlineTimer deadline(kHelloMs);
    for (;;) {
        const auto parsed = WorkerProtocol::takeFrame(connection->m_buffer);
        if (parsed.state == WorkerProtocol::Parse::Ok) {
            const auto version = WorkerProtocol::helloVersion(parsed.message);
            if (version == WorkerProtocol::kVersion)
                return connection;
            return workerError(WorkerErrors::Unavailable,
                               version ? QStringLiteral("the image worker speaks version %1; this program needs %2")
                                             .arg(*version)
                                             .arg(WorkerProtocol::kVersion)
                                       : QStringLiteral("the image worker did not introduce itself"));
        }
        if (parsed.state == WorkerProtocol::Parse::Bad)
            return workerError(WorkerErrors::Unavailable, QStringLiteral("the image worker sent %1").arg(parsed.problem));
        const qint64 got = process.readSome(connection->m_buffer, int(std::max<qint64>(1, deadline.remainingTime())));
        if (got < 0) {
            const auto exit = process.waitForExit(1000);
            return workerError(WorkerErrors::Unavailable, QStringLiteral("the image worker ended at its start (%1)")
                                                              .arg(exit.value_or(QStringLiteral("still running"))));
        }
        if (deadline.hasExpired())
            return workerError(WorkerErrors::Unavailable, QStringLiteral("the image worker did not start in time"));
    }
}

Error WorkerConnection::broken(WorkerErrors::Code code, const QString &reason)
{
    m_broken = true;
    m_process->kill();
    return workerError(code, reason);
}

Result<QCborMap> WorkerConnection::call(const QString &job, const QCborMap &arguments, const std::function<bool()> &cancelled)
{
    if (m_broken)
        return workerError(WorkerErrors::Stopped, QStringLiteral("the image worker is gone"));
    const qint64 id = m_nextId++;
    const QByteArray request = WorkerProtocol::frame(WorkerProtocol::request(id, job, arguments));
    m_lastUse = std::chrono::steady_clock::now();
    if (!m_process->writeAll(request.constData(), request.size())) {
        // It left before the request: most likely it had been idle too long.
        m_broken = true;
        m_process->kill();
        return workerError(WorkerErrors::WentIdle, QStringLiteral("the image worker had left"));
    }
    const QDeadlineTimer limit(std::chrono::seconds(m_limits.secondsPerItem));
    QDeadlineTimer cancelDeadline(QDeadlineTimer::Forever);
    bool cancelSent = false;
    for (;;) {
        for (;;) {
            const auto parsed = WorkerProtocol::takeFrame(m_buffer);
            if (parsed.state == WorkerProtocol::Parse::Incomplete)
                break;
            if (parsed.state == WorkerProtocol::Parse::Bad)
                return broken(WorkerErrors::Protocol, QStringLiteral("the image worker sent %1").arg(parsed.problem));
            if (WorkerProtocol::isBye(parsed.message)) {
                // It left on its own just as the request went out; nothing of it was done.
                m_broken = true;
                m_process->kill();
                return workerError(WorkerErrors::WentIdle, QStringLiteral("the image worker had left"));
            }
            if (WorkerProtocol::idOf(parsed.message) != id)
                continue; // the late answer to an earlier, given-up request
            m_lastUse = std::chrono::steady_clock::now();
            if (WorkerProtocol::wasCancelled(parsed.message))
                return workerError(WorkerErrors::Cancelled, QStringLiteral("cancelled"));
            return parsed.message;
        }
        if (!cancelSent && cancelled && cancelled()) {
            const QByteArray stop = WorkerProtocol::frame(WorkerProtocol::cancel(id));
            m_process->writeAll(stop.constData(), stop.size());
            cancelSent = true;
            cancelDeadline.setRemainingTime(m_limits.cancelGraceMs);
        }
        if (cancelDeadline.hasExpired())
            return broken(WorkerErrors::Cancelled, QStringLiteral("cancelled"));
        if (limit.hasExpired())
            return broken(WorkerErrors::TimedOut,
                          QStringLiteral("could not be read: the decoder took longer than %1 seconds and was stopped")
                              .arg(m_limits.secondsPerItem));
        if (m_process->readSome(m_buffer, kPollMs) < 0) {
            m_broken = true;
            const QString how = m_process->waitForExit(500).value_or(QStringLiteral("closed its end"));
            m_process->kill();
            qWarning("the image worker stopped during %s: %s", qPrintable(job), qPrintable(how));
            return workerError(WorkerErrors::Stopped, QStringLiteral("could not be read: the decoder stopped"));
        }
    }
}

void WorkerConnection::close()
{
    if (!m_process)
        return;
    m_process->closeSocket();
    if (!m_process->waitForExit(1000))
        m_process->kill();
    m_broken = true;
}

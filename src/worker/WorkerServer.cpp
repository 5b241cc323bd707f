#include "WorkerServer.h"

#include "Protocol.h"
#include "platform/posix/ProcessLimits.h"

#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

WorkerServer::WorkerServer(int socket, Options options, std::map<QString, CodecJob> jobs, BeforeJob beforeJob)
    : m_socket(socket), m_options(options), m_jobs(std::move(jobs)), m_beforeJob(std::move(beforeJob))
{
}

bool WorkerServer::send(const QCborMap &message)
{
    const QByteArray bytes = WorkerProtocol::frame(message);
    const char *at = bytes.constData();
    qint64 left = bytes.size();
    while (left > 0) {
        const ssize_t n = ::send(m_socket, at, size_t(left), MSG_NOSIGNAL);
        if (n < 0 && errno == EINTR)
            continue;
        if (n <= 0)
            return false;
        at += n;
        left -= n;
    }
    return true;
}

int WorkerServer::run()
{
    std::mutex mutex;
    std::condition_variable arrived;
    std::deque<QCborMap> requests;
    std::atomic<qint64> running{-1};
    std::atomic<qint64> cancelled{-1};

    // The reader: requests queue up for the loop below; a cancel is seen at once.
    std::thread reader([&] {
        QByteArray buffer;
        char chunk[1 << 16];
        for (;;) {
            const ssize_t n = ::recv(m_socket, chunk, sizeof chunk, 0);
            if (n < 0 && errno == EINTR)
                continue;
            if (n <= 0)
                ::_exit(0); // the program closed its end: nobody waits for anything
            buffer.append(chunk, n);
            for (;;) {
                auto parsed = WorkerProtocol::takeFrame(buffer);
                if (parsed.state == WorkerProtocol::Parse::Incomplete)
                    break;
                if (parsed.state == WorkerProtocol::Parse::Bad) {
                    qWarning("image worker: %s", qPrintable(parsed.problem));
                    ::_exit(3);
                }
                if (WorkerProtocol::isCancel(parsed.message)) {
                    cancelled = parsed.message.value(QStringLiteral("cancel")).toInteger();
                    continue;
                }
                std::lock_guard lock(mutex);
                requests.push_back(parsed.message);
                arrived.notify_one();
            }
        }
    });
    reader.detach();

    if (!send(WorkerProtocol::hello()))
        return 1;
    for (;;) {
        QCborMap request;
        {
            std::unique_lock lock(mutex);
            if (!arrived.wait_for(lock, std::chrono::seconds(m_options.idleSeconds), [&] { return !requests.empty(); })) {
                send(WorkerProtocol::bye());
                return 0;
            }
            request = requests.front();
            requests.pop_front();
        }
        const qint64 id = WorkerProtocol::idOf(request);
        const QString name = WorkerProtocol::jobOf(request);
        const auto job = m_jobs.find(name);
        if (job == m_jobs.end()) {
            send(WorkerProtocol::failure(id, Error{QStringLiteral("Worker"), 1, QStringLiteral("unknown job: %1").arg(name),
                                                   {{QStringLiteral("reason"), QStringLiteral("unknown job: %1").arg(name)}}}));
            continue;
        }
        const QCborMap arguments = WorkerProtocol::argumentsOf(request);
        running = id;
        JobContext context{[&cancelled, id] { return cancelled.load() == id; }};
        ProcessLimits::limitProcessorSecondsFromNow(m_options.processorSecondsPerItem);
        if (m_beforeJob)
            m_beforeJob(name, arguments);
        const Result<QCborMap> result = job->second(arguments, context);
        running = -1;
        const QCborMap reply = context.cancelled()  ? WorkerProtocol::cancelled(id)
                               : result.ok()        ? WorkerProtocol::success(id, result.value())
                                                    : WorkerProtocol::failure(id, result.error());
        if (!send(reply))
            return 0;
    }
}

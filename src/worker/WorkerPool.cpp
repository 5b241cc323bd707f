#include "WorkerPool.h"

#include "core/fs/NativePath.h"
#include "platform/posix/ProgramPaths.h"

#include <QThread>

WorkerPool::WorkerPool() : WorkerPool(Settings()) {}

WorkerPool::WorkerPool(Settings settings) : m_settings(std::move(settings)), m_janitor([this] { janitor(); }) {}

WorkerPool::~WorkerPool()
{
    {
        std::lock_guard lock(m_mutex);
        m_stopping = true;
    }
    m_changed.notify_all();
    m_janitor.join();
    // Busy workers belong to calls still running; those end with the process.
    m_idle.clear();
}

WorkerPool &WorkerPool::shared()
{
    static WorkerPool pool;
    return pool;
}

QString WorkerPool::defaultProgram()
{
    if (const QByteArray given = qgetenv("QUAYDROP_WORKER"); !given.isEmpty())
        return NativePath::fromNative(given);
    return ProgramPaths::helper(QStringLiteral("quaydrop-worker"));
}

void WorkerPool::configure(const Settings &settings)
{
    std::lock_guard lock(m_mutex);
    m_settings = settings;
}

WorkerPool::Settings WorkerPool::settings() const
{
    std::lock_guard lock(m_mutex);
    return m_settings;
}

int WorkerPool::capacity() const
{
    return m_settings.maxWorkers > 0 ? m_settings.maxWorkers : std::max(1, QThread::idealThreadCount());
}

int WorkerPool::liveWorkers() const
{
    std::lock_guard lock(m_mutex);
    return int(m_idle.size()) + m_busy;
}

QList<qint64> WorkerPool::workerPids() const
{
    std::lock_guard lock(m_mutex);
    QList<qint64> pids = m_busyPids;
    for (const auto &c : m_idle)
        pids.append(c->pid());
    return pids;
}

Result<std::unique_ptr<WorkerConnection>> WorkerPool::acquire(const std::function<bool()> &cancelled)
{
    std::unique_lock lock(m_mutex);
    for (;;) {
        if (!m_idle.empty()) {
            // The one used last: the others may then reach their idle time and go.
            std::unique_ptr<WorkerConnection> connection = std::move(m_idle.back());
            m_idle.pop_back();
            ++m_busy;
            return connection;
        }
        if (m_busy < capacity())
            break;
        if (cancelled && cancelled())
            return Error{QString::fromLatin1(WorkerErrors::kDomain), WorkerErrors::Cancelled, QStringLiteral("cancelled"),
                         {{QStringLiteral("reason"), QStringLiteral("cancelled")}}};
        m_changed.wait_for(lock, std::chrono::milliseconds(50));
    }
    ++m_busy;
    const Settings settings = m_settings;
    lock.unlock();
    auto started = WorkerConnection::start(settings.program.isEmpty() ? defaultProgram() : settings.program, settings.limits);
    if (!started.ok()) {
        lock.lock();
        --m_busy;
        m_changed.notify_all();
    }
    return started;
}

void WorkerPool::release(std::unique_ptr<WorkerConnection> connection)
{
    {
        std::lock_guard lock(m_mutex);
        --m_busy;
        if (connection->alive())
            m_idle.push_back(std::move(connection));
    }
    m_changed.notify_all();
    // A dead one is reaped here, outside the lock.
}

Result<QCborMap> WorkerPool::call(const QString &job, const QCborMap &arguments, const std::function<bool()> &cancelled)
{
    for (int attempt = 0;; ++attempt) {
        auto connection = acquire(cancelled);
        if (!connection.ok())
            return connection.error();
        const qint64 pid = connection.value()->pid();
        {
            std::lock_guard lock(m_mutex);
            m_busyPids.append(pid);
        }
        auto reply = connection.value()->call(job, arguments, cancelled);
        {
            std::lock_guard lock(m_mutex);
            m_busyPids.removeOne(pid);
        }
        release(std::move(connection.value()));
        if (!reply.ok() && reply.error().code == WorkerErrors::WentIdle && attempt == 0)
            continue;
        return reply;
    }
}

void WorkerPool::closeIdle()
{
    std::vector<std::unique_ptr<WorkerConnection>> closing;
    {
        std::lock_guard lock(m_mutex);
        closing.swap(m_idle);
    }
    m_changed.notify_all();
    closing.clear();
}

void WorkerPool::prestart()
{
    {
        std::lock_guard lock(m_mutex);
        m_prestart = true;
    }
    m_changed.notify_all();
}

void WorkerPool::janitor()
{
    std::unique_lock lock(m_mutex);
    while (!m_stopping) {
        if (m_prestart) {
            m_prestart = false;
            if (m_idle.empty() && m_busy < capacity()) {
                ++m_busy; // counted while it starts, so that a call meanwhile does not start another too
                const Settings settings = m_settings;
                lock.unlock();
                auto started = WorkerConnection::start(settings.program.isEmpty() ? defaultProgram() : settings.program,
                                                       settings.limits);
                lock.lock();
                --m_busy;
                if (started.ok())
                    m_idle.push_back(std::move(started.value()));
                m_changed.notify_all();
                continue;
            }
        }
        const auto idleFor = std::chrono::seconds(m_settings.limits.idleSeconds);
        const auto now = std::chrono::steady_clock::now();
        std::vector<std::unique_ptr<WorkerConnection>> expired;
        auto next = now + std::chrono::hours(1);
        for (auto it = m_idle.begin(); it != m_idle.end();) {
            const auto due = (*it)->lastUse() + idleFor;
            if (due <= now) {
                expired.push_back(std::move(*it));
                it = m_idle.erase(it);
            } else {
                next = std::min(next, due);
                ++it;
            }
        }
        if (!expired.empty()) {
            lock.unlock();
            expired.clear(); // each closes its socket and is reaped
            lock.lock();
            continue;
        }
        m_changed.wait_until(lock, next);
    }
}

#pragma once

#include "WorkerConnection.h"

#include <QList>

#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

// The image workers of this process: started on first need, at most `maxWorkers` at once, each
// doing one request at a time, and closed once idle for `limits.idleSeconds`. Any thread may call.
class WorkerPool
{
public:
    struct Settings
    {
        QString program; // empty: the worker installed beside this program
        WorkerLimits limits;
        int maxWorkers = 0; // 0: one per processor core
    };

    WorkerPool();
    explicit WorkerPool(Settings settings);
    ~WorkerPool();
    WorkerPool(const WorkerPool &) = delete;
    WorkerPool &operator=(const WorkerPool &) = delete;

    // The pool every job of the program shares.
    static WorkerPool &shared();
    // Where the worker program is: $QUAYDROP_WORKER, else where helper programs are installed.
    static QString defaultProgram();

    // Runs one request in a free worker, starting one when none is free and waiting when all are
    // busy. A worker that went idle just then is replaced and the request sent again.
    Result<QCborMap> call(const QString &job, const QCborMap &arguments, const std::function<bool()> &cancelled = {});

    // Takes effect for workers started from now on.
    void configure(const Settings &settings);
    Settings settings() const;
    // Processes alive, busy or idle.
    int liveWorkers() const;
    QList<qint64> workerPids() const;
    // Closes every idle worker now.
    void closeIdle();
    // Starts a worker ahead of need, in the background, unless one is idle or the pool is full: the
    // first job then does not wait for it. It goes after the idle time like any other.
    void prestart();

private:
    Result<std::unique_ptr<WorkerConnection>> acquire(const std::function<bool()> &cancelled);
    void release(std::unique_ptr<WorkerConnection> connection);
    void janitor();
    int capacity() const;

    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    Settings m_settings;
    std::vector<std::unique_ptr<WorkerConnection>> m_idle;
    QList<qint64> m_busyPids;
    int m_busy = 0;
    bool m_stopping = false;
    bool m_prestart = false;
    std::thread m_janitor;
};

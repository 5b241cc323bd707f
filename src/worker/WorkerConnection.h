#pragma once

#include "utils/Result.h"

#include <QCborMap>
#include <QString>

#include <chrono>
#include <functional>
#include <memory>

class ChildProcess;

// What a worker may use of the machine, and how long the program waits for it.
struct WorkerLimits
{
    qint64 memoryBytes = qint64(2) << 30; // address space of the worker process
    int processorSecondsPerItem = 120;    // the worker's own limit, set afresh for each request
    int secondsPerItem = 180;             // the program's: a worker still busy then is killed
    int idleSeconds = 30;                 // an unused worker goes after this long
    int cancelGraceMs = 200;              // a cancelled worker that has not answered by then is killed
};

// Why a request got no reply from the worker. Errors of this domain carry one of these codes.
namespace WorkerErrors {
inline constexpr const char *kDomain = "Worker";
enum Code { Stopped = 1, TimedOut, Cancelled, Unavailable, Protocol, WentIdle };
} // namespace WorkerErrors

// One running worker process and the conversation with it. Used by one thread at a time.
class WorkerConnection
{
public:
    ~WorkerConnection();

    // Starts the program and waits for its hello. The version must be this program's.
    static Result<std::unique_ptr<WorkerConnection>> start(const QString &program, const WorkerLimits &limits);

    // Sends one request and waits for its reply, which may itself say the job failed. While it
    // waits, `cancelled` is asked a few dozen times a second. No reply (a crash, the time limit, a
    // cancel not answered in time, a broken frame) is an error of the Worker domain, and the
    // process is gone afterwards.
    Result<QCborMap> call(const QString &job, const QCborMap &arguments, const std::function<bool()> &cancelled = {});

    bool alive() const { return !m_broken; }
    qint64 pid() const;
    std::chrono::steady_clock::time_point lastUse() const { return m_lastUse; }
    // Asks it to leave (its socket closes), then makes sure it has.
    void close();

private:
    WorkerConnection(std::unique_ptr<ChildProcess> process, const WorkerLimits &limits);
    Error broken(WorkerErrors::Code code, const QString &reason);

    std::unique_ptr<ChildProcess> m_process;
    WorkerLimits m_limits;
    QByteArray m_buffer;
    qint64 m_nextId = 1;
    bool m_broken = false;
    std::chrono::steady_clock::time_point m_lastUse;
};

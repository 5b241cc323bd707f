#pragma once

#include "images/codecs/CodecJobs.h"

// The worker's side of the conversation: says hello, then answers each request on its socket with
// the job of that name, one at a time. A cancel is read while a job runs. With no request for
// `idleSeconds` it says bye and ends; it ends at once when the program closes its end.
class WorkerServer
{
public:
    struct Options
    {
        int processorSecondsPerItem = 120;
        int idleSeconds = 35;
    };
    // Runs before each job with its name and arguments; a test build of the worker hooks in here.
    using BeforeJob = std::function<void(const QString &job, const QCborMap &arguments)>;

    WorkerServer(int socket, Options options, std::map<QString, CodecJob> jobs, BeforeJob beforeJob = {});
    // Returns the process's exit status.
    int run();

private:
    bool send(const QCborMap &message);

    const int m_socket;
    const Options m_options;
    const std::map<QString, CodecJob> m_jobs;
    const BeforeJob m_beforeJob;
};

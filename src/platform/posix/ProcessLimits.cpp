#include "ProcessLimits.h"

#include <sys/resource.h>


void ProcessLimits::limitMemory(qint64 bytes)
{
    if (bytes <= 0)
        return;
    rlimit limit{rlim_t(bytes), rlim_t(bytes)};
    setrlimit(RLIMIT_AS, &limit);
}

void ProcessLimits::limitProcessorSecondsFromNow(int seconds)
{
    if (seconds <= 0)
        return;
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const rlim_t used = rlim_t(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) + 1;
    // The soft limit sends SIGXCPU, which ends the process; the hard limit stays open so that the
    // next item can move it on.
    rlimit limit{};
    getrlimit(RLIMIT_CPU, &limit);
    limit.rlim_cur = used + rlim_t(seconds);
    if (limit.rlim_max != RLIM_INFINITY && limit.rlim_cur > limit.rlim_max)
        limit.rlim_cur = limit.rlim_max;
    setrlimit(RLIMIT_CPU, &limit);
}

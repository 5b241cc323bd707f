// What the first image job after idle pays for starting the image worker, and whether idle workers
// go: probes FILE through a fresh worker and through the same worker again, RUNS times, and prints
// the mean of each in milliseconds ("cold" and "warm"). With --idle it then waits out the idle time
// and prints how many worker processes are still alive.
//   worker_start FILE [RUNS] [--idle]     (QUAYDROP_WORKER names the worker program)

#include "worker/Jobs.h"
#include "worker/Protocol.h"
#include "worker/WorkerPool.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <csignal>
#include <cstdio>
#include <thread>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() < 2) {
        std::fprintf(stderr, "usage: worker_start FILE [RUNS] [--idle]\n");
        return 2;
    }
    const int runs = args.size() > 2 && args.at(2) != QLatin1String("--idle") ? args.at(2).toInt() : 20;
    const QCborMap probe{{WorkerJobs::kSource, WorkerProtocol::path(args.at(1))}};
    WorkerPool pool;

    auto timed = [&](double &total) {
        QElapsedTimer t;
        t.start();
        const auto reply = pool.call(QString(WorkerJobs::kProbe), probe);
        total += double(t.nsecsElapsed()) / 1e6;
        if (!reply.ok() || !WorkerProtocol::succeeded(reply.value())) {
            std::fprintf(stderr, "the probe failed: %s\n",
                         qPrintable(reply.ok() ? WorkerProtocol::errorOf(reply.value()).message : reply.error().message));
            std::exit(1);
        }
    };
    double cold = 0, warm = 0;
    for (int i = 0; i < runs; ++i) {
        pool.closeIdle();
        timed(cold);
        timed(warm);
    }
    std::printf("cold %.2f\nwarm %.2f\n", cold / runs, warm / runs);

    if (args.contains(QLatin1String("--idle"))) {
        const QList<qint64> pids = pool.workerPids();
        std::this_thread::sleep_for(std::chrono::seconds(pool.settings().limits.idleSeconds + 2));
        int alive = 0;
        for (qint64 pid : pids)
            alive += ::kill(pid_t(pid), 0) == 0;
        std::printf("alive after %d s idle %d of %lld\n", pool.settings().limits.idleSeconds + 2, alive,
                    static_cast<long long>(pids.size()));
    }
    return 0;
}

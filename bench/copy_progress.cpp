// How often the copy engine reports progress on a large file, and how soon a cancel takes effect.
// Usage: copy_progress FILE DESTDIR

#include "fileops/FileCopyHelper.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>

#include <atomic>
#include <cstdio>
#include <thread>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    if (argc != 3) {
        std::fprintf(stderr, "usage: copy_progress FILE DESTDIR\n");
        return 2;
    }
    const QString file = QString::fromLocal8Bit(argv[1]);
    const QString dest = QString::fromLocal8Bit(argv[2]);

    // 1. Cadence: the longest gap between two progress reports over a whole copy.
    QElapsedTimer clock;
    clock.start();
    qint64 last = 0, longestGap = 0;
    int reports = 0;
    Error error;
    FileCopyHelper::copyItemsToAnotherDrive({file}, dest, [&](quint64, quint64, bool *, const QString &) {
        const qint64 now = clock.nsecsElapsed();
        longestGap = qMax(longestGap, now - last);
        last = now;
        ++reports;
    }, &error);
    const double seconds = clock.nsecsElapsed() / 1e9;
    std::printf("progress: %d reports in %.3f s (%.0f a second), longest gap %.1f ms  (target: at least 5 a second)\n",
                reports, seconds, reports / seconds, longestGap / 1e6);
    QDir(dest).removeRecursively();
    QDir().mkpath(dest);

    // 2. Cancel latency: from the moment the flag is set until the copy has returned.
    std::atomic<bool> stop{false};
    std::atomic<qint64> stopAt{0};
    qint64 returnedAt = 0;
    std::thread canceller([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(150));
        stopAt = clock.nsecsElapsed();
        stop = true;
    });
    FileCopyHelper::copyItemsToAnotherDrive({file}, dest, [&](quint64, quint64, bool *s, const QString &) { *s = stop; }, &error);
    returnedAt = clock.nsecsElapsed();
    canceller.join();
    if (error.code == FileCopyHelper::Cancelled)
        std::printf("cancel: took effect %.1f ms after it was asked for  (target: within 100 ms)\n",
                    (returnedAt - stopAt) / 1e6);
    else
        std::printf("cancel: the copy ended before the cancel came; use a larger file\n");
    return 0;
}

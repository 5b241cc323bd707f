// How often a zip reports progress, and how soon a cancel takes effect.
// Usage: zip_progress ITEM ARCHIVE

#include "fileops/zip/ZipJob.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTimer>

#include <cstdio>

int main(int argc, char **argv)
{
    QCoreApplication app(argc, argv);
    if (argc != 3) {
        std::fprintf(stderr, "usage: zip_progress ITEM ARCHIVE\n");
        return 2;
    }
    const QString item = QString::fromLocal8Bit(argv[1]);
    const QString archive = QString::fromLocal8Bit(argv[2]);

    // 1. Cadence: the longest gap between two progress reports over a whole zip.
    {
        ZipJob job({item}, nullptr, archive);
        QElapsedTimer clock;
        qint64 last = 0, longest = 0;
        int reports = 0;
        QObject::connect(&job, &ZipJob::progress, [&] {
            const qint64 now = clock.nsecsElapsed();
            if (reports > 0)
                longest = qMax(longest, now - last);
            last = now;
            ++reports;
        });
        QObject::connect(&job, &ZipJob::finished, &app, &QCoreApplication::quit);
        clock.start();
        job.start();
        app.exec();
        const double seconds = clock.nsecsElapsed() / 1e9;
        std::printf("zip progress: %d reports in %.2f s (%.1f a second), longest gap %.0f ms  (target: at least 1 a second)\n",
                    reports, seconds, reports / seconds, longest / 1e6);
        QFile::remove(archive);
    }
    // 2. Cancel latency: from cancel() until finished() has come.
    {
        ZipJob job({item}, nullptr, archive);
        QElapsedTimer clock;
        qint64 askedAt = 0;
        QObject::connect(&job, &ZipJob::finished, &app, &QCoreApplication::quit);
        QTimer::singleShot(400, [&] {
            askedAt = clock.nsecsElapsed();
            job.cancel();
        });
        clock.start();
        job.start();
        app.exec();
        if (job.result().ok())
            std::printf("zip cancel: the zip ended before the cancel came; use a larger item\n");
        else
            std::printf("zip cancel: took effect %.0f ms after it was asked for, partial archive left: %s  (target: within 200 ms)\n",
                        (clock.nsecsElapsed() - askedAt) / 1e6, QFile::exists(archive) ? "yes" : "no");
    }
    return 0;
}

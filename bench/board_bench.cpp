// The page board's two costs, timed inside one process:
//   board_bench thumbnails FILE...   seconds until every thumbnail is made, and the longest the event
//                                    loop was held up meanwhile (a window answers input in that time)
//   board_bench export OUT.pdf FILE... seconds to export the files as one PDF, each turned or flipped

#include "images/board/BoardExportJob.h"
#include "images/board/LRHMPageItem.h"
#include "images/board/PageThumbnails.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QGuiApplication>
#include <QTimer>

#include <cstdio>

int main(int argc, char **argv)
{
    QGuiApplication app(argc, argv);
    const QStringList args = app.arguments().mid(1);
    if (args.size() < 2)
        return 2;
    QElapsedTimer clock;
    QEventLoop loop;
    if (args.first() == QLatin1String("thumbnails")) {
        PageThumbnails thumbnails;
        QList<LRHMPageItem> items;
        for (const QString &path : args.mid(1))
            items.append(LRHMPageItem(path));
        int made = 0;
        QObject::connect(&thumbnails, &PageThumbnails::ready, [&] {
            if (++made == items.size())
                loop.quit();
        });
        // A tick every 5 ms stands for input: the longest gap between two is how long input waits.
        qint64 last = 0, longest = 0;
        QTimer tick;
        tick.setInterval(5);
        QObject::connect(&tick, &QTimer::timeout, [&] {
            longest = std::max(longest, clock.elapsed() - last);
            last = clock.elapsed();
        });
        clock.start();
        tick.start();
        for (const LRHMPageItem &item : items)
            thumbnails.thumbnail(item);
        loop.exec();
        std::printf("%.3f %lld\n", clock.elapsed() / 1000.0, static_cast<long long>(longest));
        return made == items.size() ? 0 : 1;
    }
    QList<ImagesToPdf::Page> pages;
    const QTransform turns[] = {LRHMTransformManager::rotateTransformWith({}, 90), LRHMTransformManager::rotateTransformWith({}, -90),
                                LRHMTransformManager::horizontalFlipTransformWith(QRectF(0, 0, 4000, 3000)),
                                LRHMTransformManager::verticalFlipTransformWith(QRectF(0, 0, 4000, 3000))};
    for (int i = 2; i < args.size(); ++i)
        pages.append({args.at(i), turns[i % 4]});
    BoardExportJob job({pages, true, args.at(1)});
    QObject::connect(&job, &ImageBatchJob::finished, &loop, &QEventLoop::quit);
    clock.start();
    job.start();
    loop.exec();
    std::printf("%.3f\n", clock.elapsed() / 1000.0);
    return job.failures().isEmpty() && job.written().size() == 1 ? 0 : 1;
}

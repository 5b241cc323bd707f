#include "ImageBatchJob.h"

#include <QPointer>
#include <QThreadPool>

#include <chrono>
#include <condition_variable>
#include <map>
#include <mutex>

ImageBatchJob::ImageBatchJob(QObject *parent) : QObject(parent) {}

ImageBatchJob::~ImageBatchJob() { waitForWorker(); }

void ImageBatchJob::waitForWorker()
{
    if (!m_started || m_joined)
        return;
    cancel();
    m_workerDone.acquire();
    m_joined = true;
}

void ImageBatchJob::start()
{
    if (m_started)
        return;
    m_started = true;
    QThreadPool::globalInstance()->start([this] {
        run();
        post([this] {
            m_finished = true;
            Q_EMIT finished();
        });
        // Last: after this the job may be destroyed.
        m_workerDone.release();
    });
}

void ImageBatchJob::post(std::function<void()> update)
{
    QPointer<ImageBatchJob> self(this);
    QMetaObject::invokeMethod(
        this,
        [self, update = std::move(update)] {
            if (self)
                update();
        },
        Qt::QueuedConnection);
}

void ImageBatchJob::reportProgress(int done, int total, const QString &item)
{
    post([this, done, total, item] {
        m_done = done;
        m_total = total;
        Q_EMIT progress(done, total, item);
    });
}

void ImageBatchJob::reportWritten(const QString &path)
{
    ++m_writtenCount;
    post([this, path] {
        m_written.append(path);
        Q_EMIT itemWritten(path);
    });
}

void ImageBatchJob::reportFailure(const Error &error)
{
    qWarning("%s", qPrintable(error.message));
    post([this, error] {
        m_failures.append(error);
        Q_EMIT itemFailed(error);
    });
}

void ImageBatchJob::creditSeconds(quint64 seconds) const
{
    if (credit)
        credit(seconds);
}

int ImageBatchJob::forEachInOrder(int count, int parallel, const Prepare &prepare, const Finish &finish,
                                  const std::function<QString(int)> &label)
{
    const int workers = std::clamp(parallel, 1, std::max(count, 1));
    const int window = 2 * workers;
    std::mutex mutex;
    std::condition_variable changed;
    std::map<int, Prepared> ready;
    int next = 0;
    int finishedUpTo = 0; // items before this one are finished
    int stopAt = count;
    bool stop = false;
    QThreadPool pool;
    pool.setMaxThreadCount(workers);
    for (int w = 0; w < workers && count > 0; ++w) {
        pool.start([&, w] {
            for (;;) {
                int item;
                {
                    std::unique_lock lock(mutex);
                    changed.wait(lock, [&] { return stop || next >= stopAt || next < finishedUpTo + window; });
                    if (stop || next >= stopAt || isCancelled())
                        return;
                    item = next++;
                }
                Prepared prepared = prepare(item, w);
                std::lock_guard lock(mutex);
                if (prepared.stopHere)
                    stopAt = std::min(stopAt, item);
                ready.emplace(item, std::move(prepared));
                changed.notify_all();
            }
        });
    }
    int item = 0;
    for (; item < count; ++item) {
        std::unique_lock lock(mutex);
        // A cancel only sets a flag: look at it now and then while an item is prepared.
        while (!isCancelled() && item < stopAt && ready.count(item) == 0)
            changed.wait_for(lock, std::chrono::milliseconds(50));
        if (isCancelled() || item >= stopAt)
            break;
        const Prepared prepared = std::move(ready.at(item));
        ready.erase(item);
        lock.unlock();
        reportProgress(item, count, label(item));
        const Result<QString> result = prepared.output.ok() ? finish(item, *prepared.output.value())
                                                            : Result<QString>(prepared.output.error());
        if (result.ok())
            reportWritten(result.value());
        else
            reportFailure(result.error());
        lock.lock();
        finishedUpTo = item + 1;
        changed.notify_all();
    }
    {
        std::lock_guard lock(mutex);
        stop = true;
        changed.notify_all();
    }
    pool.waitForDone();
    reportProgress(count, count, {});
    return item;
}

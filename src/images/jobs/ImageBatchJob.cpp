#include "ImageBatchJob.h"

#include <QPointer>
#include <QThreadPool>

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

void ImageBatchJob::forEachInOrder(int count, int parallel, const std::function<Result<QString>(int)> &work,
                                   const std::function<QString(int)> &label)
{
    std::mutex mutex;
    std::condition_variable ready;
    std::map<int, Result<QString>> results;
    int next = 0;
    QThreadPool pool;
    pool.setMaxThreadCount(std::clamp(parallel, 1, std::max(count, 1)));
    for (int w = 0; w < pool.maxThreadCount(); ++w) {
        pool.start([&] {
            for (;;) {
                int item;
                {
                    std::lock_guard lock(mutex);
                    if (next >= count || isCancelled())
                        return;
                    item = next++;
                }
                Result<QString> result = work(item);
                std::lock_guard lock(mutex);
                results.emplace(item, std::move(result));
                ready.notify_all();
            }
        });
    }
    for (int item = 0; item < count; ++item) {
        std::unique_lock lock(mutex);
        ready.wait(lock, [&] { return results.count(item) > 0 || (isCancelled() && item >= next); });
        if (results.count(item) == 0)
            break; // cancelled before it started
        const Result<QString> result = results.at(item);
        results.erase(item);
        lock.unlock();
        reportProgress(item, count, label(item));
        if (result.ok())
            reportWritten(result.value());
        else
            reportFailure(result.error());
    }
    pool.waitForDone();
    reportProgress(count, count, {});
}

#include "ImageBatchJob.h"

#include <QPointer>
#include <QThreadPool>

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

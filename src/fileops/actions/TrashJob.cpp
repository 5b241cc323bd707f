#include "TrashJob.h"

#include "core/fs/NativePath.h"
#include "core/fs/PathParts.h"

#include <QDateTime>
#include <QThreadPool>

namespace {
constexpr qint64 kProgressMs = 100;
}

TrashJob::TrashJob(QStringList paths, Work work, TrashService *trash, VolumeService *volumes, QObject *parent)
    : QObject(parent), m_paths(std::move(paths)), m_work(work), m_trash(trash), m_volumes(volumes)
{
}

TrashJob::~TrashJob()
{
    m_cancelled = true;
    if (m_started)
        m_workerDone.acquire();
}

void TrashJob::start()
{
    if (m_started)
        return;
    m_started = true;
    QThreadPool::globalInstance()->start([this] {
        run();
        QMetaObject::invokeMethod(
            this,
            [this] {
                m_finished = true;
                Q_EMIT finished();
            },
            Qt::QueuedConnection);
        // Last: after this the job may be destroyed, and the queued call with it.
        m_workerDone.release();
    });
}

// From the worker, before each item: a progress line now and then, and whether to go on.
bool TrashJob::next(int done, const QString &path)
{
    if (m_cancelled)
        return false;
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    if (done == 0 || now - m_lastReport >= kProgressMs) {
        m_lastReport = now;
        const int total = int(m_paths.size());
        const QString name = NativePath::forDisplay(PathParts::lastComponent(path));
        QMetaObject::invokeMethod(
            this, [this, done, total, name] { Q_EMIT progress(done, total, name); }, Qt::QueuedConnection);
    }
    return true;
}

void TrashJob::run()
{
    if (m_work == Work::Trash) {
        m_outcome = TrashItems::trashFiles(
            m_paths, m_trash, m_volumes, [this](int done, const QString &path) { return next(done, path); });
        return;
    }
    for (int i = 0; i < m_paths.size() && next(i, m_paths.at(i)); ++i) {
        if (const Status s = TrashItems::deleteForGood(m_paths.at(i)); s.ok())
            m_deleted.append(m_paths.at(i));
        else
            m_outcome.failures.append(s.error());
    }
}

// Copy jobs on the thread pool, their progress, their end, and the deletion of moved sources.

#include "MoveCopyOrchestrator.h"

#include "core/fs/FsCalls.h"
#include "core/fs/NativePath.h"
#include "core/fs/PathParts.h"
#include "core/fs/TreeWalk.h"
#include "core/texts/Texts.h"
#include "fileops/FileCopyHelper.h"
#include "platform/Platform.h"
#include "utils/Utils.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QMutexLocker>
#include <QPointer>
#include <QThreadPool>

#include <cstring>

namespace {
constexpr qint64 kProgressIntervalMs = 100; // a few updates a second are enough to read
} // namespace

QList<FileCopyParamsPtr> MoveCopyOrchestrator::runningJobs() const
{
    QMutexLocker lock(&m_jobsLock);
    return copyProgressParams;
}

Status MoveCopyOrchestrator::setAside(const QString &path) { return setAsideIn(m_trash, path); }

Status MoveCopyOrchestrator::setAsideIn(TrashService *trash, const QString &path)
{
    if (!trash)
        return Error{QStringLiteral("Quaydrop"), 1, QStringLiteral("there is no trash to keep the replaced item")};
    const auto trashed = trash->moveToTrash(path);
    if (!trashed.ok())
        return trashed.error();
    return success();
}

MoveCopyOrchestrator::Outcome MoveCopyOrchestrator::copyFilesToAnotherVolume(const QStringList &paths,
                                                                             const QString &destParentPath,
                                                                             const QSet<QString> &replacing)
{
    if (isCopyingFilesToSelf(paths, destParentPath) || !passesRunningJobGuards(paths, destParentPath))
        return Outcome::Refused;
    auto job = std::make_shared<FileCopyParams>(paths, destParentPath, isFileOperationCopy);
    if (!job->isCopying)
        pathsBeingMovedToBeDeletedAfter += paths;
    int count;
    {
        QMutexLocker lock(&m_jobsLock);
        copyProgressParams.append(job);
        count = int(copyProgressParams.size());
    }
    copyingFilesToOtherVolume = true;
    m_observer->jobsChanged(count);
    runJob(job, replacing);
    return Outcome::JobStarted;
}

QString MoveCopyOrchestrator::progressText(const FileCopyParams &job, const QString &fileName)
{
    return Texts::localized(job.isCopying ? "copyingFile2" : "movingFile2")
        .arg(NativePath::forDisplay(fileName), NativePath::forDisplay(PathParts::lastComponent(job.destFolder())));
}

void MoveCopyOrchestrator::runJob(const FileCopyParamsPtr &job, const QSet<QString> &replacing)
{
    QPointer<MoveCopyOrchestrator> self(this);
    // The trash service outlives every job; the orchestrator may not, and the job never touches it.
    TrashService *trash = m_trash;
    QThreadPool::globalInstance()->start([self, job, replacing, trash] {
        QElapsedTimer sincePost;
        auto progress = [&](quint64 copied, quint64 total, bool *stop, const QString &name) {
            job->total = total;
            job->current = copied;
            job->setCurrentFileName(name);
            *stop = job->stopped.load();
            if (sincePost.isValid() && sincePost.elapsed() < kProgressIntervalMs)
                return;
            sincePost.start();
            const int percent = total ? int(qMin<quint64>(100, copied * 100 / total)) : 0;
            const QString text = progressText(*job, name);
            QMetaObject::invokeMethod(QCoreApplication::instance(), [self, job, percent, text] {
                if (self)
                    self->m_observer->jobProgress(job, percent, text);
            }, Qt::QueuedConnection);
        };
        Error error;
        const bool ok = FileCopyHelper::copyItemsToAnotherDrive(
            job->sourcePathsArr(), job->destFolder(), progress, &error, replacing,
            [trash](const QString &p) { return setAsideIn(trash, p); });
        QMetaObject::invokeMethod(QCoreApplication::instance(), [self, job, ok, error] {
            if (self)
                self->finishJob(job, ok, error);
        }, Qt::QueuedConnection);
    });
}

void MoveCopyOrchestrator::finishJob(const FileCopyParamsPtr &job, bool ok, const Error &error)
{
    int remaining;
    {
        QMutexLocker lock(&m_jobsLock);
        copyProgressParams.removeOne(job);
        remaining = int(copyProgressParams.size());
    }
    // A move that did not finish keeps every source.
    if (!job->isCopying && !ok)
        for (const QString &source : job->sourcePathsArr())
            pathsBeingMovedToBeDeletedAfter.removeAll(source);
    // What is left waiting belongs to complete moves: it goes once no running job reads it.
    cleanUpPathsNotUsedByMoveCopy(pathsBeingMovedToBeDeletedAfter);
    if (remaining == 0)
        pathsBeingMovedToBeDeletedAfter.clear();
    m_observer->jobsChanged(remaining);

    if (!ok) {
        switch (error.code) {
        case FileCopyHelper::Cancelled:
            qWarning("User canceled");
            break;
        case FileCopyHelper::NotEnoughSpace:
            m_alerts->showCriticalAlert(Texts::localized("NotEnoughspaceAlrtTitle"), Texts::localized("NotEnoughspaceAlrtInfTxt"));
            break;
        default:
            m_alerts->showCriticalAlert(QStringLiteral("%1 ,%2").arg(error.info.value(QStringLiteral("fileName")).toString(), error.message),
                                        QString());
        }
    }
    qWarning("RC=%d, error>%s, errorcode=%d, err.Domain>%s", ok ? 1 : 0, ok ? "(null)" : qPrintable(error.message),
             ok ? 0 : error.code, ok ? "(null)" : qPrintable(error.domain));
    copyingFilesToOtherVolume = false;
    m_observer->jobFinished(job, ok ? std::nullopt : std::optional<Error>(error));
    if (remaining == 0)
        Q_EMIT allJobsFinished();
}

// Deletes the listed sources that no running job reads any more; they leave the waiting list.
void MoveCopyOrchestrator::cleanUpPathsNotUsedByMoveCopy(const QStringList &paths)
{
    if (paths.isEmpty())
        return;
    const QStringList candidates = paths;
    const QList<int> unused = getFilePathsNOTUsedByMoveOrCopy(candidates);
    for (int i : unused) {
        const QString &path = candidates.at(i);
        pathsBeingMovedToBeDeletedAfter.removeAll(path);
        if (!FsCalls::exists(path))
            continue;
        qWarning("pathsThatCanBeDeletedAtTheMoment >%s", qPrintable(NativePath::forDisplay(path)));
        if (TreeWalk::removeRecursively(NativePath::toNative(path), [](const QByteArray &p, int e) {
                qWarning("could not remove the moved source %s: %s", p.constData(), strerror(e));
            }))
            qWarning("Removed File > %s", qPrintable(NativePath::forDisplay(path)));
    }
}

void MoveCopyOrchestrator::cancelCopyProgress(const FileCopyParamsPtr &job)
{
    {
        QMutexLocker lock(&m_jobsLock);
        if (!copyProgressParams.contains(job))
            return;
        job->stopped = true;
    }
    // A cancelled move keeps its sources, even if another job's end cleans up first.
    for (const QString &source : job->sourcePathsArr())
        pathsBeingMovedToBeDeletedAfter.removeAll(source);
}

void MoveCopyOrchestrator::cancelAll()
{
    for (const FileCopyParamsPtr &job : runningJobs())
        cancelCopyProgress(job);
}

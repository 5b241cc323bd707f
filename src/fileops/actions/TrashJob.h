#pragma once

#include "TrashItems.h"

#include <QObject>
#include <QSemaphore>

#include <atomic>

// The Trash button's work off the main thread, in the shape of the program's other file jobs:
// start() returns at once, progress comes per item at most ten times a second, cancel() is seen
// between items, finished() comes exactly once, on the thread that owns the job. Many items, a
// volume to eject, or a large folder to delete for good take time; the panel shows how far it got.
class TrashJob : public QObject
{
    Q_OBJECT
public:
    enum class Work {
        Trash,         // to the trash, or ejected when a removable volume's mount point
        DeleteForGood, // only after the user said so for these very items
    };

    TrashJob(QStringList paths, Work work, TrashService *trash, VolumeService *volumes,
             QObject *parent = nullptr);
    ~TrashJob() override; // cancels, and waits for the item in hand

    void start();
    void cancel() { m_cancelled = true; }
    bool isRunning() const { return m_started && !m_finished; }
    bool isFinished() const { return m_finished; }
    Work work() const { return m_work; }

    // Complete once finished() has come. DeleteForGood fills `deleted` and `failures`.
    const TrashItems::Outcome &outcome() const { return m_outcome; }
    const QStringList &deleted() const { return m_deleted; }

Q_SIGNALS:
    void progress(int done, int total, const QString &item);
    void finished();

private:
    void run();
    bool next(int done, const QString &path);

    const QStringList m_paths;
    const Work m_work;
    TrashService *m_trash;
    VolumeService *m_volumes;
    std::atomic<bool> m_cancelled{false};
    bool m_started = false;
    bool m_finished = false;
    QSemaphore m_workerDone;
    qint64 m_lastReport = 0;
    // Written by the worker only, read only after finished().
    TrashItems::Outcome m_outcome;
    QStringList m_deleted;
};

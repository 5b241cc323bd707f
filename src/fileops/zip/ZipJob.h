#pragma once

#include "utils/Result.h"

#include <QObject>
#include <QSemaphore>
#include <QStringList>

#include <atomic>
#include <memory>

class TrashService;

// Packs dropped items into one archive in the shape of every long job of the program: start()
// returns at once, progress comes in bytes at most ten times a second, cancel() is seen within one
// chunk, finished() comes exactly once. Files are deflated on every core, one stream per file, and
// written in order. The archive is written under a hidden temporary name and takes its final name
// only when complete; an older archive of that name goes to the trash at that moment, never before.
// A cancel or a failure removes the partial archive and leaves the older one alone.
class ZipJob : public QObject
{
    Q_OBJECT
public:
    // `archivePath` empty: the archive's name of the items (ZipPlan::archivePath).
    ZipJob(QStringList paths, TrashService *trash, QString archivePath = QString(), QObject *parent = nullptr);
    ~ZipJob() override;

    void start();
    void cancel() { m_cancelled = true; }
    bool isCancelled() const { return m_cancelled; }
    bool isRunning() const { return m_started && !m_finished; }
    bool isFinished() const { return m_finished; }

    quint64 bytesDone() const { return m_done; }
    quint64 bytesTotal() const { return m_total; }
    // Once finished: the archive's path, or why there is none (code ECANCELED after a cancel; the
    // info's "path" names the item that could not be read).
    const Result<QString> &result() const { return m_result; }
    const QString &plannedPath() const { return m_archivePath; }

    // Items deflated at once; 0: one per core.
    int parallel = 0;

Q_SIGNALS:
    void progress(quint64 done, quint64 total, const QString &currentName);
    void finished();

private:
    struct Shared;
    void run(const std::shared_ptr<Shared> &shared);
    void post(std::function<void()> update);

    QStringList m_paths;
    TrashService *m_trash;
    QString m_archivePath;
    std::atomic<bool> m_cancelled{false};
    bool m_started = false;
    bool m_finished = false;
    QSemaphore m_workerDone;
    quint64 m_done = 0;
    quint64 m_total = 0;
    Result<QString> m_result = QString();
};

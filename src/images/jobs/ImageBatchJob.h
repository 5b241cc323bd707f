#pragma once

#include "core/fs/AtomicFile.h"
#include "utils/Result.h"

#include <QList>
#include <QObject>
#include <QSemaphore>
#include <QStringList>

#include <atomic>
#include <functional>
#include <memory>

// Long image work in the shape every job of the program has: start() returns at once and the work
// runs on the global thread pool; progress comes per item; cancel() is seen between items; finished()
// comes exactly once. Signals arrive on the thread that owns the job. Destroying a running job
// cancels it and waits for the item in hand. The decoding itself runs in the image worker process
// (images/ImageWorker.h); a cancel reaches an item in hand there too.
class ImageBatchJob : public QObject
{
    Q_OBJECT
public:
    explicit ImageBatchJob(QObject *parent = nullptr);
    ~ImageBatchJob() override;

    void start();
    void cancel() { m_cancelled = true; }
    bool isCancelled() const { return m_cancelled; }
    bool isFinished() const { return m_finished; }

    // Filled as the work goes; complete once finished() has come.
    const QStringList &written() const { return m_written; }
    const QList<Error> &failures() const { return m_failures; }
    int done() const { return m_done; }
    int total() const { return m_total; }
    int percent() const { return m_total > 0 ? m_done * 100 / m_total : (m_finished ? 100 : 0); }

    // Called from the worker for each unit of work the ledger pays for; unset, nothing is credited.
    std::function<void(quint64 seconds)> credit;

Q_SIGNALS:
    void progress(int done, int total, const QString &item);
    void itemWritten(const QString &path);
    void itemFailed(const Error &error);
    void finished();

protected:
    // Cancels a running job and waits for its worker. Each subclass calls it first in its destructor,
    // before its own members go.
    void waitForWorker();
    // The work, on a pool thread.
    virtual void run() = 0;
    // From the worker: each posts to the owner's thread, in order.
    void reportProgress(int done, int total, const QString &item);
    void reportWritten(const QString &path);
    void reportFailure(const Error &error);
    void creditSeconds(quint64 seconds) const;
    // From the worker: whether anything was written so far.
    bool hasWritten() const { return m_writtenCount.load() > 0; }
    // What the parallel part of an item hands on: the output written under a temporary name, or why
    // there is none. `stopHere` ends the work before this item: neither it nor any after it is finished.
    struct Prepared
    {
        Result<std::shared_ptr<AtomicFile>> output = std::shared_ptr<AtomicFile>();
        bool stopHere = false;
    };
    using Prepare = std::function<Prepared(int item, int worker)>;
    // Gives the output its final name.
    using Finish = std::function<Result<QString>(int item, AtomicFile &output)>;
    // Items 0 .. count-1: `prepare` runs up to `parallel` of them at once (`worker`, 0 .. parallel-1,
    // says which of the threads runs it, for state of its own), at most 2 x parallel items ahead of
    // the one being finished; `finish` takes each result strictly in item order and writes it, so the
    // outputs are named, written and reported as one item after another would. Progress is named by
    // `label`. Stops starting items once cancelled. Answers how many items were finished.
    int forEachInOrder(int count, int parallel, const Prepare &prepare, const Finish &finish,
                       const std::function<QString(int)> &label);

private:
    void post(std::function<void()> update);

    std::atomic<bool> m_cancelled{false};
    std::atomic<int> m_writtenCount{0};
    bool m_started = false;
    bool m_joined = false;
    bool m_finished = false;
    QSemaphore m_workerDone;
    QStringList m_written;
    QList<Error> m_failures;
    int m_done = 0;
    int m_total = 0;
};

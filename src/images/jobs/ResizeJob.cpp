#include "ResizeJob.h"

#include "core/fs/PathParts.h"
#include "images/ImageErrors.h"
#include "images/ImageWorker.h"
#include "images/jobs/PixelBudget.h"
#include "utils/Utils.h"
#include "worker/Jobs.h"

#include <QThread>

#include <cerrno>

namespace J = WorkerJobs;

ResizeJob::ResizeJob(QList<ResizePlan::Task> tasks, QObject *parent)
    : ImageBatchJob(parent), m_tasks(std::move(tasks))
{
}

ResizeJob::~ResizeJob() { waitForWorker(); }

Result<std::shared_ptr<AtomicFile>> ResizeJob::resized(const ResizePlan::Task &task, const std::function<bool()> &stopped)
{
    if (!task.problem.isEmpty()) {
        // The reader's own reason says more than "no size".
        const auto probed = ImageWorker::call(J::kProbe, {}, task.source, stopped);
        return probed.ok() ? ImageErrors::make(task.source, task.problem) : probed.error();
    }
    if (task.width.isEmpty() || task.height.isEmpty())
        return ImageErrors::make(task.source, QStringLiteral("a width and a height are needed"));
    // The source's pixels and the result's, as the budget counts them: a turned photo is decoded whole.
    const QSizeF source = Utils::getImageDimensionsAtPathInSize(task.source);
    const qint64 bytes = 4 * (qint64(source.width()) * qint64(source.height()) +
                              qint64(task.width.toFloat() + 1) * qint64(task.height.toFloat() + 1));
    const PixelBudget::Hold hold = PixelBudget::shared().hold(bytes, stopped);
    if (!hold.held())
        return ImageErrors::make(task.source, QStringLiteral("cancelled"), ECANCELED);
    auto output = std::make_shared<AtomicFile>(task.output);
    // The encoder is the one the source's first byte names; the name keeps the source's extension.
    const Status written = ImageWorker::writeInto(*output, J::kResize,
                                                  {{J::kWidth, double(task.width.toFloat())},
                                                   {J::kHeight, double(task.height.toFloat())},
                                                   {J::kCode, qint64(Utils::getImageFileTypeFromPath(task.source))}},
                                                  task.source, stopped);
    if (!written.ok())
        return written.error();
    return output;
}

Result<QString> ResizeJob::commit(const ResizePlan::Task &task, AtomicFile &output)
{
    const Status committed = output.commit(AtomicFile::Mode::Replace);
    if (!committed.ok())
        return committed.error();
    return task.output;
}

void ResizeJob::run()
{
    // A worker decodes one image at a time: images side by side keep every core busy, as far as the
    // budget of decoded pixels lets them. Outputs are named in the plan's order all the same, so two
    // that take one name end as the later one, as one after another would.
    forEachInOrder(
        int(m_tasks.size()), QThread::idealThreadCount(),
        [this](int i, int) { return Prepared{resized(m_tasks.at(i), [this] { return isCancelled(); })}; },
        [this](int i, AtomicFile &output) { return commit(m_tasks.at(i), output); },
        [this](int i) { return PathParts::lastComponent(m_tasks.at(i).source); });
}

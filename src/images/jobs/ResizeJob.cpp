#include "images/vips/VipsSupport.h"

#include "ResizeJob.h"

#include "core/fs/AtomicFile.h"
#include "core/fs/PathParts.h"
#include "images/ImageEncoder.h"
#include "images/Resampler.h"
#include "utils/Utils.h"

ResizeJob::ResizeJob(QList<ResizePlan::Task> tasks, QObject *parent)
    : ImageBatchJob(parent), m_tasks(std::move(tasks))
{
}

ResizeJob::~ResizeJob() { waitForWorker(); }

Result<QString> ResizeJob::resizeOneImg(const ResizePlan::Task &task)
{
    if (!task.problem.isEmpty())
        return VipsSupport::error(task.source, task.problem);
    if (task.width.isEmpty() || task.height.isEmpty())
        return VipsSupport::error(task.source, QStringLiteral("a width and a height are needed"));
    auto loaded = VipsSupport::load(task.source);
    if (!loaded.ok())
        return loaded.error();
    auto source = VipsSupport::decoded(loaded.value(), task.source);
    if (!source.ok())
        return source.error();
    auto scaled = Resampler::lanczosScale(source.value(), task.width.toFloat(), task.height.toFloat());
    if (!scaled.ok())
        return VipsSupport::error(task.source, scaled.error().message);
    // The encoder is the one the source's first byte names; the name keeps the source's extension.
    auto encoded = ImageEncoder::encode(scaled.value(), Utils::getImageFileTypeFromPath(task.source));
    if (!encoded.ok())
        return VipsSupport::error(task.source, encoded.error().message);
    const Status written = AtomicFile::writeFile(task.output, encoded.value(), AtomicFile::Mode::Replace);
    if (!written.ok())
        return written.error();
    return task.output;
}

void ResizeJob::run()
{
    const int total = int(m_tasks.size());
    for (int i = 0; i < total && !isCancelled(); ++i) {
        const auto &task = m_tasks.at(i);
        reportProgress(i, total, PathParts::lastComponent(task.source));
        const auto result = resizeOneImg(task);
        if (result.ok())
            reportWritten(result.value());
        else
            reportFailure(result.error());
    }
    reportProgress(total, total, {});
}

#include "images/vips/VipsSupport.h"

#include "ResizeJob.h"

#include "core/fs/AtomicFile.h"
#include "core/fs/PathParts.h"
#include "images/ImageEncoder.h"
#include "images/Resampler.h"
#include "utils/Utils.h"

#include <QThread>

ResizeJob::ResizeJob(QList<ResizePlan::Task> tasks, QObject *parent)
    : ImageBatchJob(parent), m_tasks(std::move(tasks))
{
}

ResizeJob::~ResizeJob() { waitForWorker(); }

Result<QString> ResizeJob::resizeOneImg(const ResizePlan::Task &task)
{
    if (!task.problem.isEmpty()) {
        // The reader's own reason says more than "no size".
        const auto opened = VipsSupport::load(task.source);
        return opened.ok() ? VipsSupport::error(task.source, task.problem) : opened.error();
    }
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
    // The decoder works on one core at a time: two images at once keep both cores busy. The outputs
    // are independent and are reported in the plan's order all the same.
    forEachInOrder(int(m_tasks.size()), QThread::idealThreadCount(),
                   [this](int i) { return resizeOneImg(m_tasks.at(i)); },
                   [this](int i) { return PathParts::lastComponent(m_tasks.at(i).source); });
}

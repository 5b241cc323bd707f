#include "images/vips/VipsSupport.h"

#include "ResizeJob.h"

#include "core/fs/AtomicFile.h"
#include "core/fs/PathParts.h"
#include "images/ImageEncoder.h"
#include "images/Resampler.h"
#include "images/jobs/PixelBudget.h"
#include "utils/Utils.h"

#include <QThread>

ResizeJob::ResizeJob(QList<ResizePlan::Task> tasks, QObject *parent)
    : ImageBatchJob(parent), m_tasks(std::move(tasks))
{
}

ResizeJob::~ResizeJob() { waitForWorker(); }

Result<QByteArray> ResizeJob::resizedData(const ResizePlan::Task &task, const std::function<bool()> &stopped)
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
    // The source's pixels in memory and the result's, as the budget counts them.
    const vips::VImage &header = loaded.value();
    const qint64 pixelBytes = qint64(VIPS_IMAGE_SIZEOF_PEL(header.get_image()));
    const qint64 bytes = pixelBytes * (qint64(header.width()) * header.height() +
                                       qint64(task.width.toFloat() + 1) * qint64(task.height.toFloat() + 1));
    const PixelBudget::Hold hold = PixelBudget::shared().hold(bytes, stopped);
    if (!hold.held())
        return VipsSupport::error(task.source, QStringLiteral("cancelled"));
    auto source = VipsSupport::decoded(header, task.source);
    if (!source.ok())
        return source.error();
    auto scaled = Resampler::lanczosScale(source.value(), task.width.toFloat(), task.height.toFloat());
    if (!scaled.ok())
        return VipsSupport::error(task.source, scaled.error().message);
    // The encoder is the one the source's first byte names; the name keeps the source's extension.
    auto encoded = ImageEncoder::encode(scaled.value(), Utils::getImageFileTypeFromPath(task.source));
    if (!encoded.ok())
        return VipsSupport::error(task.source, encoded.error().message);
    return encoded.value();
}

Result<QString> ResizeJob::write(const ResizePlan::Task &task, const QByteArray &data)
{
    const Status written = AtomicFile::writeFile(task.output, data, AtomicFile::Mode::Replace);
    if (!written.ok())
        return written.error();
    return task.output;
}

Result<QString> ResizeJob::resizeOneImg(const ResizePlan::Task &task)
{
    const auto data = resizedData(task);
    return data.ok() ? write(task, data.value()) : Result<QString>(data.error());
}

void ResizeJob::run()
{
    // The decoder works on one core at a time: images side by side keep every core busy, as far as
    // the budget of decoded pixels lets them. Outputs are written in the plan's order all the same,
    // so two that take one name end as the later one, as one after another would.
    forEachInOrder(
        int(m_tasks.size()), QThread::idealThreadCount(),
        [this](int i, int) { return Prepared{resizedData(m_tasks.at(i), [this] { return isCancelled(); })}; },
        [this](int i, const QByteArray &data) { return write(m_tasks.at(i), data); },
        [this](int i) { return PathParts::lastComponent(m_tasks.at(i).source); });
}

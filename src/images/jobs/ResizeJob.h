#pragma once

#include "ImageBatchJob.h"
#include "images/ResizePlan.h"

// Writes each planned resize: Lanczos-resampled, encoded as the source's first byte says, named as
// the plan says, replacing an earlier output of that name in one step. Several images are resampled
// at once, each in an image worker, and written and reported in the plan's order.
class ResizeJob : public ImageBatchJob
{
    Q_OBJECT
public:
    explicit ResizeJob(QList<ResizePlan::Task> tasks, QObject *parent = nullptr);
    ~ResizeJob() override;

    // The resized image under a temporary name beside its output, within the program's budget of
    // decoded pixels (waiting for room until `stopped` says true), and its final name.
    static Result<std::shared_ptr<AtomicFile>> resized(const ResizePlan::Task &task, const std::function<bool()> &stopped = {});
    static Result<QString> commit(const ResizePlan::Task &task, AtomicFile &output);

protected:
    void run() override;

private:
    const QList<ResizePlan::Task> m_tasks;
};

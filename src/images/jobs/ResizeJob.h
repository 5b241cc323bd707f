#pragma once

#include "ImageBatchJob.h"
#include "images/ResizePlan.h"

// Writes each planned resize, one image after another: Lanczos-resampled, encoded as the source's
// first byte says, named as the plan says, replacing an earlier output of that name in one step.
class ResizeJob : public ImageBatchJob
{
    Q_OBJECT
public:
    explicit ResizeJob(QList<ResizePlan::Task> tasks, QObject *parent = nullptr);
    ~ResizeJob() override;

    // One resize, on the caller's thread: the output's path, or why there is none.
    static Result<QString> resizeOneImg(const ResizePlan::Task &task);

protected:
    void run() override;

private:
    const QList<ResizePlan::Task> m_tasks;
};

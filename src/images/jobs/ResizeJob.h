#pragma once

#include "ImageBatchJob.h"
#include "images/ResizePlan.h"

// Writes each planned resize: Lanczos-resampled, encoded as the source's first byte says, named as
// the plan says, replacing an earlier output of that name in one step. Several images are resampled
// at once, and written and reported in the plan's order.
class ResizeJob : public ImageBatchJob
{
    Q_OBJECT
public:
    explicit ResizeJob(QList<ResizePlan::Task> tasks, QObject *parent = nullptr);
    ~ResizeJob() override;

    // One resize, on the caller's thread: the output's path, or why there is none.
    static Result<QString> resizeOneImg(const ResizePlan::Task &task);
    // The resized image encoded, within the program's budget of decoded pixels (waiting for room
    // until `stopped` says true), and its writing.
    static Result<QByteArray> resizedData(const ResizePlan::Task &task, const std::function<bool()> &stopped = {});
    static Result<QString> write(const ResizePlan::Task &task, const QByteArray &data);

protected:
    void run() override;

private:
    const QList<ResizePlan::Task> m_tasks;
};

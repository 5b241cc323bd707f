#include "ImageWorker.h"

#include "ImageErrors.h"

#include "core/fs/AtomicFile.h"
#include "core/fs/NativePath.h"
#include "worker/Jobs.h"
#include "worker/Protocol.h"
#include "worker/WorkerPool.h"

#include <cerrno>

Result<QCborMap> ImageWorker::call(QLatin1StringView job, QCborMap arguments, const QString &subject,
                                   const std::function<bool()> &cancelled)
{
    if (!subject.isEmpty())
        arguments.insert(WorkerJobs::kSource, WorkerProtocol::path(subject));
    auto reply = WorkerPool::shared().call(QString(job), arguments, cancelled);
    if (!reply.ok()) {
        const Error &e = reply.error();
        return ImageErrors::make(subject, e.info.value(QStringLiteral("reason")).toString(),
                                 e.code == WorkerErrors::Cancelled ? ECANCELED : 1);
    }
    if (!WorkerProtocol::succeeded(reply.value()))
        return WorkerProtocol::errorOf(reply.value());
    return reply.value();
}

Status ImageWorker::writeInto(AtomicFile &output, QLatin1StringView job, QCborMap arguments, const QString &subject,
                              const std::function<bool()> &cancelled)
{
    if (Status opened = output.open(); !opened.ok())
        return opened;
    arguments.insert(WorkerJobs::kOutput, QCborValue(output.temporaryPath()));
    const auto reply = call(job, arguments, subject, cancelled);
    return reply.ok() ? success() : Status(reply.error());
}

void ImageWorker::expectWork() { WorkerPool::shared().prestart(); }

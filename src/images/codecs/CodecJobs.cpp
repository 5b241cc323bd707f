#include "CodecJobs.h"

#include "images/ImageErrors.h"
#include "worker/Jobs.h"
#include "worker/Protocol.h"

#include "core/fs/NativePath.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

std::map<QString, CodecJob> CodecJobs::all()
{
    std::map<QString, CodecJob> jobs;
    addImageJobs(jobs);
    addPdfJobs(jobs);
    addJpegJobs(jobs);
    return jobs;
}

Result<int> CodecJobs::openOutput(const QCborMap &arguments)
{
    const QString output = WorkerProtocol::pathFrom(arguments.value(WorkerJobs::kOutput));
    // The program created it; a link or anything else in its place is not followed.
    const int fd = ::open(NativePath::toNative(output).constData(), O_WRONLY | O_TRUNC | O_NOFOLLOW | O_CLOEXEC);
    if (fd < 0)
        return ImageErrors::make(output, QString::fromLocal8Bit(strerror(errno)), errno);
    return fd;
}

Status CodecJobs::writeAll(int fd, const QByteArray &data)
{
    const char *at = data.constData();
    qint64 left = data.size();
    while (left > 0) {
        const ssize_t n = ::write(fd, at, size_t(left));
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0)
            return ImageErrors::make(QString(), QString::fromLocal8Bit(strerror(errno)), errno);
        at += n;
        left -= n;
    }
    return success();
}

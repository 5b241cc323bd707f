#pragma once

// The work the image worker does for the program, one function per job of the protocol
// (worker/Jobs.h). Runs only in the worker process, where the decoders are.

#include "utils/Result.h"

#include <QCborMap>
#include <QImage>
#include <QString>

#include <functional>
#include <map>

struct JobContext
{
    // True once the program has asked to stop the job; asked while pixels are made.
    std::function<bool()> cancelled;
};

using CodecJob = std::function<Result<QCborMap>(const QCborMap &arguments, const JobContext &context)>;

namespace CodecJobs {

// Every job by its name.
std::map<QString, CodecJob> all();

// The parts, by area.
void addImageJobs(std::map<QString, CodecJob> &jobs);
void addPdfJobs(std::map<QString, CodecJob> &jobs);
void addJpegJobs(std::map<QString, CodecJob> &jobs);

// An image's pixels fitted into side x side, upright, in sRGB.
Result<QImage> thumbnailOfImage(const QString &source, int side);

// Opens the file a job writes into: the program made it, empty, under a temporary name.
Result<int> openOutput(const QCborMap &arguments);
// Writes all of `data` into `fd`.
Status writeAll(int fd, const QByteArray &data);

} // namespace CodecJobs

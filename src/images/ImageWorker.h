#pragma once

// The image area's way to its decoders: every libvips and PDF-reader call runs in the image worker
// process (src/worker), reached through the program's shared pool of workers. A worker that crashed,
// ran out of time or could not be started is told as an error about the file in hand.

#include "utils/Result.h"

#include <QCborMap>
#include <QLatin1StringView>

#include <functional>

class AtomicFile;

namespace ImageWorker {

// Runs `job` about the file `subject` (which goes into the arguments as "source" when not empty).
Result<QCborMap> call(QLatin1StringView job, QCborMap arguments, const QString &subject,
                      const std::function<bool()> &cancelled = {});

// The same for a job that writes a file: its bytes go into `output`'s temporary file, which the
// caller then commits under a final name. `output` is opened here.
Status writeInto(AtomicFile &output, QLatin1StringView job, QCborMap arguments, const QString &subject,
                 const std::function<bool()> &cancelled = {});

// An image action is likely soon (an image or a PDF was dropped): a worker starts now, in the
// background, so that the action does not wait for it.
void expectWork();

} // namespace ImageWorker

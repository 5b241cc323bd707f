#include "BitmapImageRep.h"
#include "ImageWorker.h"

#include "utils/Utils.h"
#include "worker/Jobs.h"
#include "worker/Protocol.h"

namespace J = WorkerJobs;

// The resampler lives in the image worker: the pixels go there and back.

BitmapImageRep Utils::scaleImage(const BitmapImageRep &image, const QSizeF &size)
{
    if (!image.isValid() || size.width() < 1.0 || size.height() < 1.0)
        return {};
    if (image.pixelsWide() < 1 || image.pixelsHigh() < 1 || image.size.width() < 1.0 || image.size.height() < 1.0)
        return {};
    const double pixelsPerPoint = image.pixelsWide() / image.size.width();
    const auto scaled = ImageWorker::call(J::kScale,
                                          {{J::kImage, WorkerProtocol::image(image.pixels)},
                                           {J::kWidth, size.width()},
                                           {J::kHeight, size.height()}},
                                          {});
    if (!scaled.ok()) {
        qWarning("%s", qPrintable(scaled.error().message));
        return {};
    }
    const QImage pixels = WorkerProtocol::imageFrom(scaled.value().value(J::kImage));
    if (pixels.isNull())
        return {};
    return {pixels, QSizeF(size.width() / pixelsPerPoint, size.height() / pixelsPerPoint)};
}

#include "CodecJobs.h"

#include "images/ImageErrors.h"
#include "images/edit/LosslessJpeg.h"
#include "worker/Jobs.h"

#include <turbojpeg.h>

// Turning and flipping a JPEG without decoding it, for the editor (images/edit/LosslessJpeg.h).

namespace J = WorkerJobs;
using LosslessJpeg::Op;

namespace {

int tjOp(Op op)
{
    switch (op) {
    case Op::None: return TJXOP_NONE;
    case Op::FlipHorizontal: return TJXOP_HFLIP;
    case Op::FlipVertical: return TJXOP_VFLIP;
    case Op::Transpose: return TJXOP_TRANSPOSE;
    case Op::Transverse: return TJXOP_TRANSVERSE;
    case Op::Rotate90: return TJXOP_ROT90;
    case Op::Rotate180: return TJXOP_ROT180;
    case Op::Rotate270: return TJXOP_ROT270;
    }
    return TJXOP_NONE;
}


Result<QByteArray> transformedHere(const QByteArray &jpeg, Op op)
{
    tjhandle handle = tjInitTransform();
    if (!handle)
        return ImageErrors::make(QString(), QStringLiteral("the JPEG transformer could not start"));
    tjtransform transform{};
    transform.op = tjOp(op);
    // Perfect or nothing: edge blocks that cannot move are never left behind or cut off silently.
    transform.options = TJXOPT_PERFECT;
    unsigned char *out = nullptr;
    unsigned long outSize = 0;
    const int status = tjTransform(handle, reinterpret_cast<const unsigned char *>(jpeg.constData()),
                                   static_cast<unsigned long>(jpeg.size()), 1, &out, &outSize, &transform,
                                   TJFLAG_STOPONWARNING);
    Result<QByteArray> result = status == 0 ? Result<QByteArray>(QByteArray(reinterpret_cast<const char *>(out), qsizetype(outSize)))
                                            : Result<QByteArray>(ImageErrors::make(QString(), QString::fromUtf8(tjGetErrorStr2(handle))));
    tjFree(out);
    tjDestroy(handle);
    return result;
}

Result<QCborMap> jpegTransform(const QCborMap &a, const JobContext &)
{
    const int op = int(a.value(J::kOperation).toInteger());
    if (op < int(Op::None) || op > int(Op::Rotate270))
        return ImageErrors::make(QString(), QStringLiteral("no such JPEG transform: %1").arg(op));
    auto out = transformedHere(a.value(J::kData).toByteArray(), Op(op));
    if (!out.ok())
        return out.error();
    return QCborMap{{J::kData, out.value()}};
}

} // namespace

void CodecJobs::addJpegJobs(std::map<QString, CodecJob> &jobs) { jobs[J::kJpegTransform] = jpegTransform; }

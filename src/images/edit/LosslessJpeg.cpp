#include "LosslessJpeg.h"

#include "images/ImageErrors.h"

#include "images/ImageWorker.h"
#include "worker/Jobs.h"

#include <array>

namespace LosslessJpeg {

namespace {

// Each operation as the 2 x 2 matrix it applies to centred pixel coordinates (x right, y down).
using Matrix = std::array<int, 4>;

Matrix matrixOf(Op op)
{
    switch (op) {
    case Op::None: return {1, 0, 0, 1};
    case Op::FlipHorizontal: return {-1, 0, 0, 1};
    case Op::FlipVertical: return {1, 0, 0, -1};
    case Op::Transpose: return {0, 1, 1, 0};
    case Op::Transverse: return {0, -1, -1, 0};
    case Op::Rotate90: return {0, -1, 1, 0};
    case Op::Rotate180: return {-1, 0, 0, -1};
    case Op::Rotate270: return {0, 1, -1, 0};
    }
    return {1, 0, 0, 1};
}

Matrix times(const Matrix &a, const Matrix &b)
{
    return {a[0] * b[0] + a[1] * b[2], a[0] * b[1] + a[1] * b[3], a[2] * b[0] + a[3] * b[2], a[2] * b[1] + a[3] * b[3]};
}

} // namespace

Op forOrientationAndTurns(int orientation, int clockwiseTurns)
{
    // What stands each EXIF orientation up.
    static const Op upright[] = {Op::None, Op::None, Op::FlipHorizontal, Op::Rotate180, Op::FlipVertical,
                                 Op::Transpose, Op::Rotate90, Op::Transverse, Op::Rotate270};
    Matrix m = matrixOf(orientation >= 1 && orientation <= 8 ? upright[orientation] : Op::None);
    const int turns = ((clockwiseTurns % 4) + 4) % 4;
    for (int i = 0; i < turns; ++i)
        m = times(matrixOf(Op::Rotate90), m);
    for (Op op : {Op::None, Op::FlipHorizontal, Op::FlipVertical, Op::Transpose, Op::Transverse, Op::Rotate90,
                  Op::Rotate180, Op::Rotate270})
        if (matrixOf(op) == m)
            return op;
    return Op::None;
}

Result<QByteArray> transformed(const QByteArray &jpeg, Op op)
{
    // libjpeg runs in the image worker, like every decoder.
    namespace J = WorkerJobs;
    const auto reply = ImageWorker::call(J::kJpegTransform, {{J::kData, jpeg}, {J::kOperation, int(op)}}, {});
    if (!reply.ok())
        return reply.error();
    return reply.value().value(J::kData).toByteArray();
}

} // namespace LosslessJpeg

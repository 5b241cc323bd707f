#include "LosslessJpeg.h"

#include "images/ImageErrors.h"

#include <turbojpeg.h>

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

} // namespace LosslessJpeg

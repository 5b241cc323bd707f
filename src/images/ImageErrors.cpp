#include "ImageErrors.h"

#include "core/fs/NativePath.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

Error ImageErrors::make(const QString &path, const QString &reason, int code)
{
    const QString message = path.isEmpty() ? reason : QStringLiteral("%1: %2").arg(NativePath::forDisplay(path), reason);
    return Error{QString::fromLatin1(kDomain), code, message,
                 {{QStringLiteral("path"), path}, {QStringLiteral("reason"), reason}}};
}

Error ImageErrors::tooLarge(const QString &path, qint64 width, qint64 height)
{
    return make(path, QStringLiteral("the image is too large (%1 x %2 pixels; at most %3 megapixels are read)")
                          .arg(width)
                          .arg(height)
                          .arg(kMaxPixels / 1000000));
}

Error ImageErrors::damaged(const QString &path, const QString &decoderMessage)
{
    qWarning("%s: %s", qPrintable(NativePath::forDisplay(path)), qPrintable(decoderMessage.simplified()));
    return make(path, QString::fromLatin1(kDamaged));
}

std::optional<Error> ImageErrors::unusableInput(const QString &path)
{
    const QByteArray native = NativePath::toNative(path);
    // Not blocking: a named pipe must not hold up the question.
    const int fd = ::open(native.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (fd < 0)
        return make(path, QString::fromLocal8Bit(strerror(errno)), errno);
    struct stat st;
    const bool statted = ::fstat(fd, &st) == 0;
    ::close(fd);
    if (statted && S_ISDIR(st.st_mode))
        return make(path, QString::fromLatin1(kFolder), EISDIR);
    if (statted && S_ISREG(st.st_mode) && st.st_size == 0)
        return make(path, QString::fromLatin1(kEmpty));
    return std::nullopt;
}

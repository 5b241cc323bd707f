#include "Relocate.h"

#include "core/fs/FsCalls.h"
#include "core/fs/NativePath.h"
#include "core/fs/PathParts.h"
#include "core/fs/TreeWalk.h"
#include "fileops/engine/EntryCopier.h"
#include "utils/Utils.h"

#include <fcntl.h>

#include <cerrno>
#include <cstring>

namespace {

constexpr int kAttempts = 8; // another program would have to take eight names in a row

Error relocateError(const QString &path, int err)
{
    const QString reason = QString::fromLocal8Bit(strerror(err));
    return Error{QString::fromLatin1(Relocate::kErrorDomain), err, QStringLiteral("%1: %2").arg(NativePath::forDisplay(path), reason),
                 {{QStringLiteral("path"), path}, {QStringLiteral("reason"), reason}}};
}

int copyAcross(const QString &from, const QString &to)
{
    const FsCalls::UniqueFd srcDir(::open(NativePath::toNative(PathParts::parent(from)).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    const FsCalls::UniqueFd dstDir(::open(NativePath::toNative(PathParts::parent(to)).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!srcDir || !dstDir)
        return errno;
    EntryCopier copier([](quint64, const QByteArray &) { return true; });
    if (!copier.copy(srcDir.fd, NativePath::toNative(PathParts::lastComponent(from)), dstDir.fd,
                     NativePath::toNative(PathParts::lastComponent(to))))
        return copier.error();
    return 0;
}

} // namespace

Status Relocate::item(const QString &from, const QString &to)
{
    int err = FsCalls::renameNoReplace(from, to);
    if (err == EXDEV) {
        err = copyAcross(from, to);
        if (err == 0) {
            // Only now, with everything in its new place, does the source go.
            TreeWalk::removeRecursively(NativePath::toNative(from), [](const QByteArray &p, int e) {
                qWarning("moved, but the source could not be removed: %s: %s", p.constData(), strerror(e));
            });
        }
    }
    if (err != 0)
        return relocateError(err == EEXIST ? to : from, err);
    return success();
}

Result<QString> Relocate::intoFolder(const QString &from, const QString &folder, const QString &name)
{
    const auto parts = PathParts::splitExtension(name);
    QString target = folder + QLatin1Char('/') + name;
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        const Status moved = item(from, target);
        if (moved.ok())
            return target;
        if (moved.error().code != EEXIST)
            return moved.error();
        target = folder + QLatin1Char('/') + Utils::nameForNewFileOrFolder(folder, parts.name, parts.extension);
    }
    return relocateError(target, EEXIST);
}

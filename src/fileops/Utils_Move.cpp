#include "core/fs/FsCalls.h"
#include "core/fs/NativePath.h"
#include "core/fs/PathParts.h"
#include "core/texts/Texts.h"
#include "actions/UndoLog.h"
#include "engine/EntryCopier.h"
#include "utils/Utils.h"

#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstring>

namespace {

QString freeTarget(const QString &dest, const QString &src)
{
    const auto parts = PathParts::splitExtension(PathParts::lastComponent(src));
    return dest + QChar('/') + Utils::nameForNewFileOrFolder(dest, parts.name, parts.extension);
}

// The source takes a temporary name beside the old item first, so the old one goes only once the new
// one is in place; any failure puts the source back where it was.
int replaceByRename(const QString &src, const QString &target, const std::function<Status(const QString &)> &setAside)
{
    const QString temp = PathParts::parent(target) + QChar('/') + NativePath::fromNative(EntryMetadata::temporaryName());
    if (const int e = FsCalls::renameNoReplace(src, temp))
        return e;
    const Status aside = setAside ? setAside(target) : Status(Error{{}, EIO, QStringLiteral("nothing to set it aside")});
    int e = aside.ok() ? FsCalls::renameNoReplace(temp, target) : EIO;
    if (e != 0) {
        if (FsCalls::renameNoReplace(temp, src) != 0)
            qWarning("error replacing file while Moving it>>%s: the item is kept as %s",
                     qPrintable(NativePath::forDisplay(src)), qPrintable(NativePath::forDisplay(temp)));
        if (!aside.ok())
            qWarning("error replacing file while Moving it>>%s", qPrintable(aside.error().message));
    }
    return e;
}

} // namespace

Utils::MoveResult Utils::moveOneOrMultipleFiles(const QStringList &paths, const QString &dest,
                                                const QStringList &keepBothPaths, const QStringList &replacePaths,
                                                const std::function<Status(const QString &)> &setAside)
{
    MoveResult result;
    QList<UndoLog::Step> steps;
    bool replaced = false;
    for (const QString &src : paths) {
        QString target = dest + QChar('/') + PathParts::lastComponent(src);
        int error = 0;
        if (FsCalls::exists(target) && replacePaths.contains(src)) {
            error = replaceByRename(src, target, setAside);
            replaced = true;
        } else {
            if (FsCalls::exists(target))
                target = freeTarget(dest, src);
            error = FsCalls::renameNoReplace(src, target);
            if (error == EEXIST) { // taken since the look: another free name, never an overwrite
                target = freeTarget(dest, src);
                error = FsCalls::renameNoReplace(src, target);
            }
        }
        if (error == EXDEV) {
            result.needsCopying.append(src); // a mount of the same device: the bytes have to travel
        } else if (error != 0) {
            qWarning("errorMovingFile>>%s: %s", qPrintable(NativePath::forDisplay(src)), strerror(error));
        } else {
            result.moved.append(target);
            steps.append({target, src, false});
        }
    }
    // A replaced item lies in the trash: putting the moved ones back would not bring it back, so no Undo.
    const QString undoID = replaced ? QString() : UndoLog::record(QStringLiteral("move"), steps);
    postSimpleNotificationWithTitle(
        QStringLiteral("%1 files have been moved!").arg(result.moved.size()),
        QStringLiteral("to ..%1/.../%2")
            .arg(PathParts::lastComponent(PathParts::parent(PathParts::parent(dest))), PathParts::lastComponent(dest)),
        Texts::localized("revealShowFileBtn"), {{QStringLiteral("filePaths"), result.moved}, {QStringLiteral("undoID"), undoID}});
    return result;
}

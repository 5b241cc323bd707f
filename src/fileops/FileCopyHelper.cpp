#include "FileCopyHelper.h"

#include "core/fs/FsCalls.h"
#include "core/fs/NativePath.h"
#include "core/fs/PathParts.h"
#include "core/texts/Texts.h"
#include "engine/EntryCopier.h"
#include "utils/Utils.h"

#include <QDir>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace {

constexpr quint32 kCopyFileAll = 0xe000f;
constexpr quint32 kCopyFileRecursive = 0x8000;

// Runs the entry copier for src -> dst with the selection's running sum folded into the progress.
bool copyEntry(const QString &src, const QString &dst, quint64 runningSum, quint64 total,
               const FileCopyHelper::ProgressHandler &progress, Error *error, const FileCopyHelper::SetAside &setAside)
{
    FsCalls::UniqueFd srcDir(::open(NativePath::toNative(PathParts::parent(src)).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    FsCalls::UniqueFd dstDir(::open(NativePath::toNative(PathParts::parent(dst)).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (srcDir.fd < 0 || dstDir.fd < 0) {
        if (error)
            *error = FileCopyHelper::makeError(FileCopyHelper::Failed, errno, PathParts::lastComponent(src));
        return false;
    }
    quint64 copied = runningSum;
    EntryCopier copier([&](quint64 bytes, const QByteArray &name) {
        copied += bytes;
        bool stop = false;
        if (progress)
            progress(copied, total, &stop, NativePath::fromNative(name));
        return !stop;
    });
    EntryCopier::SetAside aside;
    if (setAside) {
        aside = [&](int, const QByteArray &name, int *posixError) {
            const Status s = setAside(PathParts::parent(dst) + QChar('/') + NativePath::fromNative(name));
            if (!s.ok()) {
                qWarning("could not set aside %s: %s", qPrintable(NativePath::forDisplay(dst)),
                         qPrintable(s.error().message));
                *posixError = EIO;
            }
            return s.ok();
        };
    }
    if (copier.copy(srcDir.fd, NativePath::toNative(PathParts::lastComponent(src)), dstDir.fd,
                    NativePath::toNative(PathParts::lastComponent(dst)), aside))
        return true;
    if (error) {
        const QString failed = copier.failedName().isEmpty() ? PathParts::lastComponent(src)
                                                             : NativePath::fromNative(copier.failedName());
        *error = copier.error() == ECANCELED ? FileCopyHelper::makeError(FileCopyHelper::Cancelled)
                                             : FileCopyHelper::makeError(FileCopyHelper::Failed, copier.error(), failed);
    }
    return false;
}

} // namespace

Error FileCopyHelper::makeError(int code, int posixError, const QString &fileName)
{
    Error e{QString::fromLatin1(kQDFileCopyErrorDomain), code, QString(), {}};
    switch (code) {
    case NotAFile:
        e.message = QStringLiteral("File being copied is not a File");
        break;
    case Cancelled:
        e.message = QStringLiteral("File copyIsCanceledbyUser");
        break;
    case NotEnoughSpace:
        e.message = QStringLiteral("Not enough space!");
        break;
    default: {
        const char *text = posixError ? strerror(posixError) : "";
        e.message = *text ? QString::fromLocal8Bit(text) : QStringLiteral("Unknown Error");
        e.info.insert(QStringLiteral("fileName"), NativePath::forDisplay(fileName));
        e.info.insert(QStringLiteral("errno"), posixError);
    }
    }
    return e;
}

quint32 FileCopyHelper::flagsForFile(const QString &path)
{
    return Utils::isThisAFolderHere(path) ? (kCopyFileAll | kCopyFileRecursive) : kCopyFileAll;
}

bool FileCopyHelper::copyFileAt(const QString &src, const QString &dst, const ProgressHandler &progress,
                                quint64 *outFileSize, Error *error)
{
    if (Utils::isThisAFolderHere(src)) {
        if (error)
            *error = makeError(NotAFile);
        return false;
    }
    Utils::createfolderAtPath(PathParts::parent(dst), src);
    const quint64 size = Utils::fileSizeAtPath(src);
    if (outFileSize)
        *outFileSize = size;
    return copyEntry(src, dst, 0, size, progress, error, {});
}

bool FileCopyHelper::copyFolderAt(const QString &src, const QString &dst, const ProgressHandler &progress,
                                  quint64 *outFileSize, Error *error)
{
    const quint64 total = Utils::folderSize(src);
    if (outFileSize)
        *outFileSize = total;
    Utils::createfolderAtPath(PathParts::parent(dst), src);
    return copyEntry(src, dst, 0, total, progress, error, {});
}

QString FileCopyHelper::destPathForDuplicatefile(const QString &src, const QString &destParFolder)
{
    const QString name = PathParts::lastComponent(src);
    const QString candidate = destParFolder + QChar('/') + name;
    struct stat st;
    if (::lstat(NativePath::toNative(candidate).constData(), &st) != 0)
        return candidate;
    const auto parts = PathParts::splitExtension(name);
    return destParFolder + QChar('/') + Utils::nameForNewFileOrFolder(destParFolder, parts.name, parts.extension);
}

bool FileCopyHelper::copyItemsToAnotherDrive(const QStringList &paths, const QString &destFolder,
                                             const ProgressHandler &progress, Error *error,
                                             const QSet<QString> &replacing, const SetAside &setAside)
{
    // Sizes once, up front: a folder counts its contents plus its own entry.
    QList<quint64> sizes;
    quint64 total = 0;
    for (const QString &p : paths) {
        sizes.append((Utils::isThisAFolderHere(p) ? Utils::folderSize(p) : 0) + Utils::fileSizeAtPath(p));
        total += sizes.last();
    }
    if (!Utils::checkIfTheresEnoughSpaceForNumberOfBytes(total, destFolder)) {
        qWarning("NOT_ENOUGH_SPACE");
        if (error)
            *error = makeError(NotEnoughSpace);
        return false;
    }
    quint64 runningSum = 0;
    QStringList written;
    for (qsizetype i = 0; i < paths.size(); ++i) {
        const QString &src = paths.at(i);
        const bool replace = replacing.contains(src);
        const QString dst = replace ? destFolder + QChar('/') + PathParts::lastComponent(src)
                                    : destPathForDuplicatefile(src, destFolder);
        if (!copyEntry(src, dst, runningSum, total, progress, error, replace ? setAside : SetAside()))
            return false;
        runningSum += sizes.at(i);
        written.append(dst);
    }
    Utils::postSimpleNotificationWithTitle(
        QStringLiteral("%1 files have been copied!").arg(paths.size()),
        QStringLiteral("to ..%1/../%2").arg(PathParts::lastComponent(PathParts::parent(PathParts::parent(destFolder))), PathParts::lastComponent(destFolder)),
        Texts::localized("revealShowFileBtn"), {{QStringLiteral("filePaths"), written}});
    return true;
}

#include "FreedesktopTrash.h"

#include "core/fs/FsCalls.h"
#include "core/fs/NativePath.h"
#include "platform/linux/MountTable.h"

#include <QByteArray>
#include <QDateTime>
#include <QStandardPaths>
#include <QUrl>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>

namespace {

constexpr int kAttempts = 10000;

Error trashError(int code, int err, const QString &message, const QString &path)
{
    return Error{QStringLiteral("Trash"), code, message, {{QStringLiteral("path"), path}, {QStringLiteral("errno"), err}}};
}

QByteArray parentOf(const QByteArray &p)
{
    const qsizetype slash = p.lastIndexOf('/');
    return slash <= 0 ? QByteArray("/") : p.left(slash);
}

QByteArray lastOf(const QByteArray &p) { return p.mid(p.lastIndexOf('/') + 1); }

QByteArray realFolder(const QByteArray &folder)
{
    char resolved[PATH_MAX];
    return ::realpath(folder.constData(), resolved) ? QByteArray(resolved) : QByteArray();
}

// The mount point that holds `realPath`: the longest one that is a prefix of it.
QByteArray topDirOf(const QByteArray &realPath)
{
    QByteArray best = "/";
    for (const MountEntry &m : MountTable::read()) {
        const QByteArray &mp = m.mountPoint;
        const bool under = realPath == mp || (realPath.startsWith(mp) && (mp.endsWith('/') || realPath.at(mp.size()) == '/'));
        if (under && mp.size() > best.size())
            best = mp;
    }
    return best;
}

// A folder of ours that no link stands in for, made with `mode` if missing.
bool ownFolder(const QByteArray &path, mode_t mode)
{
    if (::mkdir(path.constData(), mode) != 0 && errno != EEXIST)
        return false;
    struct stat st;
    if (::lstat(path.constData(), &st) != 0)
        return false;
    if (!S_ISDIR(st.st_mode) || st.st_uid != ::geteuid()) {
        errno = EPERM;
        return false;
    }
    return true;
}

bool withFilesAndInfo(const QByteArray &trash)
{
    return ownFolder(trash, 0700) && ownFolder(trash + "/files", 0700) && ownFolder(trash + "/info", 0700);
}

QByteArray homeTrash()
{
    QByteArray data = NativePath::toNative(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation));
    // Without the data folder there is nothing to hold the trash: make it, as any desktop would.
    for (qsizetype i = 1; i <= data.size(); ++i)
        if (i == data.size() || data.at(i) == '/')
            ::mkdir(data.left(i).constData(), 0700);
    return realFolder(data) + "/Trash";
}

QByteArray topDirTrash(const QByteArray &topDir)
{
    const QByteArray root = topDir == "/" ? QByteArray() : topDir;
    const QByteArray uid = QByteArray::number(::geteuid());
    // A shared .Trash counts only if it is a real folder with the sticky bit, never a link.
    struct stat st;
    if (::lstat((root + "/.Trash").constData(), &st) == 0 && S_ISDIR(st.st_mode) && (st.st_mode & S_ISVTX)) {
        const QByteArray mine = root + "/.Trash/" + uid;
        if (withFilesAndInfo(mine))
            return mine;
    }
    const QByteArray own = root + "/.Trash-" + uid;
    return withFilesAndInfo(own) ? own : QByteArray();
}

QByteArray percentDecoded(const QByteArray &text) { return QByteArray::fromPercentEncoding(text); }

} // namespace

QByteArray FreedesktopTrash::percentEncoded(const QByteArray &path)
{
    return path.toPercentEncoding("/");
}

QByteArray FreedesktopTrash::trashFolderFor(const QByteArray &item, bool *isHomeTrash)
{
    const QByteArray folder = realFolder(parentOf(item));
    if (folder.isEmpty())
        return {};
    const QByteArray home = homeTrash();
    struct stat a, b;
    const QByteArray homeData = parentOf(home);
    if (::stat(folder.constData(), &a) == 0 && ::stat(homeData.constData(), &b) == 0 && a.st_dev == b.st_dev &&
        topDirOf(folder) == topDirOf(homeData) && withFilesAndInfo(home)) {
        if (isHomeTrash)
            *isHomeTrash = true;
        return home;
    }
    if (isHomeTrash)
        *isHomeTrash = false;
    return topDirTrash(topDirOf(folder));
}

Result<QString> FreedesktopTrash::moveToTrash(const QString &path)
{
    const QByteArray item = NativePath::toNative(path);
    const QString shown = NativePath::forDisplay(path);
    struct stat st;
    if (::lstat(item.constData(), &st) != 0)
        return trashError(1, errno, QStringLiteral("%1: %2").arg(shown, QString::fromLocal8Bit(strerror(errno))), path);
    bool home = false;
    const QByteArray trash = trashFolderFor(item, &home);
    if (trash.isEmpty())
        return trashError(kNoTrashHere, errno, QStringLiteral("%1: there is no trash on its volume").arg(shown), path);

    // The info file's Path: absolute for the home trash, relative to the volume for its own.
    QByteArray original = realFolder(parentOf(item)) + '/' + lastOf(item);
    if (!home) {
        const QByteArray top = topDirOf(parentOf(original));
        original = original.mid(top == "/" ? 1 : top.size() + 1);
    }
    const QByteArray info = "[Trash Info]\nPath=" + percentEncoded(original) + "\nDeletionDate=" +
                            QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-ddThh:mm:ss")).toLatin1() + '\n';
    const QByteArray base = lastOf(item);
    for (int n = 1; n <= kAttempts; ++n) {
        const QByteArray name = n == 1 ? base : base + '.' + QByteArray::number(n);
        // The info file is made first and exclusively: it reserves the name.
        const QByteArray infoPath = trash + "/info/" + name + ".trashinfo";
        const int fd = ::open(infoPath.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0600);
        if (fd < 0) {
            if (errno == EEXIST)
                continue;
            return trashError(1, errno, QStringLiteral("%1: %2").arg(shown, QString::fromLocal8Bit(strerror(errno))), path);
        }
        const bool written = ::write(fd, info.constData(), size_t(info.size())) == info.size();
        const bool closed = ::close(fd) == 0;
        const QByteArray target = trash + "/files/" + name;
        const int moved = written && closed ? FsCalls::renameNoReplace(AT_FDCWD, item, AT_FDCWD, target) : EIO;
        if (moved == 0)
            return NativePath::fromNative(target);
        ::unlink(infoPath.constData());
        if (moved == EEXIST)
            continue; // a file without its info file: another name
        const int code = moved == EXDEV ? kNoTrashHere : 1;
        return trashError(code, moved, QStringLiteral("%1: %2").arg(shown, QString::fromLocal8Bit(strerror(moved))), path);
    }
    return trashError(1, EEXIST, QStringLiteral("%1: no free name in the trash").arg(shown), path);
}

Result<QString> FreedesktopTrash::restore(const QString &trashedPath)
{
    const QByteArray trashed = NativePath::toNative(trashedPath);
    const QByteArray trash = parentOf(parentOf(trashed));
    const QByteArray infoPath = trash + "/info/" + lastOf(trashed) + ".trashinfo";
    const Result<QByteArray> info = FsCalls::readWholeFile(NativePath::fromNative(infoPath), 64 << 10);
    if (!info.ok())
        return trashError(1, ENOENT, QStringLiteral("the trash no longer knows where %1 came from").arg(NativePath::forDisplay(trashedPath)),
                          trashedPath);
    QByteArray original;
    for (const QByteArray &line : info.value().split('\n'))
        if (line.startsWith("Path="))
            original = percentDecoded(line.mid(5));
    if (original.isEmpty())
        return trashError(1, EINVAL, QStringLiteral("%1 has no Path in the trash").arg(NativePath::forDisplay(trashedPath)), trashedPath);
    if (!original.startsWith('/')) {
        // Relative to the volume: .Trash-$uid sits in its top folder, .Trash/$uid one further down.
        QByteArray top = parentOf(trash);
        if (lastOf(top) == ".Trash")
            top = parentOf(top);
        original = (top == "/" ? QByteArray() : top) + '/' + original;
    }
    const QString back = NativePath::fromNative(original);
    const int moved = FsCalls::renameNoReplace(AT_FDCWD, trashed, AT_FDCWD, original);
    if (moved != 0) {
        const QString why = moved == EEXIST ? QStringLiteral("%1 has been taken meanwhile").arg(NativePath::forDisplay(back))
                                            : QStringLiteral("%1: %2").arg(NativePath::forDisplay(back), QString::fromLocal8Bit(strerror(moved)));
        return trashError(moved == EEXIST ? kNameTaken : 1, moved, why, back);
    }
    ::unlink(infoPath.constData());
    return back;
}

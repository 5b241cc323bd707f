#include "ZipPlan.h"

#include "core/fs/FsCalls.h"
#include "core/fs/NativePath.h"
#include "core/fs/PathParts.h"

#include <QSet>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <optional>
#include <cerrno>
#include <cstring>
#include <vector>

namespace {

constexpr int kDirFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

Error unreadable(const QByteArray &path, int err)
{
    const QString shown = NativePath::forDisplay(NativePath::fromNative(path));
    return Error{QString::fromLatin1(ZipPlan::kErrorDomain), err,
                 QStringLiteral("%1: %2").arg(shown, QString::fromLocal8Bit(strerror(err))),
                 {{QStringLiteral("path"), NativePath::fromNative(path)}, {QStringLiteral("reason"), QString::fromLocal8Bit(strerror(err))}}};
}

class Walker
{
public:
    ZipPlan plan;

    std::optional<Error> addItem(const QByteArray &source, const QByteArray &name)
    {
        struct stat st;
        if (::lstat(source.constData(), &st) != 0)
            return unreadable(source, errno);
        return add(AT_FDCWD, source, source, name, st);
    }

private:
    std::optional<Error> add(int dirFd, const QByteArray &entryName, const QByteArray &source, const QByteArray &name,
                             const struct stat &st)
    {
        ZipEntry e;
        e.source = source;
        e.mode = st.st_mode;
        e.mtime = st.st_mtim.tv_sec;
        if (S_ISREG(st.st_mode)) {
            e.kind = ZipEntry::Kind::File;
            e.name = name;
            e.size = quint64(st.st_size);
            plan.totalBytes += e.size;
            plan.entries.append(e);
            return std::nullopt;
        }
        if (S_ISLNK(st.st_mode)) {
            e.kind = ZipEntry::Kind::Link;
            e.name = name;
            e.size = quint64(st.st_size);
            plan.entries.append(e);
            return std::nullopt;
        }
        if (!S_ISDIR(st.st_mode)) {
            // A pipe or a device has no contents to pack; reading a pipe would wait forever.
            qWarning("zip: %s is not a file, folder or link; left out", qPrintable(NativePath::forDisplay(NativePath::fromNative(source))));
            return std::nullopt;
        }
        e.kind = ZipEntry::Kind::Folder;
        e.name = name + '/';
        plan.entries.append(e);
        const int fd = ::openat(dirFd, entryName.constData(), kDirFlags);
        if (fd < 0)
            return unreadable(source, errno);
        DIR *dir = ::fdopendir(fd);
        if (!dir) {
            const int err = errno;
            ::close(fd);
            return unreadable(source, err);
        }
        std::vector<QByteArray> children;
        while (true) {
            errno = 0;
            const dirent *d = ::readdir(dir);
            if (!d) {
                if (errno != 0) {
                    const int err = errno;
                    ::closedir(dir);
                    return unreadable(source, err);
                }
                break;
            }
            // Hidden entries stay out below the dropped item ("." and ".." with them).
            if (d->d_name[0] == '.')
                continue;
            children.emplace_back(d->d_name);
        }
        std::sort(children.begin(), children.end());
        std::optional<Error> failure;
        for (const QByteArray &child : children) {
            struct stat cst;
            if (::fstatat(::dirfd(dir), child.constData(), &cst, AT_SYMLINK_NOFOLLOW) != 0) {
                failure = unreadable(source + '/' + child, errno);
                break;
            }
            if ((failure = add(::dirfd(dir), child, source + '/' + child, name + '/' + child, cst)))
                break;
        }
        ::closedir(dir);
        return failure;
    }
};

// A second item of the same name from another folder gets the name with a number, as a copy would.
QByteArray freeTopName(const QByteArray &name, QSet<QByteArray> &used)
{
    QByteArray candidate = name;
    const auto parts = PathParts::splitExtension(NativePath::fromNative(name));
    for (int n = 1; used.contains(candidate); ++n) {
        QString shown = parts.name + QStringLiteral(" %1").arg(n);
        if (!parts.extension.isEmpty())
            shown += QLatin1Char('.') + parts.extension;
        candidate = NativePath::toNative(shown);
    }
    used.insert(candidate);
    return candidate;
}

} // namespace

QString ZipPlan::archivePath(const QStringList &paths)
{
    if (paths.size() == 1) {
        const QString &only = paths.first();
        return PathParts::parent(only) + QLatin1Char('/') +
               PathParts::splitExtension(PathParts::lastComponent(only)).name + QStringLiteral(".zip");
    }
    return PathParts::parent(paths.value(0)) + QStringLiteral("/QuaydropZip.zip");
}

Result<ZipPlan> ZipPlan::build(const QStringList &paths)
{
    Walker walker;
    QSet<QByteArray> used;
    for (const QString &path : paths) {
        const QByteArray source = NativePath::toNative(path);
        const QByteArray name = freeTopName(NativePath::toNative(PathParts::lastComponent(path)), used);
        if (auto failure = walker.addItem(source, name))
            return *failure;
    }
    return walker.plan;
}

#include "core/fs/NativePath.h"
#include "core/fs/TreeWalk.h"
#include "utils/Utils.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include <dirent.h>
#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <vector>

namespace {

QString tempFolderPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) +
           QStringLiteral("/" QD_BUNDLE_ID "/QDTempOperations");
}

// The folder holds other applications' dropped data: it must be ours alone, and a link planted in
// its place is never followed.
bool isPrivateFolderOfOurs(const QByteArray &path)
{
    struct stat st;
    if (lstat(path.constData(), &st) != 0)
        return false;
    if (!S_ISDIR(st.st_mode) || st.st_uid != geteuid()) {
        qWarning("temp folder %s is not a folder of this user; it is left alone", path.constData());
        return false;
    }
    if ((st.st_mode & 077) != 0 && chmod(path.constData(), 0700) != 0) {
        qWarning("temp folder %s could not be made private: %s", path.constData(), strerror(errno));
        return false;
    }
    return true;
}

} // namespace

QString Utils::createTempFileOperationsFolderIfneeded()
{
    const QString path = tempFolderPath();
    const QByteArray native = NativePath::toNative(path);
    struct stat st;
    if (lstat(native.constData(), &st) == 0)
        return isPrivateFolderOfOurs(native) ? path : QString();

    // Created now; like the first answer of the original design, this call still answers nil.
    const mode_t old = umask(077);
    const bool made = QDir().mkpath(path);
    umask(old);
    if (made)
        chmod(native.constData(), 0700);
    return QString();
}

void Utils::cleanUPTepmFileOperationsFolder()
{
    const QString folder = createTempFileOperationsFolderIfneeded();
    if (folder.isNull())
        return;
    const QByteArray native = NativePath::toNative(folder);
    DIR *dir = opendir(native.constData());
    if (!dir)
        return;
    std::vector<QByteArray> entries;
    while (const dirent *e = readdir(dir)) {
        if (strcmp(e->d_name, ".") != 0 && strcmp(e->d_name, "..") != 0)
            entries.emplace_back(native + '/' + e->d_name);
    }
    closedir(dir);
    for (const QByteArray &entry : entries) {
        if (!TreeWalk::removeRecursively(entry, [](const QByteArray &, int) {}))
            qWarning("Failed to clean up temp dir");
    }
}

bool Utils::isInTempFileOperationsFolder(const QString &path)
{
    // Both spellings: promised files come with the folder's links resolved.
    const QString folder = tempFolderPath();
    const QString resolved = QDir(folder).canonicalPath();
    for (const QString &root : {folder, resolved})
        if (!root.isEmpty() && path.startsWith(root + QLatin1Char('/')))
            return true;
    return false;
}

QString Utils::existingStartFolder(const QString &remembered)
{
    for (const QString &candidate : {remembered, QStandardPaths::writableLocation(QStandardPaths::DesktopLocation),
                                     QDir::homePath()})
        if (!candidate.isEmpty() && QFileInfo(candidate).isDir())
            return candidate;
    return QDir::rootPath();
}

QString Utils::checkAndReturnHomeFolderPath(const QString &)
{
    // From the password database, not $HOME: the real home even when the environment says otherwise.
    std::vector<char> buffer(16384);
    passwd entry{};
    passwd *found = nullptr;
    if (getpwuid_r(geteuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || !found)
        return QString();
    const QByteArray name = found->pw_name;
    found = nullptr;
    if (getpwnam_r(name.constData(), &entry, buffer.data(), buffer.size(), &found) != 0 || !found)
        return QString();
    return NativePath::fromNative(QByteArray(found->pw_dir));
}

#include "MimeByName.h"
#include "core/fs/NativePath.h"
#include "core/fs/PathParts.h"
#include "utils/Utils.h"

#include <QFile>
#include <QSet>

#include <algorithm>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// Folders with these extensions are documents or applications, not places to open.
const QSet<QString> &packageExtensions()
{
    static const QSet<QString> extensions{
        QStringLiteral("app"),       QStringLiteral("bundle"),       QStringLiteral("framework"),
        QStringLiteral("plugin"),    QStringLiteral("kext"),         QStringLiteral("appex"),
        QStringLiteral("rtfd"),      QStringLiteral("pages"),        QStringLiteral("numbers"),
        QStringLiteral("key"),       QStringLiteral("xcodeproj"),    QStringLiteral("xcworkspace"),
        QStringLiteral("playground"), QStringLiteral("photoslibrary"), QStringLiteral("fcpbundle"),
        QStringLiteral("logicx"),    QStringLiteral("band"),         QStringLiteral("prefpane"),
        QStringLiteral("saver"),     QStringLiteral("qlgenerator"),  QStringLiteral("mdimporter"),
        QStringLiteral("wdgt"),      QStringLiteral("docset"),       QStringLiteral("scptd"),
        QStringLiteral("pkg"),       QStringLiteral("mpkg"),         QStringLiteral("sparsebundle"),
        QStringLiteral("imovielibrary"), QStringLiteral("component"), QStringLiteral("xpc")};
    return extensions;
}

// Kept out of the image panel although they are images.
const QSet<QString> &vectorAndLayeredImageTypes()
{
    static const QSet<QString> types{QStringLiteral("image/svg+xml"), QStringLiteral("image/svg+xml-compressed"),
                                     QStringLiteral("application/illustrator"),
                                     QStringLiteral("image/vnd.adobe.photoshop")};
    return types;
}

QString extensionOf(const QString &path)
{
    return PathParts::splitExtension(PathParts::lastComponent(path)).extension.toLower();
}

QString typeByName(const QString &path)
{
    return MimeByName::shared().typeOf(NativePath::forDisplay(PathParts::lastComponent(path)));
}

// The type or one it derives from answers to the predicate.
bool conformsTo(const QString &type, const auto &predicate)
{
    const QStringList lineage = MimeByName::shared().typeAndAncestors(type);
    return std::any_of(lineage.begin(), lineage.end(), predicate);
}

} // namespace

bool Utils::isThisAFolderHere(const QString &path)
{
    struct stat st;
    return stat(NativePath::toNative(path).constData(), &st) == 0 && S_ISDIR(st.st_mode);
}

bool Utils::isFilePackageAtPath(const QString &path)
{
    return isThisAFolderHere(path) && packageExtensions().contains(extensionOf(path));
}

quint64 Utils::determineFileType(const QString &path)
{
    if (isThisAFolderHere(path) && !isFilePackageAtPath(path))
        return 333;
    const QString ext = extensionOf(path);
    if (ext == u"rtfd")
        return 2;
    if (ext.isEmpty())
        return 777;
    // By name only: the content is never read.
    const QString type = typeByName(path);
    if (vectorAndLayeredImageTypes().contains(type))
        return 777;
    if (conformsTo(type, [](const QString &n) { return n.startsWith(u"image/"); }))
        return 1;
    if (conformsTo(type, [](const QString &n) { return n.startsWith(u"text/"); }))
        return 2;
    if (type == u"application/rtf")
        return 2;
    return 777;
}

bool Utils::isArchiveFile(const QString &path)
{
    // Packed or compressed as a whole; formats that are zip inside (office documents, jars) are documents.
    static const QSet<QString> archives{
        QStringLiteral("application/zip"),          QStringLiteral("application/x-tar"),
        QStringLiteral("application/x-compressed-tar"), QStringLiteral("application/x-bzip-compressed-tar"),
        QStringLiteral("application/x-bzip2-compressed-tar"), QStringLiteral("application/x-xz-compressed-tar"),
        QStringLiteral("application/x-zstd-compressed-tar"), QStringLiteral("application/x-lzma-compressed-tar"),
        QStringLiteral("application/x-lz4-compressed-tar"), QStringLiteral("application/x-lzip-compressed-tar"),
        QStringLiteral("application/x-tarz"),       QStringLiteral("application/gzip"),
        QStringLiteral("application/x-bzip"),       QStringLiteral("application/x-bzip2"),
        QStringLiteral("application/x-xz"),         QStringLiteral("application/zstd"),
        QStringLiteral("application/x-lzma"),       QStringLiteral("application/x-lz4"),
        QStringLiteral("application/x-lzip"),       QStringLiteral("application/x-compress"),
        QStringLiteral("application/x-7z-compressed"), QStringLiteral("application/vnd.rar"),
        QStringLiteral("application/x-rar"),        QStringLiteral("application/x-arj"),
        QStringLiteral("application/vnd.ms-cab-compressed"), QStringLiteral("application/x-cpio")};
    if (isThisAFolderHere(path))
        return false;
    return archives.contains(typeByName(path));
}

QStringList Utils::getImagesOnlyFromArrPaths(const QStringList &paths)
{
    QStringList images;
    for (const QString &p : paths)
        if (determineFileType(p) == 1)
            images.append(p);
    return images;
}

bool Utils::checkifFilePrintable(const QString &path)
{
    static const QSet<QString> composite{QStringLiteral("application/pdf"), QStringLiteral("application/postscript"),
                                         QStringLiteral("image/x-eps")};
    return conformsTo(typeByName(path), [](const QString &n) { return composite.contains(n); });
}

bool Utils::isFileOrFolderInVisible(const QString &path)
{
    const QString name = PathParts::lastComponent(path);
    if (name.startsWith(QChar('.')) && name != u"." && name != u"..")
        return true;
    if (name.isEmpty() || path == u"/")
        return false;
    // File managers hide the names listed one per line in the parent's ".hidden".
    const int fd = open(NativePath::toNative(PathParts::parent(path) + QStringLiteral("/.hidden")).constData(),
                        O_RDONLY | O_CLOEXEC);
    QFile hidden;
    if (fd < 0 || !hidden.open(fd, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        if (fd >= 0)
            close(fd);
        return false;
    }
    const QByteArray nativeName = NativePath::toNative(name);
    // A .hidden file is a short list; anything huge is not one.
    const QList<QByteArray> lines = hidden.read(1 << 20).split('\n');
    for (QByteArray line : lines) {
        if (line.endsWith('\r'))
            line.chop(1);
        if (line == nativeName)
            return true;
    }
    return false;
}

bool Utils::isFileOrFolderReadable(const QString &path)
{
    return access(NativePath::toNative(path).constData(), R_OK) == 0;
}

bool Utils::isFileOrFolderWritable(const QString &path)
{
    return access(NativePath::toNative(path).constData(), W_OK) == 0;
}

bool Utils::checkIfFileIsFromLibraryFolder(const QString &path)
{
    const QString home = checkAndReturnHomeFolderPath(path);
    return !home.isNull() && path.startsWith(home + QStringLiteral("/Library"));
}

bool Utils::isFolderFromLibraryFolder(const QString &path)
{
    return checkIfFileIsFromLibraryFolder(path) && isThisAFolderHere(path);
}

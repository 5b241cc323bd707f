#include "PictureSaver.h"

#include "core/fs/AtomicFile.h"
#include "core/fs/PathParts.h"
#include "fileops/FreeName.h"

namespace PictureSaver {

QString baseName(const QString &sourcePath)
{
    return QStringLiteral("_Quaydrop-%1").arg(PathParts::splitExtension(PathParts::lastComponent(sourcePath)).name);
}

QString extension(const QString &sourcePath)
{
    return PathParts::splitExtension(PathParts::lastComponent(sourcePath)).extension;
}

Result<QString> writeBeside(const QString &folder, const QString &sourcePath, const QByteArray &bytes)
{
    return FreeName::write(folder, baseName(sourcePath), extension(sourcePath), [&bytes](const QString &path) {
        return AtomicFile::writeFile(path, bytes, AtomicFile::Mode::KeepExisting);
    });
}

Result<QString> writeAt(const QString &path, const QByteArray &bytes)
{
    const Status written = AtomicFile::writeFile(path, bytes, AtomicFile::Mode::Replace);
    if (!written.ok())
        return written.error();
    return path;
}

} // namespace PictureSaver

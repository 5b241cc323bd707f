#include "ImageTypeCode.h"

#include "core/fs/NativePath.h"
#include "core/fs/PathParts.h"
#include "utils/Utils.h"


#include <sys/stat.h>

#include <fcntl.h>
#include <unistd.h>

QString Utils::getImageExtensionString(quint64 code)
{
    // Each name says what its encoder writes: JPEG 2000 is "jp2", never a JPEG's name.
    static const char *const table[] = {"tiff", "bmp", "gif", "jpg", "png", "jp2"};
    return code < std::size(table) ? QString::fromLatin1(table[code]) : QString();
}

quint64 Utils::getImageFileTypeFromExtension(const QString &extension)
{
    // Exact and case-sensitive: "JPG" falls through to PNG, as the encoders have always done.
    if (extension == u"png")
        return ImageTypeCode::PNG;
    if (extension == u"jpg" || extension == u"jpeg")
        return ImageTypeCode::JPEG;
    if (extension == u"gif")
        return ImageTypeCode::GIF;
    if (extension == u"tiff" || extension == u"tif")
        return ImageTypeCode::TIFF;
    if (extension == u"bmp")
        return ImageTypeCode::BMP;
    return ImageTypeCode::PNG;
}

quint64 Utils::getImageFileTypeFromData(const QByteArray &data)
{
    if (data.isEmpty())
        return ImageTypeCode::PNG;
    switch (quint8(data.at(0))) {
    case 'B':
        return ImageTypeCode::BMP;
    case 'G':
        return ImageTypeCode::GIF;
    case 'I':
    case 'M':
        return ImageTypeCode::TIFF;
    case 0xFF:
        return ImageTypeCode::JPEG;
    default:
        return ImageTypeCode::PNG;
    }
}

quint64 Utils::getImageFileTypeFromPath(const QString &path)
{
    // One byte decides, so one byte is read.
    const int fd = ::open(NativePath::toNative(path).constData(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return getImageFileTypeFromData({});
    char first = 0;
    const ssize_t n = ::read(fd, &first, 1);
    ::close(fd);
    return getImageFileTypeFromData(n == 1 ? QByteArray(1, first) : QByteArray());
}

QStringList PageImageTypes::supportImageTypes()
{
    return {QStringLiteral("jpg"), QStringLiteral("cur"), QStringLiteral("bmp"), QStringLiteral("jpeg"),
            QStringLiteral("gif"), QStringLiteral("png"), QStringLiteral("tiff"), QStringLiteral("tif"),
            QStringLiteral("ico"), QStringLiteral("icns"), QStringLiteral("tga"), QStringLiteral("psd"),
            QStringLiteral("eps"), QStringLiteral("hdr"), QStringLiteral("jp2"), QStringLiteral("jpc"),
            QStringLiteral("pict"), QStringLiteral("sgi")};
}

bool PageImageTypes::isPageImage(const QString &path)
{
    struct stat st;
    if (::stat(NativePath::toNative(path).constData(), &st) != 0 || S_ISDIR(st.st_mode))
        return false;
    const QString ext = PathParts::splitExtension(PathParts::lastComponent(path)).extension.toLower();
    return supportImageTypes().contains(ext);
}

#include "Thumbnails.h"

#include "core/fs/FsCalls.h"
#include "core/fs/NativePath.h"
#include "images/ImageSize.h"
#include "images/ImageWorker.h"
#include "worker/Jobs.h"
#include "worker/Protocol.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QIcon>
#include <QMimeDatabase>
#include <QPainter>
#include <QStandardPaths>
#include <QUrl>
#include <QtEndian>

#include <sys/stat.h>


namespace {

QString fileUri(const QString &path)
{
    // The cache names a file by the MD5 of its URI, written from the path's bytes.
    return QString::fromLatin1(QUrl::fromLocalFile(QString::fromLatin1(NativePath::toNative(path))).toEncoded());
}

constexpr int kMat = 3; // the frame's width on each side

QImage fitted(const QImage &image)
{
    const int side = Thumbnails::kMaxSide - 2 * kMat;
    if (image.width() <= side && image.height() <= side)
        return image;
    return image.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

// The value of a tEXt chunk ahead of the image data. Qt's reader cuts keys at their first colon, and
// the cache's keys ("Thumb::MTime") have two.
QByteArray pngText(const QByteArray &png, const QByteArray &key)
{
    qsizetype at = 8;
    while (at + 12 <= png.size()) {
        const quint32 length = qFromBigEndian<quint32>(png.constData() + at);
        const QByteArray type = png.mid(at + 4, 4);
        if (type == "IDAT" || at + 12 + qsizetype(length) > png.size())
            break;
        if (type == "tEXt") {
            const QByteArray body = png.mid(at + 8, length);
            const qsizetype nul = body.indexOf('\0');
            if (nul > 0 && body.left(nul) == key)
                return body.mid(nul + 1);
        }
        at += 12 + qsizetype(length);
    }
    return {};
}

// A thumbnail counts only while it states the file's present modification time.
QImage currentCachedThumbnail(const QString &path)
{
    struct stat st;
    if (::stat(NativePath::toNative(path).constData(), &st) != 0)
        return {};
    for (const char *size : {"large", "x-large", "normal"}) {
        QFile file(Thumbnails::cachedThumbnailPath(path, QString::fromLatin1(size)));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const QByteArray png = file.readAll();
        if (pngText(png, "Thumb::MTime").toLongLong() != qint64(st.st_mtime))
            continue;
        const QImage image = QImage::fromData(png, "PNG");
        if (!image.isNull())
            return image;
    }
    return {};
}

QImage framed(const QImage &picture)
{
    // Drawn as an icon: a white mat with a thin border around the picture.
    const int pad = kMat;
    QImage icon(picture.width() + 2 * pad, picture.height() + 2 * pad, QImage::Format_ARGB32_Premultiplied);
    icon.fill(Qt::transparent);
    QPainter p(&icon);
    p.fillRect(icon.rect(), Qt::white);
    p.setPen(QColor(0, 0, 0, 60));
    p.drawRect(icon.rect().adjusted(0, 0, -1, -1));
    p.drawImage(pad, pad, picture);
    return icon;
}

// Common types that are not too large are decoded by Qt's own readers here, scaled while read
// (a JPEG at an eighth of its size costs an eighth); anything else, and PDFs, by the image worker.
QImage decodedThumbnail(const QString &path)
{
    constexpr qint64 kMaxPixelsHere = 40'000'000;
    const int side = Thumbnails::kMaxSide - 2 * kMat;
    if (const auto opened = ImageSize::CommonReader::open(path)) {
        QImageReader *reader = &opened->reader();
        QSize size = reader->size();
        if (size.isValid() && !size.isEmpty() && qint64(size.width()) * size.height() <= kMaxPixelsHere) {
            // The scaled size is of the stored pixels, before any EXIF turn.
            reader->setScaledSize(size.scaled(std::min(side, size.width()), std::min(side, size.height()), Qt::KeepAspectRatio));
            QImage image = reader->read();
            if (!image.isNull())
                return image;
        }
    }
    const auto made = ImageWorker::call(WorkerJobs::kThumbnail, {{WorkerJobs::kSide, side}}, path);
    return made.ok() ? WorkerProtocol::imageFrom(made.value().value(WorkerJobs::kImage)) : QImage();
}

QImage typeIcon(const QString &path)
{
    if (!qobject_cast<QGuiApplication *>(QCoreApplication::instance()))
        return {};
    const QMimeType type = QMimeDatabase().mimeTypeForFile(QString::fromLocal8Bit(NativePath::toNative(path)));
    QIcon icon = QIcon::fromTheme(type.iconName(), QIcon::fromTheme(type.genericIconName()));
    if (icon.isNull())
        icon = QIcon::fromTheme(QStringLiteral("text-x-generic"));
    QImage image = icon.pixmap(128).toImage();
    if (image.isNull()) {
        // No icon theme at all: a blank page, so that something stands for the file.
        image = QImage(96, 128, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        QPainter p(&image);
        p.setPen(QColor(0, 0, 0, 90));
        p.drawRect(image.rect().adjusted(0, 0, -1, -1));
    }
    return image;
}

} // namespace

QString Thumbnails::cachedThumbnailPath(const QString &path, const QString &size)
{
    const QByteArray md5 = QCryptographicHash::hash(fileUri(path).toLatin1(), QCryptographicHash::Md5).toHex();
    return QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) + QStringLiteral("/thumbnails/") + size +
           QChar('/') + QString::fromLatin1(md5) + QStringLiteral(".png");
}

QImage Thumbnails::thumbnailForFilePath(const QString &path)
{
    if (QImage cached = currentCachedThumbnail(path); !cached.isNull())
        return framed(fitted(cached));
    if (QImage decoded = decodedThumbnail(path); !decoded.isNull())
        return framed(fitted(decoded));
    return typeIcon(path);
}

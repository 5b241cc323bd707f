#include "images/vips/VipsSupport.h"

#include "Thumbnails.h"

#include "core/fs/FsCalls.h"
#include "core/fs/NativePath.h"
#include "images/pdf/PdfPages.h"

#include <poppler-qt6.h>

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

QImage decodedThumbnail(const QString &path)
{
    auto image = VipsSupport::load(path, VipsSupport::Access::Sequential);
    if (image.ok()) {
        const double scale = std::min(1.0, double(Thumbnails::kMaxSide - 2 * kMat) / std::max(image.value().width(), image.value().height()));
        auto whole = VipsSupport::decoded(image.value(), path);
        auto small = whole.ok() ? VipsSupport::guarded<vips::VImage>(path, [&] { return whole.value().resize(scale); })
                                : Result<vips::VImage>(whole.error());
        if (small.ok())
            if (auto pixels = VipsSupport::toQImage(small.value()); pixels.ok())
                return pixels.value();
    }
    if (PdfFiles::hasPdfContent(path)) {
        PdfPages::quietReader();
        if (const auto read = FsCalls::readWholeFile(path); read.ok()) {
            const QByteArray &data = read.value();
            const auto doc = Poppler::Document::loadFromData(data);
            if (doc && !doc->isLocked() && doc->numPages() > 0) {
                const auto page = doc->page(0);
                const QSizeF points = page->pageSizeF();
                const double dpi = 72.0 * (Thumbnails::kMaxSide - 2 * kMat) / std::max(points.width(), points.height());
                const QImage rendered = page->renderToImage(dpi, dpi);
                if (!rendered.isNull())
                    return rendered;
            }
        }
    }
    return {};
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

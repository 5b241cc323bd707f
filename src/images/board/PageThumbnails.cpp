#include "PageThumbnails.h"

#include "images/ImageSize.h"
#include "images/Thumbnails.h"

#include <QFileInfo>
#include <QImageReader>
#include <QPointer>

PageThumbnails::PageThumbnails(QObject *parent) : QObject(parent)
{
    // About 100 KB a thumbnail: a board of a thousand pages stays in memory whole.
    m_cache.setMaxCost(128 * 1024 * 1024);
}

PageThumbnails::~PageThumbnails()
{
    m_pool.clear();
    m_pool.waitForDone();
}

QImage PageThumbnails::thumbnail(const LRHMPageItem &item)
{
    if (const QImage *cached = m_cache.object(item.identify))
        return *cached;
    if (m_pending.contains(item.identify) || m_failed.contains(item.identify))
        return {};
    m_pending.insert(item.identify);
    QPointer<PageThumbnails> self(this);
    const quint64 epoch = m_epoch;
    m_pool.start([self, epoch, identify = item.identify, path = item.filePath, transform = item.transform] {
        const QImage image = make(path, transform, kSide);
        QMetaObject::invokeMethod(self, [self, epoch, identify, image] {
            if (self)
                self->deliver(epoch, identify, image);
        }, Qt::QueuedConnection);
    });
    return {};
}

void PageThumbnails::deliver(quint64 epoch, const QString &identify, const QImage &image)
{
    if (epoch != m_epoch)
        return;
    m_pending.remove(identify);
    if (image.isNull()) {
        m_failed.insert(identify);
        qWarning("page board: no thumbnail for %s", qPrintable(identify));
    } else {
        m_cache.insert(identify, new QImage(image), int(image.sizeInBytes()));
    }
    Q_EMIT ready(identify);
}

void PageThumbnails::forgetPending()
{
    m_pool.clear();
    m_pending.clear();
    ++m_epoch;
}

QImage PageThumbnails::make(const QString &path, const QTransform &transform, int side)
{
    QImage picture;
    if (const auto opened = ImageSize::CommonReader::open(path)) {
        QImageReader &reader = opened->reader();
        if (const QSize stored = reader.size(); stored.isValid() && !stored.isEmpty()) {
            // Decoded at the size it is shown: a JPEG is then read at an eighth of its pixels.
            if (stored.width() > side || stored.height() > side)
                reader.setScaledSize(stored.scaled(side, side, Qt::KeepAspectRatio));
            picture = reader.read();
        }
    } else if (QFileInfo(path).isFile()) {
        // PSD, EPS, HDR, JPEG 2000, ...: the shared thumbnailer, which asks the image worker.
        picture = Thumbnails::thumbnailForFilePath(path);
    }
    if (picture.isNull())
        return {};
    if (picture.width() > side || picture.height() > side)
        picture = picture.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    if (!transform.isIdentity())
        picture = picture.transformed(PageGeometry::forYDown(transform), Qt::SmoothTransformation);
    return picture;
}

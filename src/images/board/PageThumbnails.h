#pragma once

// Thumbnails of the page board, made on a pool thread and kept by the entry's identity: a turn gives a
// new identity, so a cached picture is never shown for a page that has changed since. Only what is
// asked for is made (the view asks for the cells it paints), and asking again while it is being made
// costs nothing.

#include "LRHMPageItem.h"

#include <QCache>
#include <QImage>
#include <QObject>
#include <QSet>
#include <QThreadPool>

class PageThumbnails : public QObject
{
    Q_OBJECT
public:
    static constexpr int kSide = 160;

    explicit PageThumbnails(QObject *parent = nullptr);
    ~PageThumbnails() override;

    // The thumbnail if it is ready; else a null image, and `ready` follows once it is made.
    QImage thumbnail(const LRHMPageItem &item);
    // Whether the file could not be made into a picture (it is gone or damaged).
    bool failed(const QString &identify) const { return m_failed.contains(identify); }
    // Drops requests that have not started: the pages they were for are gone.
    void forgetPending();

    // The picture of `path` upright, fitted into side x side, then turned as `transform` (y up) asks;
    // null when the file cannot be read.
    static QImage make(const QString &path, const QTransform &transform, int side);

Q_SIGNALS:
    void ready(const QString &identify);

private:
    void deliver(quint64 epoch, const QString &identify, const QImage &image);

    QThreadPool m_pool;
    QCache<QString, QImage> m_cache;
    QSet<QString> m_pending;
    QSet<QString> m_failed;
    quint64 m_epoch = 0;
};

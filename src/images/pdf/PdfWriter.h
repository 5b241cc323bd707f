#pragma once

// A small PDF writer for pages that each show one image filling the page. A JPEG goes in as its own
// bytes (DCTDecode), anything else as deflated samples with its transparency as a soft mask. The
// document streams out page by page; only the offsets are kept.

#include "JpegInfo.h"
#include "utils/Result.h"

#include <QImage>
#include <QList>
#include <QSizeF>

class AtomicFile;

class PdfWriter
{
public:
    explicit PdfWriter(AtomicFile &out);

    Status begin();
    // The page is `pagePoints` large and the image is drawn over all of it. A JPEG's EXIF orientation
    // (1 to 8) is drawn as the page's matrix, so the data goes in untouched and shows upright.
    Status addJpegPage(const QByteArray &jpeg, const JpegInfo &info, const QSizeF &pagePoints, int orientation = 1);
    Status addImagePage(const QImage &image, const QSizeF &pagePoints);
    Status finish();
    int pageCount() const { return int(m_pages.size()); }

private:
    int reserve();
    Status startObject(int number);
    Status put(const QByteArray &bytes);
    Status putStream(int number, const QByteArray &dictionary, const QByteArray &data);
    Status addPage(int imageObject, const QSizeF &pagePoints, int orientation = 1);

    AtomicFile &m_out;
    QList<qint64> m_offsets; // by object number - 1; -1 until written
    QList<int> m_pages;
    int m_pagesObject = 0;
};

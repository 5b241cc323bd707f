#pragma once

// A small PDF writer for pages that each show one image filling the page. A JPEG goes in as its own
// bytes (DCTDecode), anything else as deflated samples with its transparency as a soft mask. The
// document streams out page by page; only the offsets are kept.

#include "JpegInfo.h"
#include "utils/Result.h"

#include <QImage>
#include <QList>
#include <QSizeF>
#include <QTransform>

class AtomicFile;

class PdfWriter
{
public:
    explicit PdfWriter(AtomicFile &out);

    Status begin();
    // The image is drawn upright over `pagePoints`. A JPEG's EXIF orientation (1 to 8) is drawn as the
    // page's matrix, so the data goes in untouched and shows upright. `turn` (y up, in the upright
    // picture's points) is drawn the same way; the page is then the turned picture's bounding box.
    Status addJpegPage(const QByteArray &jpeg, const JpegInfo &info, const QSizeF &pagePoints, int orientation = 1,
                       const QTransform &turn = {});
    Status addImagePage(const QImage &image, const QSizeF &pagePoints, const QTransform &turn = {});

    // The matrix that draws the image's unit square upright over w x h points with `orientation`,
    // then `turn`, moved so that the result starts at the page's origin; `page` gets the page's size.
    static QTransform pageMatrix(const QSizeF &pagePoints, int orientation, const QTransform &turn, QSizeF *page);
    Status finish();
    int pageCount() const { return int(m_pages.size()); }

private:
    int reserve();
    Status startObject(int number);
    Status put(const QByteArray &bytes);
    Status putStream(int number, const QByteArray &dictionary, const QByteArray &data);
    Status addPage(int imageObject, const QSizeF &pagePoints, int orientation, const QTransform &turn);

    AtomicFile &m_out;
    QList<qint64> m_offsets; // by object number - 1; -1 until written
    QList<int> m_pages;
    int m_pagesObject = 0;
};

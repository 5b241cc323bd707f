#pragma once

#include "core/fs/AtomicFile.h"
#include "core/fs/NaturalOrder.h"
#include "utils/Result.h"

#include <QStringList>
#include <QTransform>

#include <functional>

namespace ImagesToPdf {

// Natural order of whole paths, as a person sorts names: "img2" before "img10", case ignored.
using NaturalOrder::sortArrayInAlphabeticalOrderByFileName;

struct Outcome
{
    int pages = 0;
    QList<Error> skipped; // page images that could not be read; the rest of the document stands
};

enum class UnreadableImages {
    Skip, // the page is left out and the document goes on
    Fail, // nothing is written
};

// The paths that become pages, in the order of the pages: page images only, in natural order.
QStringList pagesInOrder(const QStringList &paths);
// The page images of `paths`, in the order given.
QStringList pageImagesOf(const QStringList &paths);

// Told before each page (from 0) with the image it is made of; false stops the document, which is
// then not written.
using PageStarted = std::function<bool(int page, int pages, const QString &path)>;

// One page per page image of `paths` in natural order, each as large as the image's point size; other
// paths are left out without a word. The PDF appears at `destPath` only once it is complete, and an
// existing file of that name is kept (EEXIST). An image that cannot be read fails with its own error.
Result<Outcome> doExportAsPDFarr(const QStringList &paths, const QString &destPath,
                                 UnreadableImages unreadable = UnreadableImages::Skip, const PageStarted &pageStarted = {});

// One page of a document in the order given: the image and its turn or flip (y up, in pixels of the
// upright picture), drawn as the page's matrix; a JPEG's data goes in untouched all the same.
struct Page
{
    QString path;
    QTransform turn;
};
// The pages as given, each as large as its image's point size (one point per pixel when turned). The
// PDF appears at `destPath` only once complete; `mode` says whether an existing file is replaced.
Result<Outcome> writePages(const QList<Page> &pages, const QString &destPath, UnreadableImages unreadable,
                           const PageStarted &pageStarted, AtomicFile::Mode mode);

// A PDF of one image beside the others in `folder`, under a free name.
Result<QString> convertSingleImgToPDF(const QString &imagePath, const QString &folder);

} // namespace ImagesToPdf

#pragma once

#include "core/fs/NaturalOrder.h"
#include "utils/Result.h"

#include <QStringList>

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

// Told before each page (from 0) with the image it is made of; false stops the document, which is
// then not written.
using PageStarted = std::function<bool(int page, int pages, const QString &path)>;

// One page per page image of `paths` in natural order, each as large as the image's point size; other
// paths are left out without a word. The PDF appears at `destPath` only once it is complete, and an
// existing file of that name is kept (EEXIST). An image that cannot be read fails with its own error.
Result<Outcome> doExportAsPDFarr(const QStringList &paths, const QString &destPath,
                                 UnreadableImages unreadable = UnreadableImages::Skip, const PageStarted &pageStarted = {});

// A PDF of one image beside the others in `folder`, under a free name.
Result<QString> convertSingleImgToPDF(const QString &imagePath, const QString &folder);

} // namespace ImagesToPdf

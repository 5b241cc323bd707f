#pragma once

#include "utils/Result.h"

#include <QStringList>

namespace ImagesToPdf {

// Natural order of whole paths, as a person sorts names: "img2" before "img10", case ignored.
QStringList sortArrayInAlphabeticalOrderByFileName(QStringList paths);

struct Outcome
{
    int pages = 0;
    QList<Error> skipped; // page images that could not be read; the rest of the document stands
};

enum class UnreadableImages {
    Skip, // the page is left out and the document goes on
    Fail, // nothing is written
};

// One page per page image of `paths` in natural order, each as large as the image's point size; other
// paths are left out without a word. The PDF appears at `destPath` only once it is complete, and an
// existing file of that name is kept (EEXIST).
Result<Outcome> doExportAsPDFarr(const QStringList &paths, const QString &destPath,
                                 UnreadableImages unreadable = UnreadableImages::Skip);

// A PDF of one image beside the others in `folder`, under a free name.
Result<QString> convertSingleImgToPDF(const QString &imagePath, const QString &folder);

} // namespace ImagesToPdf

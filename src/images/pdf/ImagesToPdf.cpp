#include "ImagesToPdf.h"

#include "JpegInfo.h"
#include "PdfWriter.h"
#include "core/fs/AtomicFile.h"
#include "core/fs/FsCalls.h"
#include "core/fs/NativePath.h"
#include "core/fs/PathParts.h"
#include "fileops/FreeName.h"
#include "images/BitmapImageRep.h"
#include "images/ImageErrors.h"
#include "images/ImageWorker.h"
#include "images/ImageTypeCode.h"
#include "utils/Utils.h"
#include "worker/Jobs.h"
#include "worker/Protocol.h"


#include <algorithm>
#include <cerrno>

namespace {

QSizeF pointSize(int width, int height, double dpiX, double dpiY)
{
    return QSizeF(width * Resolution::kPointsPerInch / dpiX, height * Resolution::kPointsPerInch / dpiY);
}

// A turned or flipped page (`turn` not the identity) has one point per pixel, whatever resolution the
// file states; an untouched one keeps it.
Status addPage(PdfWriter &pdf, const QString &path, const QTransform &turn = {})
{
    const auto points = [&turn](int w, int h, double dpiX, double dpiY) {
        return turn.isIdentity() ? pointSize(w, h, dpiX, dpiY) : QSizeF(w, h);
    };
    namespace J = WorkerJobs;
    if (auto unusable = ImageErrors::unusableInput(path))
        return *unusable;
    auto bytes = FsCalls::readWholeFile(path);
    if (!bytes.ok())
        return ImageErrors::make(path, bytes.error().info.value(QStringLiteral("reason")).toString());
    // A JPEG goes in as it is: no decoding, no loss, and the file's own size; its orientation is the
    // page's matrix. Only its header is asked of the worker.
    if (const auto jpeg = JpegInfo::parse(bytes.value())) {
        const auto header = ImageWorker::call(J::kProbe, {}, path);
        const double dpiX = header.ok() ? header.value().value(J::kDpiX).toDouble() : Resolution::kPointsPerInch;
        const double dpiY = header.ok() ? header.value().value(J::kDpiY).toDouble() : dpiX;
        const int orientation = header.ok() ? int(header.value().value(J::kOrientation).toInteger()) : 1;
        const QSizeF stored = points(jpeg->width, jpeg->height, dpiX, dpiY);
        const bool quarter = orientation >= 5 && orientation <= 8;
        return pdf.addJpegPage(bytes.value(), *jpeg, quarter ? stored.transposed() : stored, orientation, turn);
    }
    const auto decoded = ImageWorker::call(J::kDecode, {}, path);
    if (!decoded.ok())
        return decoded.error();
    const QImage pixels = WorkerProtocol::imageFrom(decoded.value().value(J::kImage));
    if (pixels.isNull())
        return ImageErrors::make(path, QString::fromLatin1(ImageErrors::kDamaged));
    return pdf.addImagePage(pixels, points(pixels.width(), pixels.height(), decoded.value().value(J::kDpiX).toDouble(),
                                           decoded.value().value(J::kDpiY).toDouble()),
                            turn);
}

} // namespace

QStringList ImagesToPdf::pagesInOrder(const QStringList &paths)
{
    return pageImagesOf(sortArrayInAlphabeticalOrderByFileName(paths));
}

QStringList ImagesToPdf::pageImagesOf(const QStringList &paths)
{
    QStringList pages;
    for (const QString &path : paths)
        if (PageImageTypes::isPageImage(path))
            pages.append(path);
    return pages;
}

Result<ImagesToPdf::Outcome> ImagesToPdf::doExportAsPDFarr(const QStringList &paths, const QString &destPath,
                                                           UnreadableImages unreadable, const PageStarted &pageStarted)
{
    QList<Page> pages;
    for (const QString &path : pagesInOrder(paths))
        pages.append({path, {}});
    return writePages(pages, destPath, unreadable, pageStarted, AtomicFile::Mode::KeepExisting);
}

Result<ImagesToPdf::Outcome> ImagesToPdf::writePages(const QList<Page> &pages, const QString &destPath, UnreadableImages unreadable,
                                                     const PageStarted &pageStarted, AtomicFile::Mode mode)
{
    Outcome outcome;
    AtomicFile file(destPath);
    PdfWriter pdf(file);
    Status s = file.open();
    if (s.ok())
        s = pdf.begin();
    for (int i = 0; i < pages.size() && s.ok(); ++i) {
        if (pageStarted && !pageStarted(i, int(pages.size()), pages.at(i).path)) {
            s = Error{QStringLiteral("PDF"), ECANCELED, QStringLiteral("cancelled")};
            break;
        }
        const Status page = addPage(pdf, pages.at(i).path, pages.at(i).turn);
        if (page.ok())
            continue;
        // An unreadable image may only lose its page; a failed write is the document's failure.
        if (page.error().domain == QLatin1String(ImageErrors::kDomain) && unreadable == UnreadableImages::Skip)
            outcome.skipped.append(page.error());
        else
            s = page;
    }
    if (s.ok())
        s = pdf.finish();
    if (s.ok())
        s = file.commit(mode);
    if (!s.ok()) {
        qWarning("Failed to save image as PDF to path> %s", qPrintable(NativePath::forDisplay(destPath)));
        return s.error();
    }
    outcome.pages = pdf.pageCount();
    return outcome;
}

Result<QString> ImagesToPdf::convertSingleImgToPDF(const QString &imagePath, const QString &folder)
{
    if (auto unusable = ImageErrors::unusableInput(imagePath))
        return *unusable;
    if (!PageImageTypes::isPageImage(imagePath))
        return ImageErrors::make(imagePath, QStringLiteral("this type of file cannot become a page of a PDF"));
    const QString name = PathParts::splitExtension(PathParts::lastComponent(imagePath)).name;
    return FreeName::write(folder, name, QStringLiteral("pdf"), [&imagePath](const QString &path) -> Status {
        const auto made = doExportAsPDFarr({imagePath}, path, UnreadableImages::Fail);
        return made.ok() ? success() : Status(made.error());
    });
}

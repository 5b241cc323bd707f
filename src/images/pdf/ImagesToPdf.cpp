#include "images/vips/VipsSupport.h"

#include "ImagesToPdf.h"

#include "JpegInfo.h"
#include "PdfWriter.h"
#include "core/fs/AtomicFile.h"
#include "core/fs/FsCalls.h"
#include "core/fs/NativePath.h"
#include "core/fs/PathParts.h"
#include "fileops/FreeName.h"
#include "images/BitmapImageRep.h"
#include "images/ImageTypeCode.h"
#include "utils/Utils.h"


#include <algorithm>

namespace {

QSizeF pointSize(int width, int height, double dpiX, double dpiY)
{
    return QSizeF(width * Resolution::kPointsPerInch / dpiX, height * Resolution::kPointsPerInch / dpiY);
}

Status addPage(PdfWriter &pdf, const QString &path)
{
    auto bytes = FsCalls::readWholeFile(path);
    if (!bytes.ok())
        return VipsSupport::error(path, bytes.error().info.value(QStringLiteral("reason")).toString());
    // A JPEG goes in as it is: no decoding, no loss, and the file's own size.
    if (const auto jpeg = JpegInfo::parse(bytes.value())) {
        auto header = VipsSupport::loadFromData(bytes.value());
        const double dpiX = header.ok() ? VipsSupport::dotsPerInch(header.value()) : Resolution::kPointsPerInch;
        const double dpiY = header.ok() ? VipsSupport::verticalDotsPerInch(header.value()) : dpiX;
        return pdf.addJpegPage(bytes.value(), *jpeg, pointSize(jpeg->width, jpeg->height, dpiX, dpiY));
    }
    auto loaded = VipsSupport::loadFromData(bytes.value());
    if (!loaded.ok())
        return VipsSupport::error(path, QStringLiteral("not an image this program can read"));
    auto image = VipsSupport::decoded(loaded.value(), path);
    if (!image.ok())
        return image.error();
    auto pixels = VipsSupport::toQImage(image.value());
    if (!pixels.ok())
        return VipsSupport::error(path, pixels.error().message);
    const double dpiX = VipsSupport::dotsPerInch(image.value());
    return pdf.addImagePage(pixels.value(),
                            pointSize(pixels.value().width(), pixels.value().height(), dpiX, VipsSupport::verticalDotsPerInch(image.value())));
}

} // namespace

namespace {

// Runs of digits compare by their value, the text between them without regard to case: "img2" comes
// before "img10", "B" after "a", as people sort names.
int naturalCompare(const QString &a, const QString &b)
{
    qsizetype i = 0, j = 0;
    while (i < a.size() && j < b.size()) {
        if (a.at(i).isDigit() && b.at(j).isDigit()) {
            qsizetype ei = i, ej = j;
            while (ei < a.size() && a.at(ei).isDigit())
                ++ei;
            while (ej < b.size() && b.at(ej).isDigit())
                ++ej;
            QStringView na = QStringView(a).mid(i, ei - i), nb = QStringView(b).mid(j, ej - j);
            while (na.size() > 1 && na.front() == u'0')
                na = na.mid(1);
            while (nb.size() > 1 && nb.front() == u'0')
                nb = nb.mid(1);
            if (na.size() != nb.size())
                return na.size() < nb.size() ? -1 : 1;
            if (const int c = na.compare(nb); c != 0)
                return c;
            i = ei;
            j = ej;
            continue;
        }
        const QChar ca = a.at(i).toCaseFolded(), cb = b.at(j).toCaseFolded();
        if (ca != cb)
            return ca < cb ? -1 : 1;
        ++i;
        ++j;
    }
    if (i < a.size() || j < b.size())
        return i < a.size() ? 1 : -1;
    return a.compare(b); // equal but for case or zeros: a fixed order all the same
}

} // namespace

QStringList ImagesToPdf::sortArrayInAlphabeticalOrderByFileName(QStringList paths)
{
    std::stable_sort(paths.begin(), paths.end(), [](const QString &a, const QString &b) { return naturalCompare(a, b) < 0; });
    return paths;
}

Result<ImagesToPdf::Outcome> ImagesToPdf::doExportAsPDFarr(const QStringList &paths, const QString &destPath,
                                                           UnreadableImages unreadable)
{
    Outcome outcome;
    AtomicFile file(destPath);
    PdfWriter pdf(file);
    Status s = file.open();
    if (s.ok())
        s = pdf.begin();
    for (const QString &path : sortArrayInAlphabeticalOrderByFileName(paths)) {
        if (!s.ok())
            break;
        if (!PageImageTypes::isPageImage(path))
            continue;
        const Status page = addPage(pdf, path);
        if (page.ok())
            continue;
        // An unreadable image may only lose its page; a failed write is the document's failure.
        if (page.error().domain == QLatin1String(VipsSupport::kErrorDomain) && unreadable == UnreadableImages::Skip)
            outcome.skipped.append(page.error());
        else
            s = page;
    }
    if (s.ok())
        s = pdf.finish();
    if (s.ok())
        s = file.commit(AtomicFile::Mode::KeepExisting);
    if (!s.ok()) {
        Error failed = s.error();
        failed.message = QStringLiteral("Failed to save image as PDF to path> %1 (%2)")
                             .arg(NativePath::forDisplay(destPath), failed.message);
        return failed;
    }
    outcome.pages = pdf.pageCount();
    return outcome;
}

Result<QString> ImagesToPdf::convertSingleImgToPDF(const QString &imagePath, const QString &folder)
{
    if (!PageImageTypes::isPageImage(imagePath))
        return VipsSupport::error(imagePath, QStringLiteral("this type of file cannot become a page of a PDF"));
    const QString name = PathParts::splitExtension(PathParts::lastComponent(imagePath)).name;
    return FreeName::write(folder, name, QStringLiteral("pdf"), [&imagePath](const QString &path) -> Status {
        const auto made = doExportAsPDFarr({imagePath}, path, UnreadableImages::Fail);
        return made.ok() ? success() : Status(made.error());
    });
}

#include "images/vips/VipsSupport.h"

#include "ConvertJob.h"

#include "core/fs/AtomicFile.h"
#include "core/fs/PathParts.h"
#include "images/ImageEncoder.h"
#include "images/ImageTypeCode.h"
#include "images/PngRecompress.h"
#include "images/pdf/ImagesToPdf.h"
#include "utils/Utils.h"

#include <cerrno>
#include <cmath>

namespace {
constexpr quint64 kSecondsPerImage = 30;
constexpr int kNameAttempts = 4; // another program may take a free name before we do
} // namespace

std::optional<quint64> ConvertJob::imageTypeForTag(qint64 tag)
{
    switch (tag) {
    case 1:
        return ImageTypeCode::PNG;
    case 2:
        return ImageTypeCode::JPEG;
    case 3:
        return ImageTypeCode::BMP;
    case 4:
        return ImageTypeCode::TIFF;
    default:
        return std::nullopt;
    }
}

float ConvertJob::snappedSliderValue(float percent, float step)
{
    if (step == 0.0f)
        step = 5.0f;
    return step * std::roundf(percent / step);
}

float ConvertJob::factorForSlider(float percent, float step)
{
    return snappedSliderValue(percent, step) / -100.0f + 1.0f;
}

ConvertJob::ConvertJob(Request request, QObject *parent) : ImageBatchJob(parent), m_request(std::move(request)) {}

ConvertJob::~ConvertJob() { waitForWorker(); }

Result<QString> ConvertJob::convertImg2Type(quint64 code, float factor, const QString &origImgPath,
                                            const QString &destParFolder)
{
    creditSeconds(kSecondsPerImage);
    const auto parts = PathParts::splitExtension(PathParts::lastComponent(origImgPath));
    QByteArray data;
    if (code == ImageTypeCode::PNG && parts.extension == u"png") {
        // A PNG stays the same pixels and chunks, deflated at the highest level.
        auto recompressed = PngRecompress::recompress(origImgPath, 1.0f);
        if (!recompressed.ok())
            return recompressed.error();
        data = recompressed.value();
    } else {
        auto loaded = VipsSupport::load(origImgPath);
        if (!loaded.ok())
            return loaded.error();
        auto image = VipsSupport::decoded(loaded.value(), origImgPath);
        if (!image.ok())
            return image.error();
        auto encoded = ImageEncoder::encode(image.value(), code, factor);
        if (!encoded.ok())
            return VipsSupport::error(origImgPath, encoded.error().message);
        data = encoded.value();
    }
    const QString extension = Utils::getImageExtensionString(code);
    for (int attempt = 1;; ++attempt) {
        const QString output =
            destParFolder + QChar('/') + Utils::nameForNewFileOrFolder(destParFolder, parts.name, extension);
        const Status written = AtomicFile::writeFile(output, data, AtomicFile::Mode::KeepExisting);
        if (written.ok())
            return output;
        if (written.error().code != EEXIST || attempt == kNameAttempts)
            return written.error();
    }
}

void ConvertJob::run()
{
    const Request &r = m_request;
    const QStringList sources = r.multiFiles ? r.paths : QStringList{r.srcImgPath};
    if (r.tag == kPdfTag)
        runToPdf(sources);
    else if (const auto code = r.imageType ? r.imageType : imageTypeForTag(r.tag))
        runToImages(sources, *code);
}

void ConvertJob::runToImages(const QStringList &sources, quint64 code)
{
    const int total = int(sources.size());
    for (int i = 0; i < total && !isCancelled(); ++i) {
        reportProgress(i, total, PathParts::lastComponent(sources.at(i)));
        const auto result = convertImg2Type(code, m_request.factor, sources.at(i), m_request.folder);
        if (result.ok())
            reportWritten(result.value());
        else
            reportFailure(result.error());
    }
    reportProgress(total, total, {});
}

void ConvertJob::runToPdf(const QStringList &sources)
{
    const Request &r = m_request;
    if (r.multiFiles && r.mergeToPdf) {
        if (sources.isEmpty())
            return;
        reportProgress(0, 1, PathParts::lastComponent(sources.first()));
        // Named after the first dropped image, free beside it, written into the chosen folder.
        const QString first = sources.first();
        const QString base = PathParts::splitExtension(PathParts::lastComponent(first)).name;
        QString name = Utils::nameForNewFileOrFolder(PathParts::parent(first), base, QStringLiteral("pdf"));
        auto made = ImagesToPdf::doExportAsPDFarr(sources, r.folder + QChar('/') + name);
        if (!made.ok() && made.error().code == EEXIST) {
            // Free beside the source but taken in the chosen folder.
            name = Utils::nameForNewFileOrFolder(r.folder, base, QStringLiteral("pdf"));
            made = ImagesToPdf::doExportAsPDFarr(sources, r.folder + QChar('/') + name);
        }
        if (made.ok()) {
            for (const Error &e : made.value().skipped)
                reportFailure(e);
            reportWritten(r.folder + QChar('/') + name);
        } else {
            reportFailure(made.error());
        }
        reportProgress(1, 1, {});
        return;
    }
    const int total = int(sources.size());
    for (int i = 0; i < total && !isCancelled(); ++i) {
        reportProgress(i, total, PathParts::lastComponent(sources.at(i)));
        const auto made = ImagesToPdf::convertSingleImgToPDF(sources.at(i), r.folder);
        if (made.ok())
            reportWritten(made.value());
        else
            reportFailure(made.error());
    }
    reportProgress(total, total, {});
}

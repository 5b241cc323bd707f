#include "ConvertJob.h"

#include "core/fs/AtomicFile.h"
#include "core/fs/PathParts.h"
#include "fileops/FreeName.h"
#include "images/ImageWorker.h"
#include "images/ImageTypeCode.h"
#include "images/pdf/ImagesToPdf.h"
#include "utils/Utils.h"
#include "worker/Jobs.h"

#include <cerrno>
#include <cmath>

namespace {
constexpr quint64 kSecondsPerImage = 30;
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
    const QString name = PathParts::splitExtension(PathParts::lastComponent(origImgPath)).name;
    const QString extension = Utils::getImageExtensionString(code);
    // Encoded once under a temporary name, then given the first free name. A PNG to PNG stays the
    // same pixels and chunks, deflated at the highest level (the worker sees to that).
    AtomicFile output(destParFolder + QChar('/') + name + QChar('.') + extension);
    const Status written = ImageWorker::writeInto(output, WorkerJobs::kConvert,
                                                  {{WorkerJobs::kCode, qint64(code)}, {WorkerJobs::kFactor, double(factor)}},
                                                  origImgPath, [this] { return isCancelled(); });
    if (!written.ok())
        return written.error();
    return FreeName::write(destParFolder, name, extension,
                           [&output](const QString &path) { return output.commitAs(path, AtomicFile::Mode::KeepExisting); });
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
        // Named after page 1, free beside its image, written into the chosen folder.
        const QStringList pages = r.orderAsGiven ? ImagesToPdf::pageImagesOf(sources) : ImagesToPdf::pagesInOrder(sources);
        const QString first = pages.isEmpty() ? ImagesToPdf::sortArrayInAlphabeticalOrderByFileName(sources).first()
                                              : pages.first();
        const QString base = PathParts::splitExtension(PathParts::lastComponent(first)).name;
        const QString name = Utils::nameForNewFileOrFolder(PathParts::parent(first), base, QStringLiteral("pdf"));
        QList<Error> skipped;
        auto exportTo = [&](const QString &path) -> Status {
            QList<ImagesToPdf::Page> inOrder;
            for (const QString &page : pages)
                inOrder.append({page, {}});
            const auto made = ImagesToPdf::writePages(
                inOrder, path, ImagesToPdf::UnreadableImages::Skip,
                [this](int page, int count, const QString &image) {
                    reportProgress(page, count, PathParts::lastComponent(image));
                    return !isCancelled();
                },
                AtomicFile::Mode::KeepExisting);
            if (!made.ok())
                return made.error();
            skipped = made.value().skipped;
            return success();
        };
        const QString beside = r.folder + QChar('/') + name;
        const Status tried = exportTo(beside);
        // A name free beside the source may be taken in the chosen folder: then one free there.
        const Result<QString> written = tried.ok() ? Result<QString>(beside)
                                        : tried.error().code == EEXIST
                                            ? FreeName::write(r.folder, base, QStringLiteral("pdf"), exportTo)
                                            : Result<QString>(tried.error());
        for (const Error &e : std::as_const(skipped))
            reportFailure(e);
        if (written.ok())
            reportWritten(written.value());
        else if (!isCancelled())
            reportFailure(written.error());
        reportProgress(int(pages.size()), int(pages.size()), {});
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

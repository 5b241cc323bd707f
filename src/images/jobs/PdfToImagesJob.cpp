#include "PdfToImagesJob.h"

#include "core/fs/AtomicFile.h"
#include "core/fs/NativePath.h"
#include "core/fs/PathParts.h"
#include "fileops/FreeName.h"
#include "images/ImageErrors.h"
#include "images/ImageWorker.h"
#include "images/jobs/PixelBudget.h"
#include "images/pdf/PdfPages.h"
#include "utils/Utils.h"
#include "worker/Jobs.h"

#include <QThread>

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace J = WorkerJobs;

namespace {

constexpr quint64 kSecondsPerPage = 10;

} // namespace

PdfToImagesJob::PdfToImagesJob(Request request, QObject *parent) : ImageBatchJob(parent), m_request(std::move(request))
{
}

PdfToImagesJob::~PdfToImagesJob() { waitForWorker(); }

Status PdfToImagesJob::makeFolder()
{
    const QString base = PathParts::splitExtension(PathParts::lastComponent(m_request.sourcePath)).name;
    // The free name is looked for beside the source, and again in the destination if taken there.
    QString name = Utils::nameForNewFileOrFolder(PathParts::parent(m_request.sourcePath), base, {});
    for (int attempt = 0; attempt < 4; ++attempt) {
        const QString folder = m_request.destParentFolder + QChar('/') + name;
        if (::mkdir(NativePath::toNative(folder).constData(), 0777) == 0) {
            m_folder = folder;
            return success();
        }
        if (errno != EEXIST)
            return ImageErrors::make(folder, QStringLiteral("cannot create the folder: %1").arg(QString::fromLocal8Bit(strerror(errno))),
                                     errno);
        name = Utils::nameForNewFileOrFolder(m_request.destParentFolder, base, {});
    }
    return ImageErrors::make(m_request.destParentFolder, QStringLiteral("no free folder name"), EEXIST);
}

void PdfToImagesJob::run()
{
    const Request &r = m_request;
    const auto info = PdfPages::inspect(r.sourcePath, r.password);
    if (!info.readable || (info.locked && !info.opens)) {
        reportFailure(ImageErrors::make(r.sourcePath, info.readable ? QStringLiteral("the password does not open it") : info.problem));
        return;
    }
    if (Status s = makeFolder(); !s.ok()) {
        reportFailure(s.error());
        return;
    }
    const int pages = info.pages;
    m_pageCount = pages;
    const QString extension = PdfPages::extensionForImgType(r.imgType);
    const quint64 code = Utils::getImageFileTypeFromExtension(extension);
    const float dpi = PdfPages::clampedDpi(r.dpi);
    const int renderers = std::clamp(parallelPages > 0 ? parallelPages : QThread::idealThreadCount(), 1, std::max(pages, 1));
    const QString pageTemp = m_folder + QStringLiteral("/page");

    auto render = [&](int index, int) -> Prepared {
        // The page's pixels as the budget counts them; its real size is known only to the worker.
        const PixelBudget::Hold hold = PixelBudget::shared().hold(qint64(dpi * 8.5f) * qint64(dpi * 11.0f) * 4,
                                                                  [this] { return isCancelled(); });
        if (!hold.held())
            return Prepared{ImageErrors::make(r.sourcePath, QStringLiteral("cancelled"), ECANCELED)};
        auto output = std::make_shared<AtomicFile>(pageTemp);
        if (Status s = output->open(); !s.ok())
            return Prepared{s.error()};
        auto reply = ImageWorker::call(J::kPdfPage,
                                       {{J::kOutput, QCborValue(output->temporaryPath())},
                                        {J::kPassword, r.password},
                                        {J::kIndex, index},
                                        {J::kDpi, double(dpi)},
                                        {J::kCode, qint64(code)}},
                                       r.sourcePath, [this] { return isCancelled(); });
        if (!reply.ok()) {
            const Error &e = reply.error();
            // A worker that stopped names the page it was on.
            if (e.domain == QLatin1String(ImageErrors::kDomain) && !e.message.contains(QLatin1String("page ")))
                return Prepared{ImageErrors::make(r.sourcePath, QStringLiteral("page %1: %2").arg(index + 1).arg(
                                                                    e.info.value(QStringLiteral("reason")).toString()), e.code)};
            return Prepared{e};
        }
        if (reply.value().value(J::kTooSmall).toBool())
            return Prepared{std::shared_ptr<AtomicFile>(), true};
        return Prepared{output};
    };
    // Pages are written in order, as they come, so the folder never has a gap.
    auto write = [&](int index, AtomicFile &output) {
        creditSeconds(kSecondsPerPage);
        return FreeName::write(m_folder, PdfPages::pageBaseName(index), extension, [&](const QString &path) {
            return output.commitAs(path, AtomicFile::Mode::KeepExisting);
        });
    };
    const int written = forEachInOrder(pages, renderers, render, write, [](int index) { return PdfPages::pageBaseName(index); });
    m_stoppedEarly = written < pages && !isCancelled();
    if (m_stoppedEarly)
        qWarning("%s, page %d: smaller than one pixel; the pages from here on are not written",
                 qPrintable(NativePath::forDisplay(r.sourcePath)), written + 1);
    if (pages > 0 && !hasWritten()) {
        // Nothing came of it: the new folder goes again (only ever while it is empty).
        if (::rmdir(NativePath::toNative(m_folder).constData()) == 0)
            m_folder.clear();
    }
}

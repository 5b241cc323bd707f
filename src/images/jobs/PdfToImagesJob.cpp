#include "images/vips/VipsSupport.h"

#include "PdfToImagesJob.h"

#include "core/fs/AtomicFile.h"
#include "core/fs/NativePath.h"
#include "core/fs/PathParts.h"
#include "fileops/FreeName.h"
#include "images/ImageEncoder.h"
#include "images/pdf/PdfPages.h"
#include "utils/Utils.h"

#include <poppler-qt6.h>

#include <QPainter>
#include <QThread>
#include <QThreadPool>

#include <sys/stat.h>

#include <cerrno>
#include <chrono>
#include <climits>
#include <condition_variable>
#include <map>
#include <mutex>

namespace {

constexpr quint64 kSecondsPerPage = 10;
// Rendered pages held at once; a single larger page still renders, alone.
constexpr qint64 kPixelBudgetBytes = qint64(512) << 20;

Error pageError(const QString &source, int index, const QString &what)
{
    return Error{QString::fromLatin1(VipsSupport::kErrorDomain), 2,
                 QStringLiteral("%1, page %2: %3").arg(NativePath::forDisplay(source)).arg(index + 1).arg(what)};
}

// The page's pixels encoded; the image is converted in place and read by the encoder without a copy.
Result<QByteArray> encodePage(QImage &page, quint64 code, float dpi)
{
    page.convertTo(QImage::Format_RGBX8888);
    return VipsSupport::guarded<QByteArray>(QString(), [&]() -> QByteArray {
        vips::VImage pixels = vips::VImage::new_from_memory(page.bits(), size_t(page.sizeInBytes()), page.width(),
                                                            page.height(), 4, VIPS_FORMAT_UCHAR)
                                  .extract_band(0, vips::VImage::option()->set("n", 3))
                                  .copy(vips::VImage::option()->set("interpretation", VIPS_INTERPRETATION_sRGB));
        auto encoded = ImageEncoder::encode(VipsSupport::withResolution(pixels, dpi, dpi), code, 1.0f);
        if (!encoded.ok())
            throw vips::VError(encoded.error().message.toStdString());
        return encoded.value();
    });
}

// What the renderers and the writer share.
struct Pipeline
{
    std::mutex mutex;
    std::condition_variable changed;
    int nextPage = 0;
    int writtenUpTo = 0; // pages before this one are written
    int stopAt = INT_MAX;
    bool stop = false;
    qint64 bytesInFlight = 0;
    std::map<int, Result<QByteArray>> ready;
};

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
            return Error{QString::fromLatin1(VipsSupport::kErrorDomain), errno,
                         QStringLiteral("cannot create the folder %1: %2")
                             .arg(NativePath::forDisplay(folder), QString::fromLocal8Bit(strerror(errno)))};
        name = Utils::nameForNewFileOrFolder(m_request.destParentFolder, base, {});
    }
    return Error{QString::fromLatin1(VipsSupport::kErrorDomain), EEXIST, QStringLiteral("no free folder name")};
}

void PdfToImagesJob::run()
{
    VipsSupport::ensureStarted();
    PdfPages::quietReader();
    const Request &r = m_request;
    const auto probe = Poppler::Document::loadFromData(r.pdfData, r.password, r.password);
    if (!probe || probe->isLocked()) {
        reportFailure(Error{QString::fromLatin1(VipsSupport::kErrorDomain), 1,
                            QStringLiteral("%1: %2").arg(NativePath::forDisplay(r.sourcePath),
                                                         probe ? QStringLiteral("the password does not open it")
                                                               : QStringLiteral("not a PDF document, or a damaged one"))});
        return;
    }
    if (Status s = makeFolder(); !s.ok()) {
        reportFailure(s.error());
        return;
    }
    const int pages = probe->numPages();
    m_pageCount = pages;
    const QString extension = PdfPages::extensionForImgType(r.imgType);
    const quint64 code = Utils::getImageFileTypeFromExtension(extension);
    const float dpi = PdfPages::clampedDpi(r.dpi);
    const int renderers = std::clamp(parallelPages > 0 ? parallelPages : QThread::idealThreadCount(), 1, std::max(pages, 1));
    const int window = 2 * renderers; // how far rendering may run ahead of writing

    Pipeline pipe;
    QThreadPool pool;
    pool.setMaxThreadCount(renderers);
    for (int w = 0; w < renderers && pages > 0; ++w) {
        pool.start([&] {
            // Each renderer has its own document: they share no state.
            const auto document = Poppler::Document::loadFromData(r.pdfData, r.password, r.password);
            if (document) {
                document->setRenderHint(Poppler::Document::Antialiasing);
                document->setRenderHint(Poppler::Document::TextAntialiasing);
                document->setPaperColor(Qt::white);
            }
            for (;;) {
                std::unique_lock lock(pipe.mutex);
                pipe.changed.wait(lock, [&] { return pipe.stop || pipe.nextPage >= pages || pipe.nextPage < pipe.writtenUpTo + window; });
                if (pipe.stop || pipe.nextPage >= pages || pipe.nextPage >= pipe.stopAt)
                    return;
                const int index = pipe.nextPage++;
                lock.unlock();

                std::unique_ptr<Poppler::Page> page = document ? document->page(index) : nullptr;
                const QSizeF points = page ? page->pageSizeF() : QSizeF();
                const QSize target = PdfPages::targetPixels(points, dpi);
                if (target.isEmpty()) {
                    lock.lock();
                    pipe.stopAt = std::min(pipe.stopAt, index);
                    pipe.changed.notify_all();
                    continue;
                }
                const qint64 bytes = qint64(target.width()) * target.height() * 4;
                if (qint64(target.width()) * target.height() > VipsSupport::kMaxPixels) {
                    lock.lock();
                    pipe.ready.emplace(index, pageError(r.sourcePath, index,
                                                        QStringLiteral("%1 x %2 pixels at this resolution is too large; "
                                                                       "choose fewer dots per inch")
                                                            .arg(target.width())
                                                            .arg(target.height())));
                    pipe.changed.notify_all();
                    continue;
                }
                lock.lock();
                pipe.changed.wait(lock, [&] { return pipe.stop || pipe.bytesInFlight == 0 || pipe.bytesInFlight + bytes <= kPixelBudgetBytes; });
                if (pipe.stop)
                    return;
                pipe.bytesInFlight += bytes;
                lock.unlock();

                QImage image = page->renderToImage(72.0 * target.width() / points.width(),
                                                   72.0 * target.height() / points.height(), 0, 0, target.width(),
                                                   target.height());
                Result<QByteArray> encoded = pageError(r.sourcePath, index, QStringLiteral("cannot be drawn"));
                if (!image.isNull()) {
                    if (image.size() != target) {
                        // The renderer rounds its own size: lay the page on white at exactly the target.
                        QImage exact(target, QImage::Format_RGB32);
                        exact.fill(Qt::white);
                        QPainter(&exact).drawImage(0, 0, image);
                        image = exact;
                    }
                    encoded = encodePage(image, code, dpi);
                    if (!encoded.ok())
                        encoded = pageError(r.sourcePath, index, encoded.error().message);
                }
                image = QImage();
                lock.lock();
                pipe.bytesInFlight -= bytes;
                pipe.ready.emplace(index, std::move(encoded));
                pipe.changed.notify_all();
            }
        });
    }

    // Pages are written here, in order, as they come.
    for (int index = 0; index < pages; ++index) {
        std::unique_lock lock(pipe.mutex);
        // A cancel only sets a flag: look at it now and then while a page renders.
        while (!isCancelled() && index < pipe.stopAt && pipe.ready.count(index) == 0)
            pipe.changed.wait_for(lock, std::chrono::milliseconds(50));
        if (isCancelled() || index >= pipe.stopAt) {
            m_stoppedEarly = !isCancelled();
            if (m_stoppedEarly)
                qWarning("%s, page %d: smaller than one pixel; the pages from here on are not written",
                         qPrintable(NativePath::forDisplay(r.sourcePath)), index + 1);
            break;
        }
        const Result<QByteArray> encoded = pipe.ready.at(index);
        pipe.ready.erase(index);
        lock.unlock();

        reportProgress(index, pages, PdfPages::pageBaseName(index));
        if (encoded.ok()) {
            const auto written = FreeName::write(m_folder, PdfPages::pageBaseName(index), extension, [&](const QString &path) {
                return AtomicFile::writeFile(path, encoded.value(), AtomicFile::Mode::KeepExisting);
            });
            creditSeconds(kSecondsPerPage);
            if (written.ok())
                reportWritten(written.value());
            else
                reportFailure(written.error());
        } else {
            reportFailure(encoded.error());
        }
        lock.lock();
        pipe.writtenUpTo = index + 1;
        pipe.changed.notify_all();
    }
    {
        std::lock_guard lock(pipe.mutex);
        pipe.stop = true;
        pipe.changed.notify_all();
    }
    pool.waitForDone();
    reportProgress(pages, pages, {});
}

#include "images/vips/VipsSupport.h"

#include "PdfToImagesJob.h"

#include "core/fs/AtomicFile.h"
#include "core/fs/NativePath.h"
#include "core/fs/PathParts.h"
#include "fileops/FreeName.h"
#include "images/ImageEncoder.h"
#include "images/jobs/PixelBudget.h"
#include "images/pdf/PdfPages.h"
#include "utils/Utils.h"

#include <poppler-qt6.h>

#include <QPainter>
#include <QThread>

#include <sys/stat.h>

#include <cerrno>
#include <memory>
#include <vector>

namespace {

constexpr quint64 kSecondsPerPage = 10;

Error pageError(const QString &source, int index, const QString &what)
{
    return ImageErrors::make(source, QStringLiteral("page %1: %2").arg(index + 1).arg(what), 2);
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
    VipsSupport::ensureStarted();
    PdfPages::quietReader();
    const Request &r = m_request;
    const auto probe = Poppler::Document::loadFromData(r.pdfData, r.password, r.password);
    if (!probe || probe->isLocked()) {
        reportFailure(ImageErrors::make(r.sourcePath, probe ? QStringLiteral("the password does not open it")
                                                            : QString::fromLatin1(ImageErrors::kNotAPdf)));
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
    // Each renderer has a document of its own: they share no state.
    std::vector<std::unique_ptr<Poppler::Document>> documents(static_cast<size_t>(renderers));

    auto render = [&](int index, int renderer) -> Prepared {
        std::unique_ptr<Poppler::Document> &document = documents[size_t(renderer)];
        if (!document) {
            document = Poppler::Document::loadFromData(r.pdfData, r.password, r.password);
            if (document) {
                document->setRenderHint(Poppler::Document::Antialiasing);
                document->setRenderHint(Poppler::Document::TextAntialiasing);
                document->setPaperColor(Qt::white);
            }
        }
        std::unique_ptr<Poppler::Page> page = document ? document->page(index) : nullptr;
        const QSizeF points = page ? page->pageSizeF() : QSizeF();
        const QSize target = PdfPages::targetPixels(points, dpi);
        if (target.isEmpty())
            return Prepared{QByteArray(), true};
        if (qint64(target.width()) * target.height() > VipsSupport::kMaxPixels)
            return Prepared{pageError(r.sourcePath, index,
                                      QStringLiteral("%1 x %2 pixels at this resolution is too large; choose fewer dots per inch")
                                          .arg(target.width())
                                          .arg(target.height()))};
        const PixelBudget::Hold hold =
            PixelBudget::shared().hold(qint64(target.width()) * target.height() * 4, [this] { return isCancelled(); });
        if (!hold.held())
            return Prepared{pageError(r.sourcePath, index, QStringLiteral("cancelled"))};
        QImage image = page->renderToImage(72.0 * target.width() / points.width(), 72.0 * target.height() / points.height(),
                                           0, 0, target.width(), target.height());
        if (image.isNull())
            return Prepared{pageError(r.sourcePath, index, QStringLiteral("cannot be drawn"))};
        if (image.size() != target) {
            // The renderer rounds its own size: lay the page on white at exactly the target.
            QImage exact(target, QImage::Format_RGB32);
            exact.fill(Qt::white);
            QPainter(&exact).drawImage(0, 0, image);
            image = exact;
        }
        auto encoded = encodePage(image, code, dpi);
        return Prepared{encoded.ok() ? encoded : Result<QByteArray>(pageError(r.sourcePath, index, encoded.error().message))};
    };
    // Pages are written in order, as they come, so the folder never has a gap.
    auto write = [&](int index, const QByteArray &encoded) {
        creditSeconds(kSecondsPerPage);
        return FreeName::write(m_folder, PdfPages::pageBaseName(index), extension, [&](const QString &path) {
            return AtomicFile::writeFile(path, encoded, AtomicFile::Mode::KeepExisting);
        });
    };
    const int written = forEachInOrder(pages, renderers, render, write, [](int index) { return PdfPages::pageBaseName(index); });
    m_stoppedEarly = written < pages && !isCancelled();
    if (m_stoppedEarly)
        qWarning("%s, page %d: smaller than one pixel; the pages from here on are not written",
                 qPrintable(NativePath::forDisplay(r.sourcePath)), written + 1);
}

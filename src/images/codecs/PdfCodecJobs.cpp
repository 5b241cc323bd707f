#include "images/codecs/VipsSupport.h"

#include "CodecJobs.h"

#include "core/fs/FsCalls.h"
#include "core/fs/NativePath.h"
#include "images/ImageErrors.h"
#include "images/codecs/ImageEncoder.h"
#include "images/pdf/PdfPages.h"
#include "worker/Jobs.h"
#include "worker/Protocol.h"

#include <poppler-qt6.h>

#include <QPainter>

#include <sys/stat.h>
#include <unistd.h>

#include <memory>

namespace J = WorkerJobs;

namespace {

// The reader's complaints about damaged files go to the log only with QUAYDROP_VERBOSE=1: the
// program reports each failure once, in its own words.
void quietReader()
{
    static const bool once = [] {
        const bool verbose = qEnvironmentVariableIntValue("QUAYDROP_VERBOSE") != 0;
        Poppler::setDebugErrorFunction(
            [](const QString &message, const QVariant &verbose) {
                if (verbose.toBool())
                    qDebug("PDF reader: %s", qPrintable(message));
            },
            verbose);
        return true;
    }();
    Q_UNUSED(once);
}

// The document last asked about stays open: the pages of one PDF come one request after another.
// The reader keeps referring to the bytes it was given, so they are kept beside it.
struct OpenDocument
{
    QString path;
    QByteArray password;
    qint64 size = -1;
    qint64 modified = 0;
    QByteArray data;
    std::unique_ptr<Poppler::Document> document;
};

Result<Poppler::Document *> openDocument(const QString &path, const QByteArray &password)
{
    static OpenDocument cached;
    struct stat st;
    if (::stat(NativePath::toNative(path).constData(), &st) != 0)
        return ImageErrors::make(path, QString::fromLocal8Bit(strerror(errno)), errno);
    if (cached.document && cached.path == path && cached.password == password && cached.size == st.st_size &&
        cached.modified == st.st_mtim.tv_sec * 1000000000LL + st.st_mtim.tv_nsec)
        return cached.document.get();
    cached = OpenDocument();
    quietReader();
    if (auto unusable = ImageErrors::unusableInput(path))
        return *unusable;
    auto bytes = FsCalls::readWholeFile(path);
    if (!bytes.ok())
        return ImageErrors::make(path, bytes.error().info.value(QStringLiteral("reason")).toString());
    cached.data = bytes.value();
    cached.document = Poppler::Document::loadFromData(cached.data, password, password);
    if (!cached.document)
        return ImageErrors::make(path, QString::fromLatin1(ImageErrors::kNotAPdf));
    cached.path = path;
    cached.password = password;
    cached.size = st.st_size;
    cached.modified = st.st_mtim.tv_sec * 1000000000LL + st.st_mtim.tv_nsec;
    cached.document->setRenderHint(Poppler::Document::Antialiasing);
    cached.document->setRenderHint(Poppler::Document::TextAntialiasing);
    cached.document->setPaperColor(Qt::white);
    return cached.document.get();
}

Result<QCborMap> pdfInfo(const QCborMap &a, const JobContext &)
{
    const QString source = WorkerProtocol::pathFrom(a.value(J::kSource));
    const QByteArray password = a.value(J::kPassword).toByteArray();
    auto opened = openDocument(source, {});
    if (!opened.ok())
        return QCborMap{{J::kReadable, false}, {J::kProblem, opened.error().info.value(QStringLiteral("reason")).toString()}};
    Poppler::Document *document = opened.value();
    const bool locked = document->isLocked();
    // A locked document answers that it is not encrypted until it is opened.
    const bool encrypted = locked || document->isEncrypted();
    int pages = locked ? 0 : document->numPages();
    bool opens = !locked;
    if (locked && a.contains(J::kPassword)) {
        auto unlocked = openDocument(source, password);
        opens = unlocked.ok() && !unlocked.value()->isLocked();
        pages = opens ? unlocked.value()->numPages() : 0;
    }
    return QCborMap{{J::kReadable, true}, {J::kLocked, locked}, {J::kEncrypted, encrypted}, {J::kOpens, opens}, {J::kPages, pages}};
}

Error pageError(const QString &source, int index, const QString &what)
{
    return ImageErrors::make(source, QStringLiteral("page %1: %2").arg(index + 1).arg(what), 2);
}

bool shouldAbort(const QVariant &context)
{
    const auto *job = reinterpret_cast<const JobContext *>(context.value<quintptr>());
    return job->cancelled && job->cancelled();
}

Result<QCborMap> pdfPage(const QCborMap &a, const JobContext &context)
{
    const QString source = WorkerProtocol::pathFrom(a.value(J::kSource));
    const int index = int(a.value(J::kIndex).toInteger());
    const float dpi = float(a.value(J::kDpi).toDouble());
    auto opened = openDocument(source, a.value(J::kPassword).toByteArray());
    if (!opened.ok())
        return opened.error();
    if (opened.value()->isLocked())
        return ImageErrors::make(source, QStringLiteral("the password does not open it"));
    const std::unique_ptr<Poppler::Page> page = opened.value()->page(index);
    const QSizeF points = page ? page->pageSizeF() : QSizeF();
    const QSize target = PdfPages::targetPixels(points, dpi);
    if (target.isEmpty())
        return QCborMap{{J::kTooSmall, true}};
    if (qint64(target.width()) * target.height() > VipsSupport::kMaxPixels)
        return pageError(source, index,
                         QStringLiteral("%1 x %2 pixels at this resolution is too large; choose fewer dots per inch")
                             .arg(target.width())
                             .arg(target.height()));
    QImage image = page->renderToImage(72.0 * target.width() / points.width(), 72.0 * target.height() / points.height(), 0, 0,
                                       target.width(), target.height(), Poppler::Page::Rotate0, nullptr, nullptr, shouldAbort,
                                       QVariant::fromValue(quintptr(&context)));
    if (image.isNull())
        return pageError(source, index, QStringLiteral("cannot be drawn"));
    if (image.size() != target) {
        // The renderer rounds its own size: lay the page on white at exactly the target.
        QImage exact(target, QImage::Format_RGB32);
        exact.fill(Qt::white);
        QPainter(&exact).drawImage(0, 0, image);
        image = exact;
    }
    image.convertTo(QImage::Format_RGBX8888);
    auto fd = CodecJobs::openOutput(a);
    if (!fd.ok())
        return fd.error();
    const Status written = VipsSupport::guarded<Done>(QString(), [&] {
        vips::VImage pixels = vips::VImage::new_from_memory(image.bits(), size_t(image.sizeInBytes()), image.width(),
                                                            image.height(), 4, VIPS_FORMAT_UCHAR)
                                  .extract_band(0, vips::VImage::option()->set("n", 3))
                                  .copy(vips::VImage::option()->set("interpretation", VIPS_INTERPRETATION_sRGB));
        const Status s = ImageEncoder::encodeToFile(VipsSupport::withResolution(pixels, dpi, dpi),
                                                    quint64(a.value(J::kCode).toInteger()), 1.0f, fd.value());
        if (!s.ok())
            throw vips::VError(s.error().message.toStdString());
        return Done{};
    });
    ::close(fd.value());
    if (!written.ok())
        return pageError(source, index, written.error().info.value(QStringLiteral("reason")).toString());
    return QCborMap();
}

Result<QCborMap> thumbnail(const QCborMap &a, const JobContext &)
{
    const QString source = WorkerProtocol::pathFrom(a.value(J::kSource));
    const int side = int(a.value(J::kSide).toInteger(180));
    auto image = CodecJobs::thumbnailOfImage(source, side);
    if (image.ok())
        return QCborMap{{J::kImage, WorkerProtocol::image(image.value())}};
    if (!PdfFiles::hasPdfContent(source))
        return image.error();
    auto opened = openDocument(source, {});
    if (!opened.ok() || opened.value()->isLocked() || opened.value()->numPages() < 1)
        return opened.ok() ? ImageErrors::make(source, QStringLiteral("no page to show")) : opened.error();
    const auto page = opened.value()->page(0);
    const QSizeF points = page ? page->pageSizeF() : QSizeF();
    if (points.isEmpty())
        return ImageErrors::make(source, QStringLiteral("no page to show"));
    const double dpi = 72.0 * side / std::max(points.width(), points.height());
    const QImage rendered = page->renderToImage(dpi, dpi);
    if (rendered.isNull())
        return ImageErrors::make(source, QStringLiteral("page 1 cannot be drawn"));
    return QCborMap{{J::kImage, WorkerProtocol::image(rendered)}};
}

} // namespace

void CodecJobs::addPdfJobs(std::map<QString, CodecJob> &jobs)
{
    jobs[J::kPdfInfo] = pdfInfo;
    jobs[J::kPdfPage] = pdfPage;
    jobs[J::kThumbnail] = thumbnail;
}

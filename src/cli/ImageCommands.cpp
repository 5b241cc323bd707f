#include "ImageCommands.h"

#include "ArgumentParser.h"
#include "CliPaths.h"
#include "CommandLine.h"
#include "Console.h"
#include "core/fs/FsCalls.h"
#include "core/fs/PathParts.h"
#include "editor/picture/EditedPicture.h"
#include "editor/picture/PictureSaver.h"
#include "images/ImageErrors.h"
#include "images/ImageTypeCode.h"
#include "images/ResizePlan.h"
#include "images/jobs/ConvertJob.h"
#include "images/jobs/PdfToImagesJob.h"
#include "images/jobs/ResizeJob.h"
#include "images/pdf/PdfPages.h"
#include "platform/posix/UnixSignalWatcher.h"
#include "utils/Utils.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QHash>
#include <QRect>

#include <functional>

namespace {

// The type names of the commands, to the tags of the panels' buttons.
const QHash<QString, qint64> &typeTags()
{
    static const QHash<QString, qint64> tags{{QStringLiteral("png"), 1}, {QStringLiteral("jpg"), 2},
                                             {QStringLiteral("bmp"), 3}, {QStringLiteral("tiff"), 4}};
    return tags;
}

// The files as absolute paths; nothing, with the line said, when one is not there.
std::optional<QStringList> existingFiles(const QStringList &arguments, Console &console)
{
    QStringList paths;
    for (const QString &a : arguments) {
        paths.append(CliPaths::absolute(a));
        if (const auto missing = CliPaths::missing(paths.last())) {
            console.fail(*missing, " (nothing was done)");
            return std::nullopt;
        }
    }
    return paths;
}

// --dest when given, else `fallback`; nothing, with the line said, when --dest is no folder.
std::optional<QString> destinationFolder(const Invocation &invocation, const QString &fallback, Console &console)
{
    if (!invocation.has("--dest"))
        return fallback;
    const QString dest = CliPaths::absolute(invocation.value("--dest"));
    if (const auto wrong = CliPaths::notAFolder(dest)) {
        console.fail(*wrong);
        return std::nullopt;
    }
    return dest;
}

// Runs the job to its end with a line per item on standard error and each written path on standard
// output. Ctrl+C cancels between items. The exit code says whether everything was written.
int runJob(ImageBatchJob &job, const char *verb, Console &console)
{
    QObject::connect(&job, &ImageBatchJob::progress, &job, [&](int done, int total, const QString &item) {
        if (!item.isEmpty())
            console.err << verb << ' ' << item << " (" << done + 1 << '/' << total << ")\n";
    });
    QObject::connect(&job, &ImageBatchJob::itemWritten, &job, [&](const QString &path) { console.out << path << '\n'; });
    QObject::connect(&job, &ImageBatchJob::itemFailed, &job, [&](const Error &e) { console.fail(e); });
    UnixSignalWatcher interrupts;
    QObject::connect(&interrupts, &UnixSignalWatcher::terminationRequested, &job, &ImageBatchJob::cancel);
    QEventLoop loop;
    QObject::connect(&job, &ImageBatchJob::finished, &loop, &QEventLoop::quit);
    job.start();
    loop.exec();
    if (job.isCancelled()) {
        console.fail(QStringLiteral("cancelled; what was written stays, nothing is half-written"));
        return Cli::kCancelled;
    }
    return job.failures().isEmpty() && !job.written().isEmpty() ? 0 : Cli::kFailed;
}

// What an edit makes of a picture; why not, when it cannot be done to this one.
using PictureEdit = std::function<std::optional<QString>(EditedPicture &)>;

// The bytes the edit saves, made straight from the file where that can be done without decoding it;
// a failure means: decode and edit as usual.
using QuickEdit = std::function<Result<QByteArray>(const QString &path)>;

// Each file read upright, edited and saved as the editor saves it: "_Quaydrop-NAME.EXT" beside it (or
// in --dest), complete or not at all, its path on standard output. A file that fails is said and the
// others go on; Ctrl+C stops between files.
int editEach(const Invocation &invocation, Console &console, const char *verb, const PictureEdit &edit,
             const QuickEdit &quick = {})
{
    const auto paths = existingFiles(invocation.arguments, console);
    if (!paths)
        return Cli::kFailed;
    const auto dest = destinationFolder(invocation, QString(), console);
    if (!dest)
        return Cli::kFailed;
    bool interrupted = false;
    UnixSignalWatcher interrupts;
    QObject::connect(&interrupts, &UnixSignalWatcher::terminationRequested, [&interrupted] { interrupted = true; });
    int failures = 0;
    for (qsizetype i = 0; i < paths->size(); ++i) {
        const QString &path = paths->at(i);
        console.err << verb << ' ' << PathParts::lastComponent(path) << " (" << qint64(i + 1) << '/' << qint64(paths->size()) << ")\n";
        const auto saved = [&]() -> Result<QString> {
            const QString folder = dest->isEmpty() ? PathParts::parent(path) : *dest;
            if (quick)
                if (const auto bytes = quick(path); bytes.ok())
                    return PictureSaver::writeBeside(folder, path, bytes.value());
            auto loaded = PictureLoader::load(path);
            if (!loaded.ok())
                return loaded.error();
            EditedPicture picture(path, std::move(loaded.value()));
            if (const auto refused = edit(picture))
                return ImageErrors::make(path, *refused);
            const auto bytes = picture.encodedForSaving();
            if (!bytes.ok())
                return bytes.error();
            return PictureSaver::writeBeside(folder, path, bytes.value());
        }();
        if (saved.ok()) {
            console.out << saved.value() << '\n';
        } else {
            console.fail(saved.error());
            ++failures;
        }
        QCoreApplication::processEvents();
        if (interrupted && i + 1 < paths->size()) {
            console.fail(QStringLiteral("cancelled; what was written stays, nothing is half-written"));
            return Cli::kCancelled;
        }
    }
    return failures == 0 ? 0 : Cli::kFailed;
}

} // namespace

int runRotateCommand(const Invocation &invocation, Console &console)
{
    if (!invocation.has("--turns"))
        return CommandLine::usageError(*invocation.command, console, QStringLiteral("give --turns 1, 2 or 3"));
    const int turns = invocation.value("--turns").toInt();
    return editEach(
        invocation, console, "turning",
        [turns](EditedPicture &picture) -> std::optional<QString> {
            for (int i = 0; i < turns; ++i)
                picture.rotate(true);
            return std::nullopt;
        },
        // A JPEG turns from its own data: decoding its pixels first would only cost time.
        [turns](const QString &path) { return EditedPicture::turnedJpegFile(path, turns); });
}

int runCropCommand(const Invocation &invocation, Console &console)
{
    if (!invocation.has("--rect"))
        return CommandLine::usageError(*invocation.command, console, QStringLiteral("give --rect X,Y,W,H"));
    const QStringList n = invocation.value("--rect").split(QChar(','));
    const QRect rect(n[0].toInt(), n[1].toInt(), n[2].toInt(), n[3].toInt());
    return editEach(invocation, console, "cropping", [rect](EditedPicture &picture) -> std::optional<QString> {
        const BitmapImageRep &image = picture.image();
        const QSize pixels = image.pixels.size();
        if (!QRect(QPoint(), pixels).contains(rect))
            return QStringLiteral("the rectangle %1,%2,%3,%4 reaches outside the picture of %5x%6 pixels (nothing was written)")
                .arg(rect.x()).arg(rect.y()).arg(rect.width()).arg(rect.height()).arg(pixels.width()).arg(pixels.height());
        // The part keeps the picture's resolution.
        const QSizeF points(rect.width() * image.size.width() / pixels.width(), rect.height() * image.size.height() / pixels.height());
        picture.crop(rect, points);
        return std::nullopt;
    });
}

int runResizeCommand(const Invocation &invocation, Console &console)
{
    const QString width = invocation.value("--width");
    const QString height = invocation.value("--height");
    if (width.isEmpty() && height.isEmpty())
        return CommandLine::usageError(*invocation.command, console, QStringLiteral("give --width, --height or both"));
    const auto paths = existingFiles(invocation.arguments, console);
    if (!paths)
        return Cli::kFailed;
    const auto dest = destinationFolder(invocation, PathParts::parent(paths->first()), console);
    if (!dest)
        return Cli::kFailed;
    // One side given: the other follows each image's proportions, as the overlay does while typing.
    // Both sides and one image: exactly that size; several images: one output per side.
    const bool perSide = paths->size() > 1 || width.isEmpty() || height.isEmpty();
    ResizeJob job(ResizePlan::plan(*paths, perSide, width, height, paths->first(), *dest,
                                   [](const QString &p) { return Utils::getImageDimensionsAtPathInSize(p); }));
    return runJob(job, "resizing", console);
}

int runConvertCommand(const Invocation &invocation, Console &console)
{
    const QString type = invocation.arguments.first();
    const auto paths = existingFiles(invocation.arguments.mid(1), console);
    if (!paths)
        return Cli::kFailed;
    const auto dest = destinationFolder(invocation, PathParts::parent(paths->first()), console);
    if (!dest)
        return Cli::kFailed;
    ConvertJob::Request request;
    request.paths = *paths;
    request.multiFiles = true;
    request.folder = *dest;
    request.srcImgPath = paths->first();
    // The slider's snapping and arithmetic: 0 % is factor 1.0.
    request.factor = ConvertJob::factorForSlider(invocation.value("--compression").toFloat());
    request.tag = typeTags().value(type, 0);
    if (type == u"jp2")
        request.imageType = ImageTypeCode::JPEG2000;
    ConvertJob job(request);
    return runJob(job, "converting", console);
}

int runPdfToImagesCommand(const Invocation &invocation, Console &console)
{
    const auto paths = existingFiles(invocation.arguments.mid(1), console);
    if (!paths)
        return Cli::kFailed;
    const QString source = paths->first();
    const auto dest = destinationFolder(invocation, PathParts::parent(source), console);
    if (!dest)
        return Cli::kFailed;
    if (const auto unusable = ImageErrors::unusableInput(source)) {
        console.fail(*unusable);
        return Cli::kFailed;
    }
    PdfToImagesJob::Request request;
    request.sourcePath = source;
    request.password = invocation.value("--password").toUtf8();
    request.destParentFolder = *dest;
    request.imgType = typeTags().value(invocation.arguments.first());
    request.dpi = invocation.has("--dpi") ? invocation.value("--dpi").toFloat() : 150.0f;
    const PdfPages::LockState state = PdfPages::inspect(source, request.password);
    if (!state.readable) {
        console.fail(ImageErrors::make(source, state.problem));
        return Cli::kFailed;
    }
    if (state.locked && !state.opens) {
        console.fail(ImageErrors::make(source, request.password.isEmpty()
                                                   ? QStringLiteral("is locked; give its password with --password")
                                                   : QStringLiteral("the password does not open it")));
        return Cli::kFailed;
    }
    PdfToImagesJob job(request);
    const int status = runJob(job, "writing", console);
    if (job.stoppedEarly())
        console.fail(QStringLiteral("stopped at a page smaller than one pixel"));
    if (status == Cli::kFailed && job.failures().isEmpty() && job.pageCount() == 0)
        return 0; // a PDF with no pages gives an empty folder, as it should
    return status == 0 && job.stoppedEarly() ? Cli::kFailed : status;
}

int runImagesToPdfCommand(const Invocation &invocation, Console &console)
{
    const auto paths = existingFiles(invocation.arguments, console);
    if (!paths)
        return Cli::kFailed;
    const auto dest = destinationFolder(invocation, PathParts::parent(paths->first()), console);
    if (!dest)
        return Cli::kFailed;
    ConvertJob::Request request;
    request.paths = *paths;
    request.multiFiles = true;
    request.mergeToPdf = invocation.has("--merge");
    request.orderAsGiven = invocation.has("--order-as-given");
    if (request.orderAsGiven && !request.mergeToPdf)
        return CommandLine::usageError(*invocation.command, console, QStringLiteral("--order-as-given goes with --merge"));
    request.folder = *dest;
    request.srcImgPath = paths->first();
    request.tag = ConvertJob::kPdfTag;
    ConvertJob job(request);
    return runJob(job, "adding", console);
}

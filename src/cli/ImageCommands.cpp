#include "ImageCommands.h"

#include "ArgumentParser.h"
#include "CliPaths.h"
#include "CommandLine.h"
#include "Console.h"
#include "core/fs/FsCalls.h"
#include "core/fs/PathParts.h"
#include "images/ImageErrors.h"
#include "images/ImageTypeCode.h"
#include "images/ResizePlan.h"
#include "images/jobs/ConvertJob.h"
#include "images/jobs/PdfToImagesJob.h"
#include "images/jobs/ResizeJob.h"
#include "images/pdf/PdfPages.h"
#include "platform/posix/UnixSignalWatcher.h"
#include "utils/Utils.h"

#include <QEventLoop>
#include <QHash>

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

} // namespace

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

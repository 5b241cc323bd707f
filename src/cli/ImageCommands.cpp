#include "ImageCommands.h"

#include "CliPaths.h"
#include "CommandLine.h"
#include "core/fs/FsCalls.h"
#include "core/fs/NativePath.h"
#include "core/fs/PathParts.h"
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

constexpr int kCancelledExit = 130;

struct Options
{
    QHash<QString, QString> values;
    QStringList flags;
    QStringList positional;
};

// "--name value" for the names in `withValue`, "--name" for those in `flags`, the rest positional.
std::optional<Options> parse(const QStringList &args, const QStringList &withValue, const QStringList &flags,
                             QTextStream &err)
{
    Options o;
    for (qsizetype i = 0; i < args.size(); ++i) {
        const QString &a = args.at(i);
        if (withValue.contains(a)) {
            if (i + 1 >= args.size()) {
                err << "quaydrop: " << a << " needs a value\n";
                return std::nullopt;
            }
            o.values.insert(a, args.at(++i));
        } else if (flags.contains(a)) {
            o.flags.append(a);
        } else if (a.startsWith(u"--")) {
            err << "quaydrop: unknown option " << a << '\n';
            return std::nullopt;
        } else {
            o.positional.append(a);
        }
    }
    return o;
}

// The type names of the commands, to the tags of the panels' buttons.
const QHash<QString, qint64> &typeTags()
{
    static const QHash<QString, qint64> tags{{QStringLiteral("png"), 1}, {QStringLiteral("jpg"), 2},
                                             {QStringLiteral("bmp"), 3}, {QStringLiteral("tiff"), 4}};
    return tags;
}

std::optional<QStringList> existingFiles(const QStringList &arguments, QTextStream &err)
{
    QStringList paths;
    for (const QString &a : arguments) {
        const QString path = CliPaths::absolute(a);
        if (CliPaths::reportMissing(path, err, " (nothing was done)"))
            return std::nullopt;
        paths.append(path);
    }
    return paths;
}

// Runs the job to its end with a line per item on stderr and each written path on stdout. Ctrl+C
// cancels between items. The exit code says whether everything was written.
int runJob(ImageBatchJob &job, const char *verb, QTextStream &out, QTextStream &err)
{
    QObject::connect(&job, &ImageBatchJob::progress, &job, [&](int done, int total, const QString &item) {
        if (!item.isEmpty())
            err << verb << ' ' << NativePath::forDisplay(item) << " (" << done + 1 << '/' << total << ")\n" << Qt::flush;
    });
    QObject::connect(&job, &ImageBatchJob::itemWritten, &job,
                     [&](const QString &path) { out << NativePath::forDisplay(path) << '\n' << Qt::flush; });
    QObject::connect(&job, &ImageBatchJob::itemFailed, &job,
                     [&](const Error &e) { err << "quaydrop: " << e.message << '\n' << Qt::flush; });
    UnixSignalWatcher interrupts;
    QObject::connect(&interrupts, &UnixSignalWatcher::terminationRequested, &job, &ImageBatchJob::cancel);
    QEventLoop loop;
    QObject::connect(&job, &ImageBatchJob::finished, &loop, &QEventLoop::quit);
    job.start();
    loop.exec();
    if (job.isCancelled()) {
        err << "quaydrop: cancelled; what was written stays, nothing is half-written\n";
        return kCancelledExit;
    }
    return job.failures().isEmpty() && !job.written().isEmpty() ? 0 : 1;
}

std::optional<QString> destinationFolder(const Options &o, const QString &fallback, QTextStream &err)
{
    if (!o.values.contains(QStringLiteral("--dest")))
        return fallback;
    const QString dest = CliPaths::absolute(o.values.value(QStringLiteral("--dest")));
    if (!Utils::isThisAFolderHere(dest)) {
        err << "quaydrop: " << NativePath::forDisplay(dest) << " is not a folder\n";
        return std::nullopt;
    }
    return dest;
}

} // namespace

int runResizeCommand(const QStringList &args, QTextStream &out, QTextStream &err)
{
    const char *usage = "usage: quaydrop resize [--width W] [--height H] [--dest DIR] FILE...\n"
                        "  one image: a missing side follows the proportions; several: one output per side given\n";
    const auto o = parse(args, {QStringLiteral("--width"), QStringLiteral("--height"), QStringLiteral("--dest")}, {}, err);
    QString width = o ? o->values.value(QStringLiteral("--width")) : QString();
    QString height = o ? o->values.value(QStringLiteral("--height")) : QString();
    if (!o || o->positional.isEmpty() || (width.isEmpty() && height.isEmpty())) {
        err << usage;
        return CommandLine::kUsageError;
    }
    const auto paths = existingFiles(o->positional, err);
    if (!paths)
        return 1;
    const auto dest = destinationFolder(*o, PathParts::parent(paths->first()), err);
    if (!dest)
        return 1;
    const bool multi = paths->size() > 1;
    if (!multi && (width.isEmpty() || height.isEmpty())) {
        // As the overlay does while typing with its proportion box on.
        const QSizeF size = Utils::getImageDimensionsAtPathInSize(paths->first());
        if (size.isEmpty()) {
            err << "quaydrop: " << NativePath::forDisplay(paths->first()) << ": not an image this program can read\n";
            return 1;
        }
        if (height.isEmpty())
            height = ResizePlan::proportional(float(size.width()), float(size.height()), width);
        else
            width = ResizePlan::proportional(float(size.height()), float(size.width()), height);
    }
    ResizeJob job(ResizePlan::plan(*paths, multi, width, height, paths->first(), *dest,
                                   [](const QString &p) { return Utils::getImageDimensionsAtPathInSize(p); }));
    return runJob(job, "resizing", out, err);
}

int runConvertCommand(const QStringList &args, QTextStream &out, QTextStream &err)
{
    const char *usage = "usage: quaydrop convert png|jpg|bmp|tiff|jp2 [--compression PERCENT] [--dest DIR] FILE...\n"
                        "  PERCENT from 0 (best) to 100 (smallest), in steps of 5; jp2 is written as .jpeg\n";
    const auto o = parse(args, {QStringLiteral("--compression"), QStringLiteral("--dest")}, {}, err);
    const QHash<QString, qint64> &tags = typeTags();
    if (!o || o->positional.size() < 2 || (!tags.contains(o->positional.first()) && o->positional.first() != u"jp2")) {
        err << usage;
        return CommandLine::kUsageError;
    }
    bool ok = true;
    const float percent = o->values.value(QStringLiteral("--compression"), QStringLiteral("0")).toFloat(&ok);
    if (!ok || percent < 0 || percent > 100) {
        err << "quaydrop: --compression takes a number from 0 to 100\n" << usage;
        return CommandLine::kUsageError;
    }
    const auto paths = existingFiles(o->positional.mid(1), err);
    if (!paths)
        return 1;
    const auto dest = destinationFolder(*o, PathParts::parent(paths->first()), err);
    if (!dest)
        return 1;
    ConvertJob::Request request;
    request.paths = *paths;
    request.multiFiles = true;
    request.folder = *dest;
    request.srcImgPath = paths->first();
    // The slider's snapping and arithmetic: 0 % is factor 1.0.
    request.factor = ConvertJob::factorForSlider(percent);
    request.tag = tags.value(o->positional.first(), 0);
    if (o->positional.first() == u"jp2")
        request.imageType = ImageTypeCode::JPEG2000;
    ConvertJob job(request);
    return runJob(job, "converting", out, err);
}

int runPdfToImagesCommand(const QStringList &args, QTextStream &out, QTextStream &err)
{
    const char *usage = "usage: quaydrop pdf2img png|jpg|bmp|tiff [--dpi N] [--password P] FILE.pdf\n"
                        "  N from 30 to 1000 (150 when left out); the pages go to a new folder beside the PDF\n";
    const auto o = parse(args, {QStringLiteral("--dpi"), QStringLiteral("--password")}, {}, err);
    const QHash<QString, qint64> &tags = typeTags();
    if (!o || o->positional.size() != 2 || !tags.contains(o->positional.first())) {
        err << usage;
        return CommandLine::kUsageError;
    }
    const auto paths = existingFiles(o->positional.mid(1), err);
    if (!paths)
        return 1;
    const QString source = paths->first();
    const auto pdf = FsCalls::readWholeFile(source);
    if (!pdf.ok()) {
        err << "quaydrop: " << pdf.error().message << '\n';
        return 1;
    }
    PdfToImagesJob::Request request;
    request.sourcePath = source;
    request.pdfData = pdf.value();
    request.password = o->values.value(QStringLiteral("--password")).toUtf8();
    request.destParentFolder = PathParts::parent(source);
    request.imgType = tags.value(o->positional.first());
    request.dpi = o->values.value(QStringLiteral("--dpi")).toFloat();
    const PdfPages::LockState state = PdfPages::inspect(request.pdfData);
    if (!state.readable) {
        err << "quaydrop: " << NativePath::forDisplay(source) << ": " << state.problem << '\n';
        return 1;
    }
    if (state.locked && !PdfPages::unlockWithPassword(request.pdfData, request.password)) {
        err << "quaydrop: " << NativePath::forDisplay(source)
            << (request.password.isEmpty() ? ": is locked; give its password with --password\n"
                                           : ": the password does not open it\n");
        return 1;
    }
    PdfToImagesJob job(request);
    const int status = runJob(job, "writing", out, err);
    if (job.stoppedEarly())
        err << "quaydrop: stopped at a page smaller than one pixel\n";
    if (status == 1 && job.failures().isEmpty() && job.pageCount() == 0)
        return 0; // a PDF with no pages gives an empty folder, as it should
    return status == 0 && job.stoppedEarly() ? 1 : status;
}

int runImagesToPdfCommand(const QStringList &args, QTextStream &out, QTextStream &err)
{
    const char *usage = "usage: quaydrop img2pdf [--merge] [--dest DIR] FILE...\n"
                        "  one PDF per image, or with --merge one PDF of all in natural name order\n";
    const auto o = parse(args, {QStringLiteral("--dest")}, {QStringLiteral("--merge")}, err);
    if (!o || o->positional.isEmpty()) {
        err << usage;
        return CommandLine::kUsageError;
    }
    const auto paths = existingFiles(o->positional, err);
    if (!paths)
        return 1;
    const auto dest = destinationFolder(*o, PathParts::parent(paths->first()), err);
    if (!dest)
        return 1;
    ConvertJob::Request request;
    request.paths = *paths;
    request.multiFiles = true;
    request.mergeToPdf = o->flags.contains(QStringLiteral("--merge"));
    request.folder = *dest;
    request.srcImgPath = paths->first();
    request.tag = ConvertJob::kPdfTag;
    ConvertJob job(request);
    return runJob(job, "adding", out, err);
}

#include "ZipCommand.h"

#include "CliPaths.h"
#include "CommandLine.h"
#include "core/fs/NativePath.h"
#include "fileops/zip/ZipJob.h"
#include "platform/freedesktop/FreedesktopTrash.h"
#include "platform/posix/UnixSignalWatcher.h"
#include "utils/Utils.h"

#include <QElapsedTimer>
#include <QEventLoop>

#include <cerrno>
#include <unistd.h>

namespace {
constexpr int kCancelledExit = 130;
} // namespace

int runZipCommand(const QStringList &args, QTextStream &out, QTextStream &err)
{
    QStringList paths;
    for (const QString &a : args) {
        if (a.startsWith(QLatin1String("--")) && a != QLatin1String("--")) {
            err << "quaydrop: unknown option " << a << "\nusage: quaydrop zip FILE...\n";
            return CommandLine::kUsageError;
        }
        if (a != QLatin1String("--"))
            paths.append(CliPaths::absolute(a));
    }
    if (paths.isEmpty()) {
        err << "usage: quaydrop zip FILE...\n";
        return CommandLine::kUsageError;
    }
    for (const QString &p : std::as_const(paths))
        if (CliPaths::reportMissing(p, err, " (nothing was zipped)"))
            return 1;

    FreedesktopTrash trash;
    ZipJob job(paths, &trash);
    const bool terminal = ::isatty(STDERR_FILENO);
    QElapsedTimer clock;
    clock.start();
    qint64 lastLine = -1;
    QObject::connect(&job, &ZipJob::progress, [&](quint64 done, quint64 total, const QString &name) {
        // Redrawn in place on a terminal; elsewhere a line every two seconds.
        if (!terminal && lastLine >= 0 && clock.elapsed() - lastLine < 2000)
            return;
        lastLine = clock.elapsed();
        const int percent = total > 0 ? int(done * 100 / total) : 0;
        err << (terminal ? "\r\033[K" : "") << '[' << QString(percent / 5, QChar('#')).leftJustified(20, QChar('.'))
            << "] " << QString::number(percent).rightJustified(3) << "%  " << Utils::getHumanReadableSizeFrom(done)
            << " of " << Utils::getHumanReadableSizeFrom(total) << "  " << NativePath::forDisplay(name)
            << (terminal ? "" : "\n");
        err.flush();
    });
    QEventLoop loop;
    QObject::connect(&job, &ZipJob::finished, &loop, &QEventLoop::quit);
    UnixSignalWatcher interrupts;
    QObject::connect(&interrupts, &UnixSignalWatcher::terminationRequested, &job, &ZipJob::cancel);
    job.start();
    loop.exec();
    if (terminal && lastLine >= 0)
        err << "\r\033[K";

    const Result<QString> &result = job.result();
    if (!result.ok()) {
        if (result.error().code == ECANCELED) {
            err << "quaydrop: cancelled; no archive was written\n";
            return kCancelledExit;
        }
        err << "quaydrop: " << NativePath::forDisplay(result.error().message) << "; no archive was written\n";
        return 1;
    }
    out << NativePath::forDisplay(result.value()) << '\n';
    return 0;
}

#include "BoardExportJob.h"

#include "core/fs/NativePath.h"
#include "core/fs/PathParts.h"

BoardExportJob::BoardExportJob(Request request, QObject *parent) : ImageBatchJob(parent), m_request(std::move(request)) {}

BoardExportJob::~BoardExportJob()
{
    waitForWorker();
}

void BoardExportJob::run()
{
    const int total = int(m_request.pages.size());
    auto progress = [this](int page, int count, const QString &image) {
        reportProgress(page, count, PathParts::lastComponent(image));
        return !isCancelled();
    };
    if (m_request.merge) {
        const auto made = ImagesToPdf::writePages(m_request.pages, m_request.destination, ImagesToPdf::UnreadableImages::Skip,
                                                  progress, AtomicFile::Mode::Replace);
        if (made.ok()) {
            for (const Error &e : made.value().skipped)
                reportFailure(e);
            reportWritten(m_request.destination);
        } else if (!isCancelled()) {
            reportFailure(made.error());
        }
        reportProgress(total, total, {});
        return;
    }
    for (int i = 0; i < total && !isCancelled(); ++i) {
        const ImagesToPdf::Page &page = m_request.pages.at(i);
        reportProgress(i, total, PathParts::lastComponent(page.path));
        const QString name = PathParts::splitExtension(PathParts::lastComponent(page.path)).name;
        const QString path = m_request.destination + QLatin1Char('/') + name + QStringLiteral(".pdf");
        const auto made = ImagesToPdf::writePages({page}, path, ImagesToPdf::UnreadableImages::Fail, {}, AtomicFile::Mode::Replace);
        if (made.ok())
            reportWritten(path);
        else
            reportFailure(made.error()); // the writer has logged the path
    }
    reportProgress(total, total, {});
}

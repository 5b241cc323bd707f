#include "AppDelegate.h"

#include "core/fs/NativePath.h"
#include "core/fs/PathParts.h"
#include "core/overlays/ImgConvertOverlayVC.h"
#include "core/overlays/ImgResizeOverlayVC.h"
#include "core/texts/Texts.h"
#include "core/window/BusyView.h"
#include "core/window/DropWindow.h"
#include "editor/ui/CropImgWC.h"
#include "images/ResizePlan.h"
#include "images/Thumbnails.h"
#include "images/board/LRHMPagesManager.h"
#include "images/board/ui/PDFPreviewWC.h"
#include "images/jobs/ConvertJob.h"
#include "images/jobs/ResizeJob.h"
#include "images/ImageSize.h"
#include "utils/Utils.h"

#include <QCursor>
#include <QGuiApplication>
#include <QScreen>


namespace {
constexpr quint64 kResizeCredit = 150;
constexpr quint64 kResizeFromOtherAppCredit = 200;
} // namespace

QImage AppDelegate::thumbnailForFilePath(const QString &path) const { return Thumbnails::thumbnailForFilePath(path); }

void AppDelegate::quickResizeBtnAction(ActionButton *)
{
    // One image whose size cannot be read would open the fields at 0 x 0: say why instead.
    if (!multiFilesActionPanelShown) {
        if (const auto size = ImageSize::ofFile(filePathsArr.value(0)); !size.ok()) {
            qWarning("%s", qPrintable(size.error().message));
            Utils::showBasicAlertwithTitle(Texts::localized("sizeUnreadableTitle"), size.error().message);
            return;
        }
    }
    showOverlayPanel(imgResizeVC);
}

void AppDelegate::convertImgAction(ActionButton *) { showOverlayPanel(imgConvrtVC); }

void AppDelegate::runImageJob(ImageBatchJob *job, const char *busyKey, std::function<void(ImageBatchJob *)> finish)
{
    revealInFinderPaths.clear();
    // The panel comes back when the job is done; meanwhile the busy view says what is going on.
    QPointer<QWidget> panel = window->contentView();
    connect(job, &ImageBatchJob::progress, this, [this](int done, int total, const QString &) {
        if (emptyContviewIsShown)
            emptyContview->showProgress(done, total);
    });
    connect(job, &ImageBatchJob::itemWritten, this, [this](const QString &path) { revealInFinderPaths.append(path); });
    connect(job, &ImageBatchJob::finished, this, [this, job, panel, finish = std::move(finish)] {
        finish(job);
        if (emptyContviewIsShown) {
            endBusyView();
            if (panel && windowIsVsbl())
                window->setContentView(panel);
        }
        job->deleteLater();
    });
    showProcessingProgressLabelTxt(Texts::localized(busyKey), 0.8, 0.0, false);
    job->start();
}

void AppDelegate::finishImageJob(ImageBatchJob *job, const char *doneTitleKey, const QString &folder,
                                 const QStringList &reveal)
{
    const QString body = Texts::localized("savedTostr /%@").arg(NativePath::forDisplay(PathParts::lastComponent(folder)));
    if (!reveal.isEmpty()) {
        QString text = body;
        // One failure is named with its reason; several are counted, each one in the log.
        if (job->failures().size() == 1)
            text += QStringLiteral("\n") + job->failures().first().message;
        else if (!job->failures().isEmpty())
            text += QStringLiteral("\n") + Texts::localized("%1 could not be written").arg(job->failures().size());
        Utils::postSimpleNotificationWithTitle(Texts::localized(doneTitleKey), text,
                                               Texts::localized("revealShowFileBtn"),
                                               {{QStringLiteral("filePaths"), reveal}});
    } else if (!job->failures().isEmpty()) {
        // Nothing came of it: say why rather than stay silent.
        Utils::showBasicAlertwithTitle(Texts::localized("nothingWrittenTitle"), job->failures().first().message);
    }
}

void AppDelegate::finishWrittenFiles(ImageBatchJob *job, const char *doneTitleKey)
{
    const QStringList written = job->written();
    finishImageJob(job, doneTitleKey, written.isEmpty() ? QString() : PathParts::parent(written.first()), written);
}

void AppDelegate::imgResizeCompletion(qint64 tag, const QString &width, const QString &height, qint64 destIndex,
                                      const QString &destPath)
{
    revealInFinderPaths.clear();
    if (tag == ImgResizeOverlayVC::kCropTag) {
        closeVisibleModalOverlay();
        cropeRotateImg();
        return;
    }
    if (tag != ImgResizeOverlayVC::kResizeTag) {
        closeVisibleModalOverlay();
        return;
    }
    const QSizeF old = imgResizeVC->oldSizeValues();
    if (width == QString::number(qint64(old.width())) && height == QString::number(qint64(old.height()))) {
        closeVisibleModalOverlay(); // the size it has: nothing to do, nothing earned
        return;
    }
    Utils::saveChangesToTimeSavedPlistByAddingSec(droppedImageFromOtherApp ? kResizeFromOtherAppCredit : kResizeCredit);
    const QStringList paths = imgsOnlyPathsArr;
    const bool multi = multiFilesActionPanelShown;
    if (!droppedImageFromOtherApp && !libraryFolderFile) {
        const QString folder = destIndex >= 1 && !destPath.isEmpty() ? destPath : PathParts::parent(filePathsArr.value(0));
        doResizeImgs(paths, multi, width, height, folder);
        closeVisibleModalOverlay();
        return;
    }
    // A temporary file, or one of the Library: the result needs a home the user picks.
    chooseFolder(Texts::localized("Save result to..."), true, [=, this](const QString &folder) {
        closeVisibleModalOverlay();
        doResizeImgs(paths, multi, width, height, folder);
    });
}

void AppDelegate::doResizeImgs(const QStringList &paths, bool multiFiles, const QString &width, const QString &height,
                               const QString &folder)
{
    const auto tasks = ResizePlan::plan(paths, multiFiles, width, height, filePathsArr.value(0), folder,
                                        [](const QString &p) { return Utils::getImageDimensionsAtPathInSize(p); });
    runImageJob(new ResizeJob(tasks, this), "Resizing", [this](ImageBatchJob *job) { finishWrittenFiles(job, "imgResizeCompleteMsg"); });
}

void AppDelegate::cropeRotateImg()
{
    const QString path = filePathsArr.value(0);
    if (path.isEmpty())
        return;
    if (!m_cropEditor)
        m_cropEditor = new CropImgWC;
    // A file of the user's own Library has no folder of its own to take the result, as an attachment.
    m_cropEditor->openImage(path, droppedImageFromOtherApp, libraryFolderFile);
    if (m_cropEditor->isVisible()) {
        cropRotateWC = m_cropEditor;
        orderOutTheWindow();
    }
}

void AppDelegate::imgConvrtCompletion(qint64 tag, float factor, qint64 merge)
{
    revealInFinderPaths.clear();
    LRHMPagesManager::shareImagesManager().cleanUpCache();
    const QString first = filePathsArr.value(0);
    const QStringList images = imgsOnlyPathsArr;
    if (tag >= 1 && tag <= ConvertJob::kPdfTag) {
        if (!libraryFolderFile && !droppedImageFromOtherApp) {
            doConvertImgs(images, multiFilesActionPanelShown, merge != 0, PathParts::parent(first), first, factor, tag);
            closeVisibleModalOverlay();
            return;
        }
        const bool multi = multiFilesActionPanelShown;
        chooseFolder(Texts::localized("Save result to..."), true, [=, this](const QString &folder) {
            closeVisibleModalOverlay();
            doConvertImgs(images, multi, merge != 0, folder, first, factor, tag);
        });
        return;
    }
    if (tag == ImgConvertOverlayVC::kPageBoardTag) {
        auto *board = qobject_cast<PDFPreviewWC *>(pdfPreview.data());
        if (!board) {
            board = new PDFPreviewWC;
            board->setAttribute(Qt::WA_QuitOnClose, false);
            connect(this, &QObject::destroyed, board, &QObject::deleteLater);
            pdfPreview = board;
        }
        if (const QScreen *screen = QGuiApplication::screenAt(QCursor::pos()))
            board->move(screen->availableGeometry().center() - board->rect().center());
        board->loadPageItemImagesWithPaths(filePathsArr);
        board->show();
        board->raise();
        board->activateWindow();
        orderOutTheWindow();
    }
    closeVisibleModalOverlay();
}

void AppDelegate::doConvertImgs(const QStringList &paths, bool multiFiles, bool mergeToPdf, const QString &folder,
                                const QString &srcImgPath, float factor, qint64 tag)
{
    ConvertJob::Request request;
    request.paths = paths;
    request.multiFiles = multiFiles;
    request.mergeToPdf = mergeToPdf;
    request.folder = folder;
    request.srcImgPath = srcImgPath;
    request.factor = factor;
    request.tag = tag;
    auto *job = new ConvertJob(request, this);
    job->credit = [](quint64 seconds) { Utils::saveChangesToTimeSavedPlistByAddingSec(seconds); };
    runImageJob(job, "Converting", [this](ImageBatchJob *done) { finishWrittenFiles(done, "imgConvCompleteMsg"); });
}

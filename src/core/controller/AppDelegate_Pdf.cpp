#include "AppDelegate.h"

#include "core/fs/FsCalls.h"
#include "core/fs/NativePath.h"
#include "core/fs/PathParts.h"
#include "core/overlays/LockedPDFEnterPass.h"
#include "fileops/FreeName.h"
#include "core/overlays/PdfToImgVC.h"
#include "core/texts/Texts.h"
#include "core/window/DropWindow.h"
#include "images/jobs/PdfToImagesJob.h"
#include "images/pdf/PdfPages.h"
#include "images/pdf/TextToPdf.h"
#include "utils/Utils.h"

#include <QCoreApplication>
#include <QPointer>
#include <QThreadPool>


namespace {

constexpr quint64 kSaveAsPdfCredit = 40;

} // namespace

void AppDelegate::showPDFToImgConvertVC(ActionButton *) { showOverlayPanel(pdfToImgConvVC); }

void AppDelegate::pdfImgConvrtCompletion(qint64 tag, float dpi)
{
    if (tag == OverlayController::kCloseTag) {
        closeVisibleModalOverlay();
        return;
    }
    // An unreadable PDF leaves the overlay up: nothing was started.
    openPdfAskingPassword(filePathsArr.value(0),
                          [this, tag, dpi](const QByteArray &password) { pdf2ImgCompletionAction(tag, dpi, password); });
}

void AppDelegate::openPdfAskingPassword(const QString &path, std::function<void(const QByteArray &password)> then)
{
    const QString shown = NativePath::forDisplay(PathParts::lastComponent(path));
    const PdfPages::LockState state = PdfPages::inspect(path);
    if (!state.readable) {
        qWarning("%s: %s", qPrintable(shown), qPrintable(state.problem));
        Utils::showBasicAlertwithTitle(Texts::localized("pdfUnreadableTitle"), QStringLiteral("%1: %2").arg(shown, state.problem));
        return;
    }
    if (!state.locked && !state.encrypted) {
        then({});
        return;
    }
    qInfo("%s - isLocked or encrypted", qPrintable(shown));
    if (enterLockedPDFPass)
        return; // a sheet is up already
    // A wrong password is said on the sheet, which stays for another try.
    enterLockedPDFPass = new LockedPDFEnterPass(PathParts::lastComponent(path), [path, shown](const QString &password) {
        const bool opens = PdfPages::unlockWithPassword(path, password.toUtf8());
        if (!opens)
            qWarning("the password does not open %s", qPrintable(shown));
        return opens;
    }, window);
    connect(enterLockedPDFPass, &QDialog::finished, this, [this, then](int code) {
        const QString password = enterLockedPDFPass->password();
        enterLockedPDFPass->deleteLater();
        enterLockedPDFPass = nullptr;
        if (code == 0) {
            qInfo("Cancel button tapped");
            return;
        }
        then(password.toUtf8());
    });
    enterLockedPDFPass->open();
}

void AppDelegate::pdf2ImgCompletionAction(qint64 tag, float dpi, const QByteArray &password)
{
    revealInFinderPaths.clear();
    closeVisibleModalOverlay();
    if (tag >= 1 && tag <= 4)
        convertPDF2Img(filePathsArr.value(0), tag, libraryFolderFile, droppedImageFromOtherApp, dpi, password);
}

void AppDelegate::convertPDF2Img(const QString &path, qint64 imgType, bool libFile, bool fromOtherApp, float dpi,
                                 const QByteArray &password)
{
    auto start = [=, this](const QString &parentFolder) {
        PdfToImagesJob::Request request{path, password, parentFolder, imgType, dpi};
        auto *job = new PdfToImagesJob(request, this);
        job->credit = [](quint64 seconds) { Utils::saveChangesToTimeSavedPlistByAddingSec(seconds); };
        runImageJob(job, "Converting", [this](ImageBatchJob *done) {
            const QString folder = static_cast<PdfToImagesJob *>(done)->folder();
            finishImageJob(done, "PDFConvCompleteMsg", folder, folder.isEmpty() ? QStringList() : QStringList{folder});
        });
    };
    if (libFile || fromOtherApp)
        chooseFolder(Texts::localized("Save result to..."), true, start);
    else
        start(PathParts::parent(path));
}

QString AppDelegate::getDestinationPathForPDFFile() const
{
    const QString first = filePathsArr.value(0);
    return PathParts::parent(first) + QChar('/') +
           PathParts::splitExtension(PathParts::lastComponent(first)).name + QStringLiteral(".pdf");
}

void AppDelegate::SaveAsPDF(ActionButton *)
{
    Utils::saveChangesToTimeSavedPlistByAddingSec(kSaveAsPdfCredit);
    const QString source = filePathsArr.value(0);
    const QString wanted = getDestinationPathForPDFFile();
    auto write = [this, source](const QString &folder, const QString &fileName) {
        // An existing PDF of that name is the user's: the new one takes a free name beside it.
        const auto parts = PathParts::splitExtension(fileName);
        QPointer<AppDelegate> self(this);
        QThreadPool::globalInstance()->start([self, source, folder, parts] {
            const auto written = FreeName::write(folder, parts.name, parts.extension,
                                                 [&source](const QString &path) { return TextToPdf::saveAsPDF(source, path); });
            const Status s = written.ok() ? success() : Status(written.error());
            const QString dest = written.ok() ? written.value() : QString();
            QMetaObject::invokeMethod(QCoreApplication::instance(), [self, s, dest] {
                if (!self)
                    return;
                if (!s.ok()) {
                    qWarning("%s", qPrintable(s.error().message));
                    Utils::showBasicAlertwithTitle(Texts::localized("nothingWrittenTitle"), s.error().message);
                    return;
                }
                const QString folderName = PathParts::lastComponent(PathParts::parent(dest));
                Utils::postSimpleNotificationWithTitle(
                    Texts::localized("savedasPDF"),
                    Texts::localized("to ../%@/%@")
                        .arg(NativePath::forDisplay(folderName), NativePath::forDisplay(PathParts::lastComponent(dest))),
                    Texts::localized("revealShowFileBtn"), {{QStringLiteral("filePaths"), QStringList{dest}}});
            }, Qt::QueuedConnection);
        });
    };
    if (libraryFolderFile) {
        chooseFolder(QString(), false, [write, wanted](const QString &folder) {
            write(folder, PathParts::lastComponent(wanted));
        });
        return;
    }
    write(PathParts::parent(wanted), PathParts::lastComponent(wanted));
}

// Saving, reverting to the file, resizing the picture, and handing a copy to the share service.

#include "CropImgWC.h"

#include "AKPaintView.h"
#include "EditorImageView.h"
#include "ResizePopover.h"
#include "core/fs/AtomicFile.h"
#include "core/fs/FsCalls.h"
#include "core/fs/NativePath.h"
#include "core/fs/PathParts.h"
#include "core/texts/Texts.h"
#include "editor/picture/PictureSaver.h"
#include "images/ResizePlan.h"
#include "platform/Platform.h"
#include "sending/ShareTargets.h"
#include "sending/ui/SharePicker.h"
#include "utils/Utils.h"
#include "widgets/Alert.h"
#include "widgets/Spinner.h"

#include <QApplication>
#include <QCheckBox>
#include <QFileDialog>
#include <QFutureWatcher>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QToolButton>
#include <QtConcurrent/QtConcurrentRun>

#include <cerrno>
#include <cstring>

#include <unistd.h>

void CropImgWC::showSaveProgress(bool on)
{
    saveProgrIndic->setVisible(on);
    on ? saveProgrIndic->start() : saveProgrIndic->stop();
    saveBtn->setEnabled(!on);
}

QImage CropImgWC::layerForSaving()
{
    // Strokes are saved from paint mode only; in crop mode they are a guide, as they always were.
    if (!paintView->hasDrawings() || !isPaintMode())
        return {};
    return paintView->snapshotWithSize(pixelSize());
}

void CropImgWC::saveCropRotateResult(std::function<void(bool)> then)
{
    if (m_saving)
        return;
    if (!ensureFullPicture()) {
        if (then)
            then(false);
        return;
    }
    m_saving = true;
    showSaveProgress(true);
    // Encoded on a worker thread from a copy: the window stays responsive and the spinner turns.
    auto *watcher = new QFutureWatcher<Result<QByteArray>>(this);
    connect(watcher, &QFutureWatcher<Result<QByteArray>>::finished, this, [this, watcher, then] {
        watcher->deleteLater();
        const Result<QByteArray> bytes = watcher->result();
        if (!bytes.ok()) {
            saveFailed(bytes.error().message, {}, then);
            return;
        }
        if (fromAnotherApp || imgIsAttachment)
            writeAtChosenPath(bytes.value(), then);
        else
            writeSaved(bytes.value(), then);
    });
    watcher->setFuture(QtConcurrent::run([snapshot = picture, layer = layerForSaving()] {
        return snapshot.encodedForSaving(layer);
    }));
}

void CropImgWC::writeSaved(const QByteArray &bytes, std::function<void(bool)> then)
{
    const auto written = PictureSaver::writeBeside(PathParts::parent(imgPathToProcess), imgPathToProcess, bytes);
    if (!written.ok()) {
        saveFailed(written.error().message, bytes, then);
        return;
    }
    finishSave(written.value(), then);
}

void CropImgWC::chooseSavePath(std::function<void(QString)> chosen)
{
    const QString extension = PictureSaver::extension(imgPathToProcess);
    auto *dialog = new QFileDialog(this, Texts::localized("Save"), Utils::existingStartFolder(Utils::getSavePanelURL()));
    dialog->setObjectName(QStringLiteral("editorSavePanel"));
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowModality(Qt::WindowModal);
    if (!extension.isEmpty()) {
        dialog->setNameFilter(QStringLiteral("*.%1").arg(extension));
        dialog->setDefaultSuffix(extension);
    }
    dialog->selectFile(PictureSaver::baseName(imgPathToProcess) + (extension.isEmpty() ? QString() : QLatin1Char('.') + extension));
    connect(dialog, &QFileDialog::finished, this, [dialog, extension, chosen = std::move(chosen)](int result) {
        if (result != QDialog::Accepted || dialog->selectedFiles().isEmpty()) {
            chosen(QString());
            return;
        }
        QString path = dialog->selectedFiles().first();
        // Only the source's own type may be chosen.
        if (!extension.isEmpty() && PictureSaver::extension(path).compare(extension, Qt::CaseInsensitive) != 0)
            path += QLatin1Char('.') + extension;
        Utils::overWriteSavePanelLastSaveURL(PathParts::parent(path));
        chosen(path);
    });
    dialog->open();
}

void CropImgWC::writeAtChosenPath(const QByteArray &bytes, std::function<void(bool)> then)
{
    chooseSavePath([this, bytes, then](const QString &path) {
        if (path.isEmpty()) { // cancelled: the picture stays as it is, unsaved
            m_saving = false;
            showSaveProgress(false);
            if (then)
                then(false);
            return;
        }
        const auto written = PictureSaver::writeAt(path, bytes);
        if (!written.ok()) {
            saveFailed(written.error().message, bytes, then);
            return;
        }
        finishSave(written.value(), then);
    });
}

void CropImgWC::saveFailed(const QString &message, const QByteArray &bytes, std::function<void(bool)> then)
{
    qWarning("the edited picture was not saved: %s", qPrintable(message));
    showSaveProgress(false);
    auto *box = new QMessageBox(QMessageBox::Warning, windowTitle(), Texts::localized("editorSaveFailedTitle"),
                                QMessageBox::NoButton, this);
    box->setObjectName(QStringLiteral("saveFailedAlert"));
    box->setInformativeText(Texts::localized("editorSaveFailedText").arg(message));
    QPushButton *elsewhere = bytes.isEmpty() ? nullptr : box->addButton(Texts::localized("editorSaveElsewhere"), QMessageBox::AcceptRole);
    box->addButton(Texts::localized("Cancel"), QMessageBox::RejectRole);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowModality(Qt::WindowModal);
    connect(box, &QMessageBox::finished, this, [this, box, elsewhere, bytes, then](int) {
        if (elsewhere && box->clickedButton() == elsewhere) {
            showSaveProgress(true);
            writeAtChosenPath(bytes, then);
            return;
        }
        m_saving = false;
        if (then)
            then(false);
    });
    box->open();
}

void CropImgWC::finishSave(const QString &path, std::function<void(bool)> then)
{
    m_saving = false;
    Utils::postSimpleNotificationWithTitle(
        Texts::localized("imgSaved"),
        Texts::localized("to ../%@/%@")
            .arg(NativePath::forDisplay(PathParts::lastComponent(PathParts::parent(path))),
                 NativePath::forDisplay(PathParts::lastComponent(path))),
        Texts::localized("revealShowFileBtn"), {{QStringLiteral("filePaths"), QStringList{path}}});
    showSaveProgress(false);
    m_modified = false;
    Q_EMIT saved(path);
    if (then)
        then(true);
    if (closeWindafterSaveCheckbox->isChecked())
        close();
}

void CropImgWC::revertCropChanges()
{
    m_loading.waitForFinished();
    if (!FsCalls::exists(imgPathToProcess, true)) {
        showAlert(QMessageBox::Warning, Texts::localized("origImgNotFoundTitle"), Texts::localized("failedToGetOrigImg"));
        return;
    }
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const auto loaded = PictureLoader::load(imgPathToProcess);
    QApplication::restoreOverrideCursor();
    if (!loaded.ok()) {
        showAlert(QMessageBox::Warning, Texts::localized("origImgNotFoundTitle"), loaded.error().message);
        return;
    }
    paintView->cleanEverythingDrawn();
    picture = EditedPicture(imgPathToProcess, loaded.value());
    showPictureImage();
    makeCropViewFitImgBounds();
    updateCropSizeValues();
    m_modified = false;
}

void CropImgWC::showResizePopOver()
{
    if (resizeimgPopover->isShown()) {
        resizeimgPopover->hide();
        return;
    }
    resizeimgPopover->proportionCheckBox->setChecked(true);
    resizeimgPopover->showFrom(resizeImBtn, pixelSize());
}

void CropImgWC::proportionCBAction(bool on)
{
    if (!on)
        return;
    resizeimgPopover->resizeWTxtFld->setText(QString::number(pixelSize().width()));
    resizeimgPopover->resizeHtxtFld->setText(QString::number(pixelSize().height()));
}

void CropImgWC::controlTextDidChange(QLineEdit *field)
{
    if (!resizeimgPopover->proportionCheckBox->isChecked())
        return;
    const QSize p = pixelSize();
    if (field == resizeimgPopover->resizeWTxtFld)
        resizeimgPopover->resizeHtxtFld->setText(ResizePlan::proportional(p.width(), p.height(), field->text()));
    else
        resizeimgPopover->resizeWTxtFld->setText(ResizePlan::proportional(p.height(), p.width(), field->text()));
}

void CropImgWC::resizeDonePressed()
{
    const int w = resizeimgPopover->resizeWTxtFld->text().toInt();
    const int h = resizeimgPopover->resizeHtxtFld->text().toInt();
    if (QSize(w, h) == pixelSize() || !ensureFullPicture()) {
        resizeimgPopover->hide();
        return;
    }
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const BitmapImageRep scaled = Utils::scaleImage(picture.image(), QSizeF(w, h));
    QApplication::restoreOverrideCursor();
    resizeimgPopover->hide();
    if (!scaled.isValid()) {
        showAlert(QMessageBox::Warning, Texts::localized("editorResizeFailedTitle"),
                  Texts::localized("editorResizeFailedText").arg(w).arg(h));
        return;
    }
    picture.replaceImage(scaled);
    m_modified = true;
    showPictureImage();
    makeCropViewFitImgBounds();
    updateCropSizeValues();
}

void CropImgWC::showSharePopCW()
{
    if (!Platform::current().share || !ensureFullPicture() || shareProgressIndic->isSpinning())
        return;
    shareProgressIndic->show();
    shareProgressIndic->start();
    // A copy under the source's own name in the temp folder, written on a worker thread.
    const QString path = Utils::pathForEditedImgToShare(PathParts::lastComponent(imgPathToProcess));
    auto *watcher = new QFutureWatcher<Status>(this);
    connect(watcher, &QFutureWatcher<Status>::finished, this, [this, watcher, path] {
        watcher->deleteLater();
        shareProgressIndic->stop();
        shareProgressIndic->hide();
        if (!watcher->result().ok()) {
            qWarning("%s", qPrintable(watcher->result().error().message));
            return;
        }
        showShareMenu(path);
    });
    watcher->setFuture(QtConcurrent::run([snapshot = picture, layer = layerForSaving(), path]() -> Status {
        const auto bytes = snapshot.encodedForSaving(layer);
        if (!bytes.ok())
            return bytes.error();
        if (FsCalls::exists(path) && ::unlink(NativePath::toNative(path).constData()) != 0)
            qWarning("Failed to remove file - %s", strerror(errno));
        return AtomicFile::writeFile(path, bytes.value(), AtomicFile::Mode::Replace);
    }));
}

void CropImgWC::showShareMenu(const QString &path)
{
    // The copy lives in the temporary folder: Save as… and file links would point there, so only the
    // targets that take the file away are offered (Save elsewhere is the editor's own).
    QPointer<CropImgWC> self(this);
    showSharePicker(ShareTargets::forFiles({path}, ShareTargets::Use::CommandLine), shareCWimgBtn,
                    [self, path](const QString &id) {
                        ShareTargets::shareFiles(id, {path}, [self](const Status &shared) {
                            if (shared.ok())
                                return;
                            qWarning("Failed to Share Items > %s", qPrintable(shared.error().message));
                            if (self)
                                showAlert(QMessageBox::Warning, Texts::localized("shareFailedTitle"),
                                          shared.error().message);
                        });
                    },
                    {});
}

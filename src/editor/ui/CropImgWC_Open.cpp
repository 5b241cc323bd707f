// Opening a picture, placing the window, and closing it.

#include "CropImgWC.h"

#include "AKPaintView.h"
#include "CropSuper.h"
#include "EditorImageView.h"
#include "ResizePopover.h"
#include "core/NotificationCenter.h"
#include "core/fs/NativePath.h"
#include "core/fs/PathParts.h"
#include "core/panels/PanelFrame.h"
#include "core/settings/SettingsStore.h"
#include "core/texts/Texts.h"
#include "platform/Platform.h"
#include "editor/crop/EditorGeometry.h"
#include "widgets/Alert.h"
#include "widgets/controls/ITSwitch.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCursor>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QSlider>
#include <QToolButton>
#include <QUndoStack>
#include <QtConcurrent/QtConcurrentRun>

#include <cmath>

namespace {

// The window's size is remembered for each screen, by the screen's name and size.
QByteArray sizeKey(const QScreen *screen)
{
    const QSize s = screen ? screen->size() : QSize();
    return QStringLiteral("editorWindowSize %1 %2x%3").arg(screen ? screen->name() : QString()).arg(s.width()).arg(s.height()).toUtf8();
}

QScreen *screenUnderPointer()
{
    QScreen *screen = QGuiApplication::screenAt(QCursor::pos());
    return screen ? screen : QGuiApplication::primaryScreen();
}

} // namespace

void CropImgWC::openImage(const QString &path, bool anotherApp, bool attachment)
{
    if (m_modified && isVisible()) {
        // The picture open now is kept until its changes are saved or given up.
        askToSaveChanges(path, [=, this](bool proceed) {
            if (proceed) {
                m_modified = false;
                openImage(path, anotherApp, attachment);
            }
        });
        return;
    }
    // The first frame comes from a quick look; the whole picture follows on a worker thread.
    const QScreen *screen = screenUnderPointer();
    const QSize fit = (screen ? screen->availableSize() : QSize(1920, 1080)) * (screen ? screen->devicePixelRatio() : 1.0);
    const auto preview = PictureLoader::preview(path, fit);
    if (!preview.ok()) {
        qWarning("%s", qPrintable(preview.error().message));
        showAlert(QMessageBox::Warning, Texts::localized("editorOpenFailedTitle"), preview.error().message);
        Q_EMIT openFailed(preview.error().message);
        return;
    }
    m_loading.waitForFinished();
    fromAnotherApp = anotherApp;
    imgIsAttachment = attachment;
    showPicture(path, preview.value());
    m_loading.setFuture(QtConcurrent::run([path] { return PictureLoader::load(path); }));
}

void CropImgWC::showPicture(const QString &path, const PictureLoader::Preview &preview)
{
    picture = EditedPicture();
    drawingSegment->button(0)->setChecked(true);
    paintView->control().setEraser(false);
    brusSizeLbl->setText(QString::number(brushSizeSlider->value()));
    imgPathToProcess = path;
    m_previewPixels = preview.pixels;
    setWindowTitle(NativePath::forDisplay(PathParts::lastComponent(path)));
    imgToRotateOrCrop->setImage(preview.image, preview.points);
    shareCWimgBtn->setVisible(Platform::current().share || Platform::current().mail);
    if (!fromAnotherApp)
        origImageDPI = std::ceil(float(preview.pixels.width() * 72.0 / preview.points.width()));
    const QString pixels = QStringLiteral("%1x%2").arg(preview.pixels.width()).arg(preview.pixels.height());
    origSizeLbl->setProperty("pixels", pixels);
    origSizeLbl->setText(Texts::localized("editorOriginalSize").arg(pixels));
    cropSizeWidthTF->setText(QString::number(preview.pixels.width()));
    cropSizeHeightTF->setText(QString::number(preview.pixels.height()));
    cropVisblSwitch->setOn(false);
    setPaintMode(false);
    paintView->cleanEverythingDrawn();
    m_undoStack->clear();
    placeWindow(preview.points);
    imgCropView->imgScRatio = EditorGeometry::getScaleForRealImgSize(preview.points, QRectF(QPointF(), QSizeF(imgToRotateOrCrop->size())));
    makeCropViewFitImgBounds();
    m_modified = false;
    show();
    raise();
    activateWindow();
    imgCropView->setFocus();
}

void CropImgWC::pictureLoaded()
{
    const auto loaded = m_loading.result();
    if (!loaded.ok()) {
        // The quick look passed but the whole picture did not: nothing can be edited.
        qWarning("%s", qPrintable(loaded.error().message));
        showAlert(QMessageBox::Warning, Texts::localized("editorOpenFailedTitle"), loaded.error().message);
        Q_EMIT openFailed(loaded.error().message);
        m_modified = false;
        close();
        return;
    }
    // Taken already by an action that could not wait: what was done to it since must stay.
    if (picture.isNull())
        picture = EditedPicture(imgPathToProcess, loaded.value());
    Q_EMIT pictureReady();
}

bool CropImgWC::ensureFullPicture()
{
    if (picture.isNull() && m_loading.future().isValid()) {
        if (m_loading.isRunning()) {
            QApplication::setOverrideCursor(Qt::WaitCursor);
            m_loading.waitForFinished();
            QApplication::restoreOverrideCursor();
        }
        // The finished signal is queued and may not have been handled yet, even when the load ended
        // before this call: take the result now.
        if (m_loading.future().resultCount() > 0 && m_loading.result().ok())
            picture = EditedPicture(imgPathToProcess, m_loading.result().value());
    }
    return !picture.isNull();
}

QSize CropImgWC::pixelSize() const
{
    return picture.isNull() ? m_previewPixels : picture.image().pixels.size();
}

QRectF CropImgWC::properWindowFrameToFit(const QSizeF &imagePoints) const
{
    const QSizeF min = contentMinSize();
    const double imageViewWidth = min.width() - 2 * 12; // the work area's side margins
    return PanelFrame::properWindowFrameToFit(imagePoints, min, imageViewWidth, QPointF(x(), y()));
}

void CropImgWC::placeWindow(const QSizeF &imagePoints)
{
    QScreen *screen = isVisible() ? this->screen() : screenUnderPointer();
    const QRect area = screen ? screen->availableGeometry() : QRect(0, 0, 1280, 800);
    QSize size = properWindowFrameToFit(imagePoints).size().toSize();
    const QString remembered = SettingsStore::shared().stringValue(sizeKey(screen).constData());
    if (const QStringList wh = remembered.split(QLatin1Char('x')); wh.size() == 2 && wh[0].toInt() > 0 && wh[1].toInt() > 0)
        size = QSize(wh[0].toInt(), wh[1].toInt());
    size = size.boundedTo(area.size()).expandedTo(contentMinSize().toSize());
    m_fitting = true;
    resize(size);
    move(area.center() - QPoint(size.width() / 2, size.height() / 2));
    m_fitting = false;
    m_userSized = false;
}

void CropImgWC::rememberWindowSize()
{
    if (m_userSized && screen())
        SettingsStore::shared().setString(sizeKey(screen()).constData(), QStringLiteral("%1x%2").arg(width()).arg(height()));
}

void CropImgWC::askToSaveChanges(const QString &forName, std::function<void(bool proceed)> then)
{
    auto *box = new QMessageBox(QMessageBox::Question, windowTitle(),
                                Texts::localized("editorUnsavedTitle").arg(windowTitle()), QMessageBox::NoButton, this);
    box->setInformativeText(forName.isEmpty() ? Texts::localized("editorUnsavedCloseText")
                                              : Texts::localized("editorUnsavedOpenText")
                                                    .arg(NativePath::forDisplay(PathParts::lastComponent(forName))));
    box->setObjectName(QStringLiteral("unsavedChangesAlert"));
    QPushButton *save = box->addButton(Texts::localized("Save"), QMessageBox::AcceptRole);
    QPushButton *discard = box->addButton(Texts::localized("editorDiscard"), QMessageBox::DestructiveRole);
    box->addButton(Texts::localized("Cancel"), QMessageBox::RejectRole);
    box->setDefaultButton(save);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowModality(Qt::WindowModal);
    connect(box, &QMessageBox::finished, this, [this, box, save, discard, then = std::move(then)](int) {
        if (box->clickedButton() == discard)
            then(true);
        else if (box->clickedButton() == save)
            saveCropRotateResult([then](bool written) { then(written); });
    });
    show();
    raise();
    box->open();
}

void CropImgWC::windowWillClose()
{
    rememberWindowSize();
    resizeimgPopover->hide();
    paintView->cleanEverythingDrawn();
    drawingSegment->button(0)->setChecked(true);
    imgToRotateOrCrop->clear();
    picture = EditedPicture();
    m_modified = false;
    NotificationCenter::defaultCenter().post(QString::fromLatin1(NotificationName::CropWindowClosed));
    Q_EMIT closed();
}

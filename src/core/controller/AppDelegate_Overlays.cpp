#include "AppDelegate.h"

#include "core/overlays/ImgConvertOverlayVC.h"
#include "core/overlays/ImgResizeOverlayVC.h"
#include "core/overlays/MoveFileViewController.h"
#include "core/overlays/PdfToImgVC.h"
#include "core/overlays/FileOverlays.h"
#include "core/overlays/OverlayControllers.h"
#include "core/overlays/WallpaperOverlayVC.h"
#include "core/panels/PanelCatalog.h"
#include "core/window/DropWindow.h"
#include "sending/ShareTargets.h"
#include "utils/Utils.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QSlider>
#include <QTimer>

namespace {

// The first responder is set a moment after the overlay shows, as the window settles first.
void focusLater(QWidget *field)
{
    QTimer::singleShot(200, field, [field] {
        field->setFocus(Qt::OtherFocusReason);
    });
}

} // namespace

void AppDelegate::installOverlayCompletions()
{
    if (renameFlsVC)
        return;
    renameFlsVC = new RenameFilesVC;
    moveFileVC = new MoveFileViewController;
    wpChangeVC = new WallpaperOverlayVC;
    imgShareVC = new ImgShareOverlayVC;
    pdfToImgConvVC = new PdfToImgVC;
    imgConvrtVC = new ImgConvertOverlayVC;
    imgResizeVC = new ImgResizeOverlayVC;
    enterFolderNameVC = new EnterFolderNameOverlayVC;
    fileCreateVC = new FileCreateOverlayVC;
    for (QWidget *c : std::initializer_list<QWidget *>{renameFlsVC, moveFileVC, wpChangeVC, imgShareVC, pdfToImgConvVC,
                                                       imgConvrtVC, imgResizeVC, enterFolderNameVC, fileCreateVC})
        connect(this, &QObject::destroyed, c, &QObject::deleteLater);

    renameFlsVC->setRenameCompletion([this](qint64 tag, QString name, QString suffix, QString prefix, QString folder) {
        renameCompletion(tag, name, suffix, prefix, folder);
    });
    installedCompletions << QStringLiteral("setRenameCompletion");
    moveFileVC->setCompletion([this](qint64 tag, bool copy, QString path) { moveFileCompletion(tag, copy, path); });
    installedCompletions << QStringLiteral("setCompletion");
    wpChangeVC->setWpVCCompletion([this](qint64 tag) { wpVCCompletion(tag); });
    wpChangeVC->setOldWPAsDesktopWPHandler([this](int slot, QWidget *sender) { setOldWPAsDesktopWPAction(slot, sender); });
    wpChangeVC->setShareOldWPHandler([this](int slot, QWidget *sender) { shareOldWPaction(slot, sender); });
    installedCompletions << QStringLiteral("setWpVCCompletion");
    imgShareVC->setShareCompletion([this](qint64 tag) { shareCompletion(tag); });
    installedCompletions << QStringLiteral("setShareCompletion");
    pdfToImgConvVC->setPdfImgConvrtCompletion([this](qint64 tag, float dpi) { pdfImgConvrtCompletion(tag, dpi); });
    installedCompletions << QStringLiteral("setPdfImgConvrtCompletion");
    imgConvrtVC->setImgConvrtCompletion(
        [this](qint64 tag, float factor, qint64 merge) { imgConvrtCompletion(tag, factor, merge); });
    installedCompletions << QStringLiteral("setImgConvrtCompletion");
    imgResizeVC->setImgResizeCompletion([this](qint64 tag, QString w, QString h, qint64 index, QString path) {
        imgResizeCompletion(tag, w, h, index, path);
    });
    installedCompletions << QStringLiteral("setImgResizeCompletion");
    enterFolderNameVC->setFolderNameCompletion([this](qint64 tag, QString name) { folderNameCompletion(tag, name); });
    installedCompletions << QStringLiteral("setFolderNameCompletion");
    fileCreateVC->setFileCreateCompletion([this](qint64 tag, qint64 inside, QString name) { fileCreateCompletion(tag, inside, name); });
    installedCompletions << QStringLiteral("setFileCreateCompletion");
}

void AppDelegate::showOverlayPanel(OverlayController *controller)
{
    if (!controller)
        return;
    modalOverlay->contentViewController = controller;
    modalOverlay->animates = false;
    modalOverlay->shouldCloseWhenClickOnBackground = controller != moveFileVC;
    modalOverlay->shouldOverlayTitleBar = true;
    // The panel stays in sight, dimmed, around the overlay's card: it is clear where the card ends.
    modalOverlay->setBackgroundColor(QColor(0, 0, 0, 96));
    if (controller == pdfToImgConvVC) {
        bool ok = false;
        const float dpi = pdfToImgConvVC->DPItxtFld->text().toFloat(&ok);
        if (!ok || dpi < 72 || dpi > 1000 || dpi == 0)
            pdfToImgConvVC->DPItxtFld->setText(QStringLiteral("150"));
    }
    if (controller == imgResizeVC) {
        Utils::createMoveDestArr();
        QStringList names;
        if (const auto dics = Utils::movePathsDicsWithPathsAndNames())
            for (const QVariant &entry : *dics)
                names.append(entry.toMap().value(QStringLiteral("destPname")).toString());
        imgResizeVC->setDestinations(names);
    }
    if (controller == imgShareVC)
        imgShareVC->setTargets(ShareTargets::forFiles({filePathsArr.value(0)}, ShareTargets::Use::Window));
    if (controller == imgConvrtVC)
        imgConvrtVC->setMultipleImages(multiFilesActionPanelShown && imgsOnlyPathsArr.size() > 1);
    if (const Status s = modalOverlay->showInWindow(window); !s.ok())
        qWarning("overlay not shown: %s", qPrintable(s.error().message));
}

bool AppDelegate::isModalOverlayVisible() const
{
    return modalOverlay && modalOverlay->isShown();
}

void AppDelegate::closeVisibleModalOverlay()
{
    if (isModalOverlayVisible())
        modalOverlay->close();
}

void AppDelegate::modalOverlayDidShow(JMModalOverlay *overlay)
{
    if (!overlay->isShown())
        return;
    QWidget *controller = overlay->contentViewController;
    if (controller == imgResizeVC) {
        const QVariantMap dims = Utils::getImageDimensionsAtPath(filePathsArr.value(0));
        const QSizeF old(dims.value(QStringLiteral("kImgWidth")).toFloat(), dims.value(QStringLiteral("kImgHeight")).toFloat());
        // No size to start from (the resize button said why): the fields are not filled with 0 x 0.
        if (old.isEmpty() && !multiFilesActionPanelShown)
            return;
        imgResizeVC->setOldSizeValues(old);
        imgResizeVC->widthTextField->setText(QString::number(qint64(imgResizeVC->oldSizeValues().width())));
        imgResizeVC->heightTextField->setText(QString::number(qint64(imgResizeVC->oldSizeValues().height())));
        focusLater(imgResizeVC->widthTextField);
        imgResizeVC->setMultiFilesMode(multiFilesActionPanelShown);
    } else if (controller == enterFolderNameVC) {
        enterFolderNameVC->folderNameTF->clear();
        focusLater(enterFolderNameVC->folderNameTF);
    } else if (controller == imgConvrtVC) {
        imgConvrtVC->setStepValue(5.0f);
        imgConvrtVC->comprFactorLbl->setText(QStringLiteral("%1%").arg(imgConvrtVC->compressFactorSlider->value()));
    } else if (controller == renameFlsVC) {
        // The name of the last rename stays, ready to be typed over.
        renameFlsVC->renameNameTF->selectAll();
        focusLater(renameFlsVC->renameNameTF);
    } else if (controller == fileCreateVC) {
        focusLater(fileCreateVC->fileNameTXTfld);
    } else if (controller == wpChangeVC) {
        setupOldWPview();
    }
}

void AppDelegate::modalOverlayWillClose(JMModalOverlay *)
{
    // Whichever overlay closes, the panel is 235 high again: the move overlay made it 300.
    applyPanelFrame(PanelCatalog::kPanelHeight);
}

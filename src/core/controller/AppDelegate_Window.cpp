#include "AppDelegate.h"

#include "fileops/actions/TrashJob.h"
#include "fileops/zip/ZipJob.h"

#include "core/classification/WordCount.h"
#include "core/intake/DropOperation.h"
#include "core/panels/PanelCatalog.h"
#include "core/panels/PanelFrame.h"
#include "core/panels/PanelRules.h"
#include "core/texts/Texts.h"
#include "core/window/ActionPanelView.h"
#include "core/window/BusyView.h"
#include "core/window/DropFilesHereView.h"
#include "core/window/DropView.h"
#include "core/window/DropWindow.h"
#include "fileops/orchestration/MoveCopyOrchestrator.h"
#include "fileops/ui/ConflictDialog.h"
#include "fileops/ui/ProgressPanel.h"
#include "fileops/ui/WidgetAlerts.h"
#include "images/ImageWorker.h"
#include "utils/Utils.h"
#include "widgets/ActionButton.h"
#include "widgets/DisableSubviews.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QPushButton>
#include <QFileDialog>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QLabel>
#include <QSaveFile>

Q_LOGGING_CATEGORY(lcWindow, "quaydrop.window", QtWarningMsg)

void AppDelegate::buildWindow()
{
    window = new DropWindow;
    dropFilesHereView = new DropFilesHereView(window);
    window->addView(dropFilesHereView);
    connect(dropFilesHereView, &DropFilesHereView::dropped, this, &AppDelegate::mycustomviewDidGetDrop);
    connect(dropFilesHereView->dropQuickMoveView, &DropView::dropped, this, &AppDelegate::dropViewDidGetDrop);
    connect(dropFilesHereView->createAliasDropView, &DropView::dropped, this, &AppDelegate::dropViewDidGetDrop);
    emptyContview = new BusyView(window);
    window->addView(emptyContview);
    // The busy view's one cancel stops what it shows: a zip or trash under way, else a drop being read.
    connect(emptyContview, &BusyView::cancelRequested, this, [this] {
        const bool taskRunning =
            (zippingTask && zippingTask->isRunning()) || (trashingTask && trashingTask->isRunning());
        if (taskRunning)
            cancelTaskAction();
        else
            cancelAllPromisedImportOperations();
    });
    window->setContentView(dropFilesHereView);
    window->setFrameYUp(QRectF(0, 0, PanelCatalog::kDropTargetSide, PanelCatalog::kDropTargetSide));
    window->prepareFirstShow();
    connect(window, &DropWindow::escapePressed, this, &AppDelegate::escapeKeyPressed);
    connect(window, &DropWindow::returnPressed, this, &AppDelegate::returnKeyPressed);
    connect(window, &DropWindow::pastePressed, this, &AppDelegate::pasteAsDrop);

    modalOverlay = new JMModalOverlay(this);
    modalOverlay->delegate = this;

    m_conflicts = new WidgetConflictResolver(window);
    m_alerts = new WidgetAlerts(window);
    moveFilesProgress = new ProgressPanel([this] { return m_moveCopy->runningJobs(); },
                                          [this](const FileCopyParamsPtr &job) { m_moveCopy->cancelCopyProgress(job); });
    m_moveCopy = new MoveCopyOrchestrator(m_conflicts, m_alerts, moveFilesProgress, m_platform.trash, this);
    connect(m_moveCopy, &MoveCopyOrchestrator::orderOutTheWindow, this, &AppDelegate::orderOutTheWindow);
    // After a name clash was answered the window goes, as it does at once without one.
    connect(m_moveCopy, &MoveCopyOrchestrator::operationEnded, this, &AppDelegate::orderOutTheWindow);
    connect(this, &QObject::destroyed, moveFilesProgress, &QObject::deleteLater);
}

ActionPanelView *AppDelegate::panelView(DropPanel panel)
{
    // Each panel is built when it first shows: built at start, the six would keep their widgets and
    // icons resident in sessions that never drop that kind of thing.
    ActionPanelView *&view = m_panels[PanelCatalog::contentViewName(panel)];
    if (!view) {
        view = new ActionPanelView(panel == DropPanelFolder ? DropPanelDefault : panel, window);
        window->addView(view);
        connect(view, &ActionPanelView::actionTriggered, this, &AppDelegate::performAction);
    }
    return view;
}

bool AppDelegate::windowIsVsbl() const
{
    return window && window->isVisible();
}

bool AppDelegate::windowSheetIsActive() const
{
    // A window-modal dialog over one of ours stands for an attached sheet.
    const auto windows = QApplication::topLevelWidgets();
    for (const QWidget *w : windows)
        if (w->isVisible() && w->windowModality() == Qt::WindowModal && w->parentWidget())
            return true;
    return false;
}

bool AppDelegate::writeData(const QByteArray &data, const QString &path)
{
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(data) == data.size() && file.commit();
}

void AppDelegate::endBusyView()
{
    if (!emptyContviewIsShown)
        return;
    emptyContviewIsShown = false;
    disableSubviews(emptyContview, false);
    emptyContview->stop();
}

void AppDelegate::showPanelWithIndex(quint64 index)
{
    oneofThePanelsIsShown = true;
    endBusyView();
    if (!isKnownDropPanel(index))
        return;
    qCDebug(lcWindow, "panel %llu shown", static_cast<unsigned long long>(index));
    const auto panel = DropPanel(index);
    if (panel == DropPanelDropTarget) {
        closeVisibleModalOverlay();
        oneofThePanelsIsShown = false;
        endBusyView();
        window->setTakesFocus(false);
        window->setContentView(dropFilesHereView);
        return;
    }
    window->setTakesFocus(true);
    window->activateWindow();
    window->raise();

    ActionPanelView *view = panelView(panel);
    view->refreshImages();
    PanelInputs inputs;
    inputs.libraryFolderFile = libraryFolderFile;
    inputs.droppedImageFromOtherApp = droppedImageFromOtherApp;
    inputs.firstPathIsPdf = !filePathsArr.isEmpty() && Utils::isThisPDFFile(filePathsArr.first());
    inputs.firstPathIsArchive = !filePathsArr.isEmpty() && Utils::isArchiveFile(filePathsArr.first());
    inputs.zipRunning = zippingTask && zippingTask->isRunning();
    if (panel == DropPanelMultiFiles) {
        imgsOnlyPathsArr = Utils::getImagesOnlyFromArrPaths(filePathsArr);
        multiFilesActionPanelShown = PanelRules::multiFilesActionPanelShown(int(imgsOnlyPathsArr.size()));
        inputs.imageCount = int(imgsOnlyPathsArr.size());
    }
    const auto states = PanelRules::buttonStatesFor(panel, inputs);
    for (auto it = states.cbegin(); it != states.cend(); ++it)
        if (ActionButton *b = view->button(it.key())) {
            b->setEnabled(it.value().enabled);
            b->setVisible(it.value().visible);
        }
    // A zip still running in the background spins in the zip button of whichever panel opens.
    if (ActionButton *zip = view->button(PanelCatalog::zipButtonOf(panel)))
        zip->setBusy(inputs.zipRunning);
    window->setContentView(view);
    if (panel == DropPanelImage || panel == DropPanelOtherAppImage || inputs.firstPathIsPdf || inputs.imageCount > 0)
        ImageWorker::expectWork();

    switch (panel) {
    case DropPanelImage:
    case DropPanelDocument:
    case DropPanelFolder:
    case DropPanelDefault: {
        for (const PanelButtonSpec &spec : PanelCatalog::buttonsOf(panel)) {
            if (qstrcmp(spec.action, "getPathBtnAction") == 0)
                view->button(QString::fromLatin1(spec.outlet))->setText(Texts::localized("/path"));
            if (qstrcmp(spec.action, "sizebtnAction") == 0)
                showSizeAsBtnTitle(view->button(QString::fromLatin1(spec.outlet)));
        }
        break;
    }
    case DropPanelString: {
        view->button(QStringLiteral("droppedStrToClipboardBtn"))->setText(Texts::localized("Copy to clipboard"));
        const QString text = Utils::readDroppedString();
        view->glyphCountLbl->setText(QString::number(text.size()));
        view->wordsCountLbl->setText(QString::number(wordCountFromString2(text)));
        break;
    }
    case DropPanelOtherAppImage: {
        Utils::saveChangesToTimeSavedPlistByAddingSec(15);
        const QString first = filePathsArr.value(0);
        view->button(QStringLiteral("dropedFromOtherAppImgDimesionsBtn"))->setText(Utils::getImageDimensionsAsStringImgPath(first));
        view->button(QStringLiteral("copydroppedImgURLToClipboardBTN"))->setText(Texts::localized("/path"));
        break;
    }
    case DropPanelMultiFiles:
        showSizeAsBtnTitle(view->button(QStringLiteral("sizeMultiPanelBtn")));
        break;
    case DropPanelDropTarget:
        break;
    }
}

void AppDelegate::showProcessingProgressLabelTxt(const QString &text, double alpha, double maximum, bool cancelBtnEnabled)
{
    // A second call changes nothing: neither the text nor the bar.
    if (window->contentView() == emptyContview && emptyContviewIsShown)
        return;
    emptyContviewIsShown = true;
    window->setContentView(emptyContview);
    disableSubviews(emptyContview, true);
    emptyContview->start(text, alpha, maximum, cancelBtnEnabled);
}

void AppDelegate::showDropTargetAt(QPointF pointerYUp)
{
    const qreal side = PanelCatalog::kDropTargetSide;
    shouldNotCloseYet = false;
    window->setFrameYUp(QRectF(pointerYUp.x() - side / 2, pointerYUp.y(), side, side));
    setPointerMonitors(true);
    showPanelWithIndex(DropPanelDropTarget);
    window->show();
    window->raise();
}

void AppDelegate::applyPanelFrame(qreal height)
{
    // On the screen the window is on, not the primary one.
    const QRectF frame = window->frameYUp();
    window->setFrameYUp(PanelFrame::panelFrame(frame, height, DropWindow::visibleFrameYUp(frame.center())));
}

QRectF AppDelegate::properWindowFrameToFit(const QSizeF &image, const QSizeF &editorMinSize, qreal imageViewWidth,
                                           const QPointF &editorOrigin) const
{
    return PanelFrame::properWindowFrameToFit(image, editorMinSize, imageViewWidth, editorOrigin);
}

void AppDelegate::escapeKeyPressed()
{
    if (isModalOverlayVisible()) {
        closeVisibleModalOverlay();
        return;
    }
    if (emptyContviewIsShown) {
        // Only what can be given up: the import of a drop, by its cancel button.
        if (emptyContview->cancelProgressBtn->isVisible() && emptyContview->cancelProgressBtn->isEnabled())
            emptyContview->cancelProgressBtn->click();
        return;
    }
    orderOutTheWindow();
}

void AppDelegate::returnKeyPressed()
{
    auto usable = [](QAbstractButton *b) { return b && b->isVisible() && b->isEnabled(); };
    if (auto *focused = qobject_cast<QAbstractButton *>(window->focusWidget()); usable(focused)) {
        focused->animateClick();
        return;
    }
    if (!isModalOverlayVisible() || !modalOverlay->contentViewController)
        return;
    for (QPushButton *b : modalOverlay->contentViewController->findChildren<QPushButton *>())
        if (b->isDefault() && usable(b)) {
            b->animateClick();
            return;
        }
}

void AppDelegate::pasteAsDrop()
{
    // As a drop on the waiting window, or on a panel in place of what was dropped before.
    if (!windowIsVsbl() || isModalOverlayVisible() || emptyContviewIsShown)
        return;
    const std::unique_ptr<QMimeData> data = DropOperation::dropFromClipboard(QGuiApplication::clipboard()->mimeData());
    if (!data || !DropOperation::perform(data.get(), DropOperation::Target::Window, window->winId()).accepted) {
        qInfo("paste: the clipboard holds no files, text or image for the window");
        return;
    }
    mycustomviewDidGetDrop(data.get());
}

void AppDelegate::orderOutTheWindow()
{
    if (windowSheetIsActive())
        return;
    mouseDraggedBool = false;
    if (!windowIsVsbl())
        return;
    closeVisibleModalOverlay();
    oneofThePanelsIsShown = false;
    endBusyView();
    if (alertOrSaveOrOpenPanelIsShown || m_moveCopy->alertOrSaveOrOpenPanelIsShown)
        return;
    multiFilesActionPanelShown = false;
    imgsOnlyPathsArr.clear();
    setPointerMonitors(false);
    keyDownLocalMonitor = false;
    closeVisibleModalOverlay();
    window->setContentView(dropFilesHereView);
    window->setTakesFocus(false);
    window->hide();
    activatePrevFrontMostApp();
}

void AppDelegate::activatePrevFrontMostApp()
{
    if (dontActivatePrevFrontMostApp || prevFrontMostAppBndlID.isEmpty())
        return;
    // Not while the editor or the page board has a window of its own.
    if (cropRotateWC || pdfPreview)
        return;
    if (m_platform.windowSystem)
        m_platform.windowSystem->restoreRememberedFocus();
}

void AppDelegate::chooseFolder(const QString &title, bool asSheet, std::function<void(QString)> chosen)
{
    const QString start = Utils::existingStartFolder(Utils::getOpenPanelURL());
    auto *panel = new QFileDialog(asSheet ? window : nullptr, title, start);
    panel->setObjectName(QStringLiteral("chooseFolderPanel"));
    panel->setFileMode(QFileDialog::Directory);
    panel->setOption(QFileDialog::ShowDirsOnly);
    panel->setAcceptMode(QFileDialog::AcceptOpen);
    panel->setAttribute(Qt::WA_DeleteOnClose);
    if (asSheet)
        panel->setWindowModality(Qt::WindowModal);
    alertOrSaveOrOpenPanelIsShown = true;
    connect(panel, &QFileDialog::finished, this, [this, panel, chosen = std::move(chosen)](int result) {
        alertOrSaveOrOpenPanelIsShown = false;
        if (result != QDialog::Accepted || panel->selectedFiles().isEmpty())
            return; // the overlay stays for another try
        Utils::overWriteOpenPanelLastSaveURL(panel->selectedFiles().first());
        chosen(panel->selectedFiles().first());
    });
    panel->open();
}

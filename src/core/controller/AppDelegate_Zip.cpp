#include "AppDelegate.h"

#include "core/fs/NativePath.h"
#include "core/fs/PathParts.h"
#include "core/texts/Texts.h"
#include "core/window/BusyView.h"
#include "core/window/DropWindow.h"
#include "fileops/ui/ZipProgressWindow.h"
#include "fileops/actions/TrashJob.h"
#include "fileops/zip/ZipJob.h"
#include "fileops/zip/ZipPlan.h"
#include "utils/Utils.h"
#include "widgets/ActionButton.h"

#include <QGuiApplication>
#include <QPointer>
#include <QProgressBar>
#include <QScreen>
#include <QTimer>

#include <cerrno>

namespace {
constexpr int kEndStateShownMs = 1200; // "Success" or "Canceled" stays this long before the panel goes
} // namespace

void AppDelegate::zipBtnAction(ActionButton *sender)
{
    Utils::saveChangesToTimeSavedPlistByAddingSec(2);
    workingZip(sender);
}

void AppDelegate::zipMultiFilesAction(ActionButton *sender)
{
    Utils::saveChangesToTimeSavedPlistByAddingSec(5);
    zipBtnAction(sender);
}

QString AppDelegate::getZipFileDestPath() const
{
    const QString beside = ZipPlan::archivePath(filePathsArr);
    // Items in the temp folder or the Library get their archive in the temp folder; the user then
    // picks where it goes.
    if (droppedImageFromOtherApp || libraryFolderFile)
        return Utils::tempFileOperationsFolder() + QLatin1Char('/') + PathParts::lastComponent(beside);
    return beside;
}

void AppDelegate::workingZip(ActionButton *sender)
{
    if (zippingTask && zippingTask->isRunning()) {
        qInfo("zippingTask is running");
        return;
    }
    if (filePathsArr.isEmpty())
        return;
    const bool choosePlace = droppedImageFromOtherApp || libraryFolderFile;
    auto *job = new ZipJob(filePathsArr, m_platform.trash, getZipFileDestPath(), this);
    zippingTask = job;
    if (!zippingTaskPanel) {
        zippingTaskPanel = new ZipProgressWindow;
        connect(this, &QObject::destroyed, zippingTaskPanel, &QObject::deleteLater);
        connect(zippingTaskPanel, &ZipProgressWindow::cancelRequested, this, [this] {
            if (zippingTask && zippingTask->isRunning())
                zippingTask->cancel();
        });
    }
    zippingTaskPanel->setStateKey("...Initializing...");
    zippingTaskPanel->setProgress(0, 0, QString());
    if (QScreen *screen = QGuiApplication::primaryScreen()) {
        zippingTaskPanel->adjustSize();
        const QRect area = screen->availableGeometry();
        zippingTaskPanel->move(area.right() - zippingTaskPanel->width() - 24, area.top() + 24);
    }
    zippingTaskPanel->show();
    zippingTaskPanel->raise();

    QPointer<ActionButton> button(sender);
    if (button) {
        button->setEnabled(false);
        button->setBusy(true);
    }
    QPointer<QWidget> panel = window->contentView();
    showProcessingProgressLabelTxt(Texts::localized("Zipping"), 0.8, 0.0, true);

    connect(job, &ZipJob::progress, this, [this](quint64 done, quint64 total, const QString &name) {
        zippingTaskPanel->setStateKey("zipping");
        zippingTaskPanel->setProgress(done, total, name);
        if (emptyContviewIsShown && total > 0)
            emptyContview->showProgress(zippingTaskPanel->permille(), 1000);
    });
    connect(job, &ZipJob::finished, this, [this, job, button, panel, choosePlace] {
        closeVisibleModalOverlay();
        if (button) {
            button->setEnabled(true);
            button->setBusy(false);
        }
        if (emptyContviewIsShown) {
            endBusyView();
            if (panel && windowIsVsbl())
                window->setContentView(panel);
        }
        const Result<QString> result = job->result();
        job->deleteLater();
        if (!result.ok()) {
            terminationUiUpdates();
            // A cancel says itself; a failure that left no archive is told, naming what stopped it.
            if (result.error().code != ECANCELED)
                Utils::showBasicAlertwithTitle(Texts::localized("zipFailedTitle"), result.error().message);
            return;
        }
        const QString archive = result.value();
        const QString name = NativePath::forDisplay(PathParts::lastComponent(archive));
        auto notify = [name](const QString &path) {
            Utils::postSimpleNotificationWithTitle(Texts::localized("zipTaskComplete"), name,
                                                   Texts::localized("revealShowFileBtn"),
                                                   {{QStringLiteral("filePaths"), QStringList{path}}});
        };
        if (!choosePlace) {
            finishZippingUIUpdates();
            notify(archive);
            return;
        }
        alertOrSaveOrOpenPanelIsShown = true;
        QPointer<AppDelegate> self(this);
        Utils::openSavePanelWithCurrentFilePath(
            archive, QStringLiteral("zip"), PathParts::splitExtension(PathParts::lastComponent(archive)).name,
            [self, notify](const QString &chosen) {
                if (!self)
                    return;
                self->alertOrSaveOrOpenPanelIsShown = false;
                if (chosen.isEmpty()) {
                    self->terminationUiUpdates();
                    return;
                }
                self->finishZippingUIUpdates();
                notify(chosen);
            });
    });
    job->start();
}

void AppDelegate::cancelTaskAction()
{
    if (zippingTask && zippingTask->isRunning())
        zippingTask->cancel();
    if (trashingTask && trashingTask->isRunning())
        trashingTask->cancel();
}

void AppDelegate::finishZippingUIUpdates()
{
    zippingTaskPanel->setStateKey("Success");
    zippingTaskPanel->taskProgressIndic->setValue(zippingTaskPanel->taskProgressIndic->maximum());
    hideZipPanelLater();
}

void AppDelegate::terminationUiUpdates()
{
    zippingTaskPanel->setStateKey("Canceled");
    zippingTaskPanel->taskProgressIndic->setValue(0);
    hideZipPanelLater();
}

void AppDelegate::hideZipPanelLater()
{
    zippingTask = nullptr;
    QPointer<ZipProgressWindow> shown(zippingTaskPanel);
    QTimer::singleShot(kEndStateShownMs, this, [this, shown] {
        // A new zip may have started meanwhile: its panel stays.
        if (shown && !(zippingTask && zippingTask->isRunning()))
            shown->hide();
    });
}

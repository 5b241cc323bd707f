// The Trash button: items to the trash on the pool, then what only the user may decide (deleting
// for good where a volume has no trash), then the notification with Undo.

#include "AppDelegate.h"

#include "core/fs/NativePath.h"
#include "core/fs/PathParts.h"
#include "core/texts/Texts.h"
#include "core/window/BusyView.h"
#include "core/window/DropWindow.h"
#include "fileops/actions/TrashJob.h"
#include "fileops/actions/UndoLog.h"
#include "utils/Utils.h"

#include <QMessageBox>
#include <QPushButton>

void AppDelegate::trashFiles(ActionButton *)
{
    if (trashingTask && trashingTask->isRunning()) {
        qInfo("trashingTask is running");
        return;
    }
    if (filePathsArr.isEmpty())
        return;
    runTrashJob(new TrashJob(filePathsArr, TrashJob::Work::Trash, m_platform.trash, m_platform.volumes, this),
                "Moving to the trash", [this](TrashJob *job) { askToDeleteWhatHasNoTrash(job->outcome()); });
}

void AppDelegate::runTrashJob(TrashJob *job, const char *busyKey, std::function<void(TrashJob *)> done)
{
    trashingTask = job;
    // The panel comes back when the job is done; meanwhile the busy view counts the items.
    QPointer<QWidget> panel = window->contentView();
    connect(job, &TrashJob::progress, this, [this](int doneItems, int total, const QString &) {
        if (emptyContviewIsShown)
            emptyContview->showProgress(doneItems, total);
    });
    connect(job, &TrashJob::finished, this, [this, job, panel, done = std::move(done)] {
        job->deleteLater();
        if (emptyContviewIsShown) {
            endBusyView();
            if (panel && windowIsVsbl())
                window->setContentView(panel);
        }
        done(job);
    });
    showProcessingProgressLabelTxt(Texts::localized(busyKey), 0.8, 0.0, true);
    job->start();
}

void AppDelegate::askToDeleteWhatHasNoTrash(const TrashItems::Outcome &out)
{
    QStringList confirmed;
    for (const QString &path : out.noTrash) {
        // Never for good without asking.
        alertOrSaveOrOpenPanelIsShown = true;
        QMessageBox ask(QMessageBox::Warning, Texts::localized("noTrashTitle"),
                        Texts::localized("noTrashText").arg(NativePath::forDisplay(path)),
                        QMessageBox::NoButton, window);
        ask.setObjectName(QStringLiteral("deleteForGoodAlert"));
        QPushButton *remove = ask.addButton(Texts::localized("Delete"), QMessageBox::DestructiveRole);
        ask.setDefaultButton(ask.addButton(Texts::localized("Cancel"), QMessageBox::RejectRole));
        ask.exec();
        alertOrSaveOrOpenPanelIsShown = false;
        if (ask.clickedButton() == remove)
            confirmed.append(path);
    }
    if (confirmed.isEmpty()) {
        reportTrashed(out, {});
        return;
    }
    runTrashJob(
        new TrashJob(confirmed, TrashJob::Work::DeleteForGood, m_platform.trash, m_platform.volumes, this),
        "Deleting", [this, out](TrashJob *job) {
            for (const Error &e : job->outcome().failures)
                Utils::showBasicAlertwithTitle(Texts::localized("deleteFailedTitle"), e.message);
            reportTrashed(out, job->deleted());
        });
}

void AppDelegate::reportTrashed(const TrashItems::Outcome &out, const QStringList &deleted)
{
    orderOutTheWindow();
    if (!out.trashed.isEmpty()) {
        QStringList where;
        for (const UndoLog::Step &s : out.trashed)
            where.append(s.now);
        const QString undoID = UndoLog::record(QStringLiteral("trash"), out.trashed);
        const QString body = out.trashed.size() == 1
                                 ? NativePath::forDisplay(PathParts::lastComponent(out.trashed.first().was))
                                 : Texts::localized("%1 items").arg(out.trashed.size());
        Utils::postSimpleNotificationWithTitle(
            Texts::localized("trashDoneTitle"), body, Texts::localized("Show"),
            {{QStringLiteral("filePaths"), where}, {QStringLiteral("undoID"), undoID}});
    }
    if (out.trashed.isEmpty() && out.ejected.isEmpty() && deleted.isEmpty() && !out.failures.isEmpty())
        Utils::showBasicAlertwithTitle(Texts::localized("trashFailedTitle"), out.failures.first().message);
}

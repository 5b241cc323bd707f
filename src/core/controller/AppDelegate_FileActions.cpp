#include "AppDelegate.h"

#include "core/fs/NativePath.h"
#include "core/fs/PathParts.h"
#include "core/overlays/FileOverlays.h"
#include "core/panels/PanelCatalog.h"
#include "core/settings/SettingsKeys.h"
#include "core/settings/SettingsStore.h"
#include "core/texts/Texts.h"
#include "core/window/DropWindow.h"
#include "fileops/actions/BatchRename.h"
#include "fileops/actions/Gather.h"
#include "fileops/actions/NewItems.h"
#include "fileops/actions/UndoLog.h"
#include "utils/Utils.h"
#include "widgets/ActionButton.h"

#include <QCoreApplication>
#include <QLineEdit>
#include <QPointer>
#include <QThreadPool>

namespace {

// Runs `work` on the pool and `done` with its result back on the main thread, as long as `context` lives.
template <typename T>
void inBackground(QObject *context, std::function<T()> work, std::function<void(T)> done)
{
    QPointer<QObject> alive(context);
    QThreadPool::globalInstance()->start([alive, work = std::move(work), done = std::move(done)] {
        T result = work();
        QMetaObject::invokeMethod(QCoreApplication::instance(), [alive, done, result] {
            if (alive)
                done(result);
        }, Qt::QueuedConnection);
    });
}

QString shownName(const QString &path) { return NativePath::forDisplay(PathParts::lastComponent(path)); }

} // namespace

// ---- new files and folders ----

void AppDelegate::createNewFileBtnAction(ActionButton *)
{
    const QString first = filePathsArr.value(0);
    const bool isFolder = Utils::isThisAFolderHere(first);
    SettingsStore::shared().setBool(SettingsKey::InsideFolderEnabledValue, isFolder);
    fileCreateVC->prepare(filePathsArr.size() < 2, PathParts::splitExtension(PathParts::lastComponent(first)).name,
                          SettingsStore::shared().boolValue(SettingsKey::InsideFolderEnabledValue));
    applyPanelFrame(PanelCatalog::kTallPanelHeight);
    showOverlayPanel(fileCreateVC);
}

void AppDelegate::fileCreateCompletion(qint64 tag, qint64 insideState, const QString &name)
{
    const std::optional<NewItems::Spec> spec = NewItems::forTag(tag);
    if (!spec) {
        closeVisibleModalOverlay();
        return;
    }
    Utils::saveChangesToTimeSavedPlistByAddingSec(spec->credit);
    const QString folder = NewItems::folderFor(filePathsArr.value(0), insideState);
    const Result<QString> made = NewItems::create(*spec, folder, name);
    const bool openIt = Utils::checkIfStartEditingOnceCreated();
    const bool isDocumentFromTemplate = *spec->resource != 0;
    if (!made.ok()) {
        if (spec->kind == NewItems::Kind::Word)
            qWarning("error creating MSWordDoc %s", qPrintable(made.error().message));
        else if (spec->kind == NewItems::Kind::Excel)
            qWarning("error creating ExcelWorkbook %s", qPrintable(made.error().message));
        else
            qWarning("%s", qPrintable(made.error().message));
        closeVisibleModalOverlay();
        Utils::showBasicAlertwithTitle(Texts::localized("newItemFailedTitle"), made.error().message);
        return;
    }
    const QString path = made.value();
    if (openIt && m_platform.workspace)
        if (const Status s = m_platform.workspace->openPath(path); !s.ok())
            qWarning("cannot open %s: %s", qPrintable(NativePath::forDisplay(path)), qPrintable(s.error().message));
    if (!openIt)
        Utils::postSimpleNotificationWithTitle(Texts::localized("%@ created").arg(shownName(path)), NativePath::forDisplay(path),
                                               Texts::localized("Open"), {{QStringLiteral("OpenPath"), path}});
    closeVisibleModalOverlay();
    // A document from a template leaves the window up unless it is being opened at once.
    if (!isDocumentFromTemplate || openIt)
        orderOutTheWindow();
}

// ---- gathering into a new folder ----

void AppDelegate::putSelectedFilesInFolderAction(ActionButton *)
{
    Utils::saveChangesToTimeSavedPlistByAddingSec(6);
    showOverlayPanel(enterFolderNameVC);
}

void AppDelegate::folderNameCompletion(qint64 tag, const QString &name)
{
    if (tag == EnterFolderNameOverlayVC::kCloseTag) {
        closeVisibleModalOverlay();
        return;
    }
    if (tag != EnterFolderNameOverlayVC::kDoneTag)
        return;
    closeVisibleModalOverlay();
    if (name.isEmpty())
        return;
    const QStringList paths = filePathsArr;
    orderOutTheWindow();
    inBackground<Gather::Outcome>(
        this, [paths, name] { return Gather::moveSelectedFilesIntoFolder(paths, name); },
        [](const Gather::Outcome &out) {
            if (out.moved.isEmpty()) {
                Utils::showBasicAlertwithTitle(Texts::localized("gatherFailedTitle"),
                                               out.failures.isEmpty() ? QString() : out.failures.first().message);
                return;
            }
            const QString undoID = UndoLog::record(QStringLiteral("gather"), out.steps, out.folder);
            QString body = QStringLiteral("../%1/%2").arg(shownName(PathParts::parent(out.folder)), shownName(out.folder));
            if (!out.failures.isEmpty())
                body += QLatin1Char('\n') + Texts::localized("%1 stayed where they were").arg(out.failures.size());
            Utils::postSimpleNotificationWithTitle(Texts::localized("filesMoveMsgTitle").arg(shownName(out.folder)), body,
                                                   Texts::localized("Open"),
                                                   {{QStringLiteral("OpenPath"), out.folder}, {QStringLiteral("undoID"), undoID}});
        });
}

// ---- batch rename ----

void AppDelegate::showRenameVC(ActionButton *)
{
    renameFlsVC->destPathForRename = PathParts::parent(filePathsArr.value(0));
    renameFlsVC->prefixTF->clear();
    renameFlsVC->suffixTF->clear();
    const QStringList paths = filePathsArr;
    const QString folder = renameFlsVC->destPathForRename;
    renameFlsVC->setPreview([paths, folder](const QString &name, const QString &prefix, const QString &suffix) {
        if (name.isEmpty() && prefix.isEmpty() && suffix.isEmpty())
            return QList<QPair<QString, QString>>();
        return BatchRename::preview({paths, folder, name, prefix, suffix}, RenameFilesVC::kPreviewRows);
    });
    applyPanelFrame(PanelCatalog::kTallPanelHeight);
    showOverlayPanel(renameFlsVC);
}

void AppDelegate::renameCompletion(qint64 tag, const QString &name, const QString &suffix, const QString &prefix,
                                   const QString &folder)
{
    if (tag != RenameFilesVC::kRenameTag) {
        closeVisibleModalOverlay();
        return;
    }
    revealInFinderPaths.clear();
    const BatchRename::Request request{filePathsArr, folder, name, prefix, suffix};
    closeVisibleModalOverlay();
    showProcessingProgressLabelTxt(Texts::localized("Renaming files"), 0.8, 0.0, false);
    inBackground<BatchRename::Outcome>(
        this, [request] { return BatchRename::run(request); },
        [this, folder](const BatchRename::Outcome &out) {
            orderOutTheWindow();
            revealInFinderPaths = out.renamed;
            if (revealInFinderPaths.isEmpty()) {
                if (!out.failures.isEmpty())
                    Utils::showBasicAlertwithTitle(Texts::localized("renameFailedTitle"), out.failures.first().message);
                return;
            }
            const QString undoID = UndoLog::record(QStringLiteral("rename"), out.steps);
            Utils::postSimpleNotificationWithTitle(
                Texts::localized("File rename complete!"),
                QStringLiteral("..%1/%2").arg(shownName(PathParts::parent(folder)), shownName(folder)), Texts::localized("Show"),
                {{QStringLiteral("filePaths"), revealInFinderPaths}, {QStringLiteral("undoID"), undoID}});
        });
}

// ---- reveal ----

void AppDelegate::revealOneFileInFinder(ActionButton *) { Utils::revealInFinder(filePathsArr.value(0)); }

void AppDelegate::revealMultiFilesInFinder(ActionButton *)
{
    Utils::saveChangesToTimeSavedPlistByAddingSec(4);
    Utils::revealMultiFilesInFinder(filePathsArr);
}

// ---- undo ----

void AppDelegate::undoFileOperation(const QString &undoID)
{
    const Result<QStringList> restored = UndoLog::undo(undoID, m_platform.trash);
    if (!restored.ok()) {
        Utils::showBasicAlertwithTitle(Texts::localized("undoBlockedTitle"), restored.error().message);
        return;
    }
    Utils::postSimpleNotificationWithTitle(Texts::localized("undoDoneTitle"), Texts::localized("%1 items").arg(restored.value().size()),
                                           Texts::localized("Show"), {{QStringLiteral("filePaths"), restored.value()}});
}

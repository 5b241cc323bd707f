#include "AppDelegate.h"

#include "core/fs/NativePath.h"
#include "core/fs/PathParts.h"
#include "core/intake/DropOperation.h"
#include "core/overlays/MoveFileViewController.h"
#include "core/panels/PanelCatalog.h"
#include "core/texts/Texts.h"
#include "core/window/BusyView.h"
#include "core/window/DropView.h"
#include "core/window/DropWindow.h"
#include "utils/Utils.h"
#include "widgets/DisableSubviews.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QLabel>
#include <QLoggingCategory>
#include <QDir>
#include <QFileInfo>
#include <QListWidget>
#include <QMimeData>
#include <QPushButton>
#include <QThreadPool>
#include <QTimer>

Q_DECLARE_LOGGING_CATEGORY(lcWindow)

namespace {

QString writeDroppedImage(const QByteArray &data, const QString &extension)
{
    const QString folder = Utils::tempFileOperationsFolder();
    const QString path = folder + QStringLiteral("/_tempDroppedImage.") + extension;
    if (folder.isEmpty() || !AppDelegate::writeData(data, path)) {
        qWarning("dropped image not saved in the temp folder %s", qPrintable(folder));
        return {};
    }
    return path;
}

} // namespace

void AppDelegate::startDropIntake(const QStringList &paths)
{
    applyPanelFrame(PanelCatalog::kPanelHeight);
    showProcessingProgressLabelTxt(Texts::localized("Loading"), 1.0, double(paths.size()), true);
    filePathsArr.clear();
    droppedImageFromOtherApp = false;
    libraryFolderFile = false;
    // The images of an earlier drop are not this one's, also when the window stayed up in between.
    imgsOnlyPathsArr.clear();
    multiFilesActionPanelShown = false;
}

bool AppDelegate::takePromisedFiles(const QStringList &promisedPaths, bool quickMoveAction)
{
    if (promisedPaths.isEmpty())
        return false;
    droppedImageFromOtherApp = true;
    filePathsArr = promisedPaths;
    checkFilePaths(promisedPaths, quickMoveAction);
    return true;
}

void AppDelegate::takeDroppedFileNames(const QStringList &paths)
{
    filePathsArr = paths;
    // Only our own temp folder holds what other applications handed out; a file under /tmp that the
    // user drags from a file manager is as much the user's as any other.
    if (Utils::isInTempFileOperationsFolder(paths.first()))
        droppedImageFromOtherApp = true;
    libraryFolderFile = Utils::checkIfFileIsFromLibraryFolder(paths.first());
}

void AppDelegate::showPanelForFileNames(const QStringList &paths)
{
    takeDroppedFileNames(paths);
    showPanelWithIndex(paths.size() == 1 ? Utils::determineFileType(paths.first()) : DropPanelMultiFiles);
}

void AppDelegate::showPanelForFiles(const QStringList &paths)
{
    if (paths.isEmpty())
        return;
    if (!windowIsVsbl())
        showhideWindow(0, 0);
    startDropIntake(paths);
    showPanelForFileNames(paths);
}

void AppDelegate::mycustomviewDidGetDrop(const QMimeData *data, const QStringList &promisedPaths)
{
    if (!data)
        return;
    startDropIntake(promisedPaths);
    if (takePromisedFiles(promisedPaths, false))
        return;
    if (const QStringList paths = DropOperation::filePaths(data); !paths.isEmpty()) {
        showPanelForFileNames(paths);
        return;
    }
    if (data->hasText()) {
        Utils::createTXTfileFromString(data->text());
        showPanelWithIndex(DropPanelString);
        return;
    }
    // Image data without a file: kept in the temp folder and treated as an image of another application.
    static const QList<QPair<QString, QString>> imageTypes = {
        {"image/png", "png"}, {"image/jpeg", "jpg"}, {"image/tiff", "tiff"}, {"image/bmp", "bmp"}, {"image/gif", "gif"}};
    for (const auto &[mime, extension] : imageTypes) {
        if (!data->hasFormat(mime))
            continue;
        const QString path = writeDroppedImage(data->data(mime), extension);
        if (path.isEmpty())
            break;
        filePathsArr = {path};
        droppedImageFromOtherApp = true;
        showPanelWithIndex(DropPanelOtherAppImage);
        return;
    }
    // Nothing to show: the busy view stays, and its cancel is the way back.
    qInfo("drop of %s: nothing the window can take", qPrintable(data->formats().join(QStringLiteral(", "))));
}

void AppDelegate::dropViewDidGetDrop(DropView *view, const QMimeData *data, const QStringList &promisedPaths)
{
    if (!view || !data)
        return;
    if (view->mDropViewTag() == DropView::kAliasTag) {
        // Aliases are made of named files only; promised files stay in the temp folder.
        filePathsArr = DropOperation::filePaths(data);
        if (filePathsArr.isEmpty())
            return;
        const QStringList paths = filePathsArr;
        const QString parentName = PathParts::lastComponent(PathParts::parent(paths.first()));
        Utils::saveChangesToTimeSavedPlistByAddingSec(5);
        QPointer<AppDelegate> self(this);
        QThreadPool::globalInstance()->start([self, paths, parentName] {
            const QStringList made = Utils::createAliasesForFilePathsInArr(paths);
            QMetaObject::invokeMethod(QCoreApplication::instance(), [self, made, parentName] {
                if (self)
                    self->orderOutTheWindow();
                if (!made.isEmpty())
                    Utils::postSimpleNotificationWithTitle(
                        Texts::localized("Alias created"),
                        Texts::localized("at ../%1").arg(NativePath::forDisplay(parentName)),
                        Texts::localized("revealShowFileBtn"), {{QStringLiteral("filePaths"), made}});
            });
        });
        return;
    }
    const QStringList paths = promisedPaths.isEmpty() ? DropOperation::filePaths(data) : promisedPaths;
    startDropIntake(paths);
    if (takePromisedFiles(promisedPaths, true))
        return;
    if (paths.isEmpty())
        return;
    takeDroppedFileNames(paths);
    showQuickMovePanel();
}

void AppDelegate::checkFilePaths(const QStringList &paths, bool quickMoveAction)
{
    auto settled = std::make_shared<QStringList>();
    // The checks of one import live as long as this object: a cancel or the next import ends them.
    delete m_promiseImport;
    m_promiseImport = new QObject(this);
    for (const QString &path : paths) {
        Utils::checkPromisedFilePathComplete(path, m_promiseImport, [this, settled, paths, quickMoveAction, path](bool done) {
            if (done) {
                emptyContview->incrementBy(1.0);
                settled->append(path);
            }
            if (settled->size() != paths.size()) {
                qInfo("Files are not ready yet");
                return;
            }
            if (quickMoveAction)
                showQuickMovePanel();
            else if (paths.size() == 1) {
                const quint64 type = Utils::determineFileType(filePathsArr.value(0));
                showPanelWithIndex(type == DropPanelImage ? DropPanelOtherAppImage : type);
            } else
                showPanelWithIndex(DropPanelMultiFiles);
        });
    }
}

void AppDelegate::showQuickMovePanel()
{
    installOverlayCompletions();
    loadMovePicker();
    oneofThePanelsIsShown = true;
    endBusyView();
    window->setTakesFocus(true);
    window->activateWindow();
    window->raise();
    window->setContentView(moveFileVC);
    moveFileVC->show();
    // No action panel to go back to.
    moveFileVC->goBackBtn->setEnabled(false);
    moveFileVC->goBackBtn->setVisible(false);
    settleMovePickerControls();
    qCDebug(lcWindow, "quick-move picker shown");
}

void AppDelegate::cancelAllPromisedImportOperations()
{
    emptyContview->emptyContviewLbl->setText(Texts::localized("Data import canceled..."));
    emptyContviewIsShown = false;
    delete m_promiseImport; // its settle checks stop with it
    // Only ever a folder of the temp folder: a drop of the user's own files is never removed.
    const QString folder = filePathsArr.isEmpty() ? QString() : PathParts::parent(filePathsArr.first());
    const bool ours = !folder.isEmpty() && Utils::isInTempFileOperationsFolder(folder);
    if (!ours || !QDir(folder).removeRecursively())
        qWarning("error deleting TempDir for promised files %s", qPrintable(NativePath::forDisplay(folder)));
    QTimer::singleShot(1000, this, [this] {
        disableSubviews(emptyContview, false);
        emptyContview->stop();
        orderOutTheWindow();
    });
}

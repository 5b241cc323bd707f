#pragma once

#include "core/panels/DropPanel.h"
#include "fileops/FileCopyParams.h"
#include "fileops/actions/TrashItems.h"
#include "platform/Platform.h"
#include "widgets/JMModalOverlay.h"

#include <QDateTime>
#include <QHash>
#include <QImage>
#include <QPointF>
#include <QPointer>
#include <QRectF>
#include <QStringList>

#include <functional>
#include <optional>

class ActionButton;
class ActionPanelView;
class BusyView;
class DropFilesHereView;
class DropView;
class DropWindow;
class EnterFolderNameOverlayVC;
class FileCreateOverlayVC;
class HotKeyBinding;
class LockedPDFEnterPass;
class ImageBatchJob;
class ImgConvertOverlayVC;
class ImgResizeOverlayVC;
class ImgShareOverlayVC;
class MoveCopyOrchestrator;
class MoveFileViewController;
class OverlayController;
class PdfToImgVC;
class ProgressPanel;
class QMimeData;
class RenameFilesVC;
class CCNStatusItem;
class CropImgWC;
class PopMenuContentViewController;
class WallpaperOverlayVC;
class WidgetAlerts;
class WidgetConflictResolver;
class ZipJob;
class TrashJob;
class ZipProgressWindow;

// The one controller of the resident program. It owns the single window, what was dropped, the
// overlay controllers and the flags that tie them together; each concern lives in its own file
// (launch, window, overlays, drops, actions, move and copy).
class AppDelegate : public QObject, public JMModalOverlayDelegate
{
    Q_OBJECT
public:
    explicit AppDelegate(const Platform &platform, QObject *parent = nullptr);
    ~AppDelegate() override;

    // ---- launch, reopen, stop (AppDelegate.cpp) ----
    void applicationDidFinishLaunching();
    bool applicationShouldHandleReopen(); // a second start of the program lands here
    void applicationWillTerminate();
    void quitQuaydrop(); // the one way out, also taken on SIGTERM and SIGINT
    // A click on a delivered notification: 1 contents clicked, 2 its action button.
    void userNotificationCenterDidActivate(const QVariantMap &userInfo, int activationType = 1);
    void showSliderTutorial();
    void launchAtLogInAlertIfNeeded();
    // Whether the options hang from a tray icon; else a second start opens them.
    bool livesInTray() const;
    // The overlays (resize, convert, move picker...) and their completions, built on first need: the
    // program at rest holds none of their widgets. Once built they stay; a second call does nothing.
    void installOverlayCompletions();
    QRect trayIconGeometry() const; // empty without a tray icon
    bool isThisaDoubleClick();
    CCNStatusItem *statusItem() const { return statusItemForYos; }
    PopMenuContentViewController *optionsPanel() const { return m_options; }

    // ---- the window and its states (AppDelegate_Window.cpp) ----
    bool windowIsVsbl() const;
    bool windowSheetIsActive() const;
    static bool writeData(const QByteArray &data, const QString &path);
    void showPanelWithIndex(quint64 index);
    void showProcessingProgressLabelTxt(const QString &text, double alpha, double maximum, bool cancelBtnEnabled);
    void orderOutTheWindow();
    void activatePrevFrontMostApp();
    // Opens the drop target with its bottom edge at the pointer, x centred on it (y-up).
    void showDropTargetAt(QPointF pointerYUp);
    void applyPanelFrame(qreal height);
    // Keys: Escape closes the overlay, then the window; Return presses the focused button, else the
    // overlay's default one; Ctrl+V drops what the clipboard holds.
    void escapeKeyPressed();
    void returnKeyPressed();
    void pasteAsDrop();
    QRectF properWindowFrameToFit(const QSizeF &image, const QSizeF &editorMinSize, qreal imageViewWidth,
                                  const QPointF &editorOrigin) const;

    // ---- the drag watcher and the pointer (AppDelegate_DragWatch.cpp), points in y-up space ----
    void leftMouseDragged(QPointF location, qreal deltaX, qreal deltaY);
    // A new drag started: raised at once with the pointer as last seen, judged once its content is known.
    void dragPasteboardChanged();
    void dragContentLearned(qint64 changeCount);
    // `mouseYUp`: where the pointer is, if known; else it is asked.
    void showhideWindow(float deltaX, float deltaY, std::optional<QPointF> mouseYUp = std::nullopt);
    void showPanelHKNotif();
    // `quaydrop toggle`: the hot key's action, whichever way the window is summoned.
    void toggleDropWindow();
    // `quaydrop panel FILE...`: the window at the pointer with the panel, as if the files were dropped.
    void showPanelForFiles(const QStringList &paths);
    // The pointer moved while the window is up: `local` for the window's own tracking.
    void mouseMovedWhileWindowUp(QPointF location, bool local);
    QString bundleIdOfTheAppWhereTheCursorIs(QPointF location) const;
    bool isFinderFrontMostAndOwnesMenuBar() const;

    // ---- the modal overlay (AppDelegate_Overlays.cpp) ----
    void showOverlayPanel(OverlayController *controller);
    bool isModalOverlayVisible() const;
    void closeVisibleModalOverlay();
    void modalOverlayDidShow(JMModalOverlay *overlay) override;
    void modalOverlayWillClose(JMModalOverlay *overlay) override;
    bool modalOverlayShouldClose(JMModalOverlay *) override { return true; }

    // ---- drops (AppDelegate_Intake.cpp) ----
    // `promisedPaths`: the files a source is writing for this drop, else empty.
    void mycustomviewDidGetDrop(const QMimeData *data, const QStringList &promisedPaths = {});
    void dropViewDidGetDrop(DropView *view, const QMimeData *data, const QStringList &promisedPaths = {});
    // Waits until every promised file stands still, then shows the picker or the panel.
    void checkFilePaths(const QStringList &paths, bool quickMoveAction);
    void showQuickMovePanel();
    void cancelAllPromisedImportOperations();

    // ---- panel actions (AppDelegate_Actions.cpp) ----
    void performAction(const QString &action, ActionButton *sender);
    // Whether a panel button's action name reaches a handler.
    static bool handlesAction(const QString &action);
    void sizebtnAction(ActionButton *sender);
    void getPathBtnAction(ActionButton *sender);
    void showSizeAsBtnTitle(ActionButton *sender);
    void imageDropSaveAction(ActionButton *sender);
    void copyImgDimesions(ActionButton *sender);
    void copydroppedImgURLToClipboard(ActionButton *sender);
    void copyDroppedStringToClipboard(ActionButton *sender);

    // ---- zip (AppDelegate_Zip.cpp) ----
    void zipBtnAction(ActionButton *sender);
    void zipMultiFilesAction(ActionButton *sender);
    void workingZip(ActionButton *sender);
    QString getZipFileDestPath() const;
    void cancelTaskAction();
    void finishZippingUIUpdates();
    void terminationUiUpdates();

    // ---- new files, gathering, rename, trash, reveal, undo (AppDelegate_FileActions.cpp) ----
    void createNewFileBtnAction(ActionButton *sender);
    void fileCreateCompletion(qint64 tag, qint64 insideState, const QString &name);
    void putSelectedFilesInFolderAction(ActionButton *sender);
    void folderNameCompletion(qint64 tag, const QString &name);
    void showRenameVC(ActionButton *sender);
    void renameCompletion(qint64 tag, const QString &name, const QString &suffix, const QString &prefix,
                          const QString &folder);
    void trashFiles(ActionButton *sender);
    void runTrashJob(TrashJob *job, const char *busyKey, std::function<void(TrashJob *)> done);
    void askToDeleteWhatHasNoTrash(const TrashItems::Outcome &out);
    void reportTrashed(const TrashItems::Outcome &out, const QStringList &deleted);
    void revealOneFileInFinder(ActionButton *sender);
    void revealMultiFilesInFinder(ActionButton *sender);
    // Puts back what the operation of `undoID` changed (empty: the last one), or says what blocks it.
    void undoFileOperation(const QString &undoID);

    // ---- images (AppDelegate_Images.cpp) ----
    QImage thumbnailForFilePath(const QString &path) const;
    void quickResizeBtnAction(ActionButton *sender);
    void convertImgAction(ActionButton *sender);
    void imgResizeCompletion(qint64 tag, const QString &width, const QString &height, qint64 destIndex,
                             const QString &destPath);
    void doResizeImgs(const QStringList &paths, bool multiFiles, const QString &width, const QString &height,
                      const QString &folder);
    void imgConvrtCompletion(qint64 tag, float factor, qint64 merge);
    void doConvertImgs(const QStringList &paths, bool multiFiles, bool mergeToPdf, const QString &folder,
                       const QString &srcImgPath, float factor, qint64 tag);
    // The crop and rotate editor on the dropped image; one window, made on first use and reused.
    void cropeRotateImg();
    CropImgWC *cropEditor() const { return m_cropEditor; }

    // ---- PDF (AppDelegate_Pdf.cpp) ----
    void showPDFToImgConvertVC(ActionButton *sender);
    void pdfImgConvrtCompletion(qint64 tag, float dpi);
    void pdf2ImgCompletionAction(qint64 tag, float dpi, const QByteArray &password);
    // A locked or encrypted PDF asks for its password on a sheet first; `then` gets the password
    // (empty when none was asked). An unreadable PDF is said and ends it, as does a cancelled sheet.
    void openPdfAskingPassword(const QString &path, std::function<void(const QByteArray &password)> then);
    void convertPDF2Img(const QString &path, qint64 imgType, bool libFile, bool fromOtherApp, float dpi,
                        const QByteArray &password);
    void SaveAsPDF(ActionButton *sender);
    QString getDestinationPathForPDFFile() const;
    LockedPDFEnterPass *enterLockedPDFPass = nullptr; // while its sheet is up

    // ---- mail, share and print (AppDelegate_Sending.cpp) ----
    void mailFileBtnAction(ActionButton *sender);
    void mailMultipleFilesAvtion(ActionButton *sender);
    void newMailWithDroppedString(ActionButton *sender);
    void printFileAction(ActionButton *sender);
    void printPDFFileAction(ActionButton *sender);
    // The print dialog for the document; the window stays up while it is open.
    void doPrintPDF(const QString &path, const QByteArray &password);

    // ---- share (AppDelegate_Share.cpp) ----
    void airDropBtnAction(ActionButton *sender);
    void airDropMultiFiles(ActionButton *sender);
    void showImgSharePanelVC(ActionButton *sender);
    void shareDroppedStringViaShareMenu(ActionButton *sender);
    void searchStringInFinder(ActionButton *sender);
    void saveDroppedStringToTXT(ActionButton *sender);
    void postDroppedStringOnTwitter(ActionButton *sender);
    void postDroppedStringOnFacebook(ActionButton *sender);
    // The share picker for files, below `sender` (the pointer without one); logs and shows nothing
    // for no files.
    void showOSXSharingOptionsForArrOfFilePaths(const QStringList &paths, QWidget *sender);
    void shareFilesTo(const QString &targetId, const QStringList &paths);
    // The share overlay's answer: the first file to the target of that place in its list.
    void shareCompletion(qint64 tag);
    void shareDroppedStringTo(const QString &targetId);
    // ---- wallpaper (AppDelegate_Wallpaper.cpp) ----
    void setAsWallpaperAction(ActionButton *sender);
    void wpVCCompletion(qint64 tag);
    void setupOldWPview();
    void setOldWPAsDesktopWPAction(int slot, QWidget *sender);
    void shareOldWPaction(int slot, QWidget *sender);

    // ---- move and copy (AppDelegate_MoveCopy.cpp) ----
    void moveToBtnAction();
    void moveFilesViaOpenPanel(const QStringList &paths);
    void copyitemsForFileCopy(const QStringList &paths, const QString &parFolder, bool isVolumeSame);
    MoveCopyOrchestrator *moveCopy() const { return m_moveCopy; }
    ProgressPanel *progressPanel() const { return moveFilesProgress; }
    WidgetConflictResolver *conflictResolver() const { return m_conflicts; }
    WidgetAlerts *alerts() const { return m_alerts; }

    // ---- what was dropped ----
    QStringList filePathsArr;
    QStringList imgsOnlyPathsArr;
    bool droppedImageFromOtherApp = false;
    bool libraryFolderFile = false;
    bool multiFilesActionPanelShown = false;

    // ---- state, in the order the rest of the program knows it ----
    // The move and copy state (filesToSkip, filesToKeepBoth, applyForAllDublicAlert, copyProgressParams,
    // copyingFilesToOtherVolume, isFileOperationCopy, pathsBeingMovedToBeDeletedAfter) lives in moveCopy().
    bool shouldNotCloseYet = false;
    bool mouseToFromWindowCenterEventMonitor = false; // the pointer monitors are on while the window shows
    bool mouseToLocalMon = false;
    bool keyDownLocalMonitor = false; // never installed
    QPointF rememberedCursorPoint;
    QPointer<ZipJob> zippingTask;
    QPointer<TrashJob> trashingTask;
    QPointer<ZipProgressWindow> zippingTaskPanel;
    bool mouseDraggedBool = false;
    QDateTime clickDate;
    bool emptyContviewIsShown = false;
    bool oneofThePanelsIsShown = false;
    bool alertOrSaveOrOpenPanelIsShown = false;
    bool dontActivatePrevFrontMostApp = false;
    QPointer<QWidget> cropRotateWC;
    QPointer<QWidget> pdfPreview;
    QString prevFrontMostAppBndlID;
    qint64 myPbrdChangeCount = 0;
    QPointer<QWidget> introSlidesWC;
    CCNStatusItem *statusItemForYos = nullptr;
    DropWindow *window = nullptr;
    QStringList revealInFinderPaths;

    // ---- views and overlay controllers ----
    DropFilesHereView *dropFilesHereView = nullptr;
    BusyView *emptyContview = nullptr;
    ActionPanelView *panelView(DropPanel panel);
    JMModalOverlay *modalOverlay = nullptr;
    RenameFilesVC *renameFlsVC = nullptr;
    MoveFileViewController *moveFileVC = nullptr;
    WallpaperOverlayVC *wpChangeVC = nullptr;
    ImgShareOverlayVC *imgShareVC = nullptr;
    PdfToImgVC *pdfToImgConvVC = nullptr;
    ImgConvertOverlayVC *imgConvrtVC = nullptr;
    ImgResizeOverlayVC *imgResizeVC = nullptr;
    EnterFolderNameOverlayVC *enterFolderNameVC = nullptr;
    FileCreateOverlayVC *fileCreateVC = nullptr;
    // The order in which the completions were installed, by setter name.
    QStringList installedCompletions;

Q_SIGNALS:
    // An action name without a handler (a fault of the build) says so once, by name.
    void actionNotAvailable(const QString &action);

private:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void installDragWatcher();
    void setPointerMonitors(bool on);
    void dragHandler(QPointF location, qreal deltaX, qreal deltaY); // from the count test on
    bool dragContentIsTaken() const;
    QPointF yUp(QPointF screenPoint) const;
    void createStatusItem(int presentationTransition);
    void registerObservers();
    void buildWindow();
    void endBusyView();
    void startDropIntake(const QStringList &paths); // the panel's frame and the busy view; what was dropped cleared
    bool takePromisedFiles(const QStringList &promisedPaths, bool quickMoveAction); // false: none promised
    void loadMovePicker();
    void settleMovePickerControls();
    void takeDroppedFileNames(const QStringList &paths);
    void showPanelForFileNames(const QStringList &paths); // a drop of named files
    void revertTitleLater(ActionButton *sender, std::function<QString()> title);
    using ActionHandler = void (AppDelegate::*)(ActionButton *);
    static const QHash<QString, ActionHandler> &actionHandlers();
    void moveFileCompletion(qint64 tag, bool copy, const QString &path);
    // A folder from the user ("Save result to...", "Move files to..."): `chosen` runs only on OK.
    void chooseFolder(const QString &title, bool asSheet, std::function<void(QString)> chosen);
    // The busy view while the job runs, `finish` when it is done, then the panel again.
    void runImageJob(ImageBatchJob *job, const char *busyKey, std::function<void(ImageBatchJob *)> finish);
    void finishWrittenFiles(ImageBatchJob *job, const char *doneTitleKey);
    void finishImageJob(ImageBatchJob *job, const char *doneTitleKey, const QString &folder, const QStringList &reveal);
    void foremostAppActivated(const QString &applicationId);
    void hideZipPanelLater();
    void NSOpenPanelHasJustClosed(const QVariantMap &userInfo);

    Platform m_platform;
    bool m_terminated = false;
    CropImgWC *m_cropEditor = nullptr;
    QHash<QString, ActionPanelView *> m_panels; // by content view name (folder and default share one); built on first use
    MoveCopyOrchestrator *m_moveCopy = nullptr;
    ProgressPanel *moveFilesProgress = nullptr;
    WidgetConflictResolver *m_conflicts = nullptr;
    WidgetAlerts *m_alerts = nullptr;
    HotKeyBinding *m_hotKey = nullptr;
    QPointer<QObject> m_promiseImport; // owns the settle checks of the import under way
    PopMenuContentViewController *m_options = nullptr; // the tray panel's content, made with the status item
};

#pragma once

#include <QDateTime>
#include <QHash>
#include <QObject>
#include <QSizeF>
#include <QLocale>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include "utils/Result.h"

#include <cstdint>
#include <functional>
#include <optional>

class QWindow;
struct BitmapImageRep;

// The program's stateless operations, callable from any thread. Declared once here; each group is
// implemented beside the area that owns it (core/settings, core/ledger, core/classification, ...).
// A null QString stands for "nil".
class Utils
{
public:
    Utils() = delete;

    // ---- settings (core/settings/Utils_Settings.cpp) ----
    static bool QuaydropIsOFFSate(); // despite the name, YES means switched on
    static void resetkQuaydropIsOffKeyToON();
    static bool isShortcutEnabled();
    static QString showPanelHotKey(); // portable text, e.g. "Ctrl+Alt+F"
    static qint64 dropHereWindowAlignment(); // 0 at the pointer, 1 centred on the screen
    static bool exclAllButFinderValue();
    static bool dontshowIntroSlides();
    static bool shouldHideStatusBarItem();
    static void shouldHideStatusBarItem(bool hide);
    static bool enableUserNotifWhenDoneSwitchValue();
    static bool showLoginAtLaunchUserDefaultsValue();
    static void showLoginAtLaunchSetUserDefVal(bool value);
    static bool isLogInAtLaunch(); // from the platform's login item
    static void setLogInAtLaunch(bool enabled);
    static bool checkIfStartEditingOnceCreated();
    static QString getSavePanelURL();
    static void overWriteSavePanelLastSaveURL(const QString &path);
    static QString getOpenPanelURL();
    static void overWriteOpenPanelLastSaveURL(const QString &path);
    // Where a folder or save panel opens: `remembered` if it still is a folder, else the desktop
    // folder, else the home folder; never a folder that is gone.
    static QString existingStartFolder(const QString &remembered);
    static bool checkIfQDactionHappened();
    static void someQDactionHappened();
    static QDateTime setFutureDevHappyAlertDate();
    static void reWriteFutureDevHappyAlertDate();
    static void savefutureDate();

    // ---- stored files ----
    static QString QDappSupportPath(); // nothing is created

    // ---- exclusion list (core/settings/Utils_ExclusionList.cpp) ----
    static QString pathForExlAppsPlist(); // writes an empty dictionary there first if there is no file
    static QStringList exclBndlIDAppsArray(); // the user's exclusion list, read at each use
    static void updateExlAppsPlistWithBundleId(const QString &applicationId, bool remove);

    // ---- time-saved ledger (core/ledger) ----
    static QString getTimeSavedPlistPath();
    static std::optional<QVariantMap> getTimeSavedDictionaryValues(); // nullopt: the file is unreadable
    static void saveChangesToTimeSavedPlistByAddingSec(quint64 seconds);

    // ---- temp folder and home (core/intake/Utils_TempFolder.cpp) ----
    static QString createTempFileOperationsFolderIfneeded(); // nil on the call that creates it
    static QString tempFileOperationsFolder(); // the same, but never nil for a folder it could make
    static void cleanUPTepmFileOperationsFolder();
    // Below the temp folder: what another application handed us, not a file of the user's.
    static bool isInTempFileOperationsFolder(const QString &path);
    static QString checkAndReturnHomeFolderPath(const QString &path);
    // The editor's copy of a picture to share: `fileName` in the temp folder (editor/picture).
    static QString pathForEditedImgToShare(const QString &fileName);

    // ---- promised files (core/intake/Utils_PromisedFiles.cpp) ----
    // Calls `handler` with true once the file's date and size are the same 0.1 s apart; until then it
    // looks again, as long as `context` lives. A missing file never settles.
    static void checkPromisedFilePathComplete(const QString &path, QObject *context, std::function<void(bool)> handler);

    // ---- dropped text (core/intake/Utils_DroppedText.cpp) ----
    static QString pathToTempDroppedStr(); // "_tempDroppedStr.txt" in the temp folder
    static bool createTXTfileFromString(const QString &text);
    static QString readDroppedString(); // empty when unreadable

    // ---- image identity (images/Utils_ImageIdentity.cpp): ImageTypeCode 0 TIFF, 1 BMP, 2 GIF, 3 JPEG,
    // 4 PNG, 5 JPEG 2000 ----
    static QString getImageExtensionString(quint64 code); // null above 5
    static quint64 getImageFileTypeFromExtension(const QString &extension); // exact; anything else is PNG
    static quint64 getImageFileTypeFromData(const QByteArray &data);         // by the first byte alone
    static quint64 getImageFileTypeFromPath(const QString &path);

    // ---- image size (images/Utils_ImageSize.cpp), in pixels from the header ----
    // {"kImgWidth", "kImgHeight"}; both 0 for a file that is no readable image.
    static QVariantMap getImageDimensionsAtPath(const QString &path);
    static QSizeF getImageDimensionsAtPathInSize(const QString &path);
    static QString getImageDimensionsAsStringImgPath(const QString &path); // "1024x768", "0x0"

    // ---- resolution and screens (images/Utils_Resolution.cpp); a point is 1/72 inch ----
    static QSizeF pixelSizeForImg(const BitmapImageRep &image);
    static QSizeF convertPixelSizeToPointSize(const QSizeF &pixels);
    static double getDisplScale();
    static double dpiForWindow(const QWindow *window);

    // ---- resampling and composition (images/) ----
    // Lanczos to `size` pixels; the resolution of the source survives. Invalid when it cannot.
    static BitmapImageRep scaleImage(const BitmapImageRep &image, const QSizeF &size);
    static BitmapImageRep combineBgIm(const BitmapImageRep &background, const BitmapImageRep &foreground);

    // ---- PDF (images/pdf) ----
    static bool isThisPDFFile(const QString &path); // by the content, not the name
    // A text document laid out on pages into a PDF at `destPath`; false, and logged, when it fails.
    static bool saveAsPDF(const QString &sourcePath, const QString &destPath);

    // ---- wallpaper history (images/wallpaper/Utils_Wallpaper.cpp) ----
    static QString pathForWPFolder();        // "QD_WP" in the program's folder, made if missing
    static QString getWallpapersPlistPath(); // "WPs.plist" there, written with empty slots if missing
    static std::optional<QVariantMap> getWallpapersPlistDictionaryValues(); // nullopt: damaged
    static Status saveChangesToWPPlist(const QString &curWP, const QString &oldWP1, const QString &oldWP2);

    // ---- clipboard and panels (core/window/Utils_Desktop.cpp) ----
    static void copyStringToClipboard(const QString &text);
    static bool copyTXTfileContentsToClipboardFromPath(const QString &path);
    // A save panel for a copy of `path`; `done` gets the written path, or a null string.
    static void openSavePanelWithCurrentFilePath(const QString &path, const QString &allowedFileType,
                                                 const QString &defFileName, std::function<void(QString)> done);
    static void showBasicAlertwithTitle(const QString &title, const QString &informativeText);
    static void postShouldNotCloseWindowYetNotif(bool shouldNotClose);

    // ---- classification (core/classification) ----
    static quint64 determineFileType(const QString &path); // 1, 2, 333 or 777
    static QStringList getImagesOnlyFromArrPaths(const QStringList &paths);
    static bool checkifFilePrintable(const QString &path);
    static bool isThisAFolderHere(const QString &path);
    static bool isFilePackageAtPath(const QString &path);
    static bool isArchiveFile(const QString &path); // zip, tar, 7z, ... by name: zipping it again makes no sense
    static bool isFileOrFolderInVisible(const QString &path);
    static bool isFileOrFolderReadable(const QString &path);
    static bool isFileOrFolderWritable(const QString &path);
    static bool checkIfFileIsFromLibraryFolder(const QString &path);
    static bool isFolderFromLibraryFolder(const QString &path);

    // ---- sizes (core/classification/Utils_Sizes.cpp): allocated bytes, links never followed ----
    static quint64 fileSizeAtPath(const QString &path);
    static quint64 folderSize(const QString &path);
    static quint64 multipleItemsSize(const QStringList &paths);
    static QString getTheSizeOfItemsInArr(const QStringList &paths);
    // The byte count behind getTheSizeOfItemsInArr (0 for no items).
    static quint64 sizeOfItemsInArr(const QStringList &paths);
    static QString getHumanReadableSizeFrom(quint64 bytes);
    static QString getHumanReadableSizeFrom(quint64 bytes, const QLocale &locale);

    // ---- the end-of-action notification (core/notify) ----
    // Delivered only when notifications are on and "filePaths" or "OpenPath" is given; with "undoID" it
    // offers Undo as well. A list too long for a
    // notification is replaced by the parent folder of its first path.
    static void postSimpleNotificationWithTitle(const QString &title, const QString &body,
                                                const QString &actionTitle, const QVariantMap &userInfo);

    // ---- the file manager (core/notify/Utils_Reveal.cpp): selects the items in a file manager window,
    // or opens the first one's folder where no file manager answers; nothing for an empty list ----
    static void revealInFinder(const QString &path);
    static void revealMultiFilesInFinder(const QStringList &paths);

    // ---- mail (sending/Utils_Mail.cpp) ----
    // Opens a new message in the default mail program.
    static void sendEmailTo(const QString &address, const QString &body, const QString &subject);
    // The desktop file of the default mail program ("thunderbird.desktop"); empty when there is none.
    static QString mailingAppName();
    // The characters the escape leaves to the table, and their replacements; built once.
    static const QHash<QChar, QString> &percentForSpecialChars();
    static QString percentEscapedString(const QString &string);
    // "key=value&key=value", both escaped, in the map's order.
    static QString urlQueryFromDictionary(const QVariantMap &dictionary);
    // Hands a mailto: link to the default mail program; false, and logged, when nothing took it.
    static bool openMailtoURL(const QString &url);

    // ---- mail with attachments (sending/ui/Utils_MailFiles.cpp) ----
    // The files attached to a new message of the default mail program; a program that takes no
    // attachments gets the "MailAppNOTDefault" alert, which offers to open it.
    static void mailFile(const QString &path);
    static void emailMultiFilesViaDefaultMailApp(const QStringList &paths);

    // ---- file operations (fileops) ----
    // A symbolic link "<name> alias" beside each path, pointing at it; the links made, in order. An
    // existing item of that name is never replaced: that one fails and is logged.
    static QStringList createAliasesForFilePathsInArr(const QStringList &paths);
    static QString nameForNewFileOrFolder(const QString &folder, const QString &defaultName,
                                          const QString &fileExtension); // "Report 1.pdf"
    static void createfolderAtPath(const QString &path, const QString &sourceFile);
    static bool checkIfTheresEnoughSpaceForNumberOfBytes(quint64 bytes, const QString &path); // strictly more free
    static bool checkIfMoveToSameVolume(const QString &path, const QString &moveDest); // same device
    static QString nonSandboxPathFor(const QString &folderName); // real home folder + name

    // ---- destinations (fileops/destinations) ----
    static QString moveCopyPathsPlistPath();   // "pathsToMove.plist"
    static QString pathForRecentDestnsPlist(); // "recentDest.plist", made (as an empty dictionary) if missing
    // The picker's rows: stored destinations (or the standard folders that exist), removable media
    // first, no folder twice. Writes the list back unless the file is damaged.
    static QStringList createMoveDestArr();
    static Status updateMoveCopyPaths(const QStringList &paths); // a failed write leaves the file as it was
    static std::optional<QVariantList> movePathsDicsWithPathsAndNames();
    static QStringList movePathsFromPlistOfDics();
    static void updateRecentDestnsPlistWithPath(const QString &path);
    static QStringList recentDestinations();
    static QStringList defFileMoveDestPaths(bool asTheyAre);
    static QStringList getAllFixedDirectoriesForFileMove();
    static QString getMeMoveDirPathByIndex(quint64 index); // nil from 6 on
    static QString getDesktopFolderPath();
    static QString getDocumentsFodlerPath();
    static QString getMoviesFolderPath();
    static QString getMusicFolderPath();
    static QString getPicturesFolderPath();
    static QString getDownloadsFolderPath();
    // Below the removable mount roots (/media/$USER, /run/media/$USER, /mnt).
    static bool isUnderVolumesRoot(const QString &path);

    // ---- volumes (fileops/destinations/Utils_Volumes.cpp), from the platform's volume service ----
    static QStringList listAllVolumes();
    static QStringList getListOfEjectableMediaPathsOnly();
    static QVariantMap getListOfEjectableMediaPathsAndNames();
    static QStringList listAllVolumesButExcludeMountable();
    static bool checkIfpathisInallButmountableVols(const QString &path);
    static bool checkIfVolumeIsRemovable(const QString &path);
    static bool checkIfPathIsAVolume(const QString &path);

    struct MoveResult
    {
        QStringList moved;        // final paths
        QStringList needsCopying; // on another device after all: for a copy job
    };
    // Renames each source into `dest`. A clash gets a free name for sources in keepBothPaths; for
    // sources in replacePaths the old item is set aside once the new one has its name; any other clash
    // also gets a free name, as nothing was asked about it.
    static MoveResult moveOneOrMultipleFiles(const QStringList &paths, const QString &dest,
                                             const QStringList &keepBothPaths, const QStringList &replacePaths = {},
                                             const std::function<Status(const QString &)> &setAside = {});
};

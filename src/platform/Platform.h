#pragma once

// The desktop services the program stands on. One abstract interface each; src/app builds the real
// implementations and hands them in, tests hand in the fakes of fake/. Only this folder knows which
// desktop it runs on.

#include "utils/Result.h"

#include <QObject>
#include <QPointF>
#include <QStringList>
#include <QVariantMap>

#include <functional>

// The system-wide drag: every new drag raises the change count, the moment it starts. What it offers
// is asked afterwards, without holding anything up: a source may be slow to answer.
class DragPasteboard : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;
    virtual qint64 changeCount() const = 0;
    // Asks the current drag's source what it offers; contentLearned follows once it said, or once it
    // had its time. Asking again for the same drag only repeats the signal.
    virtual void learnContent() = 0;
    virtual QStringList types() const = 0;     // as learnt: MIME types the source offers; empty: it did not say
    virtual QStringList filePaths() const = 0; // as learnt: local files of a file drag, else empty
Q_SIGNALS:
    void changed(qint64 changeCount);
    void contentLearned(qint64 changeCount);
};

// The left button's press as the pointer monitor saw it last: where the pointer was and which way it
// went since the press (positive y downward).
struct PointerDrag
{
    bool leftButtonDown = false; // false too for a press inside the program's own windows
    QPointF location;
    qreal deltaX = 0;
    qreal deltaY = 0;
};

// Pointer events of the whole screen, wherever the pointer is, in device-independent pixels. A press
// inside the program's own windows (a slider, a text field, a scroll bar) reports nothing at all.
class PointerMonitor : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;
    virtual void setMotionTracking(bool on) = 0; // mouseMoved (button up) is reported only while on
    virtual PointerDrag currentDrag() const = 0;
Q_SIGNALS:
    void leftMouseDragged(QPointF location, qreal deltaX, qreal deltaY);
    void leftMouseReleased(QPointF location);
    void mouseMoved(QPointF location);
};

struct PromisedFiles
{
    QStringList names;
    // Empty where the source writes the files itself. Else the source left the writing to the drop
    // target, which takes the bytes from the drop's data of this MIME type.
    QString writeFromType;
};

// Files a drag source writes where the drop target tells it to (X Direct Save), asked during a drop.
class PromisedFileReceiver
{
public:
    virtual ~PromisedFileReceiver() = default;
    // Tells the source of the drop in progress to write into `folder`; the names it writes come back
    // at once, possibly before the files are complete. `dropTargetWindow`: the native window the drop
    // landed on.
    virtual Result<PromisedFiles> namesOfPromisedFilesDroppedAtDestination(const QString &folder,
                                                                           quintptr dropTargetWindow) = 0;
};

// Which application owns which window, and the focus hand-back.
class WindowSystem : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;
    // Desktop-file id of the application whose window is under the point, else its window class.
    virtual QString applicationIdAt(QPointF screenPoint) const = 0;
    virtual QString frontmostApplicationId() const = 0;
    virtual void rememberFocusedWindow() = 0;
    virtual void restoreRememberedFocus() = 0;
    // Sends at once what the program's windows asked of the window system (a window shown in the
    // middle of handling an event would wait otherwise).
    virtual void flush() {}
Q_SIGNALS:
    void applicationActivated(const QString &applicationId);
};

// A global key combination.
class HotKeyBinder : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;
    virtual Status bind(const QString &portableKeys) = 0; // "Ctrl+Alt+F"; replaces any earlier binding
    virtual void unbind() = 0;
Q_SIGNALS:
    void activated();
};

// Desktop notifications with a click that comes back with the user info.
class NotificationService : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;
    // With "undoTitle" in the user info the notification also has an Undo button; its press comes back
    // as activated() with kActivationActionKey set to kUndoAction.
    virtual Status deliver(const QString &title, const QString &body, const QVariantMap &userInfo) = 0;
    static constexpr const char *kActivationActionKey = "activationAction";
    static constexpr const char *kUndoAction = "undo";
Q_SIGNALS:
    void activated(const QVariantMap &userInfo);
};

// The file manager and default applications.
class Workspace
{
public:
    virtual ~Workspace() = default;
    virtual Status revealItems(const QStringList &paths) = 0; // selects them in the file manager
    virtual Status openPath(const QString &path) = 0;         // with the default application
    virtual Status openUrl(const QString &url) = 0;
    virtual QString defaultFileManagerId() const = 0;
};

class TrashService
{
public:
    // Error codes beside the plain failure (1).
    static constexpr int kNoTrashHere = 3; // the item's volume has no trash that could be used or made
    static constexpr int kNameTaken = 4;   // restore: something has taken the original name since

    virtual ~TrashService() = default;
    virtual Result<QString> moveToTrash(const QString &path) = 0; // where the item went
    // Puts a trashed item back where its record in the trash says it came from, if that name is free;
    // the record goes with it. Answers the path it is back at.
    virtual Result<QString> restore(const QString &trashedPath) = 0;
};

struct VolumeInfo
{
    QString mountPoint;
    QString name;          // what the file manager calls it
    QString device;        // "/dev/sdb1", or the source of a network mount
    QString connectionBus; // "usb", "sdio", ... for a drive; empty where unknown
    bool removable = false;
    bool ejectable = false;
    bool internal = true;
    bool local = true;
};

// Mounted volumes and the removable drives behind them.
class VolumeService : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;
    virtual QList<VolumeInfo> mountedVolumes() const = 0;
    virtual Status eject(const QString &mountPoint) = 0;
Q_SIGNALS:
    void mountsChanged();
};

// System sleep and wake.
class PowerEvents : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;
Q_SIGNALS:
    void didWake();
};

// Start at login.
class LoginItemService
{
public:
    virtual ~LoginItemService() = default;
    virtual bool isEnabled() const = 0;
    virtual Status setEnabled(bool enabled) = 0;
};

class WallpaperService
{
public:
    virtual ~WallpaperService() = default;
    virtual QString currentWallpaper() const = 0;
    virtual Status setWallpaper(const QString &imagePath) = 0;
};

// The default mail program, as the desktop names it.
struct MailClient
{
    QString desktopFile; // "thunderbird.desktop"; empty when no program takes mailto: links
    QString name;        // "Thunderbird", as menus show it
    QString iconName;
    bool takesAttachments = false; // by its own command line, or through the desktop portal
};

// New messages in the user's own mail program. Files travel as file URIs ("file:///a%20b.pdf"),
// which carry any name, bytes that are not UTF-8 included.
class MailService
{
public:
    enum ErrorCode { NoMailProgram = 1, NoAttachments, TooLong, NotStarted };
    virtual ~MailService() = default;
    virtual MailClient defaultClient() const = 0;
    // A new message with the files attached, in the form the default program takes, or through the
    // desktop portal. `done` runs once, on the calling thread: NoAttachments when nothing here can
    // take attachments, TooLong when the names are more than one command can carry.
    virtual void composeWithAttachments(const QStringList &fileUris, std::function<void(Status)> done) = 0;
    virtual Status openMailto(const QString &mailtoUrl) = 0; // a new message from a mailto: link
    virtual Status launchDefaultClient() = 0;
};

struct ShareTarget
{
    QString id; // "kdeconnect:DEVICE", "bluetooth", "open-with:APP"
    QString title;
    QString iconName;
};

// KDE Connect devices, Bluetooth and the applications of the machine: what it can hand files (as
// file URIs) and text to. Only what is installed and ready is offered.
class ShareService
{
public:
    virtual ~ShareService() = default;
    // Targets for files of these MIME types; "Open with" lists applications that take every one.
    virtual QList<ShareTarget> fileTargets(const QStringList &mimeTypes) const = 0;
    virtual QList<ShareTarget> textTargets() const = 0;
    virtual Status shareFiles(const QString &targetId, const QStringList &fileUris) = 0;
    virtual Status shareText(const QString &targetId, const QString &text) = 0;
    // A search for `text` in the file manager, from `folder`; false when no file manager here can.
    virtual bool canSearchFiles() const = 0;
    virtual Status searchFiles(const QString &text, const QString &folderUri) = 0;
};

struct PrinterInfo
{
    QString name; // the queue's name
    QString description;
    bool isDefault = false;
};

// What the print dialog chose, in the printing system's words.
struct PrintOptions
{
    enum class Sides { OneSided, TwoSidedLongEdge, TwoSidedShortEdge };
    enum class Orientation { Unset, Portrait, Landscape };
    int copies = 1;
    bool collate = true;
    QString pageRanges; // "2-3,5"; empty: every page
    Sides sides = Sides::OneSided;
    Orientation orientation = Orientation::Unset;
    QString media; // "A4", "Letter"; empty: the printer's own
    bool fitToPage = false; // scaled to the printable area, larger or smaller
};

// The printing system (CUPS).
class PrintService
{
public:
    enum ErrorCode { NoPrinter = 1, PrinterGone, Refused, NoPrintingSystem };
    virtual ~PrintService() = default;
    virtual QList<PrinterInfo> printers() const = 0;
    virtual QString defaultPrinter() const = 0; // empty when there is none
    // Sends a PDF file as it is: the printing system lays its pages out with the options. The job's
    // number; PrinterGone when the queue vanished since it was chosen.
    virtual Result<int> printPdf(const QString &printer, const QString &pdfPath, const QString &title,
                                 const PrintOptions &options) = 0;
};

// All services together, as main() builds them. Owned elsewhere; any may be null where the desktop
// has none.
struct Platform
{
    // The services the running program uses; all null until main() (or a test) installs them.
    static Platform &current();
    static void install(const Platform &services);

    DragPasteboard *dragPasteboard = nullptr;
    PromisedFileReceiver *promisedFiles = nullptr;
    PointerMonitor *pointerMonitor = nullptr;
    WindowSystem *windowSystem = nullptr;
    HotKeyBinder *hotKeyBinder = nullptr;
    NotificationService *notifications = nullptr;
    Workspace *workspace = nullptr;
    TrashService *trash = nullptr;
    VolumeService *volumes = nullptr;
    PowerEvents *power = nullptr;
    LoginItemService *loginItems = nullptr;
    WallpaperService *wallpaper = nullptr;
    ShareService *share = nullptr;
    MailService *mail = nullptr;
    PrintService *print = nullptr;
};

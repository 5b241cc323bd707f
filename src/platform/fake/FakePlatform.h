#pragma once

#include <atomic>

// In-memory stand-ins for the desktop services. They record what they are asked and let a test
// play the desktop's part (start a drag, click a notification, plug in a drive).

#include "platform/Platform.h"

#include <QHash>

#include <memory>

// A drag's source that tells what it offers as soon as it is asked, or, with `answerLater`, only
// when the test says (answer()).
class FakeDragPasteboard : public DragPasteboard
{
public:
    qint64 changeCount() const override { return m_count; }
    void learnContent() override;
    QStringList types() const override { return m_told ? m_types : QStringList(); }
    QStringList filePaths() const override { return m_told ? m_paths : QStringList(); }
    void startDrag(const QStringList &types, const QStringList &paths = {});
    void answer();
    bool answerLater = false;
    int asked = 0; // learnContent calls of the current drag

private:
    qint64 m_count = 0;
    bool m_told = false;
    QStringList m_types, m_paths;
};

// A source that promises `names` and writes `content` into each, `writeAfterMs` after the drop
// (never, for -1); an empty list stands for a source that refuses.
class FakePromisedFiles : public PromisedFileReceiver
{
public:
    Result<PromisedFiles> namesOfPromisedFilesDroppedAtDestination(const QString &folder, quintptr) override;
    QStringList names;
    QString writeFromType; // as a browser that leaves the writing to the drop target
    QByteArray content = "promised";
    int writeAfterMs = 0;
    QStringList askedFolders;
};

class FakePointerMonitor : public PointerMonitor
{
public:
    void setMotionTracking(bool on) override { tracking = on; }
    PointerDrag currentDrag() const override { return held; }
    void drag(QPointF at, qreal dx, qreal dy) { Q_EMIT leftMouseDragged(at, dx, dy); }
    void move(QPointF at);
    bool tracking = false;
    PointerDrag held; // the press in progress, as a drag's start finds it
};

class FakeWindowSystem : public WindowSystem
{
public:
    QString applicationIdAt(QPointF) const override { return appUnderPointer; }
    QString frontmostApplicationId() const override { return frontmost; }
    void rememberFocusedWindow() override { remembered = frontmost; }
    void restoreRememberedFocus() override;
    void activate(const QString &appId);
    QString appUnderPointer, frontmost, remembered;
    int focusRestores = 0;
};

class FakeHotKeyBinder : public HotKeyBinder
{
public:
    Status bind(const QString &portableKeys) override;
    void unbind() override { bound.clear(); }
    void press(const QString &portableKeys);
    QString bound;
    bool refuse = false; // as when another program holds every key
};

class FakeNotificationService : public NotificationService
{
public:
    struct Delivered
    {
        QString title, body;
        QVariantMap userInfo;
    };
    Status deliver(const QString &title, const QString &body, const QVariantMap &userInfo) override;
    void click(int index) { Q_EMIT activated(delivered.at(index).userInfo); }
    void clickUndo(int index)
    {
        QVariantMap info = delivered.at(index).userInfo;
        info.insert(QString::fromLatin1(kActivationActionKey), QString::fromLatin1(kUndoAction));
        Q_EMIT activated(info);
    }
    QList<Delivered> delivered;
};

class FakeWorkspace : public Workspace
{
public:
    Status revealItems(const QStringList &paths) override;
    Status openPath(const QString &path) override;
    Status openUrl(const QString &url) override;
    QString defaultFileManagerId() const override { return QStringLiteral("org.gnome.Nautilus"); }
    QList<QStringList> revealed;
    QStringList opened;
};

// Moves items into a folder of its own, keeping them, with a numbered name on a clash.
class FakeTrash : public TrashService
{
public:
    explicit FakeTrash(QString folder) : m_folder(std::move(folder)) {}
    Result<QString> moveToTrash(const QString &path) override;
    Result<QString> restore(const QString &trashedPath) override;
    bool refuse = false; // as on a volume without a trash
    std::atomic<int> delayMs{0}; // per item, as a slow volume: long enough to press Cancel

private:
    QString m_folder;
    QHash<QString, QString> m_origins; // trashed path -> where it came from
};

class FakeVolumeService : public VolumeService
{
public:
    QList<VolumeInfo> mountedVolumes() const override { return volumes; }
    Status eject(const QString &mountPoint) override;
    void plugIn(const VolumeInfo &volume);
    QList<VolumeInfo> volumes;
};

class FakePowerEvents : public PowerEvents
{
public:
    void wake() { Q_EMIT didWake(); }
};

class FakeLoginItems : public LoginItemService
{
public:
    bool isEnabled() const override { return enabled; }
    Status setEnabled(bool on) override
    {
        enabled = on;
        return success();
    }
    bool enabled = false;
};

class FakeWallpaper : public WallpaperService
{
public:
    QString currentWallpaper() const override { return current; }
    Status setWallpaper(const QString &imagePath) override;
    QString current;
};

class FakeShare : public ShareService
{
public:
    QList<ShareTarget> fileTargets(const QStringList &mimeTypes) const override;
    QList<ShareTarget> textTargets() const override { return forText; }
    Status shareFiles(const QString &targetId, const QStringList &fileUris) override;
    Status shareText(const QString &targetId, const QString &text) override;
    bool canSearchFiles() const override { return searchable; }
    Status searchFiles(const QString &text, const QString &folderUri) override;
    QList<ShareTarget> targets, forText;
    QList<QPair<QString, QStringList>> shared;
    QList<QPair<QString, QString>> sharedTexts, searches;
    bool searchable = true;
};

// A mail program that records each message it is asked for.
class FakeMail : public MailService
{
public:
    MailClient defaultClient() const override { return client; }
    void composeWithAttachments(const QStringList &fileUris, std::function<void(Status)> done) override;
    Status openMailto(const QString &mailtoUrl) override;
    Status launchDefaultClient() override;
    MailClient client{QStringLiteral("thunderbird.desktop"), QStringLiteral("Thunderbird"), QString(), true};
    QList<QStringList> composed;
    QStringList mailtos;
    int launches = 0;
};

// Every fake, owned together, with a Platform that points at them.
struct FakePlatform
{
    explicit FakePlatform(const QString &trashFolder);
    FakeDragPasteboard drag;
    FakePromisedFiles promisedFiles;
    FakePointerMonitor pointer;
    FakeWindowSystem windows;
    FakeHotKeyBinder hotKey;
    FakeNotificationService notifications;
    FakeWorkspace workspace;
    FakeTrash trash;
    FakeVolumeService volumes;
    FakePowerEvents power;
    FakeLoginItems loginItems;
    FakeWallpaper wallpaper;
    FakeShare share;
    FakeMail mail;
    Platform services();
};

#pragma once

// The program as it stands after launch, on fake desktop services: what every window test starts from.

#include "core/controller/AppDelegate.h"
#include "core/settings/SettingsKeys.h"
#include "core/settings/SettingsStore.h"
#include "core/texts/Texts.h"
#include "core/window/DropWindow.h"
#include "platform/fake/FakePlatform.h"
#include "utils/Utils.h"
#include "widgets/ActionButton.h"

#include <QApplication>
#include <QBuffer>
#include <QDialog>
#include <QDir>
#include <QImage>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QPointer>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

#include <functional>
#include <memory>

// Standard paths in folders of the test's own, and the English texts the assertions quote.
inline void englishTestMode()
{
    QStandardPaths::setTestModeEnabled(true);
    Texts::setLanguage(QStringLiteral("en"));
}

// Installed as the running services, past the first start's login question, launched.
inline std::unique_ptr<AppDelegate> launchedOn(const Platform &services)
{
    Platform::install(services);
    SettingsStore::shared().setBool(SettingsKey::ShowLoginAtLaunchBool, true); // no alert in the way
    auto app = std::make_unique<AppDelegate>(services);
    app->applicationDidFinishLaunching();
    app->installOverlayCompletions(); // the tests reach into the overlays before any action built them
    return app;
}

inline std::unique_ptr<AppDelegate> launchedOn(FakePlatform &fakes)
{
    return launchedOn(fakes.services());
}

// A removable drive at /media/someone/STICK, for the lone-volume rule.
inline VolumeInfo fakeStick()
{
    VolumeInfo stick;
    stick.mountPoint = QStringLiteral("/media/someone/STICK");
    stick.name = QStringLiteral("STICK");
    stick.removable = stick.ejectable = true;
    stick.internal = false;
    return stick;
}

// A file of `bytes` at `path`, its folder made first; the path.
inline QString writtenFile(const QString &path, const QByteArray &bytes = "x")
{
    QDir().mkpath(QFileInfo(path).path());
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly) || f.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(path));
    return path;
}

// A small picture in PNG, as a program hands it out or a file holds it.
inline QByteArray pngBytes(QSize size = QSize(8, 6))
{
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(Qt::darkCyan);
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    picture.save(&buffer, "PNG");
    return png;
}

// What a drag of files brings, and those files let go on the window.
inline std::unique_ptr<QMimeData> filesData(const QStringList &paths)
{
    auto data = std::make_unique<QMimeData>();
    QList<QUrl> urls;
    for (const QString &p : paths)
        urls.append(QUrl::fromLocalFile(p));
    data->setUrls(urls);
    return data;
}
inline void dropPaths(AppDelegate &app, const QStringList &paths) { app.mycustomviewDidGetDrop(filesData(paths).get()); }

inline ActionButton *panelButton(const AppDelegate &app, const QString &name)
{
    return app.window->contentView()->findChild<ActionButton *>(name);
}

// The shown button of an overlay that fires this tag.
inline QPushButton *tagButton(QWidget *overlay, qint64 tag)
{
    for (QPushButton *b : overlay->findChildren<QPushButton *>())
        if (b->property("tag").toLongLong() == tag && b->isVisibleTo(overlay))
            return b;
    return nullptr;
}

// The seconds the ledger has credited so far.
inline quint64 ledgerTotal()
{
    return Utils::getTimeSavedDictionaryValues().value_or(QVariantMap{}).value(QStringLiteral("totalSecSaved")).toULongLong();
}

// The message box that is up (of this name, when given), or none.
inline QMessageBox *visibleAlert(const QString &objectName = {})
{
    for (QWidget *w : QApplication::topLevelWidgets())
        if (auto *box = qobject_cast<QMessageBox *>(w); box && box->isVisible() && (objectName.isEmpty() || box->objectName() == objectName))
            return box;
    return nullptr;
}

// A notification as one list to compare at once: its title, its body and the paths it shows.
inline QStringList told(const FakeNotificationService::Delivered &n)
{
    return QStringList{n.title, n.body} + n.userInfo.value(QStringLiteral("filePaths")).toStringList();
}

// The alert that is up as "text: details", closed; empty when none is up.
inline QString closedAlert()
{
    QMessageBox *box = visibleAlert();
    const QString said = box ? box->text() + QStringLiteral(": ") + box->informativeText() : QString();
    delete box;
    return said;
}

// The share menu that is up, or none.
inline QMenu *sharePicker()
{
    for (QWidget *w : QApplication::topLevelWidgets())
        if (w->objectName() == QLatin1String("sharePicker") && w->isVisible())
            return qobject_cast<QMenu *>(w);
    return nullptr;
}

// The real pointer on an X server, through xdotool (XTest): as a hand moves and clicks it.
inline void xdotool(const QStringList &args)
{
    QProcess process;
    process.start(QStringLiteral("xdotool"), args);
    QVERIFY(process.waitForFinished(5000) && process.exitCode() == 0);
}
inline void clickAt(QPoint global)
{
    xdotool({"mousemove", QString::number(global.x()), QString::number(global.y()), "click", "1"});
}
// Presses at `at` (global), moves in `steps` small steps by (dx, dy) each, lets go: as a hand does. A
// warp moves the pointer without motion; the relative moves are real motion, seen by a drag watcher.
inline void dragWithThePointer(QPoint at, int dx, int dy, int steps)
{
    xdotool({"mousemove", QString::number(at.x()), QString::number(at.y()), "mousedown", "1"});
    for (int i = 0; i < steps; ++i) {
        QTest::qWait(20);
        xdotool({"mousemove_relative", "--", QString::number(dx), QString::number(dy)});
    }
    QTest::qWait(100);
    xdotool({"mouseup", "1"});
    QTest::qWait(200);
}

// What the window tests start from: a folder for the user's files, fake services, the program
// launched on them, and the steps a user takes on its window.
struct LaunchedFixture
{
    QTemporaryDir dir;
    std::unique_ptr<FakePlatform> fakes;
    std::unique_ptr<AppDelegate> app;

    // `prepare` sets up the fakes before the program sees them; `wire` puts real services in their place.
    void launch(const std::function<void(FakePlatform &)> &prepare = {}, const std::function<void(Platform &)> &wire = {})
    {
        fakes = std::make_unique<FakePlatform>(dir.path() + QStringLiteral("/.trash"));
        if (prepare)
            prepare(*fakes);
        Platform services = fakes->services();
        if (wire)
            wire(services);
        app = launchedOn(services);
    }
    // Nothing of a case reaches the next: the program, its windows, the settings, the files.
    void close()
    {
        app.reset();
        // Alerts, dialogs and menus a case left open, gone before the next one; guarded: a dialog
        // deleted first takes the windows it owns with it.
        QList<QPointer<QWidget>> leftovers;
        for (QWidget *w : QApplication::topLevelWidgets())
            if (qobject_cast<QDialog *>(w) || qobject_cast<QMenu *>(w))
                leftovers.append(w);
        for (const QPointer<QWidget> &w : leftovers)
            delete w.data();
        fakes.reset();
        SettingsStore::shared().resetAll();
        QDir(dir.path()).removeRecursively();
        QDir().mkpath(dir.path());
    }
    QString path(const QString &name) const { return dir.path() + QLatin1Char('/') + name; }
    QString file(const QString &name, const QByteArray &bytes = "x") const { return writtenFile(path(name), bytes); }
    static QByteArray bytesOf(const QString &path)
    {
        QFile f(path);
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<unreadable>");
    }
    // The window as the pointer brings it, and these files let go on it.
    void drop(const QStringList &paths)
    {
        app->showDropTargetAt(QPointF(400, 300));
        dropPaths(*app, paths);
    }
    void dropText(const QString &text)
    {
        QMimeData data;
        data.setText(text);
        app->showDropTargetAt(QPointF(400, 300));
        app->mycustomviewDidGetDrop(&data);
    }
    ActionButton *button(const QString &name) const { return panelButton(*app, name); }
    // The files dropped and this panel button pressed; false when the panel has no such button.
    bool dropAndPress(const QStringList &paths, const QString &name)
    {
        drop(paths);
        ActionButton *b = button(name);
        if (b)
            b->click();
        return b;
    }
    bool notified(int count, int ms = 20000)
    {
        return QTest::qWaitFor([&] { return fakes->notifications.delivered.size() >= count; }, ms) &&
               fakes->notifications.delivered.size() == count;
    }
    const FakeNotificationService::Delivered &note(int i = 0) const { return fakes->notifications.delivered.at(i); }
};

#include "cli/CommandLine.h"
#include "cli/CommandTable.h"
#include "core/controller/AppDelegate.h"
#include "core/texts/Texts.h"
#include "cli/CliPaths.h"
#include "core/fs/NativePath.h"
#include "fileops/ui/destinations/ManageDestinationsWC.h"
#include "images/board/ui/PDFPreviewWC.h"
#include "menubar/statusitem/NotificationBalloon.h"
#include "platform/SingleInstance.h"
#include "platform/cups/CupsPrint.h"
#include "platform/freedesktop/FreedesktopMail.h"
#include "platform/desktops/GnomeShortcutBinder.h"
#include "platform/desktops/KGlobalAccelBinder.h"
#include "platform/desktops/ShortcutHost.h"
#include "platform/freedesktop/FreedesktopNotifications.h"
#include "platform/freedesktop/FreedesktopShare.h"
#include "platform/freedesktop/FreedesktopTrash.h"
#include "platform/freedesktop/DesktopWallpaper.h"
#include "platform/freedesktop/FreedesktopWorkspace.h"
#include "platform/freedesktop/Login1PowerEvents.h"
#include "platform/freedesktop/XdgAutostart.h"
#include "platform/linux/LinuxVolumeService.h"
#include "platform/posix/ProgramPaths.h"
#include "platform/posix/UnixSignalWatcher.h"
#include "platform/x11/X11Desktop.h"

#include <QApplication>
#include <QGuiApplication>
#include <QDir>
#include <QStandardPaths>

#include <cstdio>

namespace {

// Where no client may grab a key (Wayland), GNOME or Plasma holds it for us.
std::unique_ptr<HotKeyBinder> desktopHotKeys()
{
    switch (ShortcutHosts::detect()) {
    case ShortcutHost::Gnome:
        if (GnomeShortcutBinder::available()) {
            // The shortcut runs the command line beside us (bin/ when installed, the same folder in a
            // build); GNOME splits the command as a shell would, so the path is quoted.
            const QString here = QCoreApplication::applicationDirPath();
            QString program = QStandardPaths::findExecutable(QStringLiteral("quaydrop"),
                                                             {here, here + QStringLiteral("/../../bin")});
            if (program.isEmpty())
                program = QStringLiteral("quaydrop");
            program.replace(QStringLiteral("'"), QStringLiteral("'\\''"));
            return std::make_unique<GnomeShortcutBinder>(QStringLiteral("'%1' toggle").arg(QDir::cleanPath(program)));
        }
        break;
    case ShortcutHost::KGlobalAccel:
        if (KGlobalAccelBinder::available())
            return std::make_unique<KGlobalAccelBinder>();
        break;
    case ShortcutHost::X11Grab:
    case ShortcutHost::None:
        break;
    }
    return nullptr;
}

// `quaydrop --destinations`: the destination manager as a window of its own process, on the same
// stored list as the running program's picker (which follows the file).
int runDestinationManager(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) {
        std::fprintf(stderr, "quaydrop: no display to show the destinations on (DISPLAY is not set)\n");
        return 1;
    }
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Quaydrop"));
    QApplication::setDesktopFileName(QStringLiteral(QD_BUNDLE_ID));
    Texts::setLanguage(Texts::startupLanguage());
    LinuxVolumeService volumes;
    Platform services;
    services.volumes = &volumes;
    Platform::install(services);
    ManageDestinationsWC manager;
    manager.show();
    return app.exec();
}

// What the commands of the full program ask of the desktop beyond the file engine: the drives behind
// the volumes (destinations, trash) and the file manager (reveal).
class CommandServices : public QObject
{
public:
    CommandServices()
    {
        Platform services;
        services.volumes = &m_volumes;
        services.workspace = &m_workspace;
        Platform::install(services);
    }
    ~CommandServices() override { Platform::install({}); }

private:
    LinuxVolumeService m_volumes;
    FreedesktopWorkspace m_workspace;
};

int runCommand(int argc, char **argv)
{
    return CommandLine::runProcess(argc, argv, [] { return std::make_unique<CommandServices>(); });
}

bool hasDisplay()
{
    return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

// `quaydrop pdf-board FILE...`: the page board with those images, as a window of its own process.
int runPageBoard(int argc, char **argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Quaydrop"));
    QApplication::setDesktopFileName(QStringLiteral(QD_BUNDLE_ID));
    Texts::setLanguage(Texts::startupLanguage());
    FreedesktopNotifications notifications;
    NotificationBalloon balloon; // where no notification server answers
    notifications.setFallback(&balloon);
    FreedesktopWorkspace workspace;
    Platform services;
    services.notifications = &notifications;
    services.workspace = &workspace;
    Platform::install(services);
    QStringList paths;
    for (int i = 2; i < argc; ++i)
        paths << CliPaths::absolute(NativePath::fromNative(QByteArray(argv[i])));
    PDFPreviewWC board;
    const QStringList taken = board.loadPageItemImagesWithPaths(paths);
    for (const QString &p : paths)
        if (!taken.contains(p))
            std::fprintf(stderr, "quaydrop: %s left out: not a readable page image\n", NativePath::toNative(p).constData());
    board.show();
    return app.exec();
}

int runResident(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) {
        std::fprintf(stderr, "quaydrop: no display to show on (DISPLAY is not set); `make run` starts one\n");
        return 1;
    }
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Quaydrop"));
    QApplication::setDesktopFileName(QStringLiteral(QD_BUNDLE_ID));
    QApplication::setQuitOnLastWindowClosed(false);
    Texts::setLanguage(Texts::startupLanguage());

    SingleInstance instance;
    switch (instance.claim()) {
    case SingleInstance::Role::Secondary:
        std::fprintf(stderr, "quaydrop: already running; asked it to come forward\n");
        return 0;
    case SingleInstance::Role::Failed:
        std::fprintf(stderr, "quaydrop: cannot claim %s: %s\n", qPrintable(SingleInstance::defaultSocketPath()),
                     qPrintable(instance.errorString()));
        return 1;
    case SingleInstance::Role::Primary:
        break;
    }

    FreedesktopTrash trash;
    LinuxVolumeService volumes;
    FreedesktopNotifications notifications;
    NotificationBalloon balloon; // where no notification server answers
    notifications.setFallback(&balloon);
    FreedesktopWorkspace workspace;
    FreedesktopMail mail;
    FreedesktopShare share;
    CupsPrint print;
    XdgAutostart autostart(ProgramPaths::front()); // the command users start, not this program
    Login1PowerEvents power;
    DesktopWallpaper wallpaper;
    // Drags are seen from X11 windows (XWayland's too); a pure Wayland session has the hot key only.
    const std::unique_ptr<X11Desktop> x11 = X11Desktop::open();
    Platform platform; // the other desktop services join as they are built
    if (x11) {
        platform.dragPasteboard = x11->pasteboard.get();
        platform.promisedFiles = x11->pasteboard.get();
        platform.pointerMonitor = x11->pointer.get();
        platform.windowSystem = x11->windows.get();
        platform.hotKeyBinder = x11->hotKeys.get();
    }
    const std::unique_ptr<HotKeyBinder> desktopKeys = desktopHotKeys();
    if (desktopKeys)
        platform.hotKeyBinder = desktopKeys.get();
    platform.trash = &trash;
    platform.volumes = &volumes;
    platform.notifications = &notifications;
    platform.workspace = &workspace;
    platform.mail = &mail;
    platform.share = &share;
    platform.print = &print;
    platform.loginItems = &autostart;
    platform.power = &power;
    platform.wallpaper = &wallpaper;
    Platform::install(platform);
    AppDelegate delegate(platform);
    balloon.setAnchor([&delegate] { return delegate.trayIconGeometry(); });
    QObject::connect(&instance, &SingleInstance::activationRequested, &delegate,
                     &AppDelegate::applicationShouldHandleReopen);
    QObject::connect(&instance, &SingleInstance::toggleRequested, &delegate, &AppDelegate::toggleDropWindow);
    QObject::connect(&instance, &SingleInstance::panelRequested, &delegate, &AppDelegate::showPanelForFiles);
    UnixSignalWatcher signals_;
    QObject::connect(&signals_, &UnixSignalWatcher::terminationRequested, &delegate, &AppDelegate::quitQuaydrop);

    delegate.applicationDidFinishLaunching();
    // Until the drag watcher lands, tests and demonstrations open the drop target at a fixed place.
    if (const QByteArray at = qgetenv("QUAYDROP_SHOW_DROP_WINDOW_AT"); !at.isEmpty()) {
        const QList<QByteArray> xy = at.split(',');
        if (xy.size() == 2)
            delegate.showDropTargetAt(QPointF(xy[0].toDouble(), xy[1].toDouble()));
    }
    std::fprintf(stderr, "quaydrop: running\n");
    std::fflush(stderr);
    return app.exec();
}

} // namespace

int main(int argc, char **argv)
{
    if (argc == 2 && qstrcmp(argv[1], "--destinations") == 0)
        return runDestinationManager(argc, argv);
    if (argc > 1 && qstrcmp(argv[1], "print") == 0) {
        // Printing lays texts out, which needs fonts: a GUI application without a screen of its own.
        if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
            qputenv("QT_QPA_PLATFORM", "offscreen");
        QGuiApplication fonts(argc, argv);
        return runCommand(argc, argv);
    }
    // Without a display, or asked for help, the command line answers instead.
    if (argc >= 2 && qstrcmp(argv[1], "pdf-board") == 0 && hasDisplay() && !(argc >= 3 && qstrcmp(argv[2], "--help") == 0))
        return runPageBoard(argc, argv);
    if (argc > 1) {
        // A command with a window (edit) runs in an application with widgets, when there is a display.
        const Cli::Command *command = Cli::find(QString::fromLocal8Bit(argv[1]));
        if (command && command->needsDisplay && (hasDisplay() || !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))) {
            QApplication app(argc, argv);
            QApplication::setApplicationName(QStringLiteral("Quaydrop"));
            QApplication::setDesktopFileName(QStringLiteral(QD_BUNDLE_ID));
            return runCommand(argc, argv);
        }
        return runCommand(argc, argv);
    }
    return runResident(argc, argv);
}

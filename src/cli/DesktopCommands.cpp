#include "DesktopCommands.h"

#include "ArgumentParser.h"
#include "CliPaths.h"
#include "CommandLine.h"
#include "Console.h"
#include "images/wallpaper/WallpaperHistory.h"
#include "platform/Platform.h"
#include "platform/freedesktop/DesktopWallpaper.h"
#include "utils/Utils.h"

int runWallpaperCommand(const Invocation &invocation, Console &console)
{
    const bool previous = invocation.has("--previous");
    if (previous == !invocation.arguments.isEmpty())
        return CommandLine::usageError(*invocation.command, console, QStringLiteral("give FILE or --previous, not both"));
    // The command line sets the picture of the desktop it was started from.
    DesktopWallpaper desktop;
    WallpaperService *service = Platform::current().wallpaper ? Platform::current().wallpaper : &desktop;
    Status set = success();
    QString shown;
    if (previous) {
        shown = WallpaperHistory::read().oldWP1;
        set = WallpaperHistory::setSlot(1, *service);
    } else {
        const QString path = CliPaths::absolute(invocation.arguments.first());
        if (const auto missing = CliPaths::missing(path)) {
            console.fail(*missing, " (nothing was done)");
            return Cli::kFailed;
        }
        Utils::saveChangesToTimeSavedPlistByAddingSec(5);
        set = WallpaperHistory::setDroppedPicture(path, *service);
        shown = service->currentWallpaper();
    }
    if (!set.ok()) {
        console.fail(set.error().message);
        return Cli::kFailed;
    }
    console.out << shown << "\n";
    return 0;
}

int runPdfBoardCommand(const Invocation &, Console &console)
{
    console.fail(QStringLiteral("no display to show the page board on (DISPLAY is not set)"));
    return Cli::kFailed;
}

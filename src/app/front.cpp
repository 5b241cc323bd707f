// `quaydrop`: the command line, light to start. It links QtCore and the file engine only (no bus, no
// network library), so that `quaydrop type FILE` in a loop costs what a small tool costs. Without a
// command, for the windows, for the image commands and for those that ask the desktop's services it
// hands this very process over to the full program (quaydrop-app) with the same arguments: the
// caller sees one program, one process id, one exit status.

#include "cli/CommandLine.h"
#include "cli/Console.h"
#include "cli/EditCommand.h"
#include "cli/DesktopCommands.h"
#include "cli/ImageCommands.h"
#include "cli/SendingCommands.h"
#include "core/fs/NativePath.h"
#include "platform/posix/ProgramPaths.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <unistd.h>

namespace {

char **g_argv = nullptr;

// Returns only when the full program could not be started.
QString becomeFullProgram()
{
    const QString full = ProgramPaths::helper(QStringLiteral("quaydrop-app"));
    ::execv(NativePath::toNative(full).constData(), g_argv);
    return QStringLiteral("cannot start %1: %2").arg(NativePath::forDisplay(full), QString::fromLocal8Bit(std::strerror(errno)));
}

int inFullProgram(const Invocation &, Console &console)
{
    console.fail(becomeFullProgram());
    return Cli::kFailed;
}

} // namespace

// The image commands of the command table are the full program's.
int runResizeCommand(const Invocation &invocation, Console &console) { return inFullProgram(invocation, console); }
int runConvertCommand(const Invocation &invocation, Console &console) { return inFullProgram(invocation, console); }
int runPdfToImagesCommand(const Invocation &invocation, Console &console) { return inFullProgram(invocation, console); }
int runImagesToPdfCommand(const Invocation &invocation, Console &console) { return inFullProgram(invocation, console); }
int runRotateCommand(const Invocation &invocation, Console &console) { return inFullProgram(invocation, console); }
int runCropCommand(const Invocation &invocation, Console &console) { return inFullProgram(invocation, console); }
int runEditCommand(const Invocation &invocation, Console &console) { return inFullProgram(invocation, console); }
// Mail, share and print too: they read the desktop's MIME associations, talk to CUPS and lay out text.
int runMailCommand(const Invocation &invocation, Console &console) { return inFullProgram(invocation, console); }
int runShareCommand(const Invocation &invocation, Console &console) { return inFullProgram(invocation, console); }
int runPrintCommand(const Invocation &invocation, Console &console) { return inFullProgram(invocation, console); }
int runWallpaperCommand(const Invocation &invocation, Console &console) { return inFullProgram(invocation, console); }
int runPdfBoardCommand(const Invocation &invocation, Console &console) { return inFullProgram(invocation, console); }

int main(int argc, char **argv)
{
    g_argv = argv;
    if (argc < 2 || (argc == 2 && qstrcmp(argv[1], "--destinations") == 0)) {
        std::fprintf(stderr, "quaydrop: %s\n", qPrintable(becomeFullProgram()));
        return 1;
    }
    // Commands that ask the desktop's services on the bus run where the bus library is.
    if (const Cli::Command *command = Cli::find(QString::fromLocal8Bit(argv[1])); command && command->needsDesktopServices) {
        std::fprintf(stderr, "quaydrop: %s\n", qPrintable(becomeFullProgram()));
        return 1;
    }
    return CommandLine::runProcess(argc, argv);
}

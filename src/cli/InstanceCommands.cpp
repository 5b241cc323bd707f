#include "InstanceCommands.h"

#include "ArgumentParser.h"
#include "CliPaths.h"
#include "Console.h"
#include "platform/SingleInstance.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QProcess>
#include <QThread>

namespace {

constexpr int kStartTimeoutMs = 15000;

// The running program gets the request; with none, one is started and asked once it listens.
int askRunningInstance(const SingleInstance::Request &request, Console &console)
{
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) {
        console.fail(QStringLiteral("no display to show the window on (neither DISPLAY nor WAYLAND_DISPLAY is set)"));
        return Cli::kFailed;
    }
    const QString socket = SingleInstance::defaultSocketPath();
    if (SingleInstance::send(socket, request))
        return 0;
    QProcess resident;
    resident.setProgram(QCoreApplication::applicationFilePath());
    resident.setStandardOutputFile(QProcess::nullDevice());
    if (!resident.startDetached()) {
        console.fail(QStringLiteral("cannot start Quaydrop: %1").arg(resident.errorString()));
        return Cli::kFailed;
    }
    for (QDeadlineTimer deadline(kStartTimeoutMs); !deadline.hasExpired(); QThread::msleep(100))
        if (SingleInstance::send(socket, request))
            return 0;
    console.fail(QStringLiteral("Quaydrop was started but does not answer on %1").arg(socket));
    return Cli::kFailed;
}

} // namespace

int runPanelCommand(const Invocation &invocation, Console &console)
{
    SingleInstance::Request request{SingleInstance::Request::Kind::Panel};
    bool allThere = true;
    for (const QString &argument : invocation.arguments) {
        request.paths << CliPaths::absolute(argument);
        if (const auto missing = CliPaths::missing(request.paths.last())) {
            console.fail(*missing);
            allThere = false;
        }
    }
    // A panel for some of the files would act on less than the user chose.
    if (!allThere)
        return Cli::kUsageError;
    return askRunningInstance(request, console);
}

int runToggleCommand(const Invocation &, Console &console)
{
    return askRunningInstance({SingleInstance::Request::Kind::Toggle}, console);
}

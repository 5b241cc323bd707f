#include "WorkerMain.h"

#include "platform/posix/ProcessLimits.h"

#include <QByteArray>

#include <malloc.h>
#include <unistd.h>

#include <cstdio>

namespace {

// Log lines only with QUAYDROP_VERBOSE=1: each failure reaches the program as an answer and is told
// there once.
void quietLog(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type == QtFatalMsg || qEnvironmentVariableIntValue("QUAYDROP_VERBOSE") != 0)
        std::fprintf(stderr, "quaydrop-worker: %s\n", qPrintable(message));
}

} // namespace

int WorkerMain::run(int argc, char **argv, WorkerServer::BeforeJob beforeJob)
{
    qInstallMessageHandler(quietLog);
    qint64 memory = qint64(2) << 30;
    WorkerServer::Options options;
    for (int i = 1; i + 1 < argc; i += 2) {
        const QByteArray key(argv[i]);
        const qint64 value = QByteArray(argv[i + 1]).toLongLong();
        if (key == "--memory")
            memory = value;
        else if (key == "--processor-seconds")
            options.processorSecondsPerItem = int(value);
        else if (key == "--idle-seconds")
            options.idleSeconds = int(value);
    }
    if (::isatty(STDIN_FILENO)) {
        std::fprintf(stderr, "quaydrop-worker: started by Quaydrop when it needs it, not by hand\n");
        return 2;
    }
    // No parent-death signal: it follows the thread that started the worker, not the program. The
    // program's end closes the socket, and the worker leaves on that.
    // Few allocation arenas: each thread's arena reserves address space that the limit counts.
    mallopt(M_ARENA_MAX, 2);
    ProcessLimits::limitMemory(memory);
    WorkerServer server(STDIN_FILENO, options, CodecJobs::all(), std::move(beforeJob));
    return server.run();
}

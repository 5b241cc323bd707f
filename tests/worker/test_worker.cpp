// A build of the image worker for tests only, never installed: it behaves as the real one except
// where a file it is asked about carries a marker, or it is told to speak another version.
//   QUAYDROP-TEST-ABORT   the worker aborts, as a decoder that crashes would
//   QUAYDROP-TEST-HANG    the worker sleeps and never answers
//   QUAYDROP_TEST_WORKER_VERSION=N in its environment: the hello says version N, and nothing more

#include "core/fs/FsCalls.h"
#include "worker/Jobs.h"
#include "worker/Protocol.h"
#include "worker/WorkerMain.h"

#include <QThread>

#include <sys/socket.h>
#include <unistd.h>

#include <cstdlib>

int main(int argc, char **argv)
{
    if (const QByteArray version = qgetenv("QUAYDROP_TEST_WORKER_VERSION"); !version.isEmpty()) {
        QCborMap hello = WorkerProtocol::hello();
        hello.insert(QStringLiteral("version"), version.toLongLong());
        const QByteArray frame = WorkerProtocol::frame(hello);
        ::send(STDOUT_FILENO, frame.constData(), size_t(frame.size()), MSG_NOSIGNAL);
        char c;
        while (::read(STDIN_FILENO, &c, 1) > 0) {
        }
        return 0;
    }
    return WorkerMain::run(argc, argv, [](const QString &, const QCborMap &arguments) {
        const QString source = WorkerProtocol::pathFrom(arguments.value(WorkerJobs::kSource));
        if (source.isEmpty())
            return;
        const auto bytes = FsCalls::readWholeFile(source);
        if (!bytes.ok())
            return;
        if (bytes.value().contains("QUAYDROP-TEST-ABORT"))
            std::abort();
        if (bytes.value().contains("QUAYDROP-TEST-HANG"))
            for (;;)
                QThread::sleep(60);
    });
}

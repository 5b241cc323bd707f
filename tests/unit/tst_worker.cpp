// The image worker: its protocol (framing, versions, truncated and broken frames, an unknown job),
// a crash in the middle of a batch, the memory and time limits, cancel while it is busy, idle exit,
// a missing or unusable worker program, damaged files that fail every time while they stream, and
// hostile files (a PNG that claims a vast size, a 10,000-deep PDF page tree, a page too large)
// that fail alone, leave nothing behind, and leave the worker in order.

#include "ConvertRequest.h"
#include "ImageFixtures.h"
#include "TestTree.h"

#include "images/ImageTypeCode.h"
#include "images/codecs/VipsSupport.h"
#include "images/jobs/ConvertJob.h"
#include "images/jobs/PdfToImagesJob.h"
#include "images/jobs/ResizeJob.h"
#include "worker/Jobs.h"
#include "worker/Protocol.h"
#include "worker/WorkerPool.h"

#include <QElapsedTimer>
#include <QFile>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTest>

#include <signal.h>

namespace {

const QString kRealWorker = QStringLiteral(QD_WORKER_BINARY);
const QString kTestWorker = QStringLiteral(QD_TEST_WORKER_BINARY);

template <typename Job>
void runToEnd(Job &job, int ms = 60000)
{
    QSignalSpy finished(&job, &ImageBatchJob::finished);
    job.start();
    QVERIFY(finished.wait(ms));
    QCOMPARE(finished.size(), 1);
}

ConvertJob::Request toJpeg(const QStringList &paths, const QString &folder) { return convertRequest(paths, folder, 2); }

bool processExists(qint64 pid) { return ::kill(pid_t(pid), 0) == 0; }

// A PNG that any reader takes, with a marker for the test worker after its end.
QByteArray markedPng(const char *marker)
{
    return ImageFixtures::encoded(ImageFixtures::picture(30, 20), "png") + QByteArray(marker);
}

} // namespace

Q_DECLARE_METATYPE(WorkerLimits)

class WorkerTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }
    void init() { useWorker(kRealWorker); }
    void cleanupTestCase() { useWorker(kRealWorker); }

    void framesRoundTrip_data()
    {
        QTest::addColumn<QCborMap>("message");
        QTest::newRow("hello") << WorkerProtocol::hello();
        QTest::newRow("request with a path of bytes")
            << WorkerProtocol::request(7, QStringLiteral("probe"), {{WorkerJobs::kSource, QCborValue(QByteArray("/tmp/caf\xe9.png"))}});
        QTest::newRow("pixels") << QCborMap{{WorkerJobs::kImage, WorkerProtocol::image(ImageFixtures::picture(33, 7, true))}};
    }
    void framesRoundTrip()
    {
        QFETCH(QCborMap, message);
        QByteArray stream = WorkerProtocol::frame(message) + WorkerProtocol::frame(WorkerProtocol::bye());
        // Byte by byte, as a socket may hand them over: nothing is taken before a frame is whole.
        QByteArray buffer;
        QList<QCborMap> got;
        for (char c : std::as_const(stream)) {
            buffer.append(c);
            const auto parsed = WorkerProtocol::takeFrame(buffer);
            QVERIFY(parsed.state != WorkerProtocol::Parse::Bad);
            if (parsed.state == WorkerProtocol::Parse::Ok)
                got.append(parsed.message);
        }
        QCOMPARE(got.size(), 2);
        QCOMPARE(got.first(), message);
        QVERIFY(WorkerProtocol::isBye(got.last()));
        QVERIFY(buffer.isEmpty());
        if (message.contains(WorkerJobs::kImage))
            QCOMPARE(WorkerProtocol::imageFrom(got.first().value(WorkerJobs::kImage)), ImageFixtures::picture(33, 7, true));
    }
    void brokenFrames_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<int>("state");
        const QByteArray whole = WorkerProtocol::frame(WorkerProtocol::hello());
        QTest::newRow("a truncated frame waits") << whole.left(whole.size() - 1) << int(WorkerProtocol::Parse::Incomplete);
        QTest::newRow("half a length waits") << whole.left(2) << int(WorkerProtocol::Parse::Incomplete);
        QTest::newRow("a length past any message") << QByteArray("\x7f\xff\xff\xff", 4) << int(WorkerProtocol::Parse::Bad);
        QTest::newRow("no CBOR") << QByteArray("\x00\x00\x00\x02\xff\xff", 6) << int(WorkerProtocol::Parse::Bad);
        QTest::newRow("CBOR but no map") << QByteArray("\x00\x00\x00\x01\x05", 5) << int(WorkerProtocol::Parse::Bad);
    }
    void brokenFrames()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(int, state);
        QByteArray buffer = bytes;
        QCOMPARE(int(WorkerProtocol::takeFrame(buffer).state), state);
        if (state == int(WorkerProtocol::Parse::Incomplete))
            QCOMPARE(buffer, bytes);
    }
    void mismatchesAreAnswered()
    {
        // The test worker's hello names the version it is told to.
        qputenv("QUAYDROP_TEST_WORKER_VERSION", "99");
        const auto other = WorkerConnection::start(kTestWorker, WorkerLimits());
        qunsetenv("QUAYDROP_TEST_WORKER_VERSION");
        QVERIFY(!other.ok());
        QCOMPARE(other.error().message, QStringLiteral("the image worker speaks version 99; this program needs 1"));
        QVERIFY(WorkerConnection::start(kTestWorker, WorkerLimits()).ok());
        // A job the worker does not know is answered as such.
        const auto reply = WorkerPool::shared().call(QStringLiteral("paint a sunset"), {});
        QVERIFY(reply.ok());
        QVERIFY(!WorkerProtocol::succeeded(reply.value()));
        QCOMPARE(WorkerProtocol::errorOf(reply.value()).message, QStringLiteral("unknown job: paint a sunset"));
        // The worker stays and takes the next request.
        const QString png = ImageFixtures::imageFile(m_tree.at(QStringLiteral("after-unknown.png")), ImageFixtures::picture(12, 9));
        const auto probed = WorkerPool::shared().call(QString(WorkerJobs::kProbe), {{WorkerJobs::kSource, WorkerProtocol::path(png)}});
        QVERIFY(probed.ok() && WorkerProtocol::succeeded(probed.value()));
        QCOMPARE(probed.value().value(WorkerJobs::kWidth).toInteger(), 12);
    }
    void aBadItemFailsAloneAndTheBatchGoesOn_data()
    {
        QTest::addColumn<bool>("testWorker");
        QTest::addColumn<WorkerLimits>("limits");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("expected"); // in the failure, after the file's path
        QTest::newRow("the worker crashes") << true << WorkerLimits{} << "b.png" << markedPng("QUAYDROP-TEST-ABORT")
                                            << "could not be read: the decoder stopped";
        QTest::newRow("a hanging worker is killed at the time limit") << true << WorkerLimits{.secondsPerItem = 1} << "hang.png"
                                                                      << markedPng("QUAYDROP-TEST-HANG") << "took longer than 1 seconds";
        // A photo turned by its EXIF tag is decoded whole: 12,000 x 12,000 pixels need 432 MB, from a file
        // of a few hundred kilobytes.
        VipsSupport::ensureStarted();
        const QByteArray black = VipsSupport::takeBlob(vips::VImage::black(12000, 12000, vips::VImage::option()->set("bands", 3))
                                                            .jpegsave_buffer(vips::VImage::option()->set("Q", 50)));
        QTest::newRow("a bomb within the memory limit") << false << WorkerLimits{.memoryBytes = qint64(256) << 20} << "bomb.jpg"
                                                        << ImageFixtures::withOrientation(black, 6) << "";
    }
    void aBadItemFailsAloneAndTheBatchGoesOn()
    {
        QFETCH(bool, testWorker);
        QFETCH(WorkerLimits, limits);
        QFETCH(QString, name);
        QFETCH(QByteArray, content);
        QFETCH(QString, expected);
        useWorker(testWorker ? kTestWorker : kRealWorker, limits);
        TestTree tree;
        const QString bad = tree.at(name);
        QVERIFY(ImageFixtures::write(bad, content));
        const QStringList paths{ImageFixtures::imageFile(tree.at(QStringLiteral("a.png")), ImageFixtures::picture(30, 20)), bad,
                                ImageFixtures::imageFile(tree.at(QStringLiteral("c.png")), ImageFixtures::picture(40, 30))};
        ConvertJob job(toJpeg(paths, tree.path()));
        runToEnd(job);
        QCOMPARE(job.written(), QStringList({tree.at(QStringLiteral("a.jpg")), tree.at(QStringLiteral("c.jpg"))}));
        QCOMPARE(job.failures().size(), 1);
        const QString message = job.failures().first().message;
        QVERIFY2(message.startsWith(bad + ": ") && message.contains(expected), qPrintable(message));
        // Nothing of the bad item, no temporary file.
        QStringList expectedEntries{"a.jpg", "a.png", name, "c.jpg", "c.png"};
        expectedEntries.sort();
        QCOMPARE(TestTree::entries(tree.path()), expectedEntries);
        // The next batch works with a fresh worker.
        ConvertJob again(toJpeg({paths.at(0)}, tree.path()));
        runToEnd(again);
        QCOMPARE(again.written().size(), 1);
    }
    void cancelWhileBusyKillsTheWorker()
    {
        useWorker(kTestWorker);
        TestTree tree;
        const QString hang = tree.at(QStringLiteral("hang.png"));
        const QString after = tree.at(QStringLiteral("after.png"));
        QVERIFY(ImageFixtures::write(hang, markedPng("QUAYDROP-TEST-HANG")));
        QVERIFY(ImageFixtures::write(after, markedPng("")));
        ConvertJob job(toJpeg({hang, after}, tree.path()));
        QSignalSpy finished(&job, &ImageBatchJob::finished);
        job.start();
        QTRY_COMPARE_WITH_TIMEOUT(WorkerPool::shared().workerPids().size(), 1, 10000);
        const qint64 pid = WorkerPool::shared().workerPids().first();
        QTest::qWait(300);
        QElapsedTimer clock;
        clock.start();
        job.cancel();
        QVERIFY(finished.wait(5000));
        // 200 ms for the worker to answer, then it is killed; the job ends at once after that.
        QVERIFY2(clock.elapsed() < 1500, qPrintable(QString::number(clock.elapsed())));
        QCOMPARE(finished.size(), 1);
        QVERIFY(job.written().isEmpty());
        QVERIFY(ImageFixtures::leftovers(tree.path()).isEmpty());
        QTRY_VERIFY(!processExists(pid));
        ConvertJob next(toJpeg({after}, tree.path()));
        runToEnd(next);
        QCOMPARE(next.written().size(), 1);
    }
    // Idle workers go and are reaped; one that left on its own is replaced for the next request.
    void idleWorkers()
    {
        useWorker(kRealWorker, {.idleSeconds = 3});
        // One started ahead of need takes the next job.
        WorkerPool::shared().prestart();
        QTRY_COMPARE_WITH_TIMEOUT(WorkerPool::shared().workerPids().size(), 1, 10000);
        const qint64 pid = WorkerPool::shared().workerPids().first();
        const QString png = ImageFixtures::imageFile(m_tree.at(QStringLiteral("idle.png")), ImageFixtures::picture(5, 5));
        QVERIFY(WorkerPool::shared().call(QString(WorkerJobs::kProbe), {{WorkerJobs::kSource, WorkerProtocol::path(png)}}).ok());
        QCOMPARE(WorkerPool::shared().workerPids(), QList<qint64>{pid});
        QVERIFY(processExists(pid));
        QTRY_COMPARE_WITH_TIMEOUT(WorkerPool::shared().liveWorkers(), 0, 8000);
        // Closed and reaped: no process, not even a zombie (it is given a second to leave on its own).
        QTRY_VERIFY_WITH_TIMEOUT(!processExists(pid), 3000);
        // A worker that says bye on its own (its idle time is shorter than the program's) is replaced and
        // the request goes to the new one.
        WorkerPool pool({kRealWorker, {.idleSeconds = -4}, 1}); // the worker's own idle time is this plus five seconds: one
        const QString left = ImageFixtures::imageFile(m_tree.at(QStringLiteral("left.png")), ImageFixtures::picture(6, 4));
        const QCborMap args{{WorkerJobs::kSource, WorkerProtocol::path(left)}};
        QVERIFY(pool.call(QString(WorkerJobs::kProbe), args).ok());
        QTest::qWait(1600);
        const auto again = pool.call(QString(WorkerJobs::kProbe), args);
        QVERIFY2(again.ok(), qPrintable(again.ok() ? QString() : again.error().message));
        QCOMPARE(again.value().value(WorkerJobs::kHeight).toInteger(), 4);
    }
    void aMissingWorkerIsToldAtTheFirstImageAction_data()
    {
        QTest::addColumn<bool>("exists");
        QTest::addColumn<QString>("reason");
        QTest::newRow("missing") << false << QStringLiteral("No such file or directory");
        QTest::newRow("not executable") << true << QStringLiteral("Permission denied");
    }
    void aMissingWorkerIsToldAtTheFirstImageAction()
    {
        QFETCH(bool, exists);
        QFETCH(QString, reason);
        const QString program = m_tree.at(QStringLiteral("no-worker"));
        QFile::remove(program);
        if (exists)
            QVERIFY(ImageFixtures::write(program, "#!/bin/false\n")); // mode 0644: not executable
        useWorker(program);
        TestTree tree;
        const QString png = ImageFixtures::imageFile(tree.at(QStringLiteral("p.png")), ImageFixtures::picture(20, 20));
        ResizeJob job({{png, "10", "10", tree.at(QStringLiteral("p_10x10.png")), {}}});
        runToEnd(job);
        QCOMPARE(job.failures().size(), 1);
        const QString message = job.failures().first().message;
        QVERIFY2(message.contains(QStringLiteral("the image worker cannot be started")) && message.contains(reason), qPrintable(message));
        QVERIFY(ImageFixtures::leftovers(tree.path()).isEmpty());
    }
    // Damaged files fail every time the decoder streams them (ten runs, converted and resized);
    // hostile ones fail once. Either way nothing is left behind, and the worker is in order afterwards.
    void badFilesFailCleanly_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("runs");
        QTest::addColumn<QString>("expected"); // in the failure; empty with one run: the item may also be written
        // Large enough that the decoder streams it in many strips across its threads.
        const QImage big = ImageFixtures::picture(1600, 1200);
        const QByteArray png = ImageFixtures::encoded(big, "png");
        const QByteArray jpeg = ImageFixtures::encoded(big, "jpeg");
        QTest::newRow("PNG cut in half") << png.left(png.size() / 2) << "cut.png" << 10 << QString();
        QTest::newRow("PNG with damaged data") << ImageFixtures::damagedPng(big) << "damaged.png" << 10 << QString();
        QByteArray late = png;
        for (qsizetype i = late.size() * 3 / 4; i < late.size() * 3 / 4 + 64; ++i)
            late[i] = char(late[i] ^ 0x5A);
        QTest::newRow("PNG damaged near its end") << late << "late.png" << 10 << QString();
        QTest::newRow("JPEG cut in half") << jpeg.left(jpeg.size() / 2) << "cut.jpg" << 10 << QString();
        VipsSupport::ensureStarted();
        const auto v = VipsSupport::fromQImage(big);
        const QByteArray jp2 = VipsSupport::takeBlob(v.value().jp2ksave_buffer());
        QTest::newRow("JPEG 2000 cut in half") << jp2.left(jp2.size() / 2) << "cut.jp2" << 10 << QString();
        QTest::newRow("PNG header of 65,535 x 65,535") << ImageFixtures::pngClaiming(65535, 65535) << "claims.png" << 1
                                                      << "too large (65535 x 65535 pixels";
        QTest::newRow("PDF with a 10,000-deep page tree") << ImageFixtures::pdfWithDeepPageTree(10000) << "deep.pdf" << 1
                                                          << QString();
        // The largest page a PDF may have: 200,000 pixels square at 1000 dpi.
        const QString poster = m_tree.at(QStringLiteral("poster-source.pdf"));
        QVERIFY(ImageFixtures::pdfWithPages(poster, {QSizeF(14400, 14400)}));
        QTest::newRow("PDF page too large at 1000 dpi") << TestTree::contents(poster) << "poster.pdf" << 1 << "too large";
    }
    void badFilesFailCleanly()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, name);
        QFETCH(int, runs);
        QFETCH(QString, expected);
        TestTree tree;
        const QString path = tree.path() + QChar('/') + name;
        QVERIFY(ImageFixtures::write(path, content));
        for (int run = 0; run < runs; ++run) {
            std::unique_ptr<ImageBatchJob> job;
            if (name.endsWith(QLatin1String(".pdf")))
                job = std::make_unique<PdfToImagesJob>(PdfToImagesJob::Request{path, {}, tree.path(), 1, 1000.0f});
            else
                job = std::make_unique<ConvertJob>(toJpeg({path}, tree.path()));
            runToEnd(*job, 120000);
            if (job->failures().isEmpty()) {
                QVERIFY2(expected.isEmpty() && runs == 1, "a file that should fail was written");
                QCOMPARE(job->written().size(), 1);
                break;
            }
            QCOMPARE(job->failures().size(), 1);
            const QString message = job->failures().first().message;
            QVERIFY2(message.startsWith(path + QStringLiteral(": ")) && message.contains(expected),
                     qPrintable(QStringLiteral("run %1: %2").arg(run).arg(message)));
            QVERIFY(job->written().isEmpty());
            if (runs > 1) {
                ResizeJob resize({{path, "160", "120", tree.at(QStringLiteral("small.png")), {}}});
                runToEnd(resize);
                QVERIFY2(resize.written().isEmpty() && resize.failures().value(0).message.startsWith(path + QStringLiteral(": ")),
                         qPrintable(QStringLiteral("run %1").arg(run)));
            }
            // No output, no temporary, no empty folder.
            QCOMPARE(QDir(tree.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), QStringList{name});
        }
        const QString fine = ImageFixtures::imageFile(tree.at(QStringLiteral("fine.png")), ImageFixtures::picture(20, 20));
        ConvertJob next(toJpeg({fine}, tree.path()));
        runToEnd(next);
        QCOMPARE(next.written().size(), 1);
    }

private:
    static void useWorker(const QString &program, WorkerLimits limits = {})
    {
        WorkerPool::shared().closeIdle();
        WorkerPool::shared().configure({program, limits, 0});
    }
    TestTree m_tree;
};

QTEST_MAIN(WorkerTest)
#include "tst_worker.moc"

// Resizing: the overlay's arithmetic, the batch rules and names, and real resizes of real files with
// the resolution, encoder and exact size they must keep, and damaged files that must not stop a batch.

#include "ImageFixtures.h"
#include "TestTree.h"

#include "images/ImageTypeCode.h"
#include "images/ResizePlan.h"
#include "images/jobs/PixelBudget.h"
#include "images/jobs/ResizeJob.h"
#include "utils/Utils.h"

#include <QDir>
#include <QImageReader>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTest>

#include <optional>
#include <thread>

namespace {

QSizeF headerSize(const QString &path) { return Utils::getImageDimensionsAtPathInSize(path); }

std::unique_ptr<ResizeJob> runResize(const QList<ResizePlan::Task> &tasks)
{
    return ImageFixtures::ranToEnd(std::make_unique<ResizeJob>(tasks));
}

} // namespace

class ResizeTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }
    void proportionalSide_data()
    {
        QTest::addColumn<float>("oldSide");
        QTest::addColumn<float>("oldOther");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("other");
        QTest::newRow("333 of 1000x750 truncates 249.75") << 1000.0f << 750.0f << "333" << "249";
        QTest::newRow("height side") << 750.0f << 1000.0f << "375" << "500";
        QTest::newRow("emptied field") << 1000.0f << 750.0f << "" << "";
        QTest::newRow("not a number") << 1000.0f << 750.0f << "abc" << "0";
        QTest::newRow("unknown old size") << 0.0f << 0.0f << "10" << "0";
    }
    void proportionalSide()
    {
        QFETCH(float, oldSide);
        QFETCH(float, oldOther);
        QFETCH(QString, typed);
        QFETCH(QString, other);
        QCOMPARE(ResizePlan::proportional(oldSide, oldOther, typed), other);
    }
    void arrowKeys_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("up");   // "-" when the key does nothing
        QTest::addColumn<QString>("down");
        QTest::newRow("9") << "9" << "10" << "8";
        QTest::newRow("five characters: up does nothing") << "12345" << "-" << "12344";
        QTest::newRow("down stops at 1") << "1" << "2" << "-";
        QTest::newRow("empty") << "" << "1" << "-1";
        QTest::newRow("0") << "0" << "1" << "-1";
        QTest::newRow("fraction truncates") << "12.7" << "13" << "11";
    }
    void arrowKeys()
    {
        QFETCH(QString, text);
        QFETCH(QString, up);
        QFETCH(QString, down);
        QCOMPARE(ResizePlan::steppedUp(text).value_or(QStringLiteral("-")), up);
        QCOMPARE(ResizePlan::steppedDown(text).value_or(QStringLiteral("-")), down);
    }
    void outputNames_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<QString>("width");
        QTest::addColumn<QString>("height");
        QTest::addColumn<QString>("name");
        QTest::newRow("extension as it stands") << "photo.JPG" << "640" << "480" << "photo_640x480.JPG";
        QTest::newRow("values as typed") << "a.png" << "0640" << " 48" << "a_0640x 48.png";
        QTest::newRow("no extension") << "scan" << "10" << "20" << "scan_10x20";
        QTest::newRow("dots in the name") << "v1.2.tiff" << "1" << "2" << "v1.2_1x2.tiff";
    }
    void outputNames()
    {
        QFETCH(QString, source);
        QFETCH(QString, width);
        QFETCH(QString, height);
        QFETCH(QString, name);
        QCOMPARE(ResizePlan::outputName(source, width, height), name);
    }
    // Several images get one output per field; one image takes both values as given.
    void plans()
    {
        const QHash<QString, QSizeF> sizes{{"/p/wide.png", QSizeF(1000, 500)}, {"/p/tall.png", QSizeF(500, 1000)}};
        auto sizeOf = [&](const QString &p) { return sizes.value(p); };
        const QStringList images{"/p/wide.png", "/p/tall.png", "/p/gone.png"};
        auto tasks = ResizePlan::plan(images, true, "100", "", "/p/wide.png", "/out", sizeOf);
        QCOMPARE(tasks.size(), 3);
        QCOMPARE(tasks[0].output, QStringLiteral("/out/wide_100x50.png"));
        QCOMPARE(tasks[1].output, QStringLiteral("/out/tall_100x200.png"));
        QVERIFY(!tasks[2].problem.isEmpty()); // an unreadable size is a failure of its own, not a division by zero

        // Both fields filled: one output fitted to each, never the pair together.
        tasks = ResizePlan::plan(images.mid(0, 2), true, "100", "300", "/p/wide.png", "/out", sizeOf);
        QStringList names;
        for (const auto &t : tasks)
            names << t.output.mid(5);
        QCOMPARE(names, QStringList({"wide_100x50.png", "wide_600x300.png", "tall_100x200.png", "tall_150x300.png"}));
        // One image takes both values as given.
        tasks = ResizePlan::plan({"/p/x.png"}, false, "640", "", "/p/first.jpg", "/out", [](const QString &) { return QSizeF(10, 10); });
        QCOMPARE(tasks.size(), 1);
        QCOMPARE(tasks[0].source, QStringLiteral("/p/first.jpg"));
        QCOMPARE(tasks[0].height, QString());
        // The empty list of several images also falls back to the first dropped path.
        tasks = ResizePlan::plan({}, true, "1", "2", "/p/first.jpg", "/out", [](const QString &) { return QSizeF(); });
        QCOMPARE(tasks.size(), 1);
        // With an empty side nothing is written, and it says why.
        const auto result = ResizeJob::resizeOneImg({"/p/first.jpg", "640", "", "/out/x", {}});
        QVERIFY(!result.ok());
        QVERIFY(result.error().message.contains(QStringLiteral("width and a height")));
    }
    // Each encoder and resolution kept, and exactly the size asked for.
    void resizeKeepsResolutionAndEncoder_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("name");
        QTest::addColumn<double>("dpi");
        QTest::addColumn<QByteArray>("magic"); // the output's first bytes
        QTest::addColumn<QSize>("target");     // empty: half the source
        QTest::addColumn<bool>("earlierOutput"); // a file of the output's name from an earlier run, replaced
        const QImage pic = ImageFixtures::picture(400, 300);
        const QByteArray png = "\x89PNG";
        QTest::newRow("PNG at 300 dpi") << ImageFixtures::encoded(pic, "png", 300) << "a.png" << 300.0 << png << QSize() << false;
        QTest::newRow("JPEG at 150 dpi") << ImageFixtures::encoded(pic, "jpeg", 150) << "b.jpg" << 150.0 << QByteArray("\xFF\xD8") << QSize() << false;
        QTest::newRow("a JPEG named .png stays JPEG") << ImageFixtures::encoded(pic, "jpeg", 72) << "c.png" << 72.0
                                                      << QByteArray("\xFF\xD8") << QSize() << false;
        QTest::newRow("BMP") << ImageFixtures::encoded(pic, "bmp", 96) << "d.bmp" << 96.0 << QByteArray("BM") << QSize() << false;
        QTest::newRow("TIFF") << ImageFixtures::encoded(pic, "tiff", 200) << "e.tif" << 200.0 << QByteArray("II") << QSize() << false;
        QTest::newRow("GIF: a still of the first frame") << ImageFixtures::animatedGif({100, 200}) << "f.gif" << 72.0
                                                         << QByteArray("GIF8") << QSize() << false;
        QTest::newRow("Photoshop, which cannot be written, comes out PNG") << ImageFixtures::psd(pic) << "g.psd" << 72.0
                                                                           << png << QSize() << false;
        QTest::newRow("odd shrink") << ImageFixtures::encoded(ImageFixtures::picture(333, 250), "png") << "s.png" << 72.0 << png
                                    << QSize(100, 77) << false;
        QTest::newRow("stretch one axis") << ImageFixtures::encoded(ImageFixtures::picture(64, 64), "png") << "s.png" << 72.0
                                          << png << QSize(200, 13) << false;
        QTest::newRow("1 x 1 grows") << ImageFixtures::encoded(ImageFixtures::picture(1, 1), "png") << "s.png" << 72.0 << png
                                     << QSize(3, 3) << false;
        QTest::newRow("down to 1 x 1") << ImageFixtures::encoded(ImageFixtures::picture(120, 80), "png") << "s.png" << 72.0
                                       << png << QSize(1, 1) << false;
        QTest::newRow("over an earlier output") << ImageFixtures::encoded(ImageFixtures::picture(50, 50), "png") << "s.png"
                                                << 72.0 << png << QSize(20, 20) << true;
    }
    void resizeKeepsResolutionAndEncoder()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, name);
        QFETCH(double, dpi);
        QFETCH(QByteArray, magic);
        QFETCH(QSize, target);
        QFETCH(bool, earlierOutput);
        TestTree tree;
        const QString source = tree.path() + QChar('/') + name;
        QVERIFY(ImageFixtures::write(source, content));
        const QSizeF size = headerSize(source);
        QVERIFY(!size.isEmpty());
        const QString width = QString::number(target.isEmpty() ? int(size.width() / 2) : target.width());
        const QString height = QString::number(target.isEmpty() ? int(size.height() / 2) : target.height());
        const auto tasks = ResizePlan::plan({source}, false, width, height, source, tree.path(), headerSize);
        if (earlierOutput)
            QVERIFY(ImageFixtures::write(tasks[0].output, "an earlier run"));
        const auto job = runResize(tasks);
        QCOMPARE(job->failures().size(), 0);
        QCOMPARE(job->written(), QStringList{tasks[0].output});
        QVERIFY2(TestTree::contents(tasks[0].output).startsWith(magic), qPrintable(tasks[0].output));
        QCOMPARE(headerSize(tasks[0].output), QSizeF(width.toInt(), height.toInt()));
        // The resolution survives: the point size shrank with the pixels.
        auto loaded = VipsSupport::load(tasks[0].output);
        QVERIFY(loaded.ok());
        QCOMPARE(VipsSupport::dotsPerInch(loaded.value()), dpi);
        QCOMPARE(QFile(source).size(), content.size()); // the source is never touched
        QVERIFY(ImageFixtures::leftovers(tree.path()).isEmpty());
    }
    void resamplingIsOneLanczosPass()
    {
        // Against the library's Lanczos-3 reduce on the same pixels, called on its own: within 1 unit RMS.
        TestTree tree;
        const QString path = tree.at(QStringLiteral("ref.png"));
        const QImage pic = ImageFixtures::picture(640, 480);
        QVERIFY(ImageFixtures::write(path, ImageFixtures::encoded(pic, "png")));
        const auto job = runResize(ResizePlan::plan({path}, false, "250", "150", path, tree.path(), headerSize));
        QCOMPARE(job->written().size(), 1);
        auto ours = VipsSupport::load(job->written().first(), VipsSupport::Access::Random);
        QVERIFY(ours.ok());
        auto src = VipsSupport::load(path, VipsSupport::Access::Random);
        vips::VImage reference = src.value().reduceh(640.0 / 250, vips::VImage::option()->set("kernel", VIPS_KERNEL_LANCZOS3))
                                     .reducev(480.0 / 150, vips::VImage::option()->set("kernel", VIPS_KERNEL_LANCZOS3));
        QCOMPARE(reference.width(), 250);
        QCOMPARE(reference.height(), 150);
        const double rms = std::sqrt((ours.value().cast(VIPS_FORMAT_FLOAT) - reference.cast(VIPS_FORMAT_FLOAT)).pow(2).avg());
        QVERIFY2(rms <= 1.0, qPrintable(QString::number(rms)));
        // A box average would be further off than that.
        vips::VImage box = src.value().resize(250.0 / 640, vips::VImage::option()->set("kernel", VIPS_KERNEL_NEAREST)
                                                               ->set("vscale", 150.0 / 480));
        QVERIFY((ours.value().cast(VIPS_FORMAT_FLOAT) - box.cast(VIPS_FORMAT_FLOAT)).abs().avg() > 1.0);
    }
    void badInputFailsAloneAndLeavesNothing_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("name");
        const QImage pic = ImageFixtures::picture(300, 200);
        const QByteArray tiff = ImageFixtures::encoded(pic, "tiff");
        QTest::newRow("truncated TIFF") << tiff.left(tiff.size() / 2) << "t.tiff";
        QTest::newRow("zero bytes") << QByteArray() << "z.png";
        QTest::newRow("random bytes") << QByteArray(4096, '\x5A') << "r.jpg";
        QTest::newRow("a header claiming 100000 x 100000") << ImageFixtures::pngClaiming(100000, 100000) << "huge.png";
    }
    void badInputFailsAloneAndLeavesNothing()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, name);
        TestTree tree;
        const QString bad = tree.path() + QChar('/') + name;
        const QString good = tree.at(QStringLiteral("good.png"));
        QVERIFY(ImageFixtures::write(bad, content));
        QVERIFY(ImageFixtures::write(good, ImageFixtures::encoded(ImageFixtures::picture(40, 40), "png")));
        // The bad file's size is claimed here, so that the job itself meets the damage.
        const QList<ResizePlan::Task> tasks{
            {bad, "20", "20", tree.at(QStringLiteral("bad_20x20.out")), {}},
            {good, "20", "20", tree.at(QStringLiteral("good_20x20.png")), {}}};
        const auto job = runResize(tasks);
        QCOMPARE(job->failures().size(), 1);
        QVERIFY(job->failures().first().message.contains(name));
        QCOMPARE(job->written(), QStringList{tasks[1].output});
        QVERIFY(!QFile::exists(tasks[0].output));
        QVERIFY(ImageFixtures::leftovers(tree.path()).isEmpty());
        if (name == u"huge.png")
            QVERIFY(job->failures().first().message.contains(QStringLiteral("too large")));
    }
    void anUnwritableFolderLeavesTheSourceAlone()
    {
        if (::geteuid() == 0)
            QSKIP("root writes into any folder");
        TestTree tree;
        const QString source = tree.at(QStringLiteral("keep.png"));
        const QByteArray bytes = ImageFixtures::encoded(ImageFixtures::picture(30, 30), "png");
        QVERIFY(ImageFixtures::write(source, bytes));
        const QString locked = QString::fromUtf8(tree.folder("locked"));
        QFile::setPermissions(locked, QFileDevice::ReadOwner | QFileDevice::ExeOwner);
        const auto job = runResize(ResizePlan::plan({source}, false, "10", "10", source, locked, headerSize));
        QCOMPARE(job->failures().size(), 1);
        QVERIFY(job->written().isEmpty());
        QCOMPARE(TestTree::contents(source), bytes);
    }
    void progressAndFinishAreCounted()
    {
        TestTree tree;
        QStringList images;
        for (int i = 0; i < 3; ++i) {
            images << tree.at(QStringLiteral("p%1.png")).arg(i);
            QVERIFY(ImageFixtures::write(images.last(), ImageFixtures::encoded(ImageFixtures::picture(60, 30), "png")));
        }
        ResizeJob job(ResizePlan::plan(images, true, "30", "", images.first(), tree.path(), headerSize));
        QSignalSpy progress(&job, &ImageBatchJob::progress);
        QSignalSpy finished(&job, &ImageBatchJob::finished);
        job.start();
        QVERIFY(finished.wait(20000));
        QTest::qWait(50);
        QCOMPARE(finished.count(), 1);
        QCOMPARE(job.percent(), 100);
        QCOMPARE(progress.size(), 4); // one per image, then done
        QCOMPARE(progress.last().at(0).toInt(), 3);
        QCOMPARE(job.written().size(), 3);
    }
    void outputsOfOneNameAreWrittenInPlanOrder()
    {
        // Two images of one name in two folders, resized into one: the large one is planned first and
        // takes longest, so a writer that did not keep the plan's order would leave its output last.
        TestTree tree;
        tree.folder("a");
        tree.folder("b");
        QImage small(40, 40, QImage::Format_RGB32);
        small.fill(Qt::blue);
        const QString large = tree.at(QStringLiteral("a/x.png")), later = tree.at(QStringLiteral("b/x.png"));
        QVERIFY(ImageFixtures::write(large, ImageFixtures::encoded(ImageFixtures::picture(3000, 3000), "png")));
        QVERIFY(ImageFixtures::write(later, ImageFixtures::encoded(small, "png")));
        const QString output = tree.at(QStringLiteral("x_20x20.png"));
        const auto job = runResize({{large, "20", "20", output, {}}, {later, "20", "20", output, {}}});
        QCOMPARE(job->written(), QStringList({output, output}));
        QCOMPARE(QImage(output).pixelColor(10, 10), QColor(Qt::blue));
    }
    void decodedPixelsStayWithinTheBudget()
    {
        PixelBudget budget(100);
        std::optional<PixelBudget::Hold> first(budget.hold(60));
        QVERIFY(first->held());
        // A second item that does not fit waits until the first lets go.
        std::atomic<bool> second{false};
        std::thread waiter([&] {
            const PixelBudget::Hold h = budget.hold(50);
            second = h.held();
        });
        QTest::qWait(150);
        QVERIFY(!second);
        QCOMPARE(budget.inUse(), 60);
        first.reset();
        waiter.join();
        QVERIFY(second);
        QCOMPARE(budget.inUse(), 0);
        // Alone, an item larger than the whole budget runs; beside another it gives up when told to stop.
        const PixelBudget::Hold big = budget.hold(500);
        QVERIFY(big.held());
        QElapsedTimer clock;
        clock.start();
        QVERIFY(!budget.hold(10, [&] { return clock.elapsed() > 100; }).held());
        QCOMPARE(budget.inUse(), 500);
    }
};

QTEST_MAIN(ResizeTest)
#include "tst_resize.moc"

// The image jobs. Resizing: the overlay's arithmetic, the batch rules and names, and real resizes of
// real files with the resolution, encoder and exact size they must keep. Converting and compressing:
// the slider's arithmetic, the encoders behind each type, the lossless PNG rewrite, free names that
// never replace a file. Damaged files in a batch fail alone.

#include "ConvertRequest.h"
#include "ImageFixtures.h"
#include "TestTree.h"

#include "images/ImageTypeCode.h"
#include "images/ResizePlan.h"
#include "images/codecs/PngRecompress.h"
#include "images/jobs/ConvertJob.h"
#include "images/jobs/PixelBudget.h"
#include "images/jobs/ResizeJob.h"
#include "utils/Utils.h"

#include <QDir>
#include <QImageReader>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTest>
#include <QtEndian>

#include <optional>
#include <thread>

namespace {

QSizeF headerSize(const QString &path) { return Utils::getImageDimensionsAtPathInSize(path); }

std::unique_ptr<ResizeJob> runResize(const QList<ResizePlan::Task> &tasks)
{
    return ImageFixtures::ranToEnd(std::make_unique<ResizeJob>(tasks));
}

std::unique_ptr<ConvertJob> runConvert(const ConvertJob::Request &request, quint64 *credited = nullptr)
{
    auto job = std::make_unique<ConvertJob>(request);
    if (credited)
        job->credit = [credited](quint64 s) { *credited += s; };
    return ImageFixtures::ranToEnd(std::move(job));
}

// The value of TIFF tag `tag` in the first directory of a little-endian TIFF, or -1.
int tiffTag(const QByteArray &tiff, quint16 tag)
{
    if (!tiff.startsWith("II"))
        return -1;
    const auto *d = reinterpret_cast<const uchar *>(tiff.constData());
    const quint32 ifd = qFromLittleEndian<quint32>(d + 4);
    const quint16 count = qFromLittleEndian<quint16>(d + ifd);
    for (quint16 i = 0; i < count; ++i) {
        const uchar *entry = d + ifd + 2 + 12 * i;
        if (qFromLittleEndian<quint16>(entry) == tag)
            return qFromLittleEndian<quint16>(entry + 8);
    }
    return -1;
}

} // namespace

class ImageJobsTest : public QObject
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
        const auto emptySide = runResize({{"/p/first.jpg", "640", "", "/out/x", {}}});
        QVERIFY(emptySide->failures().value(0).message.contains(QStringLiteral("width and a height")));
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
    void sliderSnapsAndGivesAFactor_data()
    {
        QTest::addColumn<float>("slider");
        QTest::addColumn<float>("snapped");
        QTest::addColumn<float>("factor");
        QTest::newRow("37 snaps to 35") << 37.0f << 35.0f << 0.65f;
        QTest::newRow("0 is the best") << 0.0f << 0.0f << 1.0f;
        QTest::newRow("100 is the smallest") << 100.0f << 100.0f << 0.0f;
        QTest::newRow("2 snaps down") << 2.0f << 0.0f << 1.0f;
        QTest::newRow("3 snaps up") << 3.0f << 5.0f << 0.95f;
        QTest::newRow("98 snaps to 100") << 98.0f << 100.0f << 0.0f;
    }
    void sliderSnapsAndGivesAFactor()
    {
        QFETCH(float, slider);
        QFETCH(float, snapped);
        QFETCH(float, factor);
        QCOMPARE(ConvertJob::snappedSliderValue(slider), snapped);
        QCOMPARE(ConvertJob::factorForSlider(slider), factor);
        QCOMPARE(ConvertJob::snappedSliderValue(slider, 0.0f), snapped); // a step of 0 means 5
    }
    // Each tag's type and its encoder, from a PNG with a transparent edge: TIFF is LZW, JPEG lies on
    // white and its quality follows the factor. JPEG 2000 has no tag: the command line names its type.
    void encodersOfTheTypes_data()
    {
        QTest::addColumn<qint64>("tag");
        QTest::addColumn<QByteArray>("magic");
        QTest::newRow("4: TIFF") << qint64(4) << QByteArray("II*");
        QTest::newRow("3: BMP") << qint64(3) << QByteArray("BM");
        QTest::newRow("2: JPEG") << qint64(2) << QByteArray("\xFF\xD8\xFF");
        QTest::newRow("JPEG 2000") << qint64(0) << QByteArray("\0\0\0\x0CjP", 6);
    }
    void encodersOfTheTypes()
    {
        QFETCH(qint64, tag);
        QFETCH(QByteArray, magic);
        TestTree tree;
        const QString source = ImageFixtures::imageFile(tree.at(QStringLiteral("edge.png")), ImageFixtures::picture(200, 150, true));
        auto converted = [&](float factor) {
            ConvertJob::Request r = convertRequest({source}, tree.path(), tag, factor);
            if (!tag)
                r.imageType = ImageTypeCode::JPEG2000;
            const auto job = runConvert(r);
            return TestTree::contents(job->written().value(0));
        };
        const QByteArray data = converted(1.0f);
        QVERIFY2(data.startsWith(magic), data.left(8).toHex().constData());
        if (tag == 4)
            QCOMPARE(tiffTag(data, 259), 5); // LZW
        if (tag == 2) {
            QVERIFY(qGray(QImage::fromData(data).pixel(0, 75)) > 200); // the transparent left edge on white
            QVERIFY(converted(0.1f).size() * 2 < data.size());
        }
    }
    void pngToPngIsALosslessRewrite()
    {
        TestTree tree;
        const QString source = tree.at(QStringLiteral("a.png"));
        const QImage pic = ImageFixtures::picture(120, 80, true);
        QVERIFY(ImageFixtures::write(source, ImageFixtures::pngWithPrivateChunk(pic)));
        QByteArray first;
        for (float factor : {1.0f, 0.35f, 0.0f}) {
            const auto job = runConvert(convertRequest({source}, tree.path(), 1, factor));
            QCOMPARE(job->written().size(), 1);
            const QByteArray bytes = TestTree::contents(job->written().first());
            // Whatever the slider says, the same bytes: level 9, every chunk of the source kept.
            if (first.isEmpty())
                first = bytes;
            QCOMPARE(bytes, first);
        }
        QVERIFY(first.contains("prVt"));
        QCOMPARE(QImage::fromData(first).convertToFormat(QImage::Format_ARGB32), pic.convertToFormat(QImage::Format_ARGB32));
        QCOMPARE(first, PngRecompress::recompress(source, 1.0f).value());
        // An upper-case .PNG goes through the encoder: a fresh encoding, not the rewrite.
        const QString upper = tree.at(QStringLiteral("b.PNG"));
        QVERIFY(ImageFixtures::write(upper, ImageFixtures::pngWithPrivateChunk(ImageFixtures::picture(30, 30))));
        QCOMPARE(runConvert(convertRequest({upper}, tree.path(), 1))->written(), QStringList{tree.at(QStringLiteral("b.png"))});
        const QByteArray out = TestTree::contents(tree.at(QStringLiteral("b.png")));
        QVERIFY(out.startsWith("\x89PNG"));
        QVERIFY(!out.contains("prVt"));
    }
    void outputsTakeFreeNames()
    {
        TestTree tree;
        const QString source = tree.at(QStringLiteral("c.jpg"));
        const QByteArray jpeg = ImageFixtures::encoded(ImageFixtures::picture(50, 40), "jpeg");
        QVERIFY(ImageFixtures::write(source, jpeg));
        QVERIFY(ImageFixtures::write(tree.at(QStringLiteral("c 1.jpg")), "taken"));
        const auto job = runConvert(convertRequest({source}, tree.path(), 2));
        QCOMPARE(job->written(), QStringList{tree.at(QStringLiteral("c 2.jpg"))});
        QCOMPARE(TestTree::contents(source), jpeg);
        QCOMPARE(TestTree::contents(tree.at(QStringLiteral("c 1.jpg"))), QByteArray("taken"));
        // A type that can be read but not written converts like any other.
        const QString layers = tree.at(QStringLiteral("layers.psd"));
        QVERIFY(ImageFixtures::write(layers, ImageFixtures::psd(ImageFixtures::picture(64, 48))));
        const auto psd = runConvert(convertRequest({layers}, tree.path(), 2));
        QCOMPARE(psd->written(), QStringList{tree.at(QStringLiteral("layers.jpg"))});
        QCOMPARE(Utils::getImageDimensionsAsStringImgPath(psd->written().first()), QStringLiteral("64x48"));
        QCOMPARE(Utils::getImageFileTypeFromPath(psd->written().first()), ImageTypeCode::JPEG);
    }
    void eachImageIsCredited()
    {
        TestTree tree;
        QStringList images;
        for (int i = 0; i < 3; ++i) {
            images << tree.at(QStringLiteral("i%1.bmp")).arg(i);
            QVERIFY(ImageFixtures::write(images.last(), ImageFixtures::encoded(ImageFixtures::picture(10, 10), "bmp")));
        }
        images << tree.at(QStringLiteral("missing.bmp")); // credited before it fails
        quint64 credited = 0;
        const auto job = runConvert(convertRequest(images, tree.path(), 4), &credited);
        QCOMPARE(credited, quint64(120));
        QCOMPARE(job->written().size(), 3);
        QCOMPARE(job->failures().size(), 1);
        for (const QString &out : job->written())
            QVERIFY(out.endsWith(QLatin1String(".tiff")));
    }
    // A damaged file among good ones fails alone, naming itself, and leaves nothing behind.
    void damagedFilesFailAlone_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("name");
        QTest::addColumn<qint64>("tag"); // converted with this tag; 0: resized
        const QImage pic = ImageFixtures::picture(200, 100);
        const QByteArray png = ImageFixtures::encoded(pic, "png");
        const QByteArray jpeg = ImageFixtures::encoded(pic, "jpeg");
        const QByteArray tiff = ImageFixtures::encoded(pic, "tiff");
        // libpng meets these in the lossless rewrite; its errors must not end the process.
        QTest::newRow("PNG with damaged data to PNG") << ImageFixtures::damagedPng(pic) << "d.png" << qint64(1);
        QTest::newRow("truncated PNG to PNG") << png.left(png.size() / 2) << "t.png" << qint64(1);
        QTest::newRow("PNG signature only") << png.left(8) << "s.png" << qint64(1);
        QTest::newRow("truncated JPEG to TIFF") << jpeg.left(jpeg.size() / 2) << "t.jpg" << qint64(4);
        QTest::newRow("zero bytes to BMP") << QByteArray() << "z.gif" << qint64(3);
        QTest::newRow("random bytes to JPEG") << QByteArray(3000, '\x7F') << "r.tif" << qint64(2);
        QTest::newRow("truncated TIFF resized") << tiff.left(tiff.size() / 2) << "t.tiff" << qint64(0);
        QTest::newRow("zero bytes resized") << QByteArray() << "z.png" << qint64(0);
        QTest::newRow("random bytes resized") << QByteArray(4096, '\x5A') << "r.jpg" << qint64(0);
        QTest::newRow("huge header resized") << ImageFixtures::pngClaiming(100000, 100000) << "huge.png" << qint64(0);
    }
    void damagedFilesFailAlone()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, name);
        QFETCH(qint64, tag);
        TestTree tree;
        const QString bad = tree.path() + QChar('/') + name;
        const QString good = ImageFixtures::imageFile(tree.at(QStringLiteral("fine.png")), ImageFixtures::picture(40, 40));
        QVERIFY(ImageFixtures::write(bad, content));
        // A resize of the bad file is planned with a size, so that the job itself meets the damage.
        std::unique_ptr<ImageBatchJob> job;
        if (tag)
            job = runConvert(convertRequest({bad, good}, tree.path(), tag));
        else
            job = runResize({{bad, "20", "20", tree.at(QStringLiteral("bad_20x20.out")), {}},
                             {good, "20", "20", tree.at(QStringLiteral("fine_20x20.png")), {}}});
        QCOMPARE(job->failures().size(), 1);
        QVERIFY(job->failures().first().message.contains(name));
        if (name == u"huge.png")
            QVERIFY(job->failures().first().message.contains(QStringLiteral("too large")));
        QCOMPARE(job->written().size(), 1);
        QVERIFY(job->written().first().contains(QStringLiteral("/fine")));
        QCOMPARE(QDir(tree.path()).entryList(QDir::Files | QDir::Hidden).size(), 3); // bad, good, one output
    }
    void composition()
    {
        QImage red(4, 4, QImage::Format_ARGB32);
        red.fill(Qt::red);
        QImage blue(2, 2, QImage::Format_ARGB32);
        blue.fill(Qt::blue);
        const BitmapImageRep both = Utils::combineBgIm({red, QSizeF(4, 4)}, {blue, QSizeF(2, 2)});
        QCOMPARE(both.pixels.size(), QSize(4, 4));
        QCOMPARE(both.size, QSizeF(4, 4));
        // The two share the bottom-left corner.
        QCOMPARE(QColor(both.pixels.pixel(0, 3)), QColor(Qt::blue));
        QCOMPARE(QColor(both.pixels.pixel(0, 0)), QColor(Qt::red));
        QCOMPARE(QColor(both.pixels.pixel(3, 3)), QColor(Qt::red));
        QVERIFY(!Utils::combineBgIm({}, {blue, QSizeF(2, 2)}).isValid());
    }
};

QTEST_MAIN(ImageJobsTest)
#include "tst_imagejobs.moc"

// Converting and compressing: the slider's arithmetic, the encoders behind each type, the lossless
// PNG rewrite, free names that never replace a file, damaged files in a batch, and the CgBI writer's
// bytes.

#include "ImageFixtures.h"
#include "TestTree.h"

#include "images/ImageTypeCode.h"
#include "images/OptimizedPng.h"
#include "images/codecs/PngRecompress.h"
#include "images/jobs/ConvertJob.h"
#include "utils/Utils.h"

#include <QSignalSpy>
#include <QStandardPaths>
#include <QTest>
#include <QtEndian>

#include <zlib.h>

namespace {

std::unique_ptr<ConvertJob> runConvert(const ConvertJob::Request &request, quint64 *credited = nullptr)
{
    auto job = std::make_unique<ConvertJob>(request);
    if (credited)
        job->credit = [credited](quint64 s) { *credited += s; };
    return ImageFixtures::ranToEnd(std::move(job));
}

ConvertJob::Request requestFor(const QStringList &paths, const QString &folder, qint64 tag, float factor = 1.0f)
{
    ConvertJob::Request r;
    r.paths = paths;
    r.multiFiles = true;
    r.folder = folder;
    r.srcImgPath = paths.value(0);
    r.tag = tag;
    r.factor = factor;
    return r;
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

class ConvertTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }
    void sliderSnapsAndGivesAFactor_data();
    void sliderSnapsAndGivesAFactor();
    void tagsNameEncoders_data();
    void tagsNameEncoders();
    void encodersOfTheTable_data();
    void encodersOfTheTable();
    void jpegQualityFollowsTheFactor();
    void pngToPngIsALosslessRewrite();
    void outputsTakeFreeNames();
    void eachImageIsCredited();
    void damagedFilesFailAlone_data();
    void damagedFilesFailAlone();
    void filteredRowsOfSmallImages();
    void chunkWriterLayout();
    void undecodableDataGivesNothing();
    void gifFramesAtOneRate();
    void compositionAndFading();
};

void ConvertTest::sliderSnapsAndGivesAFactor_data()
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

void ConvertTest::sliderSnapsAndGivesAFactor()
{
    QFETCH(float, slider);
    QFETCH(float, snapped);
    QFETCH(float, factor);
    QCOMPARE(ConvertJob::snappedSliderValue(slider), snapped);
    QCOMPARE(ConvertJob::factorForSlider(slider), factor);
    QCOMPARE(ConvertJob::snappedSliderValue(slider, 0.0f), snapped); // a step of 0 means 5
}

void ConvertTest::tagsNameEncoders_data()
{
    QTest::addColumn<qint64>("tag");
    QTest::addColumn<int>("code"); // -1: none
    QTest::newRow("1 PNG") << qint64(1) << int(ImageTypeCode::PNG);
    QTest::newRow("2 JPEG") << qint64(2) << int(ImageTypeCode::JPEG);
    QTest::newRow("3 BMP") << qint64(3) << int(ImageTypeCode::BMP);
    QTest::newRow("4 TIFF") << qint64(4) << int(ImageTypeCode::TIFF);
    QTest::newRow("5 is PDF") << qint64(5) << -1;
    QTest::newRow("101 closes") << qint64(101) << -1;
}

void ConvertTest::tagsNameEncoders()
{
    QFETCH(qint64, tag);
    QFETCH(int, code);
    const auto type = ConvertJob::imageTypeForTag(tag);
    QCOMPARE(type ? int(*type) : -1, code);
}

void ConvertTest::encodersOfTheTable_data()
{
    QTest::addColumn<quint64>("code");
    QTest::addColumn<QByteArray>("magic"); // empty: nothing is returned
    QTest::newRow("TIFF") << ImageTypeCode::TIFF << QByteArray("II*");
    QTest::newRow("BMP") << ImageTypeCode::BMP << QByteArray("BM");
    QTest::newRow("GIF gives nothing") << ImageTypeCode::GIF << QByteArray();
    QTest::newRow("JPEG") << ImageTypeCode::JPEG << QByteArray("\xFF\xD8\xFF");
    QTest::newRow("PNG") << ImageTypeCode::PNG << QByteArray("\x89PNG");
    QTest::newRow("JPEG 2000") << ImageTypeCode::JPEG2000 << QByteArray("\0\0\0\x0CjP", 6);
    QTest::newRow("6 gives nothing") << quint64(6) << QByteArray();
}

void ConvertTest::encodersOfTheTable()
{
    QFETCH(quint64, code);
    QFETCH(QByteArray, magic);
    const BitmapImageRep image = BitmapImageRep::fromImage(ImageFixtures::picture(40, 30, true));
    const QByteArray data = Utils::convertImg(image, code, 0.8f);
    QVERIFY2(data.startsWith(magic) && data.isEmpty() == magic.isEmpty(), data.left(8).toHex().constData());
    if (code == ImageTypeCode::TIFF)
        QCOMPARE(tiffTag(data, 259), 5); // LZW
    if (code == ImageTypeCode::JPEG) {
        // No transparency in JPEG: the transparent left edge lies on white.
        const QImage back = QImage::fromData(data);
        QVERIFY(qGray(back.pixel(0, 15)) > 200);
    }
}

void ConvertTest::jpegQualityFollowsTheFactor()
{
    const BitmapImageRep image = BitmapImageRep::fromImage(ImageFixtures::picture(200, 150));
    const QByteArray best = Utils::convertImg(image, ImageTypeCode::JPEG, 1.0f);
    const QByteArray small = Utils::convertImg(image, ImageTypeCode::JPEG, 0.1f);
    QVERIFY(!best.isEmpty() && !small.isEmpty());
    QVERIFY(small.size() * 2 < best.size());
}

void ConvertTest::pngToPngIsALosslessRewrite()
{
    TestTree tree;
    const QString source = tree.at(QStringLiteral("a.png"));
    const QImage pic = ImageFixtures::picture(120, 80, true);
    QVERIFY(ImageFixtures::write(source, ImageFixtures::pngWithPrivateChunk(pic)));
    QByteArray first;
    for (float factor : {1.0f, 0.35f, 0.0f}) {
        const auto job = runConvert(requestFor({source}, tree.path(), 1, factor));
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
    QVERIFY(Utils::changePngCompression(source, tree.at(QStringLiteral("direct.png")), 7.0f)); // clamped to 1
    QCOMPARE(TestTree::contents(tree.at(QStringLiteral("direct.png"))), first);
    // An upper-case .PNG goes through the encoder: a fresh encoding, not the rewrite.
    const QString upper = tree.at(QStringLiteral("b.PNG"));
    QVERIFY(ImageFixtures::write(upper, ImageFixtures::pngWithPrivateChunk(ImageFixtures::picture(30, 30))));
    QCOMPARE(runConvert(requestFor({upper}, tree.path(), 1))->written(), QStringList{tree.at(QStringLiteral("b.png"))});
    const QByteArray out = TestTree::contents(tree.at(QStringLiteral("b.png")));
    QVERIFY(out.startsWith("\x89PNG"));
    QVERIFY(!out.contains("prVt"));
}

void ConvertTest::outputsTakeFreeNames()
{
    TestTree tree;
    const QString source = tree.at(QStringLiteral("c.jpg"));
    const QByteArray jpeg = ImageFixtures::encoded(ImageFixtures::picture(50, 40), "jpeg");
    QVERIFY(ImageFixtures::write(source, jpeg));
    QVERIFY(ImageFixtures::write(tree.at(QStringLiteral("c 1.jpg")), "taken"));
    const auto job = runConvert(requestFor({source}, tree.path(), 2));
    QCOMPARE(job->written(), QStringList{tree.at(QStringLiteral("c 2.jpg"))});
    QCOMPARE(TestTree::contents(source), jpeg);
    QCOMPARE(TestTree::contents(tree.at(QStringLiteral("c 1.jpg"))), QByteArray("taken"));
    // A type that can be read but not written converts like any other.
    const QString layers = tree.at(QStringLiteral("layers.psd"));
    QVERIFY(ImageFixtures::write(layers, ImageFixtures::psd(ImageFixtures::picture(64, 48))));
    const auto psd = runConvert(requestFor({layers}, tree.path(), 2));
    QCOMPARE(psd->written(), QStringList{tree.at(QStringLiteral("layers.jpg"))});
    QCOMPARE(Utils::getImageDimensionsAsStringImgPath(psd->written().first()), QStringLiteral("64x48"));
    QCOMPARE(Utils::getImageFileTypeFromPath(psd->written().first()), ImageTypeCode::JPEG);
}

void ConvertTest::eachImageIsCredited()
{
    TestTree tree;
    QStringList images;
    for (int i = 0; i < 3; ++i) {
        images << tree.at(QStringLiteral("i%1.bmp")).arg(i);
        QVERIFY(ImageFixtures::write(images.last(), ImageFixtures::encoded(ImageFixtures::picture(10, 10), "bmp")));
    }
    images << tree.at(QStringLiteral("missing.bmp")); // credited before it fails
    quint64 credited = 0;
    const auto job = runConvert(requestFor(images, tree.path(), 4), &credited);
    QCOMPARE(credited, quint64(120));
    QCOMPARE(job->written().size(), 3);
    QCOMPARE(job->failures().size(), 1);
    for (const QString &out : job->written())
        QVERIFY(out.endsWith(QLatin1String(".tiff")));
}

void ConvertTest::damagedFilesFailAlone_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("name");
    QTest::addColumn<qint64>("tag");
    const QImage pic = ImageFixtures::picture(200, 100);
    const QByteArray png = ImageFixtures::encoded(pic, "png");
    const QByteArray jpeg = ImageFixtures::encoded(pic, "jpeg");
    // libpng meets these in the lossless rewrite; its errors must not end the process.
    QTest::newRow("PNG with damaged data to PNG") << ImageFixtures::damagedPng(pic) << "d.png" << qint64(1);
    QTest::newRow("truncated PNG to PNG") << png.left(png.size() / 2) << "t.png" << qint64(1);
    QTest::newRow("PNG signature only") << png.left(8) << "s.png" << qint64(1);
    QTest::newRow("truncated JPEG to TIFF") << jpeg.left(jpeg.size() / 2) << "t.jpg" << qint64(4);
    QTest::newRow("zero bytes to BMP") << QByteArray() << "z.gif" << qint64(3);
    QTest::newRow("random bytes to JPEG") << QByteArray(3000, '\x7F') << "r.tif" << qint64(2);
    QTest::newRow("huge header to JPEG") << ImageFixtures::pngClaiming(100000, 100000) << "h.png" << qint64(2);
}

void ConvertTest::damagedFilesFailAlone()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, name);
    QFETCH(qint64, tag);
    TestTree tree;
    const QString bad = tree.path() + QChar('/') + name;
    const QString good = tree.at(QStringLiteral("fine.png"));
    QVERIFY(ImageFixtures::write(bad, content));
    QVERIFY(ImageFixtures::write(good, ImageFixtures::encoded(ImageFixtures::picture(20, 20), "png")));
    const auto job = runConvert(requestFor({bad, good}, tree.path(), tag));
    QCOMPARE(job->failures().size(), 1);
    QVERIFY(job->failures().first().message.contains(name));
    QCOMPARE(job->written().size(), 1);
    QVERIFY(job->written().first().contains(QStringLiteral("/fine")));
    QCOMPARE(QDir(tree.path()).entryList(QDir::Files | QDir::Hidden).size(), 3); // bad, good, one output
}

void ConvertTest::filteredRowsOfSmallImages()
{
    QImage one(1, 1, QImage::Format_ARGB32);
    one.setPixel(0, 0, qRgba(10, 20, 30, 255));
    QCOMPARE(OptimizedPng::filteredRows(one), QByteArray("\x01\x1E\x14\x0A\xFF", 5)); // Sub, then B G R A

    // The second pixel is stored as its difference to the first, modulo 256; alpha is premultiplied.
    QImage two(2, 1, QImage::Format_ARGB32);
    two.setPixel(0, 0, qRgba(200, 100, 50, 255));
    two.setPixel(1, 0, qRgba(100, 150, 40, 255));
    QCOMPARE(OptimizedPng::filteredRows(two),
             QByteArray("\x01" "\x32\x64\xC8\xFF" "\xF6\x32\x9C\x00", 9));
    QImage half(1, 2, QImage::Format_ARGB32);
    half.fill(qRgba(200, 0, 0, 128));
    QCOMPARE(OptimizedPng::filteredRows(half), QByteArray("\x01\x00\x00\x64\x80\x01\x00\x00\x64\x80", 10));
}

void ConvertTest::chunkWriterLayout()
{
    const QImage image = ImageFixtures::picture(3, 2, true);
    const QByteArray png = OptimizedPng::optimizedData(image);
    const auto u32 = [&](qsizetype at) { return qFromBigEndian<quint32>(png.constData() + at); };
    QCOMPARE(png.left(8), QByteArray("\x89PNG\r\n\x1a\n", 8));
    QCOMPARE(png.mid(8, 8), QByteArray("\0\0\0\x04\0\0\0\0", 8));
    QCOMPARE(png.mid(16, 12), QByteArray("CgBI\x30\x00\x20\x06\x17\x9E\x80\x65", 12));
    QCOMPARE(u32(28), 13u);
    QCOMPARE(png.mid(36, 4), QByteArray("IHDR"));
    QCOMPARE(u32(40), 3u);
    QCOMPARE(u32(44), 2u);
    QCOMPARE(png.mid(48, 5), QByteArray("\x08\x06\x00\x00\x00", 5));
    const uLong ihdrCrc = crc32(0, reinterpret_cast<const Bytef *>(png.constData() + 36), 17);
    QCOMPARE(u32(53), quint32(ihdrCrc));
    QCOMPARE(png.mid(57, 4), QByteArray(4, '\0'));
    const quint32 n = u32(61);
    QCOMPARE(png.mid(69, 4), QByteArray("IDAT"));
    QCOMPARE(png.size(), qsizetype(97 + n));
    const uLong idatCrc = crc32(0, reinterpret_cast<const Bytef *>(png.constData() + 69), 4 + n);
    QCOMPARE(u32(73 + n), quint32(idatCrc));
    QCOMPARE(u32(81 + n), 0u);
    QCOMPARE(png.mid(89 + n), QByteArray("IEND\xAE\x42\x60\x82", 8));
    // zlib since 1.2.9 refuses a raw window of 8 bits, and then the stream is empty; where it is not,
    // the stream inflates back to the filtered rows.
    if (n > 0) {
        QByteArray rows(OptimizedPng::filteredRows(image).size(), '\0');
        z_stream s{};
        inflateInit2(&s, -15);
        s.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(png.constData() + 73));
        s.avail_in = n;
        s.next_out = reinterpret_cast<Bytef *>(rows.data());
        s.avail_out = uInt(rows.size());
        inflate(&s, Z_FINISH);
        inflateEnd(&s);
        QCOMPARE(rows, OptimizedPng::filteredRows(image));
    } else {
        z_stream s{};
        QCOMPARE(deflateInit2(&s, -1, 8, -8, 9, 0), Z_STREAM_ERROR);
    }
}

void ConvertTest::undecodableDataGivesNothing()
{
    QTest::ignoreMessage(QtWarningMsg, "Can't decode NSData into image.");
    QVERIFY(OptimizedPng::optimizedData(QByteArray("no image here")).isEmpty());
    QVERIFY(!OptimizedPng::optimizedData(ImageFixtures::encoded(ImageFixtures::picture(2, 2), "png")).isEmpty());
    QCOMPARE(OptimizedPng::fileTypeForFile(QStringLiteral("A.JPEG")), ImageTypeCode::JPEG);
    QCOMPARE(OptimizedPng::fileTypeForFile(QStringLiteral("a.Png")), ImageTypeCode::PNG);
    QCOMPARE(OptimizedPng::fileTypeForFile(QStringLiteral("a.gif")), ImageTypeCode::GIF);
    QCOMPARE(OptimizedPng::fileTypeForFile(QStringLiteral("a.bmp")), ImageTypeCode::TIFF);
}

void ConvertTest::gifFramesAtOneRate()
{
    // Delays of 0.1 s and 0.2 s: the second frame stands twice in a list that plays at 0.1 s.
    const auto frames = AnimatedGif::framesOfAnimatedImageWithAnimatedGIFData(ImageFixtures::animatedGif({100, 200, 300}));
    QCOMPARE(frames.size(), 6);
    QCOMPARE(frames[1], frames[2]);
    QCOMPARE(frames[3], frames[5]);
    QVERIFY(AnimatedGif::framesOfAnimatedImageWithAnimatedGIFData("not a gif").isEmpty());
}

void ConvertTest::compositionAndFading()
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

    const BitmapImageRep faded = Utils::imageWithAlpha({red, QSizeF(4, 4)}, 0.5f);
    QVERIFY(std::abs(qAlpha(faded.pixels.pixel(1, 1)) - 128) <= 1);
    QCOMPARE(faded.size, QSizeF(4, 4));
}

QTEST_MAIN(ConvertTest)
#include "tst_convert.moc"

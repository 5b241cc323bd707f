// Converting and compressing: the slider's arithmetic, the encoders behind each type, the lossless
// PNG rewrite, free names that never replace a file, and damaged files in a batch.

#include "ConvertRequest.h"
#include "ImageFixtures.h"
#include "TestTree.h"

#include "images/ImageTypeCode.h"
#include "images/codecs/PngRecompress.h"
#include "images/jobs/ConvertJob.h"
#include "utils/Utils.h"

#include <QSignalSpy>
#include <QStandardPaths>
#include <QTest>
#include <QtEndian>

namespace {

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

class ConvertTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }
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
    void tagsNameEncoders_data()
    {
        QTest::addColumn<qint64>("tag");
        QTest::addColumn<int>("code"); // -1: none
        QTest::newRow("3 BMP") << qint64(3) << int(ImageTypeCode::BMP);
        QTest::newRow("5 is PDF") << qint64(5) << -1;
        QTest::newRow("101 closes") << qint64(101) << -1;
    }
    void tagsNameEncoders()
    {
        QFETCH(qint64, tag);
        QFETCH(int, code);
        const auto type = ConvertJob::imageTypeForTag(tag);
        QCOMPARE(type ? int(*type) : -1, code);
    }
    void encodersOfTheTable_data()
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
    void encodersOfTheTable()
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
    void jpegQualityFollowsTheFactor()
    {
        const BitmapImageRep image = BitmapImageRep::fromImage(ImageFixtures::picture(200, 150));
        const QByteArray best = Utils::convertImg(image, ImageTypeCode::JPEG, 1.0f);
        const QByteArray small = Utils::convertImg(image, ImageTypeCode::JPEG, 0.1f);
        QVERIFY(!best.isEmpty() && !small.isEmpty());
        QVERIFY(small.size() * 2 < best.size());
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
    void damagedFilesFailAlone_data()
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
    void damagedFilesFailAlone()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, name);
        QFETCH(qint64, tag);
        TestTree tree;
        const QString bad = tree.path() + QChar('/') + name;
        const QString good = tree.at(QStringLiteral("fine.png"));
        QVERIFY(ImageFixtures::write(bad, content));
        QVERIFY(ImageFixtures::write(good, ImageFixtures::encoded(ImageFixtures::picture(20, 20), "png")));
        const auto job = runConvert(convertRequest({bad, good}, tree.path(), tag));
        QCOMPARE(job->failures().size(), 1);
        QVERIFY(job->failures().first().message.contains(name));
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

QTEST_MAIN(ConvertTest)
#include "tst_convert.moc"

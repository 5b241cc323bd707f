// What the program knows of an image before it touches its pixels: type codes and extensions, the
// first byte, sizes, resolutions, which files can become PDF pages, thumbnails, and photos as seen.

#include "ImageFixtures.h"

#include "images/ImageTypeCode.h"
#include "images/ResizePlan.h"
#include "images/Thumbnails.h"
#include "images/jobs/ConvertJob.h"
#include "images/jobs/ResizeJob.h"
#include "utils/Utils.h"

#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

class ImageIdentityTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }
    void typeFromExtension_data()
    {
        QTest::addColumn<QString>("extension");
        QTest::addColumn<quint64>("code");
        QTest::addColumn<QString>("written"); // the extension a file of that type is given
        QTest::newRow("jpeg") << "jpeg" << ImageTypeCode::JPEG << "jpg";
        QTest::newRow("gif") << "gif" << ImageTypeCode::GIF << "gif";
        QTest::newRow("tif") << "tif" << ImageTypeCode::TIFF << "tiff";
        QTest::newRow("bmp") << "bmp" << ImageTypeCode::BMP << "bmp";
        // The comparison is exact: upper case and the unknown fall back to PNG.
        QTest::newRow("PNG") << "PNG" << ImageTypeCode::PNG << "png";
        QTest::newRow("JPG is no JPEG") << "JPG" << ImageTypeCode::PNG << "png";
        QTest::newRow("empty") << "" << ImageTypeCode::PNG << "png";
    }
    void typeFromExtension()
    {
        QFETCH(QString, extension);
        QFETCH(quint64, code);
        QFETCH(QString, written);
        QCOMPARE(Utils::getImageFileTypeFromExtension(extension), code);
        QCOMPARE(Utils::getImageExtensionString(code), written);
        // Beyond the five types: JPEG 2000 is written as jp2, and what follows has no extension.
        QCOMPARE(Utils::getImageExtensionString(5), QStringLiteral("jp2"));
        QVERIFY(Utils::getImageExtensionString(6).isNull());
    }
    void typeFromFirstByte_data()
    {
        QTest::addColumn<QByteArray>("data");
        QTest::addColumn<quint64>("code");
        QTest::newRow("BMP") << QByteArray("BM\x36\x00", 4) << ImageTypeCode::BMP;
        QTest::newRow("GIF") << QByteArray("GIF89a") << ImageTypeCode::GIF;
        QTest::newRow("TIFF little-endian") << QByteArray("II*\0", 4) << ImageTypeCode::TIFF;
        QTest::newRow("TIFF big-endian") << QByteArray("MM\0*", 4) << ImageTypeCode::TIFF;
        QTest::newRow("JPEG") << QByteArray("\xFF\xD8\xFF", 3) << ImageTypeCode::JPEG;
        QTest::newRow("PNG") << QByteArray("\x89PNG", 4) << ImageTypeCode::PNG;
        QTest::newRow("JPEG 2000 reads as PNG") << QByteArray("\0\0\0\x0CjP  ", 8) << ImageTypeCode::PNG;
        QTest::newRow("text that starts with M") << QByteArray("Meeting notes") << ImageTypeCode::TIFF;
        QTest::newRow("nothing") << QByteArray() << ImageTypeCode::PNG;
    }
    void typeFromFirstByte()
    {
        QFETCH(QByteArray, data);
        QFETCH(quint64, code);
        QCOMPARE(Utils::getImageFileTypeFromData(data), code);
        // A file's type is its first byte's, whatever its name says.
        const QString path = m_dir.filePath(QStringLiteral("looks like.gif"));
        QVERIFY(ImageFixtures::write(path, data));
        QCOMPARE(Utils::getImageFileTypeFromPath(path), code);
        QCOMPARE(Utils::getImageFileTypeFromPath(m_dir.filePath(QStringLiteral("missing.gif"))), ImageTypeCode::PNG);
    }
    void resolutionsSnapToWholeNumbers_data()
    {
        QTest::addColumn<double>("stored");
        QTest::addColumn<double>("read");
        QTest::newRow("72 kept per metre") << 72.009 << 72.0;
        QTest::newRow("300 kept per metre") << 299.9994 << 300.0;
        QTest::newRow("72 kept per millimetre") << 71.9836 << 72.0;
        QTest::newRow("a half stays") << 150.5 << 150.5;
        QTest::newRow("a fraction stays") << 96.3 << 96.3;
    }
    void resolutionsSnapToWholeNumbers()
    {
        QFETCH(double, stored);
        QFETCH(double, read);
        QCOMPARE(Resolution::snapped(stored), read);
        // What a file keeps in whole dots per metre comes back as it was given.
        QCOMPARE(Resolution::fromDotsPerMeter(Resolution::toDotsPerMeter(std::round(read))), std::round(read));
    }
    void dimensionsFromTheHeader_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("dimensions");
        QTest::newRow("PNG") << ImageFixtures::encoded(ImageFixtures::picture(17, 9), "png") << "17x9";
        QTest::newRow("JPEG") << ImageFixtures::encoded(ImageFixtures::picture(33, 20), "jpeg") << "33x20";
        QTest::newRow("a photo tagged to turn a quarter is seen on end")
            << ImageFixtures::withOrientation(ImageFixtures::encoded(ImageFixtures::picture(33, 20), "jpeg"), 6) << "20x33";
        QTest::newRow("a photo tagged to turn a half")
            << ImageFixtures::withOrientation(ImageFixtures::encoded(ImageFixtures::picture(33, 20), "jpeg"), 3) << "33x20";
        QTest::newRow("a header claiming 100000 x 100000") << ImageFixtures::pngClaiming(100000, 100000) << "0x0";
        QTest::newRow("empty file") << QByteArray() << "0x0";
        QTest::newRow("random bytes") << QByteArray("\x13\x37 not an image at all", 22) << "0x0";
    }
    void dimensionsFromTheHeader()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, dimensions);
        const QString path = m_dir.filePath(QStringLiteral("dims.img"));
        QVERIFY(ImageFixtures::write(path, content));
        QCOMPARE(Utils::getImageDimensionsAsStringImgPath(path), dimensions);
        const QVariantMap record = Utils::getImageDimensionsAtPath(path);
        QCOMPARE(QStringLiteral("%1x%2").arg(record.value(QStringLiteral("kImgWidth")).toFloat())
                     .arg(record.value(QStringLiteral("kImgHeight")).toFloat()),
                 dimensions);
        QCOMPARE(Utils::getImageDimensionsAsStringImgPath(m_dir.filePath(QStringLiteral("missing.png"))), QStringLiteral("0x0"));
    }
    void pageImages_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("folder");
        QTest::addColumn<bool>("page");
        QTest::newRow("jpg") << "a.jpg" << false << true;
        QTest::newRow("upper case JPG") << "b.JPG" << false << true;
        QTest::newRow("psd") << "c.psd" << false << true;
        QTest::newRow("sgi") << "d.sgi" << false << true;
        QTest::newRow("heic is an image but no page") << "e.heic" << false << false;
        QTest::newRow("webp") << "f.webp" << false << false;
        QTest::newRow("a folder named like an image") << "g.png" << true << false;
    }
    void pageImages()
    {
        QFETCH(QString, name);
        QFETCH(bool, folder);
        QFETCH(bool, page);
        const QString path = m_dir.filePath(name);
        if (folder)
            QVERIFY(QDir().mkpath(path));
        else
            QVERIFY(ImageFixtures::write(path, "x"));
        QCOMPARE(PageImageTypes::isPageImage(path), page);
        QVERIFY(!PageImageTypes::isPageImage(m_dir.filePath(QStringLiteral("missing.png"))));
    }
    void thumbnails_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QColor>("centre"); // invalid: only that there is a picture
        QTest::newRow("a current cached thumbnail") << "cached" << QColor(Qt::green);
        QTest::newRow("a stale one is passed over") << "stale" << QColor(Qt::red);
        QTest::newRow("a large image decoded small") << "large" << QColor(Qt::red);
        QTest::newRow("a PDF's first page") << "pdf" << QColor(Qt::blue);
        QTest::newRow("no image at all: the type's icon") << "other" << QColor();
    }
    void thumbnails()
    {
        QFETCH(QString, kind);
        QFETCH(QColor, centre);
        QImage red(kind == u"large" ? 2000 : 300, 200, QImage::Format_RGB32);
        red.fill(Qt::red);
        QString path = m_dir.filePath(kind + QStringLiteral(".png"));
        if (kind == u"pdf") {
            QImage blue(10, 10, QImage::Format_RGB32);
            blue.fill(Qt::blue);
            path = m_dir.filePath(QStringLiteral("doc.pdf"));
            QVERIFY(ImageFixtures::pdfWithPages(path, {QSizeF(400, 500)}, blue));
        } else if (kind == u"other") {
            path = m_dir.filePath(QStringLiteral("notes.txt"));
            QVERIFY(ImageFixtures::write(path, "words"));
        } else {
            QVERIFY(ImageFixtures::write(path, ImageFixtures::encoded(red, "png")));
        }
        if (kind == u"cached" || kind == u"stale") {
            const QString cache = Thumbnails::cachedThumbnailPath(path, QStringLiteral("large"));
            QVERIFY(QDir().mkpath(QFileInfo(cache).absolutePath()));
            QImage green(256, 170, QImage::Format_RGB32);
            green.fill(Qt::green);
            const qint64 mtime = QFileInfo(path).lastModified().toSecsSinceEpoch();
            // As desktops write them: tEXt chunks with the file's address and time ahead of the data.
            const QByteArray png = ImageFixtures::encoded(green, "png");
            const QByteArray text = ImageFixtures::chunk("tEXt", "Thumb::MTime" + QByteArray(1, '\0') +
                                                                     QByteArray::number(kind == u"stale" ? mtime - 100 : mtime));
            QVERIFY(ImageFixtures::write(cache, png.left(33) + text + png.mid(33)));
        }
        const QImage thumb = Thumbnails::thumbnailForFilePath(path);
        QVERIFY(!thumb.isNull());
        QVERIFY(thumb.width() <= Thumbnails::kMaxSide && thumb.height() <= Thumbnails::kMaxSide);
        if (centre.isValid())
            QCOMPARE(QColor(thumb.pixel(thumb.width() / 2, thumb.height() / 2)), centre);
    }
    void photosAreTakenAsSeen_data()
    {
        QTest::addColumn<QString>("action");
        QTest::addColumn<int>("orientation");
        QTest::addColumn<QSize>("size"); // of the result; empty: only its shape counts
        QTest::newRow("resized to 150 wide, tagged 6") << "resize" << 6 << QSize(150, 200);
        QTest::newRow("resized, tagged 8") << "resize" << 8 << QSize(150, 200);
        QTest::newRow("resized, tagged 3 (a half turn)") << "resize" << 3 << QSize(150, 112);
        QTest::newRow("resized, tagged 1 (upright)") << "resize" << 1 << QSize(150, 112);
        QTest::newRow("converted to PNG, tagged 5 (turned and mirrored)") << "png" << 5 << QSize(300, 400);
        QTest::newRow("converted to JPEG, tagged 6") << "jpg" << 6 << QSize(300, 400);
        QTest::newRow("converted to BMP, tagged 2 (mirrored)") << "bmp" << 2 << QSize(400, 300);
        QTest::newRow("thumbnail, tagged 7") << "thumbnail" << 7 << QSize();
    }
    void photosAreTakenAsSeen()
    {
        QFETCH(QString, action);
        QFETCH(int, orientation);
        QFETCH(QSize, size);
        QTemporaryDir dir;
        const QString photo = dir.filePath(QStringLiteral("photo.jpg"));
        QVERIFY(ImageFixtures::write(photo, ImageFixtures::withOrientation(
                                                ImageFixtures::encoded(ImageFixtures::quarters(400, 300), "jpeg", 72, 95), orientation)));
        const QImage seen = ImageFixtures::seenByAViewer(photo);
        QVERIFY(ImageFixtures::sameQuarters(seen, seen) && (orientation == 1) == (seen == ImageFixtures::storedPixels(photo)));

        QImage result;
        QString written;
        if (action == u"resize") {
            // As the panel and the command plan it: the other side from the image's size as seen.
            const auto tasks = ResizePlan::plan({photo}, true, QStringLiteral("150"), QString(), photo, dir.path(),
                                                [](const QString &p) { return Utils::getImageDimensionsAtPathInSize(p); });
            written = ImageFixtures::ranToEnd(std::make_unique<ResizeJob>(tasks))->written().value(0);
        } else if (action == u"thumbnail") {
            result = Thumbnails::thumbnailForFilePath(photo);
            const int mat = 3; // the frame drawn around the picture
            result = result.copy(mat, mat, result.width() - 2 * mat, result.height() - 2 * mat);
            QCOMPARE(result.height() > result.width(), seen.height() > seen.width());
        } else {
            ConvertJob job(ConvertJob::Request{});
            const quint64 code = action == u"png" ? ImageTypeCode::PNG : action == u"jpg" ? ImageTypeCode::JPEG : ImageTypeCode::BMP;
            const auto out = job.convertImg2Type(code, 1.0f, photo, dir.path());
            QVERIFY2(out.ok(), qPrintable(out.ok() ? QString() : out.error().message));
            written = out.value();
        }
        if (!written.isEmpty()) {
            // Upright pixels, and nothing left that would turn them a second time.
            QVERIFY(!ImageFixtures::statesATurn(written));
            result = ImageFixtures::storedPixels(written);
            QCOMPARE(Utils::getImageDimensionsAtPathInSize(written), QSizeF(result.size()));
        }
        if (size.isValid())
            QCOMPARE(result.size(), size);
        QVERIFY(ImageFixtures::sameQuarters(result, seen));
    }

private:
    QTemporaryDir m_dir;
};

QTEST_MAIN(ImageIdentityTest)
#include "tst_imageidentity.moc"

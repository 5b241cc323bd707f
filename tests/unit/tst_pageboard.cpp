// What the program knows of an image before it touches its pixels: type codes and extensions, the
// first byte, sizes, resolutions, which files can become PDF pages, thumbnails, and photos as seen.
// Then the page board without a window: the store's rules, the transforms with their numbers, and the
// export in the board's order with each page's turn as its drawing matrix and each JPEG's bytes as
// they are in the file.

#include "images/ImageTypeCode.h"
#include "images/ResizePlan.h"
#include "images/Thumbnails.h"
#include "images/board/BoardExportJob.h"
#include "images/board/LRHMPagesManager.h"
#include "images/board/PageThumbnails.h"
#include "images/jobs/ConvertJob.h"
#include "images/jobs/ResizeJob.h"
#include "utils/Utils.h"

#include "ImageFixtures.h"
#include "TestTree.h"

#include <QRegularExpression>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <poppler-qt6.h>

namespace {

using Manager = LRHMPagesManager;

QStringList names(const Manager &m)
{
    QStringList out;
    for (const LRHMPageItem &item : m.items())
        out << item.fileName();
    return out;
}

// The store filled with entries named 0 ... n-1 (paths need not exist for the store itself).
void fill(Manager &m, int n)
{
    m.cleanUpCache();
    for (int i = 0; i < n; ++i)
        m.addPageItemWith(QStringLiteral("/pages/%1.jpg").arg(i));
}

struct WrittenPage
{
    QSizeF mediaBox;
    QList<double> matrix;
};

// Each page's media box and the matrix its content draws the image with, in page order.
QList<WrittenPage> writtenPages(const QByteArray &pdf)
{
    QList<WrittenPage> pages;
    static const QRegularExpression box(QStringLiteral("/MediaBox \\[0 0 ([-\\d.]+) ([-\\d.]+)\\]"));
    static const QRegularExpression cm(QStringLiteral("q ([-\\d. ]+) cm /Im0 Do Q"));
    const QString text = QString::fromLatin1(pdf);
    auto boxes = box.globalMatch(text);
    auto draws = cm.globalMatch(text);
    while (boxes.hasNext() && draws.hasNext()) {
        const auto b = boxes.next();
        WrittenPage page{QSizeF(b.captured(1).toDouble(), b.captured(2).toDouble()), {}};
        for (const QString &v : draws.next().captured(1).split(QLatin1Char(' ')))
            page.matrix << v.toDouble();
        pages << page;
    }
    return pages;
}

std::unique_ptr<BoardExportJob> exported(BoardExportJob::Request request)
{
    return ImageFixtures::ranToEnd(std::make_unique<BoardExportJob>(std::move(request)));
}

} // namespace

class ImagesTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }
    void init() { Manager::shareImagesManager().cleanUpCache(); }
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
    void storeRules_data()
    {
        QTest::addColumn<QString>("op");
        QTest::addColumn<int>("index");
        QTest::addColumn<QStringList>("after");
        QTest::newRow("insert at count appends") << "insert" << 3 << QStringList{"0", "1", "2", "new"};
        QTest::newRow("insert at 0") << "insert" << 0 << QStringList{"new", "0", "1", "2"};
        QTest::newRow("insert above count ignored") << "insert" << 4 << QStringList{"0", "1", "2"};
        QTest::newRow("insert below 0 ignored") << "insert" << -1 << QStringList{"0", "1", "2"};
        QTest::newRow("insert nil ignored") << "insertNil" << 1 << QStringList{"0", "1", "2"};
        QTest::newRow("remove 1") << "remove" << 1 << QStringList{"0", "2"};
        QTest::newRow("remove out of range ignored") << "remove" << 3 << QStringList{"0", "1", "2"};
        QTest::newRow("transform out of range ignored") << "transform" << 5 << QStringList{"0", "1", "2"};
    }
    void storeRules()
    {
        QFETCH(QString, op);
        QFETCH(int, index);
        QFETCH(QStringList, after);
        Manager &m = Manager::shareImagesManager();
        fill(m, 3);
        if (op == QLatin1String("insert"))
            m.insertPageItem(LRHMPageItem(QStringLiteral("/x/new.png")), index);
        else if (op == QLatin1String("insertNil"))
            m.insertPageItem(std::nullopt, index);
        else if (op == QLatin1String("remove"))
            m.removePageItemAt(index);
        else
            m.appendTransform(QTransform::fromScale(-1, 1), index);
        QCOMPARE(names(m), after);
        QVERIFY(!m.pageItemAt(-1) && !m.pageItemAt(m.pageImageCount()));
    }
    void blockMoveKeepsItsOrder_data()
    {
        QTest::addColumn<QList<qsizetype>>("moved");
        QTest::addColumn<int>("destination");
        QTest::addColumn<QStringList>("after");
        QTest::newRow("0 and 2 to 4") << QList<qsizetype>{0, 2} << 4 << QStringList{"1", "3", "0", "2", "4"};
        QTest::newRow("3 and 4 to the front") << QList<qsizetype>{4, 3} << 0 << QStringList{"3", "4", "0", "1", "2"};
        QTest::newRow("1 to the end") << QList<qsizetype>{1} << 5 << QStringList{"0", "2", "3", "4", "1"};
        QTest::newRow("onto itself") << QList<qsizetype>{2} << 2 << QStringList{"0", "1", "2", "3", "4"};
    }
    void blockMoveKeepsItsOrder()
    {
        QFETCH(QList<qsizetype>, moved);
        QFETCH(int, destination);
        QFETCH(QStringList, after);
        Manager &m = Manager::shareImagesManager();
        fill(m, 5);
        m.moveItemsAtIndexes(moved, destination);
        QCOMPARE(names(m), after);
    }
    void identitiesChangeWithEachTransform()
    {
        Manager &m = Manager::shareImagesManager();
        m.addPageItemWith(QStringLiteral("/x/same.jpg"));
        m.addPageItemWith(QStringLiteral("/x/same.jpg"));
        QVERIFY(m.pageItemAt(0)->identify.startsWith(QLatin1String("same_")));
        QVERIFY(m.pageItemAt(0)->identify != m.pageItemAt(1)->identify);
        const QString first = m.pageItemAt(0)->identify;
        for (const QTransform &t : {LRHMTransformManager::rotateTransformWith({}, 90), LRHMTransformManager::rotateTransformWith({}, -90),
                                    LRHMTransformManager::horizontalFlipTransformWith(QRectF(0, 0, 10, 10))}) {
            m.appendTransform(t, 0);
            m.autoReloadPageItemIdentifyAt(0);
        }
        QCOMPARE(m.pageItemAt(0)->identify, first + QStringLiteral("_1_1_1"));
    }
    void transformNumbers()
    {
        const QTransform left = LRHMTransformManager::rotateTransformWith({}, 90.0);
        const QPointF turned = left.map(QPointF(1, 0));
        QVERIFY(qAbs(turned.x()) < 1e-12 && qFuzzyCompare(turned.y(), 1.0)); // anticlockwise, y up
        const QTransform v = LRHMTransformManager::verticalFlipTransformWith(QRectF(0, 0, 100, 50));
        QCOMPARE(v.map(QPointF(10, 20)), QPointF(10, 30)); // y becomes height - y
        const QTransform h = LRHMTransformManager::horizontalFlipTransformWith(QRectF(0, 0, 100, 50));
        QCOMPARE(h.map(QPointF(10, 20)), QPointF(90, 20)); // x becomes width - x
        // Four quarter turns come close to the identity; the page then keeps the turned route.
        LRHMPageItem item(QStringLiteral("/x/a.png"));
        for (int i = 0; i < 4; ++i)
            item.appendCGTransform(left);
        QVERIFY(qAbs(item.transform.m11() - 1) < 1e-12 && qAbs(item.transform.m12()) < 1e-12);
        QCOMPARE(PageGeometry::transformedSize(QSize(40, 20), left), QSize(20, 40));
        // The newest transform is applied last.
        LRHMPageItem flipped(QStringLiteral("/x/b.png"));
        flipped.appendCGTransform(left);
        flipped.appendCGTransform(h);
        QCOMPARE(flipped.transform.map(QPointF(1, 0)).toPoint(), h.map(left.map(QPointF(1, 0))).toPoint());
    }
    void onlyPageImagesAreTaken()
    {
        TestTree tree;
        const QByteArray png = ImageFixtures::encoded(ImageFixtures::picture(8, 8), "png");
        QVERIFY(ImageFixtures::write(tree.path() + "/A.PNG", png));
        QVERIFY(ImageFixtures::write(tree.path() + "/notes.txt", "text"));
        QDir(tree.path()).mkdir(QStringLiteral("folder.png"));
        Manager &m = Manager::shareImagesManager();
        const QStringList taken = m.loadPageItemImagesWithPaths(
            {tree.path() + "/A.PNG", tree.path() + "/notes.txt", tree.path() + "/folder.png", tree.path() + "/missing.jpg"});
        QCOMPARE(taken, QStringList{tree.path() + "/A.PNG"});
        QCOMPARE(m.pageImageCount(), 1);
    }
    void exportInBoardOrderWithTurns()
    {
        TestTree tree;
        // 60 x 30 pixels at 72 dpi: red, green / blue, white quarters; one stored turned, asking a viewer
        // (EXIF 6) to turn it upright.
        const QByteArray plain = ImageFixtures::encoded(ImageFixtures::quarters(60, 30), "jpeg", 72, 92);
        const QByteArray exif6 = ImageFixtures::withOrientation(plain, 6);
        QVERIFY(ImageFixtures::write(tree.path() + "/a.jpg", plain));
        QVERIFY(ImageFixtures::write(tree.path() + "/b.jpg", exif6));
        QVERIFY(ImageFixtures::write(tree.path() + "/c.png", ImageFixtures::encoded(ImageFixtures::quarters(60, 30), "png")));
        const QTransform left = LRHMTransformManager::rotateTransformWith({}, 90);
        const QTransform flip = LRHMTransformManager::horizontalFlipTransformWith(QRectF(0, 0, 30, 60));
        const QList<ImagesToPdf::Page> pages{{tree.path() + "/c.png", left},
                                             {tree.path() + "/a.jpg", {}},
                                             {tree.path() + "/b.jpg", flip},
                                             {tree.path() + "/a.jpg", left * left}};
        const QString pdf = tree.path() + "/board.pdf";
        const auto job = exported({pages, true, pdf});
        QVERIFY(job->failures().isEmpty());
        QCOMPARE(job->written(), QStringList{pdf});

        const QByteArray bytes = TestTree::contents(pdf);
        QCOMPARE(bytes.count(plain), 2); // the JPEG data untouched, EXIF and all
        QCOMPARE(bytes.count(exif6), 1);
        const QList<WrittenPage> written = writtenPages(bytes);
        QCOMPARE(written.size(), 4);
        const QList<QSizeF> sizes{{30, 60}, {60, 30}, {30, 60}, {60, 30}};
        // The drawing matrices: the PNG turned left (0 60 -30 0 30 0); a.jpg as it is; b.jpg upright by
        // its EXIF 6, then mirrored; a.jpg turned twice, a half turn.
        const QList<QList<double>> matrices{{0, 60, -30, 0, 30, 0}, {60, 0, 0, 30, 0, 0}, {0, -60, -30, 0, 30, 60}, {-60, 0, 0, -30, 60, 30}};
        for (int i = 0; i < 4; ++i) {
            QCOMPARE(written[i].mediaBox, sizes[i]);
            QCOMPARE(written[i].matrix.size(), 6);
            for (int k = 0; k < 6; ++k)
                QVERIFY2(qAbs(written[i].matrix[k] - matrices[i][k]) < 1e-3, qPrintable(QStringLiteral("page %1 value %2").arg(i).arg(k)));
        }
        // And as a reader draws them: the upright picture turned as the board shows it.
        const auto doc = Poppler::Document::load(pdf);
        QVERIFY(doc);
        for (int i = 0; i < 4; ++i) {
            const QImage expected = ImageFixtures::seenByAViewer(pages[i].path).transformed(PageGeometry::forYDown(pages[i].turn));
            QVERIFY2(ImageFixtures::sameQuarters(doc->page(i)->renderToImage(144, 144), expected), qPrintable(QString::number(i)));
        }
    }
    // What is gone or damaged is skipped and named; an export that cannot be written leaves nothing.
    void exportFailures()
    {
        TestTree tree;
        const QByteArray jpeg = ImageFixtures::encoded(ImageFixtures::picture(20, 10), "jpeg");
        QVERIFY(ImageFixtures::write(tree.path() + "/kept.jpg", jpeg));
        QVERIFY(ImageFixtures::write(tree.path() + "/damaged.png", "\x89PNG\r\n\x1a\n broken"));
        const auto job = exported({{{tree.path() + "/gone.jpg", {}}, {tree.path() + "/kept.jpg", {}}, {tree.path() + "/damaged.png", {}}},
                            true, tree.path() + "/out.pdf"});
        QCOMPARE(job->written().size(), 1);
        QCOMPARE(job->failures().size(), 2);
        QVERIFY(job->failures().at(0).message.contains(QLatin1String("gone.jpg")));
        QVERIFY(job->failures().at(1).message.contains(QLatin1String("damaged.png")));
        QCOMPARE(writtenPages(TestTree::contents(tree.path() + "/out.pdf")).size(), 1);

        QVERIFY(ImageFixtures::write(tree.path() + "/blocker", "a file where a folder should be"));
        const auto blocked = exported({{{tree.path() + "/kept.jpg", {}}}, true, tree.path() + "/blocker/out.pdf"});
        QVERIFY(blocked->written().isEmpty());
        QCOMPARE(blocked->failures().size(), 1);
        QCOMPARE(QDir(tree.path()).entryList(QDir::Files | QDir::Hidden),
                 (QStringList{"blocker", "damaged.png", "kept.jpg", "out.pdf"}));
    }
    void oneByOneSameFileGivesOnePdf()
    {
        TestTree tree;
        QVERIFY(ImageFixtures::write(tree.path() + "/a.jpg", ImageFixtures::encoded(ImageFixtures::picture(20, 10), "jpeg")));
        QVERIFY(ImageFixtures::write(tree.path() + "/b.png", ImageFixtures::encoded(ImageFixtures::picture(20, 10), "png")));
        QDir(tree.path()).mkdir(QStringLiteral("out"));
        const auto job = exported({{{tree.path() + "/a.jpg", {}}, {tree.path() + "/b.png", {}}, {tree.path() + "/a.jpg", {}}}, false, tree.path() + "/out"});
        QCOMPARE(job->written().size(), 3);
        QCOMPARE(QDir(tree.path() + "/out").entryList(QDir::Files), (QStringList{"a.pdf", "b.pdf"}));
    }
    void thumbnailsAreTurnedAndCachedByIdentity()
    {
        TestTree tree;
        QVERIFY(ImageFixtures::write(tree.path() + "/q.jpg", ImageFixtures::encoded(ImageFixtures::quarters(400, 200), "jpeg", 72, 95)));
        PageThumbnails thumbnails;
        QSignalSpy ready(&thumbnails, &PageThumbnails::ready);
        LRHMPageItem item(tree.path() + "/q.jpg");
        QVERIFY(thumbnails.thumbnail(item).isNull());
        QVERIFY(thumbnails.thumbnail(item).isNull()); // asked twice, made once
        QVERIFY(ready.wait(10000));
        QCOMPARE(ready.size(), 1);
        QCOMPARE(thumbnails.thumbnail(item).size(), QSize(160, 80));
        item.appendCGTransform(LRHMTransformManager::rotateTransformWith({}, 90));
        item.autoReloadIdentify();
        QVERIFY(thumbnails.thumbnail(item).isNull());
        QVERIFY(ready.wait(10000));
        const QImage turned = thumbnails.thumbnail(item);
        QCOMPARE(turned.size(), QSize(80, 160));
        QVERIFY(ImageFixtures::sameQuarters(turned, ImageFixtures::quarters(400, 200).transformed(QTransform().rotate(-90))));
        LRHMPageItem gone(tree.path() + "/gone.jpg");
        thumbnails.thumbnail(gone);
        QVERIFY(ready.wait(10000));
        QVERIFY(thumbnails.failed(gone.identify));
    }

private:
    QTemporaryDir m_dir;
};

QTEST_MAIN(ImagesTest)
#include "tst_pageboard.moc"

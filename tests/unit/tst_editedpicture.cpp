// The editor's picture on real files: what it refuses to open, photos stood up by their EXIF
// orientation and saved upright with the tag cleared, the resolution, colour profile and EXIF carried
// into the saved file, JPEG quarter turns that leave the DCT data untouched (checked against jpegtran),
// and the saved file's type and name. Crops and a folder that cannot be written: tst_editor's window cases.

#include "EditorFixtures.h"
#include "ImageFixtures.h"
#include "TestRows.h"

#include "editor/picture/EditedPicture.h"
#include "editor/picture/PictureSaver.h"
#include "images/ImageTypeCode.h"
#include "utils/Utils.h"

#include <QColorSpace>
#include <QDir>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace ImageFixtures;
using namespace EditorFixtures;

namespace {

EditedPicture opened(const QString &path)
{
    auto loaded = PictureLoader::load(path);
    if (!loaded.ok())
        qWarning("%s", qPrintable(loaded.error().message));
    return loaded.ok() ? EditedPicture(path, loaded.value()) : EditedPicture();
}

QByteArray savedBytes(const EditedPicture &picture, const QImage &layer = {})
{
    const auto bytes = picture.encodedForSaving(layer);
    if (!bytes.ok())
        qWarning("%s", qPrintable(bytes.error().message));
    return bytes.ok() ? bytes.value() : QByteArray();
}

QImage decoded(const QByteArray &bytes)
{
    return QImage::fromData(bytes);
}

} // namespace

class EditedPictureTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        QVERIFY(m_dir.isValid());
        QVERIFY2(hasTool("exiftool") && hasTool("jpegtran"), "exiftool and jpegtran come with scripts/install-deps.sh");
    }
    void refusedFiles_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("reason");
        const QByteArray jpeg = encoded(picture(320, 240), "jpg");
        QTest::newRow("not an image") << "notes.png" << QByteArray("just some words\n") << "not an image";
        QTest::newRow("empty") << "empty.jpg" << QByteArray() << "empty";
        QTest::newRow("cut short") << "cut.jpg" << jpeg.left(jpeg.size() / 2) << "damaged";
        QTest::newRow("claims 60000 x 60000") << "huge.png" << pngClaiming(60000, 60000) << "too large";
        QTest::newRow("damaged pixels") << "bad.png" << damagedPng(picture(64, 64)) << "damaged";
    }
    void refusedFiles()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, bytes);
        QFETCH(QString, reason);
        QVERIFY(write(path(name), bytes));
        const auto loaded = PictureLoader::load(path(name));
        QVERIFY(!loaded.ok());
        QVERIFY2(loaded.error().message.contains(reason), qPrintable(loaded.error().message));
        QVERIFY(loaded.error().message.contains(name));
        QVERIFY(!PictureLoader::preview(path(name), QSize(100, 100)).ok());
        QVERIFY(!PictureLoader::load(path(QStringLiteral("missing.jpg"))).ok());
        QVERIFY(!PictureLoader::load(m_dir.path()).ok());
    }
    // A one-pixel picture turns and crops; a crop of the whole picture keeps a turn lossless, a smaller one ends that.
    void crops()
    {
        QVERIFY(write(path(QStringLiteral("dot.png")), encoded(picture(1, 1), "png")));
        EditedPicture dot = opened(path(QStringLiteral("dot.png")));
        QVERIFY(!dot.isNull());
        dot.rotate(true);
        QVERIFY(dot.crop(QRect(0, 0, 1, 1), QSizeF(1, 1)));
        QVERIFY(!dot.crop(QRect(5, 5, 1, 1), QSizeF(1, 1))); // outside: refused, unchanged
        QCOMPARE(decoded(savedBytes(dot)).size(), QSize(1, 1));
        const QString file = path(QStringLiteral("edit.jpg"));
        QVERIFY(write(file, encoded(picture(64, 48), "jpg", 72, 80)));
        EditedPicture picture = opened(file);
        picture.rotate(true);
        QVERIFY(picture.crop(QRect(0, 0, 48, 64), QSizeF(48, 64))); // the whole picture: still only turned
        QVERIFY(picture.onlyTurned());
        QVERIFY(picture.crop(QRect(0, 0, 40, 64), QSizeF(40, 64)));
        QVERIFY(!picture.onlyTurned());
        QCOMPARE(decoded(savedBytes(picture)).size(), QSize(40, 64));
    }
    void uprightOnOpenAndSave_data()
    {
        QTest::addColumn<int>("orientation");
        for (int o = 1; o <= 8; ++o)
            QTest::addRow("orientation %d", o) << o;
    }
    void uprightOnOpenAndSave()
    {
        QFETCH(int, orientation);
        const QString file = path(QStringLiteral("phone%1.jpg").arg(orientation));
        QVERIFY(write(file, encoded(quarters(64, 48), "jpg", 72, 95)));
        QVERIFY(writeTags(file, {QStringLiteral("-Orientation#=%1").arg(orientation), QStringLiteral("-Make=Quaydrop Test")}));
        const QImage viewer = seenByAViewer(file);
        const EditedPicture picture = opened(file);
        QVERIFY(sameQuarters(picture.image().pixels, viewer));
        QCOMPARE(picture.image().pixels.size(), viewer.size());

        const QString saved = path(QStringLiteral("saved%1.jpg").arg(orientation));
        QVERIFY(write(saved, savedBytes(picture)));
        QVERIFY(!statesATurn(saved));
        QCOMPARE(tags(saved).value(QStringLiteral("Orientation")).toInt(), 1);
        QVERIFY(sameQuarters(storedPixels(saved), viewer));
        QCOMPARE(tags(saved).value(QStringLiteral("Make")).toString(), QStringLiteral("Quaydrop Test"));
    }
    void losslessTurns_data()
    {
        QTest::addColumn<int>("orientation");
        QTest::addColumn<int>("turns"); // clockwise; a negative count turns left
        QTest::addColumn<QStringList>("jpegtran");
        QTest::newRow("right") << 1 << 1 << QStringList{"-rotate", "90"};
        QTest::newRow("twice") << 1 << 2 << QStringList{"-rotate", "180"};
        QTest::newRow("left") << 1 << -1 << QStringList{"-rotate", "270"};
        QTest::newRow("four times is the file again") << 1 << 4 << QStringList{};
        QTest::newRow("phone picture turned once more") << 6 << 1 << QStringList{"-rotate", "180"};
        QTest::newRow("phone picture only stood up") << 8 << 0 << QStringList{"-rotate", "270"};
        QTest::newRow("mirrored phone picture turned") << 2 << 1 << QStringList{"-transverse"};
    }
    void losslessTurns()
    {
        QFETCH(int, orientation);
        QFETCH(int, turns);
        QFETCH(QStringList, jpegtran);
        const QString file = path(QStringLiteral("turn.jpg"));
        QVERIFY(write(file, encoded(picture(64, 48), "jpg", 72, 80)));
        QVERIFY(writeTags(file, {QStringLiteral("-Orientation#=%1").arg(orientation)}));
        EditedPicture picture = opened(file);
        for (int i = 0; i < std::abs(turns); ++i)
            picture.rotate(turns > 0);
        QVERIFY(picture.onlyTurned());
        const QByteArray saved = savedBytes(picture);
        const auto ours = coefficients(saved);
        QVERIFY(!ours.empty());
        QVERIFY(ours == coefficients(EditorFixtures::jpegtran(file, jpegtran)));
        QCOMPARE(decoded(saved).size(), picture.image().pixels.size());
        // Straight from the file, without decoding a pixel (the rotate command): the very same bytes.
        const auto straight = EditedPicture::turnedJpegFile(file, ((turns % 4) + 4) % 4);
        QVERIFY2(straight.ok(), straight.ok() ? "" : qPrintable(straight.error().message));
        QCOMPARE(straight.value(), saved);
    }
    void partialBlocksAreEncodedAgain()
    {
        // 61 x 45 is not made of whole 16-pixel blocks: the edge blocks cannot move, so the turn decodes.
        const QString file = path(QStringLiteral("odd.jpg"));
        QVERIFY(write(file, encoded(quarters(61, 45), "jpg", 72, 95)));
        QVERIFY(!EditedPicture::turnedJpegFile(file, 1).ok()); // the rotate command then decodes too
        const QString png = path(QStringLiteral("odd.png"));
        QVERIFY(write(png, encoded(quarters(64, 48), "png", 72, 95)));
        QVERIFY(!EditedPicture::turnedJpegFile(png, 1).ok());
        EditedPicture picture = opened(file);
        picture.rotate(true);
        const QImage saved = decoded(savedBytes(picture));
        QCOMPARE(saved.size(), QSize(45, 61));
        QVERIFY(sameQuarters(saved, quarters(61, 45).transformed(QTransform().rotate(90))));
    }
    void metadataCarriedOver_data() { rowsOf<QString>("format", {{"jpeg", "jpg"}, {"png", "png"}}); }
    void metadataCarriedOver()
    {
        QFETCH(QString, format);
        const QString file = path(QStringLiteral("meta.") + format);
        QImage source = quarters(120, 80);
        source.setColorSpace(QColorSpace(QColorSpace::AdobeRgb));
        QVERIFY(write(file, encoded(source, qPrintable(format), 300)));
        QVERIFY(writeTags(file, {QStringLiteral("-Orientation#=6"), QStringLiteral("-Make=Quaydrop Test"),
                                 QStringLiteral("-ExifImageWidth=120"), QStringLiteral("-ExifImageHeight=80")}));
        EditedPicture picture = opened(file);
        QCOMPARE(picture.image().pixels.size(), QSize(80, 120)); // stood up
        QVERIFY(picture.crop(QRect(10, 20, 50, 70), QSizeF(12, 16.8)));
        const QString saved = path(QStringLiteral("meta-saved.") + format);
        QVERIFY(write(saved, savedBytes(picture)));

        const QJsonObject t = tags(saved);
        QCOMPARE(t.value(QStringLiteral("Make")).toString(), QStringLiteral("Quaydrop Test"));
        QCOMPARE(t.value(QStringLiteral("Orientation")).toInt(), 1);
        QCOMPARE(t.value(QStringLiteral("ExifImageWidth")).toInt(), 50);
        QCOMPARE(t.value(QStringLiteral("ExifImageHeight")).toInt(), 70);
        QVERIFY2(t.value(QStringLiteral("ProfileDescription")).toString().contains(QStringLiteral("Adobe")),
                 qPrintable(t.value(QStringLiteral("ProfileDescription")).toString()));
        const QImage back = storedPixels(saved);
        QCOMPARE(back.size(), QSize(50, 70));
        QCOMPARE(qRound(back.dotsPerMeterX() * 0.0254), 300);
        QCOMPARE(back.colorSpace(), QColorSpace(QColorSpace::AdobeRgb));
    }
    void savedTypeFollowsTheSource_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<quint64>("code");
        const QImage img = picture(40, 30, true);
        QTest::newRow("png") << "a.png" << encoded(img, "png") << ImageTypeCode::PNG;
        QTest::newRow("jpeg") << "b.jpeg" << encoded(img, "jpg") << ImageTypeCode::JPEG;
        QTest::newRow("bmp") << "c.bmp" << encoded(img, "bmp") << ImageTypeCode::BMP;
        QTest::newRow("tiff") << "d.tif" << encoded(img, "tiff") << ImageTypeCode::TIFF;
        QTest::newRow("gif") << "e.gif" << animatedGif({100}) << ImageTypeCode::GIF;
        // The type comes from the first byte: a WebP (R...) is written as PNG, under its own name.
        QTest::newRow("webp by its first byte") << "f.webp" << encoded(img, "webp") << ImageTypeCode::PNG;
    }
    void savedTypeFollowsTheSource()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, bytes);
        QFETCH(quint64, code);
        QVERIFY(write(path(name), bytes));
        EditedPicture picture = opened(path(name));
        QVERIFY(!picture.isNull());
        picture.rotate(false);
        const auto written = PictureSaver::writeBeside(m_dir.path(), path(name), savedBytes(picture));
        QVERIFY(written.ok());
        QCOMPARE(QFileInfo(written.value()).fileName(), PictureSaver::baseName(name) + QLatin1Char('.') +
                                                            PictureSaver::extension(name));
        const QByteArray saved = readAll(written.value());
        QCOMPARE(Utils::getImageFileTypeFromData(saved), code);
        QCOMPARE(decoded(saved).size(), picture.image().pixels.size());
    }
    void paintLayerIsMerged()
    {
        const QString file = path(QStringLiteral("paint.png"));
        QVERIFY(write(file, encoded(quarters(100, 80), "png", 144)));
        const EditedPicture picture = opened(file);
        QImage layer(100, 80, QImage::Format_ARGB32_Premultiplied);
        layer.fill(Qt::transparent);
        layer.setPixel(3, 3, qRgba(0, 0, 255, 255));
        layer.setPixel(80, 70, qRgba(0, 64, 0, 128)); // half-covering green over white
        const QImage saved = decoded(savedBytes(picture, layer));
        QCOMPARE(saved.pixel(3, 3), qRgb(0, 0, 255));
        QCOMPARE(saved.pixelColor(80, 70).red(), 127);
        QCOMPARE(saved.pixelColor(80, 70).green(), 191);
        QCOMPARE(saved.pixel(50, 10), qRgb(0, 255, 0)); // the picture where nothing was painted
        QCOMPARE(qRound(saved.dotsPerMeterX() * 0.0254), 144);
    }
    void namesBesideTheSource()
    {
        QDir(m_dir.path()).mkdir(QStringLiteral("names"));
        const QString file = path(QStringLiteral("names/photo.jpg"));
        QVERIFY(write(file, encoded(picture(32, 32), "jpg")));
        const EditedPicture picture = opened(file);
        const QString folder = path(QStringLiteral("names"));
        QCOMPARE(PictureSaver::writeBeside(folder, file, savedBytes(picture)).valueOr({}), folder + "/_Quaydrop-photo.jpg");
        QCOMPARE(PictureSaver::writeBeside(folder, file, savedBytes(picture)).valueOr({}), folder + "/_Quaydrop-photo 1.jpg");
        QCOMPARE(PictureSaver::writeAt(folder + "/chosen.jpg", "x").valueOr({}), folder + "/chosen.jpg");
        QCOMPARE(PictureSaver::writeAt(folder + "/chosen.jpg", "yz").valueOr({}), folder + "/chosen.jpg"); // asked first
        QCOMPARE(readAll(folder + "/chosen.jpg"), QByteArray("yz"));
        QCOMPARE(QDir(folder).entryList(QDir::Files | QDir::Hidden).size(), 4);
    }

private:
    QTemporaryDir m_dir;
    QString path(const QString &name) const { return m_dir.filePath(name); }
};

QTEST_MAIN(EditedPictureTest)
#include "tst_editedpicture.moc"

// The editor's picture on real files: what it refuses to open, photos stood up by their EXIF
// orientation and saved upright with the tag cleared, the resolution, colour profile and EXIF carried
// into the saved file, JPEG quarter turns that leave the DCT data untouched (checked against jpegtran),
// and the saved file's type and name. Crops and a folder that cannot be written: tst_editor's window cases.
// Then the paint renderer against a reference drawn here from the stroke rules themselves: dabs every
// brushPixelStep along a segment (none at its end), a square point sprite of pointSize x the surface's
// scale, the stamp sampled bilinearly with its bytes read alpha first, blended (one, one minus source
// alpha) or erased (zero, one minus source alpha) into an 8-bit layer. At most one unit per channel apart.

#include "EditorFixtures.h"
#include "ImageFixtures.h"
#include "TestRows.h"

#include "editor/paint/AKPaintControl.h"
#include "editor/paint/BrushImages.h"
#include "editor/paint/PaintRenderer.h"
#include "editor/picture/EditedPicture.h"
#include "editor/picture/PictureSaver.h"
#include "images/ImageTypeCode.h"
#include "utils/Utils.h"

#include <QColorSpace>
#include <QDir>
#include <QPainter>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>

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

// ---- the reference: plain double arithmetic, one pixel at a time ----

struct RefTexture
{
    int w = 0, h = 0;
    std::vector<double> rgba;
    double at(int x, int y, int k) const
    {
        x = ((x % w) + w) % w;
        y = ((y % h) + h) % h;
        return rgba[size_t((y * w + x) * 4 + k)];
    }
};

RefTexture refTexture(float hardness, float alpha)
{
    QImage stamp(QStringLiteral(":/Brushes/Brush_hardness_%1.png").arg(hardness >= 1.0f ? 100 : 0));
    if (alpha != 1.0f) {
        QImage faded(stamp.size(), QImage::Format_ARGB32_Premultiplied);
        faded.fill(Qt::transparent);
        QPainter p(&faded);
        p.setOpacity(alpha);
        p.drawImage(0, 0, stamp);
        p.end();
        stamp = faded;
    }
    stamp = stamp.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    RefTexture t;
    t.w = stamp.width();
    t.h = stamp.height();
    for (int y = 0; y < t.h; ++y)
        for (int x = 0; x < t.w; ++x) {
            const QRgb p = stamp.pixel(x, y);
            // Bytes A, R, G, B uploaded under the label R, G, B, A.
            for (int v : {qAlpha(p), qRed(p), qGreen(p), qBlue(p)})
                t.rgba.push_back(v / 255.0);
        }
    return t;
}

double sample(const RefTexture &t, double s, double u, int k)
{
    const double x = s * t.w - 0.5, y = u * t.h - 0.5;
    const int x0 = int(std::floor(x)), y0 = int(std::floor(y));
    const double fx = x - x0, fy = y - y0;
    const double top = t.at(x0, y0, k) * (1 - fx) + t.at(x0 + 1, y0, k) * fx;
    const double bottom = t.at(x0, y0 + 1, k) * (1 - fx) + t.at(x0 + 1, y0 + 1, k) * fx;
    return top * (1 - fy) + bottom * fy;
}

void referenceDab(QImage &layer, double cx, double cyUp, double size, const AKPaintStep &step, const RefTexture &tex)
{
    const double cy = layer.height() - cyUp; // image rows run down
    size = std::max(1.0, size);
    for (int r = 0; r < layer.height(); ++r)
        for (int c = 0; c < layer.width(); ++c) {
            const double px = c + 0.5, py = r + 0.5;
            if (px < cx - size / 2 || px >= cx + size / 2 || py < cy - size / 2 || py >= cy + size / 2)
                continue;
            const double s = 0.5 + (px - cx) / size, u = 0.5 + (py - cy) / size;
            double frag[4];
            const double colour[4] = {step.eraser ? 0 : step.color.red, step.eraser ? 0 : step.color.green,
                                      step.eraser ? 0 : step.color.blue, step.eraser ? 1 : step.color.alpha};
            for (int k = 0; k < 4; ++k)
                frag[k] = sample(tex, s, u, k) * colour[k];
            const QRgb d = layer.pixel(c, r);
            const double dst[4] = {qRed(d) / 255.0, qGreen(d) / 255.0, qBlue(d) / 255.0, qAlpha(d) / 255.0};
            int out[4];
            for (int k = 0; k < 4; ++k) {
                const double v = step.eraser ? dst[k] * (1 - frag[3]) : frag[k] + dst[k] * (1 - frag[3]);
                out[k] = int(std::lround(std::clamp(v, 0.0, 1.0) * 255));
            }
            layer.setPixel(c, r, qRgba(out[0], out[1], out[2], out[3]));
        }
}

QImage reference(const QList<AKPaintStep> &steps, QSize size)
{
    QImage layer(size, QImage::Format_ARGB32_Premultiplied);
    layer.fill(Qt::transparent);
    for (const AKPaintStep &step : steps) {
        const double w = size.width(), h = size.height();
        const double sx = step.backingSize.width() >= 1 ? w / step.backingSize.width() : 1.0;
        const double sy = step.backingSize.height() >= 1 ? h / step.backingSize.height() : 1.0;
        const double dabSize = step.pointSize * std::sqrt(sx * sy);
        const RefTexture tex = refTexture(step.hardness, step.alpha);
        const double x0 = (step.start.x() + 0.5) * w, y0 = h - (step.start.y() + 0.5) * h;
        const double x1 = (step.end.x() + 0.5) * w, y1 = h - (step.end.y() + 0.5) * h;
        const int n = std::max(1, int(std::ceil(std::hypot(x1 - x0, y1 - y0) / step.brushPixelStep)));
        for (int i = 0; i < n; ++i) {
            const double t = double(i) / n;
            referenceDab(layer, x0 + (x1 - x0) * t, y0 + (y1 - y0) * t, dabSize, step, tex);
        }
    }
    return layer;
}

int maxDifference(const QImage &a, const QImage &b)
{
    int worst = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) {
            const QRgb p = a.pixel(x, y), q = b.pixel(x, y);
            worst = std::max({worst, std::abs(qRed(p) - qRed(q)), std::abs(qGreen(p) - qGreen(q)),
                              std::abs(qBlue(p) - qBlue(q)), std::abs(qAlpha(p) - qAlpha(q))});
        }
    return worst;
}

bool isEmpty(const QImage &image)
{
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixel(x, y) != 0)
                return false;
    return true;
}

AKPaintStep step(QPointF a, QPointF b, float size, float hardness = 1, bool eraser = false,
                 PaintColor color = {0.9, 0.2, 0.1, 1}, float spacing = 0.51f, QSizeF backing = QSizeF(120, 90),
                 float alpha = 1)
{
    return AKPaintStep(color, a, b, size, hardness, eraser, alpha, spacing, backing);
}

// A stroke of several segments, as a drag records them.
QList<AKPaintStep> zigzag(float size, float hardness, PaintColor color, QSizeF backing = QSizeF(120, 90))
{
    const QPointF points[] = {{-0.4, -0.3}, {-0.2, 0.1}, {0.0, -0.1}, {0.13, 0.27}, {0.31, 0.05}};
    QList<AKPaintStep> steps;
    for (size_t i = 0; i + 1 < std::size(points); ++i)
        steps.append(step(points[i], points[i + 1], size, hardness, false, color, size * 0.1f, backing));
    return steps;
}

} // namespace

using StepList = QList<AKPaintStep>;
Q_DECLARE_METATYPE(StepList)

class EditorPictureTest : public QObject
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
        QCOMPARE(QImage::fromData(savedBytes(dot)).size(), QSize(1, 1));
        const QString file = path(QStringLiteral("edit.jpg"));
        QVERIFY(write(file, encoded(picture(64, 48), "jpg", 72, 80)));
        EditedPicture picture = opened(file);
        picture.rotate(true);
        QVERIFY(picture.crop(QRect(0, 0, 48, 64), QSizeF(48, 64))); // the whole picture: still only turned
        QVERIFY(picture.onlyTurned());
        QVERIFY(picture.crop(QRect(0, 0, 40, 64), QSizeF(40, 64)));
        QVERIFY(!picture.onlyTurned());
        QCOMPARE(QImage::fromData(savedBytes(picture)).size(), QSize(40, 64));
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
        QCOMPARE(QImage::fromData(saved).size(), picture.image().pixels.size());
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
        const QImage saved = QImage::fromData(savedBytes(picture));
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
        QCOMPARE(QImage::fromData(saved).size(), picture.image().pixels.size());
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
        const QImage saved = QImage::fromData(savedBytes(picture, layer));
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
private Q_SLOTS:
    void sizesFromTheLineWidth_data()
    {
        QTest::addColumn<float>("hardness");
        QTest::addColumn<float>("width");
        QTest::addColumn<float>("pointSize");
        QTest::newRow("defaults") << 1.0f << 5.0f << 5.1f;
        QTest::newRow("soft") << 0.0f << 10.0f << 16.2f;
        QTest::newRow("half") << 0.5f << 20.0f << 26.4f;
    }
    void sizesFromTheLineWidth()
    {
        QFETCH(float, hardness);
        QFETCH(float, width);
        QFETCH(float, pointSize);
        PaintTool tool;
        AKPaintControl control(tool);
        QCOMPARE(tool.pointSize, 5.1f); // the defaults: width 5, hard
        QCOMPARE(tool.brushPixelStep, 0.51f);
        QCOMPARE(tool.brushColor, (PaintColor{0, 1, 0, 1}));
        control.setHardness(hardness);
        control.setLineWidth(width);
        QCOMPARE(tool.pointSize, pointSize);
        QCOMPARE(tool.brushPixelStep, float(double(pointSize) * 0.1));
    }
    void brushFiles_data()
    {
        QTest::addColumn<float>("hardness");
        QTest::addColumn<QString>("file");
        QTest::newRow("1.0 is the hard one") << 1.0f << ":/Brushes/Brush_hardness_100.png";
        QTest::newRow("0.99 cuts to the soft one") << 0.99f << ":/Brushes/Brush_hardness_0.png";
        QTest::newRow("0 is the soft one") << 0.0f << ":/Brushes/Brush_hardness_0.png";
    }
    void brushFiles()
    {
        QFETCH(float, hardness);
        QFETCH(QString, file);
        QCOMPARE(BrushImages::resourceName(hardness), file);
        const QImage stamp = BrushImages::brushImageWithHardness(hardness, false, 1.0f);
        QVERIFY(!stamp.isNull());
        QCOMPARE(stamp.pixelColor(stamp.width() / 2, stamp.height() / 2).alpha(), 255);
        QCOMPARE(stamp.pixelColor(0, 0).alpha(), 0);
        // A faded brush is a copy at that alpha.
        const QImage faded = BrushImages::brushImageWithHardness(hardness, false, 0.5f);
        QVERIFY(std::abs(faded.pixelColor(faded.width() / 2, faded.height() / 2).alpha() - 128) <= 1);
    }
    void dabPlacement()
    {
        DabBuffer buffer;
        // A zero-length segment lays exactly one dab, at its start (y up: row 30 of 100 is 70).
        QCOMPARE(PaintRenderer::dabsAlongSegment({-0.3, -0.2}, {-0.3, -0.2}, QSizeF(100, 100), 1.0f, buffer), 1);
        QCOMPARE(buffer.data()[0], 20.0f);
        QCOMPARE(buffer.data()[1], 70.0f);
        // 10 pixels at a step of 3: ceil(10 / 3) = 4 dabs at t = 0, 1/4, 1/2, 3/4; the end has none.
        QCOMPARE(PaintRenderer::dabsAlongSegment({-0.5, 0}, {-0.4, 0}, QSizeF(100, 100), 3.0f, buffer), 4);
        for (int i = 0; i < 4; ++i)
            QCOMPARE(buffer.data()[2 * i], float(i * 2.5));
    }
    void matchesTheReference_data()
    {
        QTest::addColumn<StepList>("steps");
        QTest::addColumn<QSize>("size");
        QTest::newRow("hard stroke") << zigzag(6.1f, 1, {0.9, 0.2, 0.1, 1}) << QSize(120, 90);
        QTest::newRow("soft wide stroke") << zigzag(17.3f, 0, {0.1, 0.4, 0.95, 1}) << QSize(120, 90);
        QTest::newRow("translucent colour") << zigzag(9.0f, 1, {1, 1, 0, 0.4}) << QSize(120, 90);
        // Drawn at 2.5 times the size it was painted at, as when saving: bigger dabs, the same spacing.
        QTest::newRow("scaled to a larger surface") << zigzag(5.1f, 1, {0.2, 0.8, 0.3, 1}) << QSize(300, 225);
        QTest::newRow("stretched surface") << zigzag(7.0f, 0, {0.5, 0.5, 0.5, 1}) << QSize(200, 90);
        StepList erased = zigzag(12.0f, 1, {0.9, 0.2, 0.1, 1});
        erased.append(step({-0.45, 0.0}, {0.45, 0.0}, 8.0f, 0, true, {0.3, 0.3, 0.3, 1}, 0.8f));
        QTest::newRow("eraser across a stroke") << erased << QSize(120, 90);
        StepList tiny;
        tiny.append(step({-0.2, -0.2}, {0.3, 0.25}, 0.6f, 1, false, {0, 0, 1, 1}, 0.3f));
        QTest::newRow("dabs under a pixel") << tiny << QSize(120, 90);
        StepList noBacking;
        noBacking.append(step({-0.3, 0.1}, {0.2, -0.1}, 6.0f, 1, false, {0, 1, 0, 1}, 0.6f, QSizeF(0.5, 0.5)));
        QTest::newRow("backing under one pixel counts as scale 1") << noBacking << QSize(120, 90);
        StepList faded;
        faded.append(step({-0.3, 0.1}, {0.2, -0.1}, 11.0f, 1, false, {1, 0, 1, 1}, 1.1f, QSizeF(120, 90), 0.5f));
        QTest::newRow("brush alpha below 1") << faded << QSize(120, 90);
        StepList offSurface;
        offSurface.append(step({-0.7, -0.6}, {0.8, 0.65}, 9.0f, 0, false, {1, 0.5, 0, 1}, 0.9f));
        QTest::newRow("beyond the edges is clipped") << offSurface << QSize(120, 90);
    }
    void matchesTheReference()
    {
        QFETCH(StepList, steps);
        QFETCH(QSize, size);
        PaintRenderer renderer;
        PaintTool tool;
        const QImage drawn = renderer.snapshotWithSize(steps, size, tool);
        const QImage expected = reference(steps, size);
        QVERIFY(!isEmpty(expected));
        const int difference = maxDifference(drawn, expected);
        QVERIFY2(difference <= 1, qPrintable(QStringLiteral("differs by %1").arg(difference)));
    }
    // The pixels depend on the steps alone; the tool is left as the last step set it.
    void toolAndPixels()
    {
        const StepList steps = zigzag(8.0f, 0, {0.3, 0.6, 0.9, 1}) + zigzag(5.0f, 1, {1, 0, 0, 1});
        PaintRenderer renderer;
        PaintTool fresh;
        const QImage first = renderer.snapshotWithSize(steps, QSize(120, 90), fresh);
        PaintTool odd{.pointSize = 99, .brush = BrushImages::brushImageWithHardness(0.3f, true, 0.2f), .pointAlpha = 0.2f,
                      .hardness = 0.3f, .eraser = true};
        PaintRenderer other;
        QCOMPARE(other.snapshotWithSize(steps, QSize(120, 90), odd), first);
        QCOMPARE(renderer.snapshotWithSize(steps, QSize(120, 90), fresh), first);
        // Drawn at twice the backing size: the size left behind is scaled, the spacing is not.
        const StepList last{step({0, 0}, {0.1, 0.1}, 5, 1, false, {1, 0, 0, 1}, 0.5f),
                            step({0.1, 0.1}, {0.2, 0.1}, 7, 0.5f, true, {0, 0, 1, 1}, 0.7f, QSizeF(120, 90), 0.8f)};
        renderer.snapshotWithSize(last, QSize(240, 180), fresh);
        QCOMPARE(fresh.pointSize, 14.0f);
        QCOMPARE(fresh.brushPixelStep, 0.7f);
        QCOMPARE(fresh.brushColor, (PaintColor{0, 0, 1, 1}));
        QCOMPARE(fresh.eraser, true);
        QCOMPARE(fresh.hardness, 0.5f);
        QCOMPARE(fresh.pointAlpha, 0.8f);
    }
    void cachedLayerEqualsAWholeRedraw()
    {
        AKPaintSession session;
        const StepList steps = zigzag(9.0f, 1, {0.8, 0.1, 0.5, 1});
        PaintTool tool;
        StrokeLayer layer;
        for (const AKPaintStep &s : steps) {
            session.addStep(s);
            QVERIFY(layer.sync(session, QSize(120, 90), tool));
        }
        PaintRenderer renderer;
        QCOMPARE(layer.image(), renderer.snapshotWithSize(session.steps(), QSize(120, 90), tool));
        QVERIFY(!layer.sync(session, QSize(120, 90), tool)); // nothing new: nothing drawn
        // An undo replaces the list: the layer is redrawn whole, without the undone segments.
        const QVariantList fewer = QVariantList(session.dataArray().mid(0, 2));
        session.setDataArray(fewer);
        QVERIFY(layer.sync(session, QSize(120, 90), tool));
        QCOMPARE(layer.image(), renderer.snapshotWithSize(session.steps(), QSize(120, 90), tool));
        // A new size redraws too.
        QVERIFY(layer.sync(session, QSize(60, 45), tool));
        QCOMPARE(layer.image().size(), QSize(60, 45));
        QCOMPARE(layer.image(), renderer.snapshotWithSize(session.steps(), QSize(60, 45), tool));
        session.clear();
        QVERIFY(layer.sync(session, QSize(60, 45), tool));
        QVERIFY(isEmpty(layer.image()));
    }

private:
    QTemporaryDir m_dir;
    QString path(const QString &name) const { return m_dir.filePath(name); }
};

QTEST_MAIN(EditorPictureTest)
#include "tst_editorpicture.moc"

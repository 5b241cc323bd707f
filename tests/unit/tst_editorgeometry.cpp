// The editor's arithmetic, with the numbers its rules are stated in: the crop frame's eight dots, hit
// testing, the clamp, drags by a dot and slides, alignment, the pixel size of the frame, the crop in
// pixels, the number fields' rules and the key table; and the paint strokes: a segment's serialised
// form (the undo history's), the session's list operations, and the arithmetic that keeps strokes on
// the picture through crops, quarter turns and new view sizes.

#include "editor/crop/CropDot.h"
#include "editor/crop/CropFrame.h"
#include "editor/crop/CropSizeEntry.h"
#include "editor/crop/EditorGeometry.h"
#include "editor/paint/AKPaintSession.h"

#include <QTest>

#include <cmath>
#include <optional>

using namespace CropFrame;
using EditorKeys::Action;
using Actions = std::vector<Action>;
using MaybeDot = std::optional<int>;
using MaybeText = std::optional<QString>;

Q_DECLARE_METATYPE(MaybeDot)
Q_DECLARE_METATYPE(MaybeText)
Q_DECLARE_METATYPE(Actions)
Q_DECLARE_METATYPE(CropSizeEntry::Field)

namespace {

AKPaintStep sampleStep(QPointF start = {0.1, -0.2}, QPointF end = {0.3, 0.4})
{
    return AKPaintStep({0.1, 0.2, 0.3, 0.9}, start, end, 5.1f, 1.0f, false, 1.0f, 0.51f, QSizeF(800, 600));
}

// Where a normalised point lies in pixels of a surface of this size.
QPointF pixelOf(QPointF p, QSizeF size)
{
    return QPointF((p.x() + 0.5) * size.width(), (p.y() + 0.5) * size.height());
}

bool near(QPointF a, QPointF b)
{
    return std::abs(a.x() - b.x()) < 1e-9 && std::abs(a.y() - b.y()) < 1e-9;
}

} // namespace

class EditorGeometryTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    // The dots 5 points inside a view; the frame's limit is the picture outset by 5, one point at the least.
    void dotsAndLimits()
    {
        // x = position.x x (width - 10) + 5, and likewise for y.
        const QSizeF bounds(110, 60);
        QCOMPARE(CropDot::dots()[0].convertToView(bounds), QPointF(5, 5));
        QCOMPARE(CropDot::dots()[1].convertToView(bounds), QPointF(5, 30));
        QCOMPARE(CropDot::dots()[4].convertToView(bounds), QPointF(55, 55));
        QCOMPARE(CropDot::dots()[7].convertToView(bounds), QPointF(105, 55));
        // The frame lies 5 points inside its view: the smallest one shows a single point.
        QCOMPARE(cropFrame(QSizeF(11, 11)), QRectF(5, 5, 1, 1));
        QCOMPARE(cropFrame(QSizeF(210, 110)), QRectF(5, 5, 200, 100));
        // A picture smaller than the view: scale 1, centred, and the frame's limit is the picture outset by 5.
        const QRectF img = EditorGeometry::getImgRectInsideImgView(QSizeF(100, 50), QSizeF(500, 400));
        QCOMPARE(img, QRectF(200, 175, 100, 50));
        QCOMPARE(EditorGeometry::boundsFrameForCropView(img, QPointF(0, 0)), QRectF(195, 170, 110, 60));
        QCOMPARE(EditorGeometry::boundsFrameForCropView(img, QPointF(10, 20)), QRectF(205, 190, 110, 60));
        // A 1 x 1 picture still has a frame: the 11-point minimum fits its limit exactly.
        const QRectF dot = EditorGeometry::getImgRectInsideImgView(QSizeF(1, 1), QSizeF(500, 400));
        const QRectF limit = EditorGeometry::boundsFrameForCropView(dot, QPointF());
        QCOMPARE(ensureInsideBoundsFrame(limit, limit), limit);
        QCOMPARE(cropFrame(limit.size()).size(), QSizeF(1, 1));
    }
    void ensureInside_data()
    {
        QTest::addColumn<QRectF>("in");
        QTest::addColumn<QRectF>("limit");
        QTest::addColumn<QRectF>("out");
        const QRectF limit(10, 20, 300, 200);
        QTest::newRow("inside stays") << QRectF(50, 50, 100, 80) << limit << QRectF(50, 50, 100, 80);
        QTest::newRow("too small grows to 11") << QRectF(50, 50, 3, 0) << limit << QRectF(50, 50, 11, 11);
        QTest::newRow("left and below pushed in") << QRectF(0, 0, 100, 80) << limit << QRectF(10, 20, 100, 80);
        QTest::newRow("right and above pulled back") << QRectF(250, 190, 100, 80) << limit << QRectF(210, 140, 100, 80);
        // Step 3 after step 2, no second check: the right edge rests on the limit, the left lies outside.
        QTest::newRow("wider than the limit") << QRectF(50, 50, 400, 80) << limit << QRectF(-90, 50, 400, 80);
        QTest::newRow("11-point floor at the corner") << QRectF(305, 215, 1, 1) << limit << QRectF(299, 209, 11, 11);
    }
    void ensureInside()
    {
        QFETCH(QRectF, in);
        QFETCH(QRectF, limit);
        QFETCH(QRectF, out);
        QCOMPARE(ensureInsideBoundsFrame(in, limit), out);
    }
    void drag_data()
    {
        QTest::addColumn<QRectF>("old");
        QTest::addColumn<float>("dx");
        QTest::addColumn<float>("dy");
        QTest::addColumn<MaybeDot>("dot");
        QTest::addColumn<QRectF>("limit");
        QTest::addColumn<QRectF>("out");
        const QRectF picture(0, 0, 400, 300);
        // The frame fitted to the picture, dragged further left by its left dot: x smaller and the width
        // bigger, the clamp pulls x back and the intersection cuts the width; edge and size are kept.
        QTest::newRow("left dot past the left edge") << picture << -20.0f << 0.0f << MaybeDot(1) << picture << picture;
        QTest::newRow("slide past the right keeps the width")
            << QRectF(200, 100, 150, 100) << 120.0f << 0.0f << MaybeDot() << picture << QRectF(250, 100, 150, 100);
        QTest::newRow("slide inside") << QRectF(100, 100, 100, 100) << 10.5f << -20.25f << MaybeDot() << picture
                                      << QRectF(110.5, 79.75, 100, 100);
        QTest::newRow("top right dot grows") << QRectF(100, 100, 100, 100) << 30.0f << 40.0f << MaybeDot(7) << picture
                                             << QRectF(100, 100, 130, 140);
        QTest::newRow("bottom left dot moves origin, shrinks")
            << QRectF(100, 100, 100, 100) << 30.0f << 40.0f << MaybeDot(0) << picture << QRectF(130, 140, 70, 60);
        // A dot dragged past the limit cuts the size to it, where a slide would keep the size: the clamp
        // pushes the tall frame down past the bottom, and the intersection keeps the whole height.
        QTest::newRow("top dot past the top is cut") << QRectF(100, 100, 100, 100) << 0.0f << 500.0f << MaybeDot(4)
                                                     << picture << QRectF(100, 0, 100, 300);
        // Past the right edge the width sits at its floor, and from there the 11-point frame travels along.
        QTest::newRow("left dot past the right edge") << QRectF(50, 0, 100, 50) << 150.0f << 0.0f << MaybeDot(1)
                                                      << QRectF(0, 0, 400, 100) << QRectF(200, 0, 11, 50);
        QTest::newRow("left dot further past") << QRectF(50, 0, 100, 50) << 200.0f << 0.0f << MaybeDot(1)
                                               << QRectF(0, 0, 400, 100) << QRectF(250, 0, 11, 50);
        QTest::newRow("middle dots ignore the other axis") << QRectF(100, 100, 100, 100) << 25.0f << 70.0f << MaybeDot(6)
                                                           << picture << QRectF(100, 100, 125, 100);
    }
    void drag()
    {
        QFETCH(QRectF, old);
        QFETCH(float, dx);
        QFETCH(float, dy);
        QFETCH(MaybeDot, dot);
        QFETCH(QRectF, limit);
        QFETCH(QRectF, out);
        QCOMPARE(calculateFrameWithOldFrame(old, dx, dy, dot, limit), out);
    }
    void hitTest_data()
    {
        QTest::addColumn<QPointF>("point");
        QTest::addColumn<QSizeF>("bounds");
        QTest::addColumn<bool>("hidden");
        QTest::addColumn<MaybeDot>("dot");
        const QSizeF big(210, 110);
        QTest::newRow("on bottom left") << QPointF(5, 5) << big << false << MaybeDot(0);
        QTest::newRow("5 off, both limits inclusive") << QPointF(10, 0) << big << false << MaybeDot(0);
        QTest::newRow("just beyond") << QPointF(10.01, 5) << big << false << MaybeDot();
        QTest::newRow("top right") << QPointF(203, 107) << big << false << MaybeDot(7);
        QTest::newRow("inside, away from dots slides") << QPointF(60, 40) << big << false << MaybeDot();
        QTest::newRow("hidden frame has no dots") << QPointF(5, 5) << big << true << MaybeDot();
        // At the 11-point minimum nearly every press falls on the first dot.
        QTest::newRow("smallest frame, far corner") << QPointF(10, 10) << QSizeF(11, 11) << false << MaybeDot(0);
        QTest::newRow("smallest frame, centre") << QPointF(5.5, 5.5) << QSizeF(11, 11) << false << MaybeDot(0);
        QTest::newRow("smallest frame, beyond the first") << QPointF(10.5, 10.5) << QSizeF(11, 11) << false << MaybeDot(4);
    }
    void hitTest()
    {
        QFETCH(QPointF, point);
        QFETCH(QSizeF, bounds);
        QFETCH(bool, hidden);
        QFETCH(MaybeDot, dot);
        QCOMPARE(clickedDotForPoint(point, bounds, hidden), dot);
    }
    // The limit when there is none, half-point sizes, and rows counted from the bottom.
    void rectangles()
    {
        QCOMPARE(boundsFrame(QRectF(5, 5, 100, 80), QSizeF(500, 400)), QRectF(5, 5, 100, 80));
        QCOMPARE(boundsFrame(std::nullopt, QSizeF(500, 400)), QRectF(0, 0, 500, 400));
        QCOMPARE(boundsFrame(QRectF(5, 5, 0.5, 80), QSizeF(500, 400)), QRectF(0, 0, 500, 400));
        QCOMPARE(EditorGeometry::roundToNearest5Des(0.2f), 0.5f);
        QCOMPARE(EditorGeometry::roundToNearest5Des(10.74f), 10.5f);
        QCOMPARE(EditorGeometry::roundToNearest5Des(10.99f), 10.5f);
        QCOMPARE(EditorGeometry::getImgRect(QRectF(3.25, 4.5, 200.8, 100.3), QPointF(1, 1)), QRectF(4.25, 5.5, 200.5, 100));
        QCOMPARE(EditorGeometry::toImageRows(QRect(10, 0, 50, 20), 100), QRect(10, 80, 50, 20));
        QCOMPARE(EditorGeometry::toImageRows(QRect(0, 70, 5, 30), 100), QRect(0, 0, 5, 30));
    }
    void scaleNeverEnlarges_data()
    {
        QTest::addColumn<QSizeF>("picture");
        QTest::addColumn<QSizeF>("view");
        QTest::addColumn<float>("scale");
        QTest::newRow("wide") << QSizeF(2000, 1000) << QSizeF(500, 400) << 0.25f;
        QTest::newRow("tall") << QSizeF(1000, 4000) << QSizeF(500, 400) << 0.1f;
        QTest::newRow("small stays") << QSizeF(100, 50) << QSizeF(500, 400) << 1.0f;
        QTest::newRow("under a point") << QSizeF(0.5, 50) << QSizeF(500, 400) << 0.0f;
    }
    void scaleNeverEnlarges()
    {
        QFETCH(QSizeF, picture);
        QFETCH(QSizeF, view);
        QFETCH(float, scale);
        QCOMPARE(EditorGeometry::getScaleForRealImgSize(picture, QRectF(QPointF(), view)), scale);
    }
    void alignment_data()
    {
        QTest::addColumn<int>("tag");
        QTest::addColumn<QRectF>("out");
        // i = (100, 50, 400, 300), z = 110 x 60.
        QTest::newRow("centre") << 0 << QRectF(245, 170, 110, 60);
        QTest::newRow("bottom left") << 1 << QRectF(95, 45, 110, 60);
        QTest::newRow("bottom right") << 2 << QRectF(395, 45, 110, 60);
        QTest::newRow("top left") << 3 << QRectF(95, 295, 110, 60);
        QTest::newRow("top right") << 4 << QRectF(395, 295, 110, 60);
        QTest::newRow("unknown tag") << 9 << QRectF(0, 0, 0, 0);
    }
    void alignment()
    {
        QFETCH(int, tag);
        QFETCH(QRectF, out);
        QCOMPARE(EditorGeometry::getImgRectForImgRect(QRectF(100, 50, 400, 300), QSizeF(110, 60), tag), out);
    }
    void sizeFields()
    {
        // 300 x 300 pixels at 72 dpi across and 144 dpi down: 300 x 150 points. One factor, from the width,
        // serves both axes, so the height field shows 150.
        const double k = EditorGeometry::pixelsPerPoint(QSize(300, 300), QSizeF(300, 150));
        QCOMPARE(k, 1.0);
        QCOMPARE(EditorGeometry::getcropImgSizeDimensions(QRectF(0, 0, 300 * 0.5, 150 * 0.5), 0.5f, k), QSize(300, 150));
        // 144 dpi both ways: twice as many pixels as points.
        QCOMPARE(EditorGeometry::getcropImgSizeDimensions(QRectF(0, 0, 100.2, 50), 1.0f, 2.0), QSize(200, 100));
        // Crop rectangle (100, 100, 400, 300) at s = 0.5 with 2 pixels a point: 500 typed gives 125 points.
        const QRectF frame(95, 95, 410, 310);
        const QRectF limit(95, 95, 600, 500);
        QCOMPARE(EditorGeometry::frameForTypedSize(frame, 500, 200, 0.5f, 2.0, limit), QRectF(95, 95, 135, 60));
        // Larger than the picture: the corner moves only as far as the clamp pushes it.
        QCOMPARE(EditorGeometry::frameForTypedSize(QRectF(500, 95, 110, 60), 800, 200, 0.5f, 2.0, limit),
                 QRectF(485, 95, 210, 60));
    }
    void fullFrameCropsEverything_data()
    {
        QTest::addColumn<QSizeF>("points");
        QTest::addColumn<QSize>("pixels");
        QTest::addColumn<QSizeF>("view");
        QTest::newRow("144 dpi, scale 1") << QSizeF(400, 300) << QSize(800, 600) << QSizeF(600, 500);
        QTest::newRow("scaled down to a quarter") << QSizeF(2000, 1500) << QSize(2000, 1500) << QSizeF(500, 400);
        QTest::newRow("odd sizes") << QSizeF(1234, 987) << QSize(1234, 987) << QSizeF(701, 433);
    }
    void fullFrameCropsEverything()
    {
        QFETCH(QSizeF, points);
        QFETCH(QSize, pixels);
        QFETCH(QSizeF, view);
        const QRectF viewRect(QPointF(), view);
        const float s = EditorGeometry::getScaleForRealImgSize(points, viewRect);
        const QRectF o = EditorGeometry::getImgRectInsideImgView(points, view);
        const double k = EditorGeometry::pixelsPerPoint(pixels, points);
        const auto area = EditorGeometry::cropArea(o, o, s, k);
        QCOMPARE(area.pixelsYUp, QRect(QPoint(0, 0), pixels));
        QCOMPARE(area.points, points);
        QCOMPARE(EditorGeometry::getcropImgSizeDimensions(o, s, k), pixels);
    }
    void cropFieldRule_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("shown");
        QTest::newRow("inside stays") << "799" << "799";
        QTest::newRow("the maximum stays") << "800" << "800";
        QTest::newRow("a digit too many is taken back") << "8005" << "800";
        QTest::newRow("taken back, still above: the maximum") << "9000" << "800";
        QTest::newRow("taken back, below") << "7991" << "799";
        QTest::newRow("emptied refills") << "" << "800";
    }
    void cropFieldRule()
    {
        QFETCH(QString, typed);
        QFETCH(QString, shown);
        QCOMPARE(CropSizeEntry::fixedCropField(typed, 800), shown);
    }
    void brushFieldRule()
    {
        QCOMPARE(CropSizeEntry::fixedBrushField(QStringLiteral("0"), 1, 100), QStringLiteral("1"));
        QCOMPARE(CropSizeEntry::fixedBrushField(QStringLiteral("250"), 1, 100), QStringLiteral("100"));
        QCOMPARE(CropSizeEntry::fixedBrushField(QStringLiteral("42"), 1, 100), QStringLiteral("42"));
        QCOMPARE(CropSizeEntry::valueOf(QStringLiteral("12a")), 12.0);
        QCOMPARE(CropSizeEntry::valueOf(QStringLiteral("abc")), 0.0);
    }
    void steppedField_data()
    {
        using F = CropSizeEntry::Field;
        QTest::addColumn<F>("field");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("up");
        QTest::addColumn<bool>("popover");
        QTest::addColumn<MaybeText>("result");
        // Picture 800 x 600 pixels shown at s = 0.5; slider 1 to 100.
        QTest::newRow("brush up") << F::Brush << "5" << true << false << MaybeText("6");
        QTest::newRow("brush up at the top") << F::Brush << "100" << true << false << MaybeText();
        QTest::newRow("brush down at the bottom") << F::Brush << "1" << false << false << MaybeText();
        QTest::newRow("width up") << F::CropWidth << "799" << true << false << MaybeText("800");
        // The up limit is pixels over s (1600), so the field may pass the picture's 800.
        QTest::newRow("width up past the pixels") << F::CropWidth << "800" << true << false << MaybeText("801");
        QTest::newRow("width up at pixels over s") << F::CropWidth << "1600" << true << false << MaybeText();
        QTest::newRow("width up with the popover") << F::CropWidth << "10" << true << true << MaybeText();
        QTest::newRow("height up at pixels over s") << F::CropHeight << "1199" << true << false << MaybeText("1200");
        QTest::newRow("width down stops at 1") << F::CropWidth << "1" << false << false << MaybeText();
        QTest::newRow("width down from empty gives -1") << F::CropWidth << "" << false << false << MaybeText("-1");
        QTest::newRow("resize up") << F::ResizeWidth << "1234" << true << true << MaybeText("1235");
        QTest::newRow("resize up, five characters") << F::ResizeWidth << "12345" << true << true << MaybeText();
        QTest::newRow("resize up without the popover") << F::ResizeHeight << "12" << true << false << MaybeText();
        QTest::newRow("resize down") << F::ResizeHeight << "2" << false << true << MaybeText("1");
        QTest::newRow("no field") << F::None << "2" << true << false << MaybeText();
    }
    void steppedField()
    {
        QFETCH(CropSizeEntry::Field, field);
        QFETCH(QString, text);
        QFETCH(bool, up);
        QFETCH(bool, popover);
        QFETCH(MaybeText, result);
        const CropSizeEntry::Context context{.sliderMin = 1, .sliderMax = 100, .pixelWidth = 800, .pixelHeight = 600, .scale = 0.5f,
                                            .popoverShown = popover};
        QCOMPARE(CropSizeEntry::steppedField(field, text, up, context), result);
    }
    void keyTable_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<bool>("ctrl");
        QTest::addColumn<bool>("paintMode");
        QTest::addColumn<bool>("popover");
        QTest::addColumn<Actions>("actions");
        QTest::newRow("left nudges") << int(Qt::Key_Left) << false << false << false << Actions{Action::NudgeLeft};
        QTest::newRow("ctrl left nudges, then turns")
            << int(Qt::Key_Left) << true << false << false << Actions{Action::NudgeLeft, Action::RotateLeft};
        QTest::newRow("ctrl right nudges, then turns")
            << int(Qt::Key_Right) << true << false << false << Actions{Action::NudgeRight, Action::RotateRight};
        QTest::newRow("return crops") << int(Qt::Key_Return) << false << false << false << Actions{Action::CropImage};
        QTest::newRow("return in paint mode") << int(Qt::Key_Return) << false << true << false << Actions{};
        QTest::newRow("return with the popover") << int(Qt::Key_Return) << false << false << true << Actions{};
        QTest::newRow("z alone") << int(Qt::Key_Z) << false << false << false << Actions{};
        QTest::newRow("ctrl s saves") << int(Qt::Key_S) << true << true << false << Actions{Action::Save};
        QTest::newRow("ctrl s with the popover") << int(Qt::Key_S) << true << false << true << Actions{};
    }
    void keyTable()
    {
        QFETCH(int, key);
        QFETCH(bool, ctrl);
        QFETCH(bool, paintMode);
        QFETCH(bool, popover);
        QFETCH(Actions, actions);
        QVERIFY(EditorKeys::actionsFor(key, ctrl, paintMode, popover) == actions);
    }
    // The undo history's twelve values, and a round trip that narrows once only.
    void serialisedForm()
    {
        const QVariantList data = sampleStep().data();
        QCOMPARE(data, (QVariantList{"{0.1, -0.2}", "{0.3, 0.4}", 0.1f, 0.2f, 0.3f, 0.9f, 5.1f, 1.0f, false, 1.0f, 0.51f, "{800, 600}"}));
        for (int i : {2, 3, 4, 5, 6, 7, 9, 10})
            QCOMPARE(data[i].metaType().id(), int(QMetaType::Float));
        QCOMPARE(data[8].metaType().id(), int(QMetaType::Bool));
        const AKPaintStep original({1.0 / 3, 0.2, 0.7, 1}, {1.0 / 7, -1.0 / 9}, {0.4, 0.45}, 7.3f, 0.99f, true, 0.5f,
                                   0.73f, QSizeF(1234.5, 987.25));
        const AKPaintStep once(original.data());
        // Colour narrowed to single precision, points kept to 15 significant digits, the rest exact.
        QCOMPARE(once.color.red, double(float(1.0 / 3)));
        QVERIFY(std::abs(once.start.x() - 1.0 / 7) < 1e-15);
        QCOMPARE(once.pointSize, 7.3f);
        QCOMPARE(once.hardness, 0.99f);
        QCOMPARE(once.eraser, true);
        QCOMPARE(once.alpha, 0.5f);
        QCOMPARE(once.brushPixelStep, 0.73f);
        QCOMPARE(once.backingSize, QSizeF(1234.5, 987.25));
        // A second trip changes nothing further.
        const AKPaintStep twice(once.data());
        QCOMPARE(twice, once);
        QCOMPARE(twice.data(), once.data());
    }
    void pointText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QPointF>("point");
        QTest::newRow("plain") << "{0.25, -0.125}" << QPointF(0.25, -0.125);
        QTest::newRow("no blank") << "{1,2}" << QPointF(1, 2);
        QTest::newRow("blanks around") << " { 3 , 4 } " << QPointF(3, 4);
        QTest::newRow("missing second") << "{5}" << QPointF(5, 0);
        QTest::newRow("garbage") << "nothing" << QPointF(0, 0);
    }
    void pointText()
    {
        QFETCH(QString, text);
        QFETCH(QPointF, point);
        QCOMPARE(pointFromString(text), point);
    }
    void sessionLists()
    {
        AKPaintSession session;
        QVERIFY(session.dataArray().isEmpty());
        session.addStep(sampleStep());
        session.addStep(sampleStep({0.3, 0.4}, {0.35, 0.5}));
        const QVariantList list = session.dataArray();
        QCOMPARE(list.size(), 2);
        const AKPaintSession copy(list);
        QCOMPARE(copy.steps().size(), 2);
        QCOMPARE(copy.steps()[1].end, QPointF(0.35, 0.5));
        session.setDataArray({});
        QVERIFY(session.steps().isEmpty());
        session.setDataArray(list);
        QCOMPARE(session.steps(), copy.steps());
        session.clear();
        QVERIFY(session.steps().isEmpty());
    }
    void appendKeepsTheGeneration()
    {
        AKPaintSession session;
        const quint64 start = session.generation();
        session.addStep(sampleStep());
        QCOMPARE(session.generation(), start);
        session.rotate90Clockwise(true);
        QVERIFY(session.generation() > start);
        const quint64 turned = session.generation();
        session.refreshStepsSizeWithSx(1, 1); // even an empty change redraws
        QVERIFY(session.generation() > turned);
        const quint64 scaled = session.generation();
        session.setDataArray(session.dataArray());
        QVERIFY(session.generation() > scaled);
    }
    void strokesThroughACrop_data()
    {
        QTest::addColumn<QPointF>("point");
        QTest::addColumn<QPointF>("cropped");
        // View 400 x 300, crop (100, 50, 200, 150) in the view's y-down space.
        QTest::newRow("centre") << QPointF(0, 0) << QPointF(0, 0.5 - 0.5 * 100.0 / 150);
        QTest::newRow("crop's top left corner") << QPointF(-0.25, 50.0 / 300 - 0.5) << QPointF(-0.5, -0.5);
        QTest::newRow("crop's bottom right corner") << QPointF(0.25, 200.0 / 300 - 0.5) << QPointF(0.5, 0.5);
        // Outside the crop: kept beyond +-0.5, to be clipped when drawn.
        QTest::newRow("view's corner") << QPointF(-0.5, -0.5) << QPointF(-1.0, -5.0 / 6);
    }
    void strokesThroughACrop()
    {
        QFETCH(QPointF, point);
        QFETCH(QPointF, cropped);
        AKPaintSession session;
        session.addStep(AKPaintStep({}, point, point, 4, 1, false, 1, 1, QSizeF(800, 600)));
        session.refreshWithCropFrame(QRectF(100, 50, 200, 150), QSizeF(400, 300));
        QVERIFY2(near(session.steps()[0].start, cropped), qPrintable(stringFromPair(session.steps()[0].start.x(),
                                                                                     session.steps()[0].start.y())));
        // The backing size shrinks by the crop's share of the view.
        QCOMPARE(session.steps()[0].backingSize, QSizeF(400, 300));
    }
    // A new view size scales the backing size; frames under a point are ignored.
    void newFrames()
    {
        AKPaintSession session;
        session.addStep(sampleStep());
        session.refreshStepsWithFrameSize(QSizeF(200, 150), QSizeF(400, 300));
        QCOMPARE(session.steps()[0].backingSize, QSizeF(1600, 1200));
        const auto before = session.steps();
        session.refreshWithCropFrame(QRectF(0, 0, 0.5, 100), QSizeF(400, 300));
        session.refreshWithCropFrame(QRectF(0, 0, 100, 100), QSizeF(400, 0.9));
        session.refreshStepsWithFrameSize(QSizeF(0, 10), QSizeF(400, 300));
        QCOMPARE(session.steps(), before);
    }
    void cropTurnCropFollowsThePicture()
    {
        // A mark at pixel (250, 100) of a 400 x 300 picture shown at full size. The picture is cropped to
        // (100, 50, 200, 150), turned clockwise and cropped again to (30, 60, 100, 120); the mark must be
        // where those operations take that pixel.
        QSizeF view(400, 300);
        const QPointF mark(250, 100);
        AKPaintSession session;
        const QPointF n(mark.x() / view.width() - 0.5, mark.y() / view.height() - 0.5);
        session.addStep(AKPaintStep({}, n, n, 4, 1, false, 1, 1, view));

        QPointF expected = mark - QPointF(100, 50); // first crop
        session.refreshWithCropFrame(QRectF(100, 50, 200, 150), view);
        session.refreshStepsWithFrameSize(QSizeF(200, 150), QSizeF(200, 150));
        view = QSizeF(200, 150);
        QVERIFY(near(pixelOf(session.steps()[0].start, view), expected));

        // Two clockwise turns and one back: one clockwise turn of a 200 x 150 picture.
        for (bool clockwise : {true, true, false})
            session.rotate90Clockwise(clockwise);
        expected = QPointF(view.height() - expected.y(), expected.x());
        view = QSizeF(150, 200);
        QVERIFY(near(pixelOf(session.steps()[0].start, view), expected));
        QCOMPARE(session.steps()[0].backingSize, QSizeF(200, 150)); // not swapped by the turn itself

        expected -= QPointF(30, 60); // second crop
        session.refreshWithCropFrame(QRectF(30, 60, 100, 120), view);
        view = QSizeF(100, 120);
        QVERIFY(near(pixelOf(session.steps()[0].start, view), expected));
    }
};

QTEST_APPLESS_MAIN(EditorGeometryTest)
#include "tst_editorgeometry.moc"

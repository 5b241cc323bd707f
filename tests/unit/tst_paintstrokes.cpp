// The strokes: a segment's serialised form (the undo history's), the session's list operations, and
// the arithmetic that keeps strokes on the picture through crops, quarter turns and new view sizes.

#include "editor/paint/AKPaintSession.h"

#include <QTest>

#include <cmath>

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

class PaintStrokesTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    // The undo history's twelve values, and a round trip that narrows once only.
    void serialisedForm()
    {
        const QVariantList data = sampleStep().data();
        QCOMPARE(data.size(), 12);
        QCOMPARE(data[0].toString(), QStringLiteral("{0.1, -0.2}"));
        QCOMPARE(data[1].toString(), QStringLiteral("{0.3, 0.4}"));
        for (int i : {2, 3, 4, 5, 6, 7, 9, 10})
            QCOMPARE(data[i].metaType().id(), int(QMetaType::Float));
        QCOMPARE(data[2].toFloat(), 0.1f);
        QCOMPARE(data[5].toFloat(), 0.9f);
        QCOMPARE(data[6].toFloat(), 5.1f);
        QCOMPARE(data[8].metaType().id(), int(QMetaType::Bool));
        QCOMPARE(data[10].toFloat(), 0.51f);
        QCOMPARE(data[11].toString(), QStringLiteral("{800, 600}"));
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
    void cropFrame_data()
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
    void cropFrame()
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
    void quarterTurns_data()
    {
        QTest::addColumn<bool>("clockwise");
        QTest::addColumn<QPointF>("turned");
        QTest::newRow("clockwise: (x, y) to (-y, x)") << true << QPointF(0.125, 0.25);
        QTest::newRow("anticlockwise: (x, y) to (y, -x)") << false << QPointF(-0.125, -0.25);
    }
    void quarterTurns()
    {
        QFETCH(bool, clockwise);
        QFETCH(QPointF, turned);
        AKPaintSession session;
        session.addStep(AKPaintStep({}, {0.25, -0.125}, {0.25, -0.125}, 4, 1, false, 1, 1, QSizeF(800, 600)));
        session.rotate90Clockwise(clockwise);
        QCOMPARE(session.steps()[0].start, turned);
        QCOMPARE(session.steps()[0].backingSize, QSizeF(800, 600)); // not swapped by the turn itself
        session.rotate90Clockwise(!clockwise);
        QCOMPARE(session.steps()[0].start, QPointF(0.25, -0.125));
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

        expected = QPointF(view.height() - expected.y(), expected.x()); // clockwise turn of a 200 x 150 picture
        session.rotate90Clockwise(true);
        view = QSizeF(150, 200);
        QVERIFY(near(pixelOf(session.steps()[0].start, view), expected));

        expected -= QPointF(30, 60); // second crop
        session.refreshWithCropFrame(QRectF(30, 60, 100, 120), view);
        view = QSizeF(100, 120);
        QVERIFY(near(pixelOf(session.steps()[0].start, view), expected));
    }
};

QTEST_APPLESS_MAIN(PaintStrokesTest)
#include "tst_paintstrokes.moc"

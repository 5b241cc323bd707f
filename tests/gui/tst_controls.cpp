// The program's own controls: the switch's click, drag and key rules and its knob, the borderless
// buttons' colours, and disabling the controls below a view.

#include "widgets/DisableSubviews.h"
#include "widgets/controls/ITSwitch.h"
#include "widgets/controls/RMBorderlessButton.h"
#include "widgets/controls/SwitchGeometry.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

namespace {
// A shown switch of the panels' size.
struct ShownSwitch : ITSwitch
{
    ShownSwitch()
    {
        resize(44, 26);
        show();
    }
};
} // namespace

class ControlsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void knobGeometry_data()
    {
        QTest::addColumn<bool>("on");
        QTest::addColumn<bool>("active");
        QTest::addColumn<bool>("dragged");
        QTest::addColumn<bool>("towardsOn");
        QTest::addColumn<QRectF>("knob");
        const double rest = 42.0 / 1.8180339336395264;
        const double pressed = 42.0 / 1.38;
        QTest::newRow("off at rest") << false << false << false << false << QRectF(1, 1, rest, 24);
        QTest::newRow("on at rest") << true << false << false << false << QRectF(44 - rest - 1, 1, rest, 24);
        QTest::newRow("off, pressed: wider") << false << true << false << false << QRectF(1, 1, pressed, 24);
        QTest::newRow("off, dragged towards on") << false << true << true << true << QRectF(44 - pressed - 1, 1, pressed, 24);
        QTest::newRow("on, dragged towards off") << true << true << true << false << QRectF(1, 1, pressed, 24);
    }

    void knobGeometry()
    {
        QFETCH(bool, on);
        QFETCH(bool, active);
        QFETCH(bool, dragged);
        QFETCH(bool, towardsOn);
        QFETCH(QRectF, knob);
        const QRectF r = SwitchGeometry::rectForKnob(QSizeF(44, 26), {on, active, dragged, towardsOn});
        QVERIFY2(qFuzzyCompare(r.x(), knob.x()) && qFuzzyCompare(r.width(), knob.width()) && r.y() == 1.0 && r.height() == 24.0,
                 qPrintable(QStringLiteral("%1 %2 %3 %4").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height())));
    }

    void switchClickToggles()
    {
        ShownSwitch s;
        QSignalSpy action(&s, &ITSwitch::switched);
        QTest::mouseClick(&s, Qt::LeftButton, {}, QPoint(10, 13));
        QVERIFY(s.isOn());
        QTest::mouseClick(&s, Qt::LeftButton, {}, QPoint(10, 13));
        QVERIFY(!s.isOn());
        QCOMPARE(action.count(), 2);
        QCOMPARE(action.at(0).at(0).toBool(), true);
        // Set from code: no action.
        s.setOn(true);
        QCOMPARE(action.count(), 2);
        QVERIFY(s.isOn());
    }

    void switchDrags_data()
    {
        QTest::addColumn<bool>("startOn");
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("to");
        QTest::addColumn<bool>("endOn");
        QTest::addColumn<int>("actions");
        QTest::newRow("off, dragged to the right") << false << 8 << 38 << true << 1;
        QTest::newRow("off, dragged and back to the left") << false << 8 << 10 << false << 0;
        QTest::newRow("on, dragged to the left") << true << 38 << 4 << false << 1;
        QTest::newRow("on, dragged within the right half") << true << 36 << 30 << true << 0;
    }

    void switchDrags()
    {
        QFETCH(bool, startOn);
        QFETCH(int, from);
        QFETCH(int, to);
        QFETCH(bool, endOn);
        QFETCH(int, actions);
        ShownSwitch s;
        s.setOn(startOn);
        QSignalSpy action(&s, &ITSwitch::switched);
        QTest::mousePress(&s, Qt::LeftButton, {}, QPoint(from, 13));
        QVERIFY(s.knobState().active);
        // The drag goes past the middle and ends where the row says.
        QMouseEvent across(QEvent::MouseMove, QPointF(22, 13), s.mapToGlobal(QPointF(22, 13)), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(&s, &across);
        QMouseEvent end(QEvent::MouseMove, QPointF(to, 13), s.mapToGlobal(QPointF(to, 13)), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(&s, &end);
        QVERIFY(s.knobState().dragged);
        QTest::mouseRelease(&s, Qt::LeftButton, {}, QPoint(to, 13));
        QCOMPARE(s.isOn(), endOn);
        QCOMPARE(action.count(), actions);
        QVERIFY(!s.knobState().dragged && !s.knobState().active);
    }

    void disabledSwitchIgnoresTheMouse()
    {
        ShownSwitch s;
        s.setEnabled(false);
        QSignalSpy action(&s, &ITSwitch::switched);
        QTest::mouseClick(&s, Qt::LeftButton, {}, QPoint(10, 13));
        QVERIFY(!s.isOn());
        QCOMPARE(action.count(), 0);
        // Drawn at half opacity: its track is paler than an enabled one's.
        s.setOn(true);
        ITSwitch enabled;
        enabled.resize(44, 26);
        enabled.setOn(true);
        const QImage dim = s.grab().toImage();
        const QImage lit = enabled.grab().toImage();
        QVERIFY(QColor(dim.pixel(6, 13)).saturation() < QColor(lit.pixel(6, 13)).saturation());
    }

    void switchKeys()
    {
        ITSwitch s;
        s.show();
        QSignalSpy action(&s, &ITSwitch::switched);
        QTest::keyClick(&s, Qt::Key_Space);
        QVERIFY(s.isOn());
        QTest::keyClick(&s, Qt::Key_Space);
        QVERIFY(!s.isOn());
        QTest::keyClick(&s, Qt::Key_Right);
        QVERIFY(s.isOn());
        QTest::keyClick(&s, Qt::Key_Right); // already on: no action
        QTest::keyClick(&s, Qt::Key_Left);
        QVERIFY(!s.isOn());
        QCOMPARE(action.count(), 4);
    }

    void dimmedColours_data()
    {
        QTest::addColumn<QColor>("colour");
        QTest::addColumn<QColor>("dimmed");
        QTest::newRow("black stays black") << QColor(Qt::black) << QColor(Qt::black);
        QTest::newRow("grey") << QColor::fromRgbF(0.5f, 0.6f, 0.1f, 0.7f) << QColor::fromRgbF(0.3f, 0.4f, 0.0f, 0.7f);
    }

    void dimmedColours()
    {
        QFETCH(QColor, colour);
        QFETCH(QColor, dimmed);
        const QColor d = RMBorderlessButton::dimmedColor(colour);
        QVERIFY(std::abs(d.redF() - dimmed.redF()) < 0.01 && std::abs(d.greenF() - dimmed.greenF()) < 0.01 &&
                std::abs(d.blueF() - dimmed.blueF()) < 0.01 && std::abs(d.alphaF() - dimmed.alphaF()) < 0.01);
        RMBorderlessButton button(QStringLiteral("Share"));
        QCOMPARE(button.color(), RMBorderlessButton::defaultColor());
        button.setColor(colour);
        QEnterEvent enter(QPointF(1, 1), QPointF(1, 1), QPointF(1, 1));
        QApplication::sendEvent(&button, &enter);
        QCOMPARE(button.color(), d);
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(&button, &leave);
        QCOMPARE(button.color(), colour);
    }

    void disablingControlsLeavesContainers()
    {
        QWidget view;
        auto *layout = new QVBoxLayout(&view);
        auto *inner = new QWidget(&view);
        layout->addWidget(inner);
        auto *button = new QPushButton(inner);
        (new QVBoxLayout(inner))->addWidget(button);
        auto *field = new QLineEdit(&view);
        layout->addWidget(field);
        disableSubviews(&view, true);
        QVERIFY(!button->isEnabled() && !field->isEnabled());
        QVERIFY(inner->isEnabled() && view.isEnabled()); // containers and the view itself stay
        disableSubviews(&view, false);
        QVERIFY(button->isEnabled() && field->isEnabled());
    }
};


QTEST_MAIN(ControlsTest)
#include "tst_controls.moc"

// The program's own widgets: the switch's click, drag and key rules and its knob, the borderless
// buttons' colours, disabling the controls below a view, and the modal overlay on its own (showing,
// closing, the delegate's say, and the parent's resizability).

#include "widgets/DisableSubviews.h"
#include "widgets/JMModalOverlay.h"
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

class RecordingDelegate : public JMModalOverlayDelegate
{
public:
    QStringList calls;
    bool allowClose = true;
    void modalOverlayWillShow(JMModalOverlay *) override { calls << "willShow"; }
    void modalOverlayDidShow(JMModalOverlay *) override { calls << "didShow"; }
    void modalOverlayWillClose(JMModalOverlay *) override { calls << "willClose"; }
    void modalOverlayDidClose(JMModalOverlay *) override { calls << "didClose"; }
    bool modalOverlayShouldClose(JMModalOverlay *) override
    {
        calls << "shouldClose";
        return allowClose;
    }
};

// A 300 by 300 window, a 100 by 100 content view and an unanimated overlay with a recording delegate.
struct Shown
{
    QWidget window;
    QWidget *content = new QWidget;
    RecordingDelegate delegate;
    JMModalOverlay overlay;
    explicit Shown(bool animates = false)
    {
        window.resize(300, 300);
        content->setFixedSize(100, 100);
        overlay.animates = animates;
        overlay.delegate = &delegate;
        overlay.contentViewController = content;
    }
    ~Shown()
    {
        overlay.close();
        delete content; // the overlay hands its controller back on close
    }
    int overlayViews() const
    {
        return int(window.findChildren<QWidget *>(QStringLiteral("JMOverlayView"), Qt::FindDirectChildrenOnly).size());
    }
};

} // namespace

struct Knob
{
    bool on, active, dragged, towardsOn;
    QRectF knob;
};
Q_DECLARE_METATYPE(Knob)

struct SwitchDrag
{
    bool startOn;
    int from, to;
    bool endOn;
    int actions;
};
Q_DECLARE_METATYPE(SwitchDrag)

struct BackgroundClick
{
    bool closeOnBackground, delegateAllows;
    QPoint at;
    bool closed;
};
Q_DECLARE_METATYPE(BackgroundClick)

class WidgetsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void knobGeometry_data()
    {
        QTest::addColumn<Knob>("row");
        const double rest = 42.0 / 1.8180339336395264;
        const double pressed = 42.0 / 1.38;
        QTest::newRow("off at rest") << Knob{false, false, false, false, QRectF(1, 1, rest, 24)};
        QTest::newRow("on at rest") << Knob{true, false, false, false, QRectF(44 - rest - 1, 1, rest, 24)};
        QTest::newRow("off, pressed: wider") << Knob{false, true, false, false, QRectF(1, 1, pressed, 24)};
        QTest::newRow("off, dragged towards on") << Knob{false, true, true, true, QRectF(44 - pressed - 1, 1, pressed, 24)};
        QTest::newRow("on, dragged towards off") << Knob{true, true, true, false, QRectF(1, 1, pressed, 24)};
    }

    void knobGeometry()
    {
        QFETCH(Knob, row);
        const auto &[on, active, dragged, towardsOn, knob] = row;
        const QRectF r = SwitchGeometry::rectForKnob(QSizeF(44, 26), {on, active, dragged, towardsOn});
        QVERIFY2(qFuzzyCompare(r.x(), knob.x()) && qFuzzyCompare(r.width(), knob.width()) && r.y() == 1.0 && r.height() == 24.0,
                 qPrintable(QStringLiteral("%1 %2 %3 %4").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height())));
    }

    void switchClicksAndKeys_data()
    {
        QTest::addColumn<QString>("input"); // c: a click; s, r, l: the space, right and left keys
        QTest::addColumn<bool>("enabled");
        QTest::addColumn<QList<bool>>("switched"); // the actions, each with the state it reported
        QTest::newRow("clicks toggle") << "cc" << true << QList<bool>{true, false};
        QTest::newRow("space toggles") << "ss" << true << QList<bool>{true, false};
        QTest::newRow("right turns on, once; left off") << "rrl" << true << QList<bool>{true, false};
        QTest::newRow("disabled: the mouse is ignored") << "c" << false << QList<bool>{};
    }

    void switchClicksAndKeys()
    {
        QFETCH(QString, input);
        QFETCH(bool, enabled);
        QFETCH(QList<bool>, switched);
        ShownSwitch s;
        s.setEnabled(enabled);
        QSignalSpy action(&s, &ITSwitch::switched);
        for (const QChar c : input) {
            if (c == u'c')
                QTest::mouseClick(&s, Qt::LeftButton, {}, QPoint(10, 13));
            else
                QTest::keyClick(&s, c == u's' ? Qt::Key_Space : c == u'r' ? Qt::Key_Right : Qt::Key_Left);
        }
        QList<bool> reported;
        for (const QList<QVariant> &a : std::as_const(action))
            reported << a.at(0).toBool();
        QCOMPARE(reported, switched);
        QVERIFY(!s.isOn());
        // Set from code: no action.
        s.setOn(true);
        QCOMPARE(action.size(), switched.size());
        QVERIFY(s.isOn());
        if (enabled)
            return;
        // Drawn at half opacity: its track is paler than an enabled one's.
        ITSwitch lit;
        lit.resize(44, 26);
        lit.setOn(true);
        QVERIFY(QColor(s.grab().toImage().pixel(6, 13)).saturation() < QColor(lit.grab().toImage().pixel(6, 13)).saturation());
    }

    void switchDrags_data()
    {
        QTest::addColumn<SwitchDrag>("row");
        QTest::newRow("off, dragged to the right") << SwitchDrag{false, 8, 38, true, 1};
        QTest::newRow("off, dragged and back to the left") << SwitchDrag{false, 8, 10, false, 0};
        QTest::newRow("on, dragged to the left") << SwitchDrag{true, 38, 4, false, 1};
        QTest::newRow("on, dragged within the right half") << SwitchDrag{true, 36, 30, true, 0};
    }

    void switchDrags()
    {
        QFETCH(SwitchDrag, row);
        const auto &[startOn, from, to, endOn, actions] = row;
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

    void showingTwiceShowsOneAndClosingHandsTheContentBack()
    {
        Shown s;
        // Without a window or a content: an error, and nothing shown or told.
        QCOMPARE(s.overlay.showInWindow(nullptr).error().message, QStringLiteral("window is nil"));
        s.overlay.contentViewController = nullptr;
        QCOMPARE(s.overlay.showInWindow(&s.window).error().message, QStringLiteral("contentViewController is nil"));
        QVERIFY(!s.overlay.isShown() && s.delegate.calls.isEmpty());
        s.overlay.contentViewController = s.content;
        QVERIFY(s.overlay.showInWindow(&s.window).ok());
        QVERIFY(s.overlay.showInWindow(&s.window).ok());
        QCOMPARE(s.overlayViews(), 1);
        QCOMPARE(s.window.minimumSize(), s.window.maximumSize()); // no resizing while shown
        s.overlay.performClose();
        QCOMPARE(s.window.maximumSize(), QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX)); // resizable again, as it was
        QCOMPARE(s.delegate.calls, QStringList({"willShow", "didShow", "shouldClose", "willClose", "didClose"}));
        QVERIFY(!s.overlay.isShown());
        QCOMPARE(s.content->parent(), nullptr); // the controller is kept for its next showing
        QTRY_COMPARE(s.overlayViews(), 0);
        s.overlay.close(); // not shown: nothing
        QCOMPARE(s.delegate.calls.size(), 5);
        // The messages are posted for everyone to hear; another overlay's delegate takes none of them.
        RecordingDelegate other;
        JMModalOverlay another;
        another.delegate = &other;
        s.overlay.showInWindow(&s.window);
        s.overlay.close();
        QVERIFY(other.calls.isEmpty());
    }

    void backgroundClick_data()
    {
        QTest::addColumn<BackgroundClick>("row");
        QTest::newRow("closes") << BackgroundClick{true, true, QPoint(1, 1), true};
        QTest::newRow("delegate refuses") << BackgroundClick{true, false, QPoint(1, 1), false};
        QTest::newRow("setting off") << BackgroundClick{false, true, QPoint(1, 1), false};
        // The card's empty area is the overlay's own: a stray click there loses nothing.
        QTest::newRow("on the card, beside the content") << BackgroundClick{true, true, QPoint(250, 250), false};
    }

    void backgroundClick()
    {
        QFETCH(BackgroundClick, row);
        const auto &[closeOnBackground, delegateAllows, at, closed] = row;
        Shown s;
        s.delegate.allowClose = delegateAllows;
        s.overlay.shouldCloseWhenClickOnBackground = closeOnBackground;
        s.overlay.showInWindow(&s.window);
        QWidget *background = s.window.findChild<QWidget *>(QStringLiteral("JMOverlayView"));
        QWidget *card = s.window.findChild<QWidget *>(QStringLiteral("JMOverlayContainer"));
        QVERIFY(background->geometry() == s.window.rect() && background->geometry().contains(card->geometry()));
        QVERIFY(card->geometry() != background->rect()); // the dimmed window shows around it
        QWidget *hit = background->childAt(at) ? background->childAt(at) : background;
        QTest::mouseClick(hit, Qt::LeftButton, {}, hit->mapFrom(background, at));
        QCOMPARE(!s.overlay.isShown(), closed);
        QCOMPARE(s.delegate.calls.contains("shouldClose"), closeOnBackground && hit == background);
    }

    void animatedCloseEndsHiddenAndAFixedWindowStaysFixed()
    {
        Shown s(true);
        s.window.setFixedSize(300, 200); // not resizable: not made so by the overlay either
        s.overlay.animationDirection = 3;
        s.overlay.showInWindow(&s.window);
        QTRY_VERIFY(s.delegate.calls.contains("didShow"));
        s.overlay.close();
        QTRY_VERIFY(!s.overlay.isShown());
        QCOMPARE(s.delegate.calls.last(), QStringLiteral("didClose"));
        QCOMPARE(s.window.minimumSize(), QSize(300, 200));
        QCOMPARE(s.window.maximumSize(), QSize(300, 200));
    }
};

QTEST_MAIN(WidgetsTest)
#include "tst_widgets.moc"

// The modal overlay on its own: showing, closing, the delegate's say, and the parent's resizability.

#include "core/NotificationCenter.h"
#include "widgets/JMModalOverlay.h"

#include <QSignalSpy>
#include <QTest>

namespace {

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

int overlayViews(QWidget *window)
{
    return int(window->findChildren<QWidget *>(QStringLiteral("JMOverlayView"), Qt::FindDirectChildrenOnly).size());
}

} // namespace

class OverlayTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void missingPiecesAreErrors();
    void showingTwiceShowsOne();
    void messagesComeInOrder();
    void backgroundClick_data();
    void backgroundClick();
    void parentResizableOnlyAgainIfItWas_data();
    void parentResizableOnlyAgainIfItWas();
    void animatedCloseEndsHidden();
    void otherOverlaysNotificationsAreNotForwarded();
};

void OverlayTest::missingPiecesAreErrors()
{
    JMModalOverlay overlay;
    QWidget window;
    Status s = overlay.showInWindow(nullptr);
    QVERIFY(!s.ok());
    QCOMPARE(s.error().message, QStringLiteral("window is nil"));
    s = overlay.showInWindow(&window);
    QCOMPARE(s.error().message, QStringLiteral("contentViewController is nil"));
    QVERIFY(!overlay.isShown());
}

void OverlayTest::showingTwiceShowsOne()
{
    QWidget window;
    window.resize(210, 235);
    auto *content = new QWidget;
    JMModalOverlay overlay;
    overlay.animates = false;
    overlay.contentViewController = content;
    QVERIFY(overlay.showInWindow(&window).ok());
    QVERIFY(overlay.showInWindow(&window).ok());
    QCOMPARE(overlayViews(&window), 1);
    QVERIFY(overlay.isShown());
    overlay.close();
    QVERIFY(!overlay.isShown());
    QCOMPARE(content->parent(), nullptr); // the controller is kept for its next showing
    QTRY_COMPARE(overlayViews(&window), 0);
    delete content;
}

void OverlayTest::messagesComeInOrder()
{
    QWidget window;
    QWidget content;
    RecordingDelegate delegate;
    JMModalOverlay overlay;
    overlay.animates = false;
    overlay.delegate = &delegate;
    overlay.contentViewController = &content;
    overlay.showInWindow(&window);
    overlay.performClose();
    QCOMPARE(delegate.calls, QStringList({"willShow", "didShow", "shouldClose", "willClose", "didClose"}));
    overlay.close(); // not shown: nothing
    QCOMPARE(delegate.calls.size(), 5);
}

void OverlayTest::backgroundClick_data()
{
    QTest::addColumn<bool>("closeOnBackground");
    QTest::addColumn<bool>("delegateAllows");
    QTest::addColumn<QPoint>("at");
    QTest::addColumn<bool>("closed");
    QTest::newRow("closes") << true << true << QPoint(1, 1) << true;
    QTest::newRow("delegate refuses") << true << false << QPoint(1, 1) << false;
    QTest::newRow("setting off") << false << true << QPoint(1, 1) << false;
    // The card's empty area is the overlay's own: a stray click there loses nothing.
    QTest::newRow("on the card, beside the content") << true << true << QPoint(250, 250) << false;
}

void OverlayTest::backgroundClick()
{
    QFETCH(bool, closeOnBackground);
    QFETCH(bool, delegateAllows);
    QFETCH(QPoint, at);
    QFETCH(bool, closed);
    QWidget window;
    window.resize(300, 300);
    auto *content = new QWidget;
    content->setFixedSize(100, 100);
    RecordingDelegate delegate;
    delegate.allowClose = delegateAllows;
    JMModalOverlay overlay;
    overlay.animates = false;
    overlay.delegate = &delegate;
    overlay.shouldCloseWhenClickOnBackground = closeOnBackground;
    overlay.contentViewController = content;
    overlay.showInWindow(&window);
    QWidget *background = window.findChild<QWidget *>(QStringLiteral("JMOverlayView"));
    QWidget *card = window.findChild<QWidget *>(QStringLiteral("JMOverlayContainer"));
    QVERIFY(background->geometry() == window.rect() && background->geometry().contains(card->geometry()));
    QVERIFY(card->geometry() != background->rect()); // the dimmed window shows around it
    QWidget *hit = background->childAt(at) ? background->childAt(at) : background;
    QTest::mouseClick(hit, Qt::LeftButton, {}, hit->mapFrom(background, at));
    QCOMPARE(!overlay.isShown(), closed);
    QCOMPARE(delegate.calls.contains("shouldClose"), closeOnBackground && hit == background);
    overlay.close();
    delete content;
}

void OverlayTest::parentResizableOnlyAgainIfItWas_data()
{
    QTest::addColumn<bool>("resizable");
    QTest::newRow("resizable") << true;
    QTest::newRow("fixed") << false;
}

void OverlayTest::parentResizableOnlyAgainIfItWas()
{
    QFETCH(bool, resizable);
    QWidget window;
    if (resizable)
        window.resize(300, 200);
    else
        window.setFixedSize(300, 200);
    const QSize min = window.minimumSize(), max = window.maximumSize();
    QWidget content;
    JMModalOverlay overlay;
    overlay.animates = false;
    overlay.contentViewController = &content;
    overlay.showInWindow(&window);
    QCOMPARE(window.minimumSize(), window.maximumSize()); // no resizing while shown
    overlay.close();
    QCOMPARE(window.minimumSize(), min);
    QCOMPARE(window.maximumSize(), max);
}

void OverlayTest::animatedCloseEndsHidden()
{
    QWidget window;
    window.resize(200, 200);
    QWidget content;
    RecordingDelegate delegate;
    JMModalOverlay overlay;
    overlay.delegate = &delegate;
    overlay.animationDirection = 3;
    overlay.contentViewController = &content;
    overlay.showInWindow(&window);
    QTRY_VERIFY(delegate.calls.contains("didShow"));
    overlay.close();
    QTRY_VERIFY(!overlay.isShown());
    QCOMPARE(delegate.calls.last(), QStringLiteral("didClose"));
}

void OverlayTest::otherOverlaysNotificationsAreNotForwarded()
{
    QWidget window, content;
    RecordingDelegate a;
    JMModalOverlay first, second;
    first.delegate = &a;
    second.animates = false;
    second.contentViewController = &content;
    second.showInWindow(&window);
    second.close();
    QVERIFY(a.calls.isEmpty());
}

QTEST_MAIN(OverlayTest)
#include "tst_overlay.moc"

// The modal overlay on its own: showing, closing, the delegate's say, and the parent's resizability.

#include "widgets/JMModalOverlay.h"

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

class OverlayTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void missingPiecesAreErrors()
    {
        Shown s;
        QCOMPARE(s.overlay.showInWindow(nullptr).error().message, QStringLiteral("window is nil"));
        s.overlay.contentViewController = nullptr;
        QCOMPARE(s.overlay.showInWindow(&s.window).error().message, QStringLiteral("contentViewController is nil"));
        QVERIFY(!s.overlay.isShown());
        QVERIFY(s.delegate.calls.isEmpty());
    }

    void showingTwiceShowsOneAndClosingHandsTheContentBack()
    {
        Shown s;
        QVERIFY(s.overlay.showInWindow(&s.window).ok());
        QVERIFY(s.overlay.showInWindow(&s.window).ok());
        QCOMPARE(s.overlayViews(), 1);
        s.overlay.performClose();
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

    void backgroundClick()
    {
        QFETCH(bool, closeOnBackground);
        QFETCH(bool, delegateAllows);
        QFETCH(QPoint, at);
        QFETCH(bool, closed);
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

    void parentResizableOnlyAgainIfItWas_data()
    {
        QTest::addColumn<bool>("resizable");
        QTest::newRow("resizable") << true;
        QTest::newRow("fixed") << false;
    }

    void parentResizableOnlyAgainIfItWas()
    {
        QFETCH(bool, resizable);
        Shown s;
        if (!resizable)
            s.window.setFixedSize(300, 200);
        const QSize min = s.window.minimumSize(), max = s.window.maximumSize();
        s.overlay.showInWindow(&s.window);
        QCOMPARE(s.window.minimumSize(), s.window.maximumSize()); // no resizing while shown
        s.overlay.close();
        QCOMPARE(s.window.minimumSize(), min);
        QCOMPARE(s.window.maximumSize(), max);
    }

    void animatedCloseEndsHidden()
    {
        Shown s(true);
        s.overlay.animationDirection = 3;
        s.overlay.showInWindow(&s.window);
        QTRY_VERIFY(s.delegate.calls.contains("didShow"));
        s.overlay.close();
        QTRY_VERIFY(!s.overlay.isShown());
        QCOMPARE(s.delegate.calls.last(), QStringLiteral("didClose"));
    }
};

QTEST_MAIN(OverlayTest)
#include "tst_overlay.moc"

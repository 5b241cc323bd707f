// The drag watcher's rules: where the window opens, when the pointer closes it, what a drag must
// offer, and the handler's tests in order, on fake drags.

#include "LaunchedProgram.h"
#include "core/controller/AppDelegate.h"
#include "core/dragwatch/DragContent.h"
#include "core/dragwatch/DropHereGeometry.h"
#include "core/intake/SingleItemDropGate.h"
#include "core/plist/Plist.h"
#include "core/settings/SettingsKeys.h"
#include "core/settings/SettingsStore.h"
#include "core/window/DropWindow.h"
#include "platform/fake/FakePlatform.h"
#include "utils/Utils.h"

#include <QDir>
#include <QMimeData>
#include <QUrl>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using DragContent::Kind;
Q_DECLARE_METATYPE(DragContent::Kind)

class DragWatchTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void frameByDragDirection_data();
    void frameByDragDirection();
    void keepOpenRectangles_data();
    void keepOpenRectangles();
    void availableType_data();
    void availableType();
    void gate_data();
    void gate();
    void handler_data();
    void handler();
    void oneRaisePerDrag();
    void aDragElsewhereDismissesAPanel();
    void pointerLeavingCloses();

private:
    void drag(const QStringList &types, const QStringList &paths = {});

    QTemporaryDir m_dir;
    std::unique_ptr<FakePlatform> m_fakes;
    std::unique_ptr<AppDelegate> m_app;
};

void DragWatchTest::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
}

void DragWatchTest::init()
{
    m_fakes = std::make_unique<FakePlatform>(m_dir.path() + QStringLiteral("/.trash"));
    m_fakes->volumes.volumes = {fakeStick()};
    m_app = launchedOn(*m_fakes);
}

void DragWatchTest::cleanup()
{
    m_app.reset();
    QFile::remove(Utils::QDappSupportPath() + QStringLiteral("/exclAppList.plist"));
    SettingsStore::shared().resetAll();
}

void DragWatchTest::drag(const QStringList &types, const QStringList &paths)
{
    m_fakes->drag.startDrag(types, paths);
    m_fakes->pointer.drag(QPointF(400, 300), 3, 4);
}

void DragWatchTest::frameByDragDirection_data()
{
    QTest::addColumn<qreal>("dx");
    QTest::addColumn<qreal>("dy");
    QTest::addColumn<QRectF>("frame");
    const QPointF m(500, 400);
    Q_UNUSED(m);
    QTest::newRow("hot key: bottom edge at the pointer") << 0.0 << 0.0 << QRectF(455, 400, 90, 90);
    QTest::newRow("upward drag: below the pointer") << 2.0 << -3.0 << QRectF(455, 210, 90, 90);
    QTest::newRow("sideways drag counts as upward") << 5.0 << 0.0 << QRectF(455, 210, 90, 90);
    QTest::newRow("downward drag: above the pointer") << -1.0 << 4.0 << QRectF(455, 490, 90, 90);
}

void DragWatchTest::frameByDragDirection()
{
    QFETCH(qreal, dx);
    QFETCH(qreal, dy);
    QFETCH(QRectF, frame);
    QCOMPARE(DropHereGeometry::getMeDropHereFrameFromDeltaX(dx, dy, QPointF(500, 400)), frame);
}

void DragWatchTest::keepOpenRectangles_data()
{
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<bool>("local");
    QTest::addColumn<bool>("global");
    // The window is at (100, 100), 90 by 90, in y-up space.
    QTest::newRow("on the window") << QPointF(140, 140) << true << true;
    QTest::newRow("49 left") << QPointF(51, 140) << true << true;
    QTest::newRow("51 left") << QPointF(49, 140) << false << false;
    QTest::newRow("60 below: only the window's own tracking keeps it") << QPointF(140, 40) << true << false;
    QTest::newRow("60 above") << QPointF(140, 250) << true << false;
    QTest::newRow("90 below") << QPointF(140, 10) << false << false;
}

void DragWatchTest::keepOpenRectangles()
{
    QFETCH(QPointF, point);
    QFETCH(bool, local);
    QFETCH(bool, global);
    const QRectF window(100, 100, 90, 90);
    QCOMPARE(DropHereGeometry::pointInRect(point, DropHereGeometry::keepOpenRectLocal(window)), local);
    QCOMPARE(DropHereGeometry::pointInRect(point, DropHereGeometry::keepOpenRectGlobal(window)), global);
}

void DragWatchTest::availableType_data()
{
    QTest::addColumn<QStringList>("types");
    QTest::addColumn<bool>("hasFiles");
    QTest::addColumn<DragContent::Kind>("kind");
    QTest::newRow("files") << QStringList{"text/uri-list", "text/plain"} << true << Kind::Files;
    QTest::newRow("web link") << QStringList{"text/uri-list", "text/plain"} << false << Kind::Url;
    QTest::newRow("text") << QStringList{"UTF8_STRING", "TEXT"} << false << Kind::String;
    QTest::newRow("image data") << QStringList{"image/png"} << false << Kind::Image;
    QTest::newRow("direct save") << QStringList{"XdndDirectSave0"} << false << Kind::Promise;
    QTest::newRow("nothing known") << QStringList{"application/x-qt-windows-mime"} << false << Kind::None;
}

void DragWatchTest::availableType()
{
    QFETCH(QStringList, types);
    QFETCH(bool, hasFiles);
    QFETCH(DragContent::Kind, kind);
    QCOMPARE(DragContent::availableType(types, hasFiles), kind);
}

void DragWatchTest::gate_data()
{
    QTest::addColumn<QStringList>("paths");
    QTest::addColumn<bool>("passes");
    QTest::newRow("nothing") << QStringList() << false;
    QTest::newRow("two, even volumes") << QStringList{"/media/someone/STICK", "/media/someone/STICK"} << true;
    QTest::newRow("a volume alone") << QStringList{"/media/someone/STICK"} << false;
    QTest::newRow("a file") << QStringList{QStringLiteral(QD_TEST_FILE)} << true;
}

void DragWatchTest::gate()
{
    QFETCH(QStringList, paths);
    QFETCH(bool, passes);
    QCOMPARE(SingleItemDropGate::passes(paths), passes);
}

void DragWatchTest::handler_data()
{
    QTest::addColumn<QStringList>("types");
    QTest::addColumn<QStringList>("paths");
    QTest::addColumn<QString>("appUnderPointer");
    QTest::addColumn<QString>("frontmost");
    QTest::addColumn<bool>("hotKeyMode");
    QTest::addColumn<bool>("allButFileManager");
    QTest::addColumn<bool>("raised");
    QTest::addColumn<bool>("counted"); // the drag raised the flag of this drag
    const QStringList files{"text/uri-list"};
    const QStringList file{QStringLiteral(QD_TEST_FILE)};
    QTest::newRow("a file") << files << file << "org.gnome.gedit" << "" << false << false << true << true;
    QTest::newRow("text") << QStringList{"text/plain"} << QStringList() << "" << "" << false << false << true << true;
    QTest::newRow("source that does not say") << QStringList() << QStringList() << "" << "" << false << false << true << true;
    QTest::newRow("unknown type") << QStringList{"application/x-foo"} << QStringList() << "" << "" << false << false << false << false;
    QTest::newRow("link without image") << files << QStringList() << "" << "" << false << false << false << false;
    QTest::newRow("lone volume") << files << QStringList{"/media/someone/STICK"} << "" << "" << false << false << false << false;
    QTest::newRow("over an image editor") << files << file << "org.gimp.GIMP" << "" << false << false << false << false;
    QTest::newRow("image editor in front") << files << file << "" << "org.kde.krita" << false << false << false << false;
    QTest::newRow("image editor, hot-key mode") << files << file << "org.gimp.GIMP" << "" << true << false << false << true;
    QTest::newRow("excluded by the user") << files << file << "org.example.Excluded" << "" << false << false << false << false;
    QTest::newRow("all but the file manager: elsewhere") << files << file << "org.gnome.gedit" << "" << false << true << false << false;
    QTest::newRow("all but the file manager: over it") << files << file << "org.gnome.Nautilus" << "" << false << true << true << true;
    QTest::newRow("all but the file manager: over nothing") << files << file << "" << "" << false << true << false << false;
}

void DragWatchTest::handler()
{
    QFETCH(QStringList, types);
    QFETCH(QStringList, paths);
    QFETCH(QString, appUnderPointer);
    QFETCH(QString, frontmost);
    QFETCH(bool, hotKeyMode);
    QFETCH(bool, allButFileManager);
    QFETCH(bool, raised);
    QFETCH(bool, counted);
    QDir().mkpath(Utils::QDappSupportPath());
    QVERIFY(Plist::writeFileAtomically(Utils::QDappSupportPath() + QStringLiteral("/exclAppList.plist"),
                                       QStringList{"org.example.Excluded"}).ok());
    SettingsStore::shared().setBool(SettingsKey::ShowPanelHKEnabled, hotKeyMode);
    SettingsStore::shared().setBool(SettingsKey::ExclAllButFinder, allButFileManager);
    m_fakes->windows.appUnderPointer = appUnderPointer;
    m_fakes->windows.frontmost = frontmost;
    drag(types, paths);
    QCOMPARE(m_app->windowIsVsbl(), raised);
    QCOMPARE(m_app->mouseDraggedBool, counted);
    QCOMPARE(m_app->myPbrdChangeCount, m_fakes->drag.changeCount()); // looked at once, whatever came of it
}

void DragWatchTest::oneRaisePerDrag()
{
    drag({"text/plain"});
    QVERIFY(m_app->windowIsVsbl());
    m_app->orderOutTheWindow();
    m_fakes->pointer.drag(QPointF(420, 300), 3, 4); // the same drag goes on
    QVERIFY(!m_app->windowIsVsbl());
    drag({"text/plain"}); // a new drag
    QVERIFY(m_app->windowIsVsbl());
}

void DragWatchTest::aDragElsewhereDismissesAPanel()
{
    drag({"text/plain"});
    m_app->filePathsArr = {QStringLiteral(QD_TEST_FILE)};
    m_app->showPanelWithIndex(DropPanelDefault);
    m_fakes->pointer.drag(QPointF(900, 700), 5, 5);
    QVERIFY(!m_app->windowIsVsbl());
}

void DragWatchTest::pointerLeavingCloses()
{
    drag({"text/plain"});
    QVERIFY(m_app->windowIsVsbl());
    QVERIFY(m_fakes->pointer.tracking);
    const QRectF frame = m_app->window->frameYUp();
    const qreal h = DropWindow::primaryScreenHeight();
    // 40 points right of the window: inside the keep-open margin.
    m_fakes->pointer.move(QPointF(frame.right() + 40, h - frame.center().y()));
    QVERIFY(m_app->windowIsVsbl());
    m_app->shouldNotCloseYet = true; // something took the pointer away on purpose
    m_fakes->pointer.move(QPointF(frame.right() + 200, h - frame.center().y()));
    QVERIFY(m_app->windowIsVsbl());
    m_fakes->pointer.move(QPointF(frame.center().x(), h - frame.center().y())); // back: closing is armed again
    QVERIFY(!m_app->shouldNotCloseYet);
    m_fakes->pointer.move(QPointF(frame.right() + 200, h - frame.center().y()));
    QVERIFY(!m_app->windowIsVsbl());
    QVERIFY(!m_fakes->pointer.tracking);
}

QTEST_MAIN(DragWatchTest)
#include "tst_dragwatch.moc"

// The drag watcher's rules: where the window opens, when the pointer closes it, what a drag must
// offer, and the handler's tests in order, on fake drags.

#include "LaunchedProgram.h"
#include "core/dragwatch/DragContent.h"
#include "core/dragwatch/DropHereGeometry.h"
#include "core/plist/Plist.h"



using DragContent::Kind;
Q_DECLARE_METATYPE(DragContent::Kind)

// Where the window goes for a drag moving by (dx, dy) at the pointer, on that visible frame (y-up).
struct Placement
{
    qreal dx, dy;
    QPointF pointer;
    QRectF visible, frame;
};
Q_DECLARE_METATYPE(Placement)

// A drag of these types and files, over and under these applications, in these modes: whether the
// window came up, and whether the drag was taken for one of ours to keep the window for.
struct WatchedDrag
{
    QStringList types, paths;
    QString appUnderPointer, frontmost;
    bool hotKeyMode, allButFileManager, raised, counted;
};
Q_DECLARE_METATYPE(WatchedDrag)

struct DragStart
{
    QStringList types;
    bool heldInOurOwnWindow, droppedBeforeTheAnswer, staysOnceKnown;
};
Q_DECLARE_METATYPE(DragStart)

class DragWatchTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }

    void init() { f.launch([](FakePlatform &fakes) { fakes.volumes.volumes = {fakeStick()}; }); }
    void cleanup()
    {
        f.close();
        QFile::remove(Utils::QDappSupportPath() + QStringLiteral("/exclAppList.plist"));
    }

    void besidePointer_data()
    {
        QTest::addColumn<Placement>("p");
        // y-up: a 1440 by 870 visible frame; a second screen left of it, lower, with negative x.
        const QRectF screen(0, 0, 1440, 870);
        const QRectF left(-1024, 100, 1024, 768);
        QTest::newRow("middle, downward: above") << Placement{0.0, 4.0, {700, 400}, screen, {655, 490, 90, 90}};
        QTest::newRow("middle, upward: below") << Placement{0.0, -4.0, {700, 400}, screen, {655, 210, 90, 90}};
        QTest::newRow("sideways counts as upward") << Placement{5.0, 0.0, {700, 400}, screen, {655, 210, 90, 90}};
        QTest::newRow("hot key: bottom edge at the pointer") << Placement{0.0, 0.0, {700, 400}, screen, {655, 400, 90, 90}};
        QTest::newRow("top edge, downward: below instead") << Placement{0.0, 4.0, {700, 860}, screen, {655, 680, 90, 90}};
        QTest::newRow("bottom edge, upward: above instead") << Placement{0.0, -4.0, {700, 20}, screen, {655, 120, 90, 90}};
        QTest::newRow("left edge") << Placement{0.0, 4.0, {5, 400}, screen, {0, 490, 90, 90}};
        QTest::newRow("right edge") << Placement{0.0, -4.0, {1438, 400}, screen, {1350, 210, 90, 90}};
        QTest::newRow("top left corner") << Placement{0.0, 4.0, {2, 868}, screen, {0, 688, 90, 90}};
        QTest::newRow("top right corner") << Placement{3.0, 1.0, {1439, 869}, screen, {1350, 689, 90, 90}};
        QTest::newRow("bottom left corner") << Placement{-3.0, -1.0, {0, 1}, screen, {0, 101, 90, 90}};
        QTest::newRow("bottom right corner") << Placement{2.0, 0.0, {1439, 1}, screen, {1350, 101, 90, 90}};
        QTest::newRow("hot key at the top edge") << Placement{0.0, 0.0, {700, 860}, screen, {655, 769, 90, 90}};
        QTest::newRow("on a screen left of the primary") << Placement{0.0, 4.0, {-500, 500}, left, {-545, 590, 90, 90}};
        QTest::newRow("that screen's top edge") << Placement{0.0, 4.0, {-1000, 860}, left, {-1024, 680, 90, 90}};
        QTest::newRow("too low for above or below: right") << Placement{0.0, 4.0, {700, 75}, {0, 0, 1440, 150}, {745, 30, 90, 90}};
        QTest::newRow("and at the right edge: left") << Placement{0.0, 4.0, {1430, 75}, {0, 0, 1440, 150}, {1295, 30, 90, 90}};
    }

    void besidePointer()
    {
        QFETCH(Placement, p);
        const QRectF placed = DropHereGeometry::besidePointer(p.dx, p.dy, p.pointer, p.visible);
        QCOMPARE(placed, p.frame);
        QVERIFY(p.visible.contains(placed));
        QVERIFY(!DropHereGeometry::coversPointer(placed, p.pointer));
    }

    void keepOpenRectangles_data()
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

    void keepOpenRectangles()
    {
        QFETCH(QPointF, point);
        QFETCH(bool, local);
        QFETCH(bool, global);
        const QRectF window(100, 100, 90, 90);
        QCOMPARE(DropHereGeometry::pointInRect(point, DropHereGeometry::keepOpenRectLocal(window)), local);
        QCOMPARE(DropHereGeometry::pointInRect(point, DropHereGeometry::keepOpenRectGlobal(window)), global);
    }

    void availableType_data()
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
        QTest::newRow("an image out of a browser") << QStringList{"text/x-moz-url", "UTF8_STRING", "text/plain", "XdndDirectSave0",
                                                                   "application/octet-stream", "text/html"}
                                                   << false << Kind::Url;
    }

    void availableType()
    {
        QFETCH(QStringList, types);
        QFETCH(bool, hasFiles);
        QFETCH(DragContent::Kind, kind);
        QCOMPARE(DragContent::availableType(types, hasFiles), kind);
    }

    void fileNameForDraggedData_data()
    {
        QTest::addColumn<QString>("suggested");
        QTest::addColumn<QByteArray>("data");
        QTest::addColumn<QString>("name");
        const QByteArray png("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16);
        const QByteArray jpeg("\xff\xd8\xff\xe0\0\x10JFIF\0", 11);
        QTest::newRow("as suggested") << "harbour.png" << png << "harbour.png";
        QTest::newRow("an extension the content calls for") << "photo" << jpeg << "photo.jpg";
        QTest::newRow("a script's address holding a picture") << "show.php" << png << "show.php.png";
        QTest::newRow("no name at all") << "" << png << "image.png";
        QTest::newRow("a path is cut to its name") << "../../.config/evil.png" << png << "evil.png";
        QTest::newRow("never hidden") << ".hidden.png" << png << "hidden.png";
        QTest::newRow("unknown bytes keep the name") << "data.bin" << QByteArray("\x01\x02\x03") << "data.bin";
        QTest::newRow("long names are cut before the extension") << QString(300, QLatin1Char('a')) + QStringLiteral(".png")
                                                                 << png << QString(196, QLatin1Char('a')) + QStringLiteral(".png");
    }

    void fileNameForDraggedData()
    {
        QFETCH(QString, suggested);
        QFETCH(QByteArray, data);
        QFETCH(QString, name);
        QCOMPARE(DragContent::fileNameForDraggedData(suggested, data), name);
    }

    void handler_data()
    {
        QTest::addColumn<WatchedDrag>("d");
        const QStringList files{"text/uri-list"};
        const QStringList file{QStringLiteral(QD_TEST_FILE)};
        QTest::newRow("a file") << WatchedDrag{files, file, "org.gnome.gedit", "", false, false, true, true};
        QTest::newRow("text") << WatchedDrag{QStringList{"text/plain"}, {}, "", "", false, false, true, true};
        QTest::newRow("source that does not say") << WatchedDrag{{}, {}, "", "", false, false, true, true};
        QTest::newRow("unknown type") << WatchedDrag{QStringList{"application/x-foo"}, {}, "", "", false, false, false, false};
        QTest::newRow("link without image") << WatchedDrag{files, {}, "", "", false, false, false, false};
        QTest::newRow("lone volume") << WatchedDrag{files, QStringList{"/media/someone/STICK"}, "", "", false, false, false, false};
        QTest::newRow("two volumes") << WatchedDrag{files, QStringList(2, "/media/someone/STICK"), "", "", false, false, true, true};
        QTest::newRow("over an image editor") << WatchedDrag{files, file, "org.gimp.GIMP", "", false, false, false, false};
        QTest::newRow("image editor in front") << WatchedDrag{files, file, "", "org.kde.krita", false, false, false, false};
        QTest::newRow("image editor, hot-key mode") << WatchedDrag{files, file, "org.gimp.GIMP", "", true, false, false, true};
        QTest::newRow("excluded by the user") << WatchedDrag{files, file, "org.example.Excluded", "", false, false, false, false};
        QTest::newRow("all but the file manager: elsewhere") << WatchedDrag{files, file, "org.gnome.gedit", "", false, true, false, false};
        QTest::newRow("all but the file manager: over it") << WatchedDrag{files, file, "org.gnome.Nautilus", "", false, true, true, true};
        QTest::newRow("all but the file manager: over nothing") << WatchedDrag{files, file, "", "", false, true, false, false};
    }

    void handler()
    {
        QFETCH(WatchedDrag, d);
        QDir().mkpath(Utils::QDappSupportPath());
        QVERIFY(Plist::writeFileAtomically(Utils::QDappSupportPath() + QStringLiteral("/exclAppList.plist"),
                                           QStringList{"org.example.Excluded"}).ok());
        SettingsStore::shared().setBool(SettingsKey::ShowPanelHKEnabled, d.hotKeyMode);
        SettingsStore::shared().setBool(SettingsKey::ExclAllButFinder, d.allButFileManager);
        f.fakes->windows.appUnderPointer = d.appUnderPointer;
        f.fakes->windows.frontmost = d.frontmost;
        drag(d.types, d.paths);
        QCOMPARE(f.app->windowIsVsbl(), d.raised);
        QCOMPARE(f.app->mouseDraggedBool, d.counted); // the drag raised the flag of this drag
        QCOMPARE(f.app->myPbrdChangeCount, f.fakes->drag.changeCount()); // looked at once, whatever came of it
    }

    void raisedAtTheDragsStart_data()
    {
        QTest::addColumn<DragStart>("row");
        QTest::newRow("text") << DragStart{{"text/plain"}, false, false, true};
        QTest::newRow("a source that does not say: judged at the drop") << DragStart{{}, false, false, true};
        QTest::newRow("an image out of a browser") << DragStart{{"text/x-moz-url", "text/plain", "XdndDirectSave0", "application/octet-stream"}, false, false, true};
        QTest::newRow("a web link: goes once known") << DragStart{{"text/x-moz-url", "text/plain", "text/html"}, false, false, false};
        QTest::newRow("unknown type: goes once known") << DragStart{{"application/x-foo"}, false, false, false};
        QTest::newRow("unknown type, but the drop came first") << DragStart{{"application/x-foo"}, false, true, true};
        QTest::newRow("a press in our own window") << DragStart{{"text/plain"}, true, false, false};
    }

    // The drag's start (a new owner of the drag selection) raises the window by itself, with the button
    // held and no motion since; what is dragged is learnt with the window up.
    void raisedAtTheDragsStart()
    {
        QFETCH(DragStart, row);
        const auto &[types, heldInOurOwnWindow, droppedBeforeTheAnswer, staysOnceKnown] = row;
        f.fakes->pointer.held = PointerDrag{!heldInOurOwnWindow, QPointF(400, 300), 1, 6};
        f.fakes->drag.answerLater = true;
        f.fakes->drag.startDrag(types);
        QCOMPARE(f.app->windowIsVsbl(), !heldInOurOwnWindow);
        if (heldInOurOwnWindow) {
            QCOMPARE(f.fakes->drag.asked, 0);
            return;
        }
        const qreal h = DropWindow::primaryScreenHeight();
        QVERIFY(f.app->window->frameYUp().y() > h - 300); // above the pointer, as the drag goes down
        QCOMPARE(f.fakes->drag.asked, 1);
        if (droppedBeforeTheAnswer) {
            f.app->filePathsArr = {QStringLiteral(QD_TEST_FILE)};
            f.app->showPanelWithIndex(DropPanelDefault);
        }
        f.fakes->drag.answer();
        QCOMPARE(f.app->windowIsVsbl(), staysOnceKnown);
        QCOMPARE(f.app->oneofThePanelsIsShown, droppedBeforeTheAnswer);
        if (droppedBeforeTheAnswer)
            return;
        f.fakes->pointer.drag(QPointF(420, 330), 2, 3); // the same drag goes on: nothing new
        QCOMPARE(f.app->windowIsVsbl(), staysOnceKnown);
        QCOMPARE(f.fakes->drag.asked, 1);
    }

    void aDragStartedAtThePressWaitsForItsFirstMotionAndRaisesOnce()
    {
        f.fakes->pointer.held = PointerDrag{true, QPointF(400, 300), 0, 0};
        f.fakes->drag.startDrag({"text/plain"});
        QVERIFY(!f.app->windowIsVsbl()); // no way known yet to keep out of
        f.fakes->pointer.drag(QPointF(400, 304), 0, 4);
        QVERIFY(f.app->windowIsVsbl());
        QVERIFY(f.app->window->frameYUp().y() > DropWindow::primaryScreenHeight() - 304); // above: it goes down
        // One raise for each drag.
        f.app->orderOutTheWindow();
        f.fakes->pointer.drag(QPointF(420, 300), 3, 4); // the same drag goes on
        QVERIFY(!f.app->windowIsVsbl());
        drag({"text/plain"}); // a new drag
        QVERIFY(f.app->windowIsVsbl());
        // With a panel up, the drag going on far away dismisses it.
        f.app->filePathsArr = {QStringLiteral(QD_TEST_FILE)};
        f.app->showPanelWithIndex(DropPanelDefault);
        f.fakes->pointer.drag(QPointF(900, 700), 5, 5);
        QVERIFY(!f.app->windowIsVsbl());
    }

    void pointerLeavingCloses()
    {
        drag({"text/plain"});
        QVERIFY(f.app->windowIsVsbl());
        QVERIFY(f.fakes->pointer.tracking);
        const QRectF frame = f.app->window->frameYUp();
        const qreal h = DropWindow::primaryScreenHeight();
        // 40 points right of the window: inside the keep-open margin.
        f.fakes->pointer.move(QPointF(frame.right() + 40, h - frame.center().y()));
        QVERIFY(f.app->windowIsVsbl());
        f.app->shouldNotCloseYet = true; // something took the pointer away on purpose
        f.fakes->pointer.move(QPointF(frame.right() + 200, h - frame.center().y()));
        QVERIFY(f.app->windowIsVsbl());
        f.fakes->pointer.move(QPointF(frame.center().x(), h - frame.center().y())); // back: closing is armed again
        QVERIFY(!f.app->shouldNotCloseYet);
        f.fakes->pointer.move(QPointF(frame.right() + 200, h - frame.center().y()));
        QVERIFY(!f.app->windowIsVsbl());
        QVERIFY(!f.fakes->pointer.tracking);
    }

private:
    void drag(const QStringList &types, const QStringList &paths = {})
    {
        f.fakes->drag.startDrag(types, paths);
        f.fakes->pointer.drag(QPointF(400, 300), 3, 4);
    }

    LaunchedFixture f;
};

QTEST_MAIN(DragWatchTest)
#include "tst_dragwatch.moc"

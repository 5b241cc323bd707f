// A decoder that crashes, seen from the window: with the test build of the image worker (which aborts
// on a file carrying its marker), under a real X server with a tray host, a panel action on such a
// file fails that file with its message and writes nothing under its name; the program, its tray icon
// and the panel go on, and the next action, on a fresh worker, works. (A crash in the middle of a batch:
// the worker's own test; one failure of a batch named in the notification: tst_imageactions.)

#include "ImageFixtures.h"
#include "LaunchedProgram.h"

#include "core/overlays/ImgConvertOverlayVC.h"
#include "menubar/statusitem/CCNStatusItem.h"
#include "worker/WorkerPool.h"

#include <QPushButton>
#include <QSystemTrayIcon>

class WorkerCrashTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        englishTestMode();
        QVERIFY2(qEnvironmentVariable("QUAYDROP_WORKER").endsWith(QLatin1String("quaydrop-test-worker")),
                 "runs with the test build of the worker");
        QVERIFY2(QGuiApplication::platformName() == QLatin1String("xcb"), "runs on an X server");
    }

    void init()
    {
        f.launch();
        // The tray host of the test's X server takes the icon in a moment.
        QTRY_VERIFY_WITH_TIMEOUT(f.app->livesInTray() && f.app->statusItem()->trayIcon()->isVisible(), 10000);
    }
    void cleanup() { f.close(); }

    void crashFailsTheFileAndTheProgramGoesOn()
    {
        const QString crashing = picture(QStringLiteral("Harbour.png"), "QUAYDROP-TEST-ABORT");
        convertToJpeg({crashing}, QStringLiteral("revealImginFinderBtn"));
        QTRY_VERIFY_WITH_TIMEOUT(visibleAlert(), 20000);
        QCOMPARE(closedAlert(), "Nothing was written: " + crashing + ": could not be read: the decoder stopped");
        QVERIFY(f.fakes->notifications.delivered.isEmpty());
        QCOMPARE(leftovers(), QStringList());

        // The program, its icon and its window are there as before; the panel is back for the next action.
        QVERIFY(f.app->livesInTray());
        QVERIFY(f.app->statusItem()->trayIcon()->isVisible());
        QTRY_VERIFY(!f.app->emptyContviewIsShown);
        QVERIFY(f.app->windowIsVsbl());

        // The next action starts a fresh worker and writes its picture.
        const QString good = picture(QStringLiteral("Lighthouse.png"));
        convertToJpeg({good}, QStringLiteral("revealImginFinderBtn"));
        QVERIFY(f.notified(1));
        QCOMPARE(f.note().title, QStringLiteral("Images converted"));
        QCOMPARE(leftovers(), QStringList{QStringLiteral("Lighthouse.jpg")});
        QCOMPARE(QImage(f.dir.path() + QStringLiteral("/Lighthouse.jpg")).size(), QSize(40, 30));
        QVERIFY(!visibleAlert());
    }

private:
    // Bytes after the PNG's end are ignored by every reader; the test worker looks for the marker.
    QString picture(const QString &name, const QByteArray &marker = {})
    {
        return f.file(name, ImageFixtures::encoded(ImageFixtures::picture(40, 30), "png") + marker);
    }
    void convertToJpeg(const QStringList &paths, const QString &buttonName)
    {
        f.drop(paths);
        ActionButton *button = f.button(buttonName);
        QVERIFY(button && button->isVisible() && button->isEnabled());
        QTest::mouseClick(button, Qt::LeftButton);
        QTRY_VERIFY(f.app->imgConvrtVC && f.app->imgConvrtVC->typeButton(2));
        QTest::mouseClick(f.app->imgConvrtVC->typeButton(2), Qt::LeftButton); // JPEG
    }
    // Anything beside the pictures: a part file, or output under a final name.
    QStringList leftovers() const
    {
        QStringList found = QDir(f.dir.path()).entryList(QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot);
        found.removeIf([](const QString &n) { return n.endsWith(QLatin1String(".png")); });
        return found;
    }

    LaunchedFixture f;
};

QTEST_MAIN(WorkerCrashTest)
#include "tst_workercrash_ui.moc"

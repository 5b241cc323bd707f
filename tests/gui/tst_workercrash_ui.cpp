// A decoder that crashes, seen from the window: with the test build of the image worker (which aborts
// on a file carrying its marker), under a real X server with a tray host, a panel action on such a
// file fails that file with its message and writes nothing under its name; the program, its tray icon
// and the panel go on, and the next action, on a fresh worker, works. In the middle of a batch the
// other pictures are written.

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
        m_fakes = std::make_unique<FakePlatform>(m_dir.path() + QStringLiteral("/.trash"));
        m_app = launchedOn(*m_fakes);
        // The tray host of the test's X server takes the icon in a moment.
        QTRY_VERIFY_WITH_TIMEOUT(m_app->livesInTray() && m_app->statusItem()->trayIcon()->isVisible(), 10000);
    }

    void cleanup()
    {
        m_app.reset();
        for (QWidget *w : QApplication::topLevelWidgets())
            if (qobject_cast<QMessageBox *>(w))
                delete w;
        SettingsStore::shared().resetAll();
        QDir(m_dir.path()).removeRecursively();
        QDir().mkpath(m_dir.path());
    }

    void crashFailsTheFileAndTheProgramGoesOn()
    {
        const QString crashing = picture(QStringLiteral("Harbour.png"), "QUAYDROP-TEST-ABORT");
        convertToJpeg({crashing}, QStringLiteral("revealImginFinderBtn"));
        QMessageBox *alert = nullptr;
        QTRY_VERIFY_WITH_TIMEOUT((alert = visibleAlert()) != nullptr, 20000);
        QCOMPARE(alert->text(), QStringLiteral("Nothing was written"));
        QCOMPARE(alert->informativeText(), crashing + QStringLiteral(": could not be read: the decoder stopped"));
        QVERIFY(m_fakes->notifications.delivered.isEmpty());
        QCOMPARE(leftovers(), QStringList());
        delete alert;

        // The program, its icon and its window are there as before; the panel is back for the next action.
        QVERIFY(m_app->livesInTray());
        QVERIFY(m_app->statusItem()->trayIcon()->isVisible());
        QTRY_VERIFY(!m_app->emptyContviewIsShown);
        QVERIFY(m_app->windowIsVsbl());

        // The next action starts a fresh worker and writes its picture.
        const QString good = picture(QStringLiteral("Lighthouse.png"));
        convertToJpeg({good}, QStringLiteral("revealImginFinderBtn"));
        QTRY_COMPARE_WITH_TIMEOUT(int(m_fakes->notifications.delivered.size()), 1, 20000);
        QCOMPARE(m_fakes->notifications.delivered.first().title, QStringLiteral("Images converted"));
        QCOMPARE(leftovers(), QStringList{QStringLiteral("Lighthouse.jpg")});
        QCOMPARE(QImage(m_dir.path() + QStringLiteral("/Lighthouse.jpg")).size(), QSize(40, 30));
        QVERIFY(!visibleAlert());
    }

    void crashInTheMiddleOfABatch()
    {
        const QStringList pictures{picture(QStringLiteral("a.png")), picture(QStringLiteral("b.png"), "QUAYDROP-TEST-ABORT"),
                                   picture(QStringLiteral("c.png"))};
        convertToJpeg(pictures, QStringLiteral("multiConvrtImg"));
        QTRY_COMPARE_WITH_TIMEOUT(int(m_fakes->notifications.delivered.size()), 1, 20000);
        const auto &note = m_fakes->notifications.delivered.first();
        QCOMPARE(note.title, QStringLiteral("Images converted"));
        // The one picture that failed is named, with the reason.
        QVERIFY2(note.body.contains(QStringLiteral("b.png: could not be read: the decoder stopped")), qPrintable(note.body));
        QCOMPARE(note.userInfo.value(QStringLiteral("filePaths")).toStringList(),
                 QStringList({m_dir.path() + QStringLiteral("/a.jpg"), m_dir.path() + QStringLiteral("/c.jpg")}));
        QCOMPARE(leftovers(), QStringList({QStringLiteral("a.jpg"), QStringLiteral("c.jpg")}));
        QVERIFY(m_app->livesInTray());
    }

private:
    QString picture(const QString &name, const QByteArray &marker = {});
    void convertToJpeg(const QStringList &paths, const QString &buttonName);
    QMessageBox *visibleAlert() const;
    QStringList leftovers() const;

    QTemporaryDir m_dir;
    std::unique_ptr<FakePlatform> m_fakes;
    std::unique_ptr<AppDelegate> m_app;
};

QString WorkerCrashTest::picture(const QString &name, const QByteArray &marker)
{
    const QString path = m_dir.path() + QChar('/') + name;
    // Bytes after the PNG's end are ignored by every reader; the test worker looks for the marker.
    ImageFixtures::write(path, ImageFixtures::encoded(ImageFixtures::picture(40, 30), "png") + marker);
    return path;
}

void WorkerCrashTest::convertToJpeg(const QStringList &paths, const QString &buttonName)
{
    QMimeData data;
    QList<QUrl> urls;
    for (const QString &p : paths)
        urls.append(QUrl::fromLocalFile(p));
    data.setUrls(urls);
    m_app->showDropTargetAt(QPointF(400, 300));
    m_app->mycustomviewDidGetDrop(&data);
    auto *button = m_app->window->contentView()->findChild<ActionButton *>(buttonName);
    QVERIFY(button && button->isVisible() && button->isEnabled());
    QTest::mouseClick(button, Qt::LeftButton);
    QTRY_VERIFY(m_app->imgConvrtVC && m_app->imgConvrtVC->typeButton(2));
    QTest::mouseClick(m_app->imgConvrtVC->typeButton(2), Qt::LeftButton); // JPEG
}

QMessageBox *WorkerCrashTest::visibleAlert() const
{
    for (QWidget *w : QApplication::topLevelWidgets())
        if (auto *box = qobject_cast<QMessageBox *>(w); box && box->isVisible())
            return box;
    return nullptr;
}

QStringList WorkerCrashTest::leftovers() const
{
    // Anything beside the pictures: a part file, or output under a final name.
    QStringList found = QDir(m_dir.path()).entryList(QDir::Files | QDir::Hidden | QDir::NoDotAndDotDot);
    found.removeIf([](const QString &n) { return n.endsWith(QLatin1String(".png")); });
    return found;
}

QTEST_MAIN(WorkerCrashTest)
#include "tst_workercrash_ui.moc"
#include <QSystemTrayIcon>

#include "UnitSupport.h"
#include "core/panels/PanelCatalog.h"
#include "core/NotificationCenter.h"
#include "core/texts/Texts.h"
#include "platform/SingleInstance.h"
#include "platform/posix/UnixSignalWatcher.h"

#include <QtTest>
#include <QXmlStreamReader>

#include <signal.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

class AppShellTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    // A second start reaches the first; a socket and lock a crashed run left are taken over.
    void oneInstance()
    {
        QTemporaryDir dir;
        const QString socket = dir.filePath(QStringLiteral("instance"));
        SingleInstance first(socket);
        QCOMPARE(first.claim(), SingleInstance::Role::Primary);
        QSignalSpy asked(&first, &SingleInstance::activationRequested);

        // The second start blocks while it asks, so it runs where the first can answer.
        SingleInstance::Role secondRole = SingleInstance::Role::Failed;
        QThread *starter = QThread::create([&] { secondRole = SingleInstance(socket).claim(); });
        starter->start();
        QVERIFY(asked.wait(3000));
        QVERIFY(starter->wait(3000));
        delete starter;
        QCOMPARE(secondRole, SingleInstance::Role::Secondary);
        QCOMPARE(asked.count(), 1);
        const QString stale = dir.filePath(QStringLiteral("stale"));
        {
            // A socket file nobody listens on, as a crashed run leaves it.
            const int fd = ::socket(AF_UNIX, SOCK_STREAM, 0);
            sockaddr_un addr{};
            addr.sun_family = AF_UNIX;
            qstrncpy(addr.sun_path, stale.toUtf8().constData(), sizeof(addr.sun_path));
            QCOMPARE(::bind(fd, reinterpret_cast<sockaddr *>(&addr), sizeof(addr)), 0);
            ::close(fd);
        }
        QVERIFY(QFileInfo::exists(stale));
        // A crash leaves the lock file behind, naming a process that is gone.
        QVERIFY(writeFile(stale + QStringLiteral(".lock"), "2147483646\nquaydrop\n" + QSysInfo::machineHostName().toUtf8() + "\n"));
        SingleInstance fresh(stale);
        QCOMPARE(fresh.claim(), SingleInstance::Role::Primary);
    }
    void theInstanceBelongsToTheDisplay_data()
    {
        QTest::addColumn<QByteArray>("display");
        QTest::addColumn<QByteArray>("wayland");
        QTest::addColumn<QString>("key");
        QTest::newRow("local display") << QByteArray(":1") << QByteArray() << "x11-1";
        QTest::newRow("its screen is the same session") << QByteArray(":1.0") << QByteArray() << "x11-1";
        QTest::newRow("unix is the local host") << QByteArray("unix:1") << QByteArray() << "x11-1";
        QTest::newRow("forwarded display") << QByteArray("localhost:10.0") << QByteArray() << "x11-localhost-10";
        QTest::newRow("XWayland is the X display") << QByteArray(":0") << QByteArray("wayland-0") << "x11-0";
        QTest::newRow("Wayland alone") << QByteArray() << QByteArray("wayland-1") << "wayland-1";
        QTest::newRow("Wayland socket path") << QByteArray() << QByteArray("/run/user/7/my compositor") << "wayland-my_compositor";
        QTest::newRow("no display") << QByteArray() << QByteArray() << "nodisplay";
        QTest::newRow("no way out of the folder") << QByteArray("../../x:3") << QByteArray() << "x11-.._.._x-3";
    }
    void theInstanceBelongsToTheDisplay()
    {
        QFETCH(QByteArray, display);
        QFETCH(QByteArray, wayland);
        QFETCH(QString, key);
        QCOMPARE(SingleInstance::sessionKey(display, wayland), key);
        const QByteArray saved = qgetenv("DISPLAY");
        const QByteArray savedWayland = qgetenv("WAYLAND_DISPLAY");
        qputenv("DISPLAY", display);
        qputenv("WAYLAND_DISPLAY", wayland);
        const QString path = SingleInstance::defaultSocketPath();
        qputenv("DISPLAY", saved);
        qputenv("WAYLAND_DISPLAY", savedWayland);
        QCOMPARE(QFileInfo(path).fileName(), QStringLiteral(QD_BUNDLE_ID ".%1.instance").arg(key));
        QCOMPARE(QFileInfo(path).path(), QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation));
    }
    void terminationSignalsArriveOnTheEventLoop_data()
    {
        QTest::addColumn<int>("signalNumber");
        QTest::newRow("SIGTERM") << SIGTERM;
        QTest::newRow("SIGINT") << SIGINT;
    }
    void terminationSignalsArriveOnTheEventLoop()
    {
        QFETCH(int, signalNumber);
        UnixSignalWatcher watcher;
        QVERIFY(watcher.isActive());
        QSignalSpy spy(&watcher, &UnixSignalWatcher::terminationRequested);
        ::raise(signalNumber);
        QVERIFY(spy.wait(2000));
        QCOMPARE(spy.first().first().toInt(), signalNumber);
    }
    void notificationsReachOnlyTheirObservers()
    {
        QObject observer;
        QList<QVariantMap> received;
        NotificationCenter::defaultCenter().observe(QString::fromLatin1(NotificationName::ShouldNotCloseYet), &observer,
                                                    [&](const QVariantMap &info) { received.append(info); });
        NotificationCenter::defaultCenter().post(QStringLiteral("cropWindowClosed"));
        NotificationCenter::defaultCenter().post(QStringLiteral("shouldNotCloseYetNotif"),
                                                 {{QStringLiteral("closeYet"), true}});
        QCOMPARE(received.size(), 1);
        QCOMPARE(received.first().value(QStringLiteral("closeYet")).toBool(), true);

        NotificationCenter::defaultCenter().removeObserver(&observer);
        NotificationCenter::defaultCenter().post(QStringLiteral("shouldNotCloseYetNotif"));
        QCOMPARE(received.size(), 1);
        // An observer that is gone hears nothing, and is never called.
        {
            QObject shortLived;
            NotificationCenter::defaultCenter().observe(QStringLiteral("shouldNotCloseYetNotif"), &shortLived,
                                                        [&](const QVariantMap &info) { received.append(info); });
        }
        NotificationCenter::defaultCenter().post(QStringLiteral("shouldNotCloseYetNotif"));
        QCOMPARE(received.size(), 1);
    }
    void everyUsedTextKeyIsInBothTables()
    {
        // Every key the program looks up, found in its sources, must have a text in each language.
        QSet<QString> keys;
        // Looked up directly, or handed to a widget that looks its text up: overlay titles and buttons.
        const QRegularExpression lookup(
            QStringLiteral("(?:localized|addTagButton|OverlayController|addLabel|translateLater\\([^,]+,|"
                           "QT_TRANSLATE_NOOP\\(\"Quaydrop\",) ?\\(?\"((?:[^\"\\\\]|\\\\.)+)\""));
        QDirIterator it(QStringLiteral(QD_SOURCE_DIR "/src"), {QStringLiteral("*.cpp"), QStringLiteral("*.h")},
                        QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            QFile f(it.next());
            QVERIFY(f.open(QIODevice::ReadOnly));
            const QString text = QString::fromUtf8(f.readAll());
            for (const auto &m : lookup.globalMatch(text))
                keys.insert(m.captured(1));
        }
        // The panels' labels come from their table.
        for (const quint64 panel : {1, 2, 222, 333, 444, 777, 888})
            for (const PanelButtonSpec &spec : PanelCatalog::buttonsOf(DropPanel(panel)))
                if (*spec.labelKey)
                    keys.insert(QString::fromLatin1(spec.labelKey));
        QVERIFY(keys.size() >= 3);
        // A text entry merged badly (two keys in one message) silently loses a key to the compiler.
        QMap<QString, QStringList> keysOf;
        for (const QString &language : {QStringLiteral("en"), QStringLiteral("de")}) {
            QFile ts(QStringLiteral(QD_SOURCE_DIR "/resources/texts/quaydrop_%1.ts").arg(language));
            QVERIFY(ts.open(QIODevice::ReadOnly));
            QXmlStreamReader xml(&ts);
            int sourcesInMessage = 0;
            while (!xml.atEnd()) {
                xml.readNext();
                if (xml.isStartElement() && xml.name() == u"message")
                    sourcesInMessage = 0;
                else if (xml.isStartElement() && xml.name() == u"source") {
                    keysOf[language].append(xml.readElementText());
                    QVERIFY2(++sourcesInMessage == 1, qPrintable(language + QStringLiteral(": ") + keysOf[language].last()));
                }
            }
            QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
            keysOf[language].sort();
        }
        QCOMPARE(keysOf.value(QStringLiteral("de")), keysOf.value(QStringLiteral("en")));
        for (const QString &language : {QStringLiteral("en"), QStringLiteral("de")}) {
            QTranslator table;
            QVERIFY(table.load(QStringLiteral(":/i18n/quaydrop_%1.qm").arg(language)));
            for (const QString &key : std::as_const(keys)) {
                const QString text = table.translate("Quaydrop", key.toUtf8().constData());
                QVERIFY2(!text.isEmpty(), qPrintable(QStringLiteral("%1 has no \"%2\"").arg(language, key)));
                // Texts are shown as they stand: markup of a README would be printed literally.
                QVERIFY2(!text.contains(QLatin1Char('`')), qPrintable(QStringLiteral("%1 \"%2\": %3").arg(language, key, text)));
            }
        }
    }
    void languagesSwitch()
    {
        QVERIFY(Texts::setLanguage(QStringLiteral("de")));
        QCOMPARE(Texts::localized("Quit Quaydrop"), QStringLiteral("Quaydrop beenden"));
        QCOMPARE(Texts::locale().decimalPoint(), QStringLiteral(","));
        QVERIFY(!Texts::setLanguage(QStringLiteral("fr")));
        QCOMPARE(Texts::language(), QStringLiteral("de"));
        QVERIFY(Texts::setLanguage(QStringLiteral("en")));
        QCOMPARE(Texts::localized("Zero KB"), QStringLiteral("Zero KB"));
        QCOMPARE(Texts::localized("Quit Quaydrop"), QStringLiteral("Quit Quaydrop"));
    }
};

QTEST_GUILESS_MAIN(AppShellTest)
#include "tst_appshell.moc"

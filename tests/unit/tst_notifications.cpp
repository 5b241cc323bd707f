// Notifications and reveal on a real session bus (run under dbus-run-session), against a small
// notification server and file manager of the test's own; without the server, the balloon of our own.

#include "TestRows.h"
#include "core/plist/Plist.h"
#include "core/settings/SettingsKeys.h"
#include "core/settings/SettingsStore.h"
#include "core/texts/Texts.h"
#include "menubar/statusitem/NotificationBalloon.h"
#include "platform/freedesktop/FreedesktopNotifications.h"
#include "platform/freedesktop/FreedesktopWorkspace.h"
#include "utils/Utils.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QLabel>
#include <QPushButton>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTest>

namespace {

class NotificationServer : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")
public:
    struct Received
    {
        QString app, icon, summary, body;
        QStringList actions;
        QVariantMap hints;
    };
    QList<Received> received;
    QList<uint> closed;
    uint lastId = 100; // ids never repeat, so a late close of an earlier test's notification is told apart

public Q_SLOTS:
    uint Notify(const QString &app, uint, const QString &icon, const QString &summary, const QString &body,
                const QStringList &actions, const QVariantMap &hints, int)
    {
        received.append({app, icon, summary, body, actions, hints});
        return ++lastId;
    }
    void CloseNotification(uint id) { closed.append(id); }
};

class FileManagerServer : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")
public:
    QList<QStringList> shown;
public Q_SLOTS:
    void ShowItems(const QStringList &uris, const QString &) { shown.append(uris); }
};

// A list of paths whose archived form is exactly `bytes` long.
QStringList pathsArchivingTo(qsizetype bytes)
{
    QStringList paths;
    for (int i = 0; i < 120; ++i)
        paths << QStringLiteral("/home/someone/Pictures/Harbour/photo-%1.jpg").arg(i, 4, 10, QLatin1Char('0'));
    auto size = [&] { return Plist::serialize(QVariant(paths)).value().size(); };
    while (size() > bytes - 60)
        paths.removeLast();
    paths.last().append(QString(bytes - size(), QLatin1Char('x')));
    return paths;
}

} // namespace

class NotificationsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        Texts::setLanguage(QStringLiteral("en"));
        if (!QDBusConnection::sessionBus().isConnected())
            QSKIP("no session bus: run under dbus-run-session");
        m_serverBus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("servers"));
        QVERIFY(m_serverBus.registerService(QStringLiteral("org.freedesktop.Notifications")));
        QVERIFY(m_serverBus.registerObject(QStringLiteral("/org/freedesktop/Notifications"), &m_server,
                                           QDBusConnection::ExportAllSlots));
        QVERIFY(m_serverBus.registerService(QStringLiteral("org.freedesktop.FileManager1")));
        QVERIFY(m_serverBus.registerObject(QStringLiteral("/org/freedesktop/FileManager1"), &m_fileManager,
                                           QDBusConnection::ExportAllSlots));
    }
    void init()
    {
        m_server.received.clear();
        m_server.closed.clear();
        m_fileManager.shown.clear();
        m_service = new FreedesktopNotifications(QDBusConnection::sessionBus(), this);
        // A tray icon at the top right of the screen.
        m_balloon = new NotificationBalloon([] { return QRect(1200, 0, 24, 24); }, this);
        m_service->setFallback(m_balloon);
        Platform::install({.notifications = m_service});
    }
    void cleanup()
    {
        // With a server the balloon never shows.
        QVERIFY(!m_balloon->balloon() || QTest::currentTestFunction() == QByteArray("withoutAServerABalloonTellsIt"));
        delete m_service;
        delete m_balloon;
        const QString name = QStringLiteral("org.freedesktop.Notifications");
        if (!m_serverBus.interface()->isServiceRegistered(name).value())
            QVERIFY(m_serverBus.registerService(name));
        SettingsStore::shared().resetAll();
    }
    // Only a notification with files, and only while they are switched on; its text escaped, a click its one action.
    void sentWithEscapedBodyAndOneDefaultAction()
    {
        Utils::postSimpleNotificationWithTitle(QStringLiteral("t"), QStringLiteral("b"), {}, {});
        SettingsStore::shared().setBool(SettingsKey::EnableUserNotifWhenDoneSwitch, false);
        Utils::postSimpleNotificationWithTitle(QStringLiteral("t"), QStringLiteral("b"), {},
                                               {{QStringLiteral("filePaths"), QStringList{"/x"}}});
        SettingsStore::shared().setBool(SettingsKey::EnableUserNotifWhenDoneSwitch, true);
        Utils::postSimpleNotificationWithTitle(QStringLiteral("2 files have been moved!"), QStringLiteral("to ..<i>a</i>/.../b & c"),
                                               QStringLiteral("Show"), {{QStringLiteral("filePaths"), QStringList{"/x/a", "/x/b"}}});
        QTRY_COMPARE(m_server.received.size(), 1);
        QTest::qWait(100);
        QCOMPARE(m_server.received.size(), 1);
        const auto &n = m_server.received.first();
        QCOMPARE((QStringList{n.app, n.summary, n.body}),
                 (QStringList{"Quaydrop", "2 files have been moved!", "to ..&lt;i&gt;a&lt;/i&gt;/.../b &amp; c"}));
        QCOMPARE(n.actions, QStringList({"default", ""})); // a click, no button
        QCOMPARE(n.hints.value(QStringLiteral("desktop-entry")).toString(), QStringLiteral("com.velmora.Quaydrop"));
        QTRY_COMPARE(m_service->pendingCount(), 1);
    }
    void userInfoSizeLimit_data()
    {
        QTest::addColumn<qsizetype>("bytes");
        QTest::addColumn<bool>("kept");
        QTest::newRow("15000 keeps the list") << qsizetype(15000) << true;
        QTest::newRow("15001 falls back to the folder") << qsizetype(15001) << false;
    }
    void userInfoSizeLimit()
    {
        QFETCH(qsizetype, bytes);
        QFETCH(bool, kept);
        const QStringList paths = pathsArchivingTo(bytes);
        QCOMPARE(Plist::serialize(QVariant(paths)).value().size(), bytes);
        QSignalSpy activated(m_service, &NotificationService::activated);
        Utils::postSimpleNotificationWithTitle(QStringLiteral("t"), QStringLiteral("b"), {}, {{QStringLiteral("filePaths"), paths}});
        QTRY_COMPARE(m_service->pendingCount(), 1);
        invoke(m_server.lastId, QStringLiteral("default"));
        QTRY_COMPARE(activated.count(), 1);
        const QStringList got = activated.first().first().toMap().value(QStringLiteral("filePaths")).toStringList();
        QCOMPARE(got, kept ? paths : QStringList{QStringLiteral("/home/someone/Pictures/Harbour")});
    }
    void clickRevealsTheFilesAndClosesIt()
    {
        FreedesktopWorkspace workspace(QDBusConnection::sessionBus());
        connect(m_service, &NotificationService::activated, this, [&](const QVariantMap &info) {
            QVERIFY(workspace.revealItems(info.value(QStringLiteral("filePaths")).toStringList()).ok());
        });
        Utils::postSimpleNotificationWithTitle(QStringLiteral("Alias created"), QStringLiteral("at ../Docs"), {},
                                               {{QStringLiteral("filePaths"), QStringList{"/srv/Docs/a b.txt", "/srv/Docs/c"}}});
        QTRY_COMPARE(m_service->pendingCount(), 1);
        // Another program's notification clicked: not ours, nothing happens.
        invoke(999, QStringLiteral("default"));
        QTest::qWait(100);
        QVERIFY(m_fileManager.shown.isEmpty() && !m_server.closed.contains(999u));
        const uint id = m_server.lastId;
        invoke(id, QStringLiteral("default"));
        QTRY_COMPARE(m_fileManager.shown.size(), 1);
        QCOMPARE(m_fileManager.shown.first(), QStringList({"file:///srv/Docs/a%20b.txt", "file:///srv/Docs/c"}));
        QTRY_VERIFY(m_server.closed.contains(id)); // used, so removed
        QCOMPARE(m_service->pendingCount(), 0);
    }
    void undoIsAButtonOfItsOwn()
    {
        QSignalSpy activated(m_service, &NotificationService::activated);
        Utils::postSimpleNotificationWithTitle(QStringLiteral("File rename complete!"), QStringLiteral("..a/b"), {},
                                               {{QStringLiteral("filePaths"), QStringList{"/a/b/Trip.jpg"}},
                                                {QStringLiteral("undoID"), QStringLiteral("u1")}});
        QTRY_COMPARE(m_server.received.size(), 1);
        QCOMPARE(m_server.received.first().actions, QStringList({"default", "", "undo", "Undo"}));
        invoke(m_server.lastId, QStringLiteral("undo"));
        QTRY_COMPARE(activated.count(), 1);
        const QVariantMap info = activated.first().first().toMap();
        QCOMPARE(info.value(QString::fromLatin1(NotificationService::kActivationActionKey)).toString(), QStringLiteral("undo"));
        QCOMPARE(info.value(QStringLiteral("undoID")).toString(), QStringLiteral("u1"));
    }
    void withoutAServerABalloonTellsIt_data()
    {
        rowsOf<bool>("busConnected", {{"no server on the bus", true}, {"no session bus", false}});
    }
    void withoutAServerABalloonTellsIt()
    {
        QFETCH(bool, busConnected);
        const QString name = QStringLiteral("org.freedesktop.Notifications");
        QVERIFY(m_serverBus.unregisterService(name));
        QTRY_VERIFY(!QDBusConnection::sessionBus().interface()->isServiceRegistered(name).value());
        if (!busConnected) {
            delete m_service;
            m_service = new FreedesktopNotifications(QDBusConnection(QStringLiteral("never connected")), this);
            m_service->setFallback(m_balloon);
            Platform::install({.notifications = m_service}); // the running service, not the one just deleted
        }
        QSignalSpy activated(m_service, &NotificationService::activated);
        const QStringList paths{"/x/a <b>.png"};
        Utils::postSimpleNotificationWithTitle(QStringLiteral("Images resized"), QStringLiteral("Saved to /<Pictures>"),
                                               {}, {{QStringLiteral("filePaths"), paths}});
        QTRY_VERIFY(m_balloon->balloon() && m_balloon->balloon()->isVisible());
        QCOMPARE(m_server.received.size(), 0);
        // The same text, as it is (no markup to escape here), with the Show button, under the tray icon.
        QCOMPARE((QStringList{m_balloon->titleLabel()->text(), m_balloon->bodyLabel()->text(), m_balloon->actionButton()->text()}),
                 (QStringList{"Images resized", "Saved to /<Pictures>", "Show"}));
        QVERIFY(m_balloon->balloon()->geometry().top() >= 24);
        QVERIFY(m_balloon->balloon()->geometry().right() <= 1223);
        m_balloon->actionButton()->click();
        QCOMPARE(activated.count(), 1);
        QCOMPARE(activated.first().first().toMap().value(QStringLiteral("filePaths")).toStringList(), paths);
        QVERIFY(!m_balloon->balloon()->isVisible());
        // Left alone, it goes after five seconds.
        Utils::postSimpleNotificationWithTitle(QStringLiteral("again"), {}, {}, {{QStringLiteral("filePaths"), paths}});
        QTRY_VERIFY(m_balloon->balloon()->isVisible());
        QTest::qWait(NotificationBalloon::kShowMs - 1000);
        QVERIFY(m_balloon->balloon()->isVisible());
        QTRY_VERIFY_WITH_TIMEOUT(!m_balloon->balloon()->isVisible(), 2500);
        QVERIFY(!m_balloon->undoButton()->isVisibleTo(m_balloon->balloon()));
        // An operation that can be taken back has Undo beside Show.
        Utils::postSimpleNotificationWithTitle(QStringLiteral("t"), {}, {},
                                               {{QStringLiteral("filePaths"), paths}, {QStringLiteral("undoID"), QStringLiteral("u2")}});
        QTRY_VERIFY(m_balloon->undoButton()->isVisible());
        m_balloon->undoButton()->click();
        QCOMPARE(activated.last().first().toMap().value(QString::fromLatin1(NotificationService::kActivationActionKey)).toString(),
                 QStringLiteral("undo"));
    }
    void balloonStaysBesideTheIconOnScreen_data()
    {
        QTest::addColumn<QRect>("icon");
        QTest::addColumn<QPoint>("pointer");
        QTest::addColumn<QRect>("expected");
        const QSize size(300, 100);
        QTest::newRow("tray at the top right: below the icon") << QRect(1200, 0, 24, 24) << QPoint() << QRect(QPoint(924, 29), size);
        QTest::newRow("tray at the bottom: above the icon") << QRect(600, 776, 24, 24) << QPoint() << QRect(QPoint(324, 671), size);
        QTest::newRow("icon at the left edge: pushed on screen") << QRect(4, 0, 24, 24) << QPoint() << QRect(QPoint(0, 29), size);
        QTest::newRow("no icon: beside the pointer") << QRect() << QPoint(400, 300) << QRect(QPoint(416, 316), size);
        QTest::newRow("no icon, pointer in the corner") << QRect() << QPoint(1270, 790) << QRect(QPoint(980, 700), size);
    }
    void balloonStaysBesideTheIconOnScreen()
    {
        QFETCH(QRect, icon);
        QFETCH(QPoint, pointer);
        QFETCH(QRect, expected);
        QCOMPARE(NotificationBalloon::placed(QSize(300, 100), icon, pointer, QRect(0, 0, 1280, 800)), expected);
    }

private:
    void invoke(uint id, const QString &action)
    {
        QDBusMessage signal = QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/Notifications"),
                                                         QStringLiteral("org.freedesktop.Notifications"),
                                                         QStringLiteral("ActionInvoked"));
        signal << id << action;
        QVERIFY(m_serverBus.send(signal));
    }

    QDBusConnection m_serverBus{QString()};
    NotificationServer m_server;
    FileManagerServer m_fileManager;
    FreedesktopNotifications *m_service = nullptr;
    NotificationBalloon *m_balloon = nullptr;
};

QTEST_MAIN(NotificationsTest)
#include "tst_notifications.moc"

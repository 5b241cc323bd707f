// The KDE Plasma global shortcut over D-Bus. kglobalaccel itself is not installed here (it needs a
// Plasma session), so a stand-in with its interface answers on a private session bus
// (dbus-run-session), on a connection of its own and answering from its own thread, as the daemon
// would from its process.
#include "platform/desktops/KGlobalAccelBinder.h"

#include <QDBusConnection>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QKeySequence>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

class FakeKGlobalAccel : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.KGlobalAccel")
public:
    QStringList registered;
    QList<int> heldByOthers;
    QHash<QString, QList<int>> keys;

public Q_SLOTS:
    void doRegister(const QStringList &actionId) { registered << actionId.value(0) + QChar('/') + actionId.value(1); }
    void unRegister(const QStringList &actionId)
    {
        registered.removeAll(actionId.value(0) + QChar('/') + actionId.value(1));
        keys.remove(actionId.value(1));
    }
    QList<int> setShortcut(const QStringList &actionId, const QList<int> &wanted, uint flags)
    {
        QList<int> given;
        for (int key : wanted)
            if (!heldByOthers.contains(key) && (flags & 2))
                given << key;
        keys[actionId.value(1)] = given;
        return given;
    }
    QDBusObjectPath getComponent(const QString &component)
    {
        return QDBusObjectPath(QStringLiteral("/component/") + component);
    }
};

class FakeComponent : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.kglobalaccel.Component")
Q_SIGNALS:
    void globalShortcutPressed(const QString &componentUnique, const QString &actionUnique, qlonglong timestamp);
};

class KGlobalAccelTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        if (qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS") || qgetenv("DBUS_SESSION_BUS_ADDRESS") == "disabled:")
            QSKIP("needs a session bus: run under dbus-run-session");
        qDBusRegisterMetaType<QList<int>>();
        QVERIFY(!KGlobalAccelBinder::available());
        m_thread.start();
        QDBusConnection daemonBus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("fake-kglobalaccel"));
        m_daemon = new FakeKGlobalAccel;
        m_component = new FakeComponent;
        // Calls are answered in the stand-in's thread while the binder waits; signals leave from here.
        m_daemon->moveToThread(&m_thread);
        QVERIFY(daemonBus.registerObject(QStringLiteral("/kglobalaccel"), m_daemon, QDBusConnection::ExportAllSlots));
        QVERIFY(daemonBus.registerObject(QStringLiteral("/component/quaydrop"), m_component, QDBusConnection::ExportAllSignals));
        QVERIFY(daemonBus.registerService(QStringLiteral("org.kde.kglobalaccel")));
        QVERIFY(KGlobalAccelBinder::available());
    }
    void cleanupTestCase()
    {
        m_thread.quit();
        m_thread.wait();
        delete m_daemon;
        delete m_component;
    }
    void bindRegistersAndPressesComeBack()
    {
        KGlobalAccelBinder binder;
        QSignalSpy pressed(&binder, &HotKeyBinder::activated);
        QVERIFY(binder.bind(QStringLiteral("Ctrl+Alt+F")).ok());
        QCOMPARE(m_daemon->registered, QStringList{QStringLiteral("quaydrop/toggle")});
        const int ctrlAltF = QKeySequence(QStringLiteral("Ctrl+Alt+F"))[0].toCombined();
        QCOMPARE(m_daemon->keys.value(QStringLiteral("toggle")), QList<int>{ctrlAltF});

        Q_EMIT m_component->globalShortcutPressed(QStringLiteral("other"), QStringLiteral("toggle"), 1);
        Q_EMIT m_component->globalShortcutPressed(QStringLiteral("quaydrop"), QStringLiteral("toggle"), 2);
        QVERIFY(pressed.wait(3000));
        QTest::qWait(200);
        QCOMPARE(pressed.count(), 1);

        // A key another global shortcut holds is refused with a reason.
        m_daemon->heldByOthers = {QKeySequence(QStringLiteral("Ctrl+Alt+T"))[0].toCombined()};
        const Status taken = binder.bind(QStringLiteral("Ctrl+Alt+T"));
        QVERIFY(!taken.ok());
        QVERIFY(taken.error().message.contains(QStringLiteral("held by another")));

        binder.unbind();
        QTRY_VERIFY(m_daemon->registered.isEmpty());
    }

private:
    QThread m_thread;
    FakeKGlobalAccel *m_daemon = nullptr;
    FakeComponent *m_component = nullptr;
};

QTEST_GUILESS_MAIN(KGlobalAccelTest)
#include "tst_kglobalaccel.moc"

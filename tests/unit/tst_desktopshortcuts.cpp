// The desktop's own global shortcuts on a private session bus (dbus-run-session). GNOME's custom
// keyboard shortcut on the real dconf service, read back with the dconf tool: the user's own shortcuts
// stay as they were. Plasma's kglobalaccel is not installed here (it needs a Plasma session), so a
// stand-in with its interface answers, on a connection of its own and from its own thread, as the
// daemon would from its process.
#include "UnitSupport.h"
#include "platform/desktops/GnomeShortcutBinder.h"
#include "platform/desktops/KGlobalAccelBinder.h"

#include <QDBusConnection>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QKeySequence>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

namespace {

const QString kBase = QStringLiteral("/org/gnome/settings-daemon/plugins/media-keys/");
const QString kOurs = QLatin1String(GnomeShortcutBinder::kPath);

QString dconf(const QStringList &arguments)
{
    const ProgramRun r = runProgram(QStringLiteral("dconf"), arguments);
    if (r.code != 0)
        qWarning("dconf %s: %s", qPrintable(arguments.join(QChar(' '))), r.err.constData());
    return QString::fromUtf8(r.out).trimmed();
}

QString list() { return dconf({QStringLiteral("read"), kBase + QStringLiteral("custom-keybindings")}); }


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

} // namespace

class DesktopShortcutsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        if (qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS") || qgetenv("DBUS_SESSION_BUS_ADDRESS") == "disabled:")
            QSKIP("needs a session bus: run under dbus-run-session");
        QVERIFY2(GnomeShortcutBinder::available(), "GNOME's media-keys schema is missing (gnome-settings-daemon-common)");
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
    void init() { dconf({QStringLiteral("reset"), QStringLiteral("-f"), kBase}); }
    void accelerator_data()
    {
        QTest::addColumn<QString>("portable");
        QTest::addColumn<QString>("gnome");
        QTest::newRow("default") << "Ctrl+Alt+F" << "<Control><Alt>f";
        QTest::newRow("shift, meta, digit") << "Shift+Meta+1" << "<Shift><Super>1";
        QTest::newRow("function key") << "Ctrl+F12" << "<Control>F12";
        QTest::newRow("named key") << "Alt+Space" << "<Alt>space";
        QTest::newRow("page key") << "Ctrl+PgDown" << "<Control>Page_Down";
        QTest::newRow("two keys") << "Ctrl+A, Ctrl+B" << "";
    }
    void accelerator()
    {
        QFETCH(QString, portable);
        QFETCH(QString, gnome);
        QCOMPARE(GnomeShortcutBinder::accelerator(portable), gnome);
    }
    void bindKeepsTheUsersShortcuts_data()
    {
        QTest::addColumn<QString>("before"); // the list as dconf writes it; empty: never set
        QTest::addColumn<QString>("bound");
        QTest::addColumn<QString>("unbound");
        const QString c0 = kBase + QStringLiteral("custom-keybindings/custom0/");
        const QString c1 = kBase + QStringLiteral("custom-keybindings/custom1/");
        const QString two = QStringLiteral("['%1', '%2']").arg(c0, c1);
        QTest::newRow("never set") << "" << QStringLiteral("['%1']").arg(kOurs) << "@as []";
        QTest::newRow("the user's two") << two << QStringLiteral("['%1', '%2', '%3']").arg(c0, c1, kOurs) << two;
        QTest::newRow("ours already first") << QStringLiteral("['%1', '%2']").arg(kOurs, c0)
                                            << QStringLiteral("['%1', '%2']").arg(kOurs, c0) << QStringLiteral("['%1']").arg(c0);
        QTest::newRow("ours twice") << QStringLiteral("['%1', '%2', '%1']").arg(kOurs, c0)
                                    << QStringLiteral("['%1', '%2']").arg(kOurs, c0) << QStringLiteral("['%1']").arg(c0);
        QTest::newRow("an odd entry of the user's") << "['not a path']" << QStringLiteral("['not a path', '%1']").arg(kOurs)
                                                    << "['not a path']";
    }
    void bindKeepsTheUsersShortcuts()
    {
        QFETCH(QString, before);
        QFETCH(QString, bound);
        QFETCH(QString, unbound);
        const QString custom0 = kBase + QStringLiteral("custom-keybindings/custom0/");
        dconf({QStringLiteral("write"), custom0 + QStringLiteral("command"), QStringLiteral("'gnome-terminal'")});
        if (!before.isEmpty())
            dconf({QStringLiteral("write"), kBase + QStringLiteral("custom-keybindings"), before});

        GnomeShortcutBinder binder(QStringLiteral("/usr/bin/quaydrop toggle"));
        QVERIFY(binder.bind(QStringLiteral("Ctrl+Alt+F")).ok());
        QCOMPARE(list(), bound);
        QCOMPARE(dconf({QStringLiteral("read"), kOurs + QStringLiteral("binding")}), QStringLiteral("'<Control><Alt>f'"));
        QCOMPARE(dconf({QStringLiteral("read"), kOurs + QStringLiteral("command")}), QStringLiteral("'/usr/bin/quaydrop toggle'"));
        // Another key changes the key only.
        QVERIFY(binder.bind(QStringLiteral("Ctrl+Alt+G")).ok());
        QCOMPARE(list(), bound);
        QCOMPARE(dconf({QStringLiteral("read"), kOurs + QStringLiteral("binding")}), QStringLiteral("'<Control><Alt>g'"));

        binder.unbind();
        QCOMPARE(list(), unbound);
        QCOMPARE(dconf({QStringLiteral("list"), kOurs}), QString());
        QCOMPARE(dconf({QStringLiteral("read"), custom0 + QStringLiteral("command")}), QStringLiteral("'gnome-terminal'"));
        QVERIFY(!binder.bind(QStringLiteral("Ctrl+A, Ctrl+B")).ok());
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

QTEST_GUILESS_MAIN(DesktopShortcutsTest)
#include "tst_desktopshortcuts.moc"

// GNOME's custom keyboard shortcut on the real dconf service of a private session bus
// (dbus-run-session), read back with the dconf tool: the user's own shortcuts stay as they were.
#include "UnitSupport.h"
#include "platform/desktops/GnomeShortcutBinder.h"

#include <QTest>

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

} // namespace

class GnomeShortcutTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        if (qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS") || qgetenv("DBUS_SESSION_BUS_ADDRESS") == "disabled:")
            QSKIP("needs a session bus: run under dbus-run-session");
        QVERIFY2(GnomeShortcutBinder::available(), "GNOME's media-keys schema is missing (gnome-settings-daemon-common)");
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
};

QTEST_GUILESS_MAIN(GnomeShortcutTest)
#include "tst_gnomeshortcut.moc"

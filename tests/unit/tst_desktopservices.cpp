// The desktop's own settings services on a private session bus (run under dbus-run-session). The
// wallpaper: dconf through gsettings for GNOME, and for Cinnamon and MATE with their schemas compiled
// by the test; a real xfconfd for XFCE; then the history of "WPs.plist". GNOME's custom keyboard
// shortcut on the real dconf service, read back with the dconf tool: the user's own shortcuts stay as
// they were. Plasma, its kglobalaccel and the desktop portal do not run here: small services of the
// test's own stand in for them, answering from a thread of their own as a daemon would from its
// process, and record what they were asked.

#include "images/wallpaper/WallpaperHistory.h"
#include "platform/desktops/GnomeShortcutBinder.h"
#include "platform/desktops/KGlobalAccelBinder.h"
#include "platform/freedesktop/DesktopWallpaper.h"
#include "utils/Utils.h"

#include "ImageFixtures.h"
#include "TestSupport.h"
#include "TestTree.h"

#include <QDBusConnection>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusUnixFileDescriptor>
#include <QDir>
#include <QJsonDocument>
#include <QKeySequence>
#include <QProcess>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <unistd.h>

namespace {

// A tool's standard output, trimmed; a failure is logged.
QString run(const QString &program, const QStringList &arguments)
{
    const ProgramRun r = runProgram(program, arguments);
    if (r.code != 0)
        qWarning("%s %s: %s", qPrintable(program), qPrintable(arguments.join(QChar(' '))), r.err.constData());
    return QString::fromUtf8(r.out).trimmed();
}

// Plasma's shell: keeps the picture that a script writes and prints it back to a script that reads it.
class PlasmaShell : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.PlasmaShell")
public:
    QStringList scripts;
    QString image;
public Q_SLOTS:
    QString evaluateScript(const QString &script)
    {
        scripts << script;
        static const QRegularExpression written(QStringLiteral("var uri = (\\[.*\\])\\[0\\];"));
        if (const auto m = written.match(script); m.hasMatch())
            image = QJsonDocument::fromJson(m.captured(1).toUtf8()).toVariant().toList().value(0).toString();
        return script.contains(QLatin1String("print(d.readConfig(\"Image\"))")) ? image : QString();
    }
};

// The portal's wallpaper interface: reads the file it is handed.
class WallpaperPortal : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Wallpaper")
    Q_PROPERTY(uint version READ version)
public:
    uint version() const { return 1; }
    QByteArray received;
    QVariantMap options;
public Q_SLOTS:
    QDBusObjectPath SetWallpaperFile(const QString &, const QDBusUnixFileDescriptor &fd, const QVariantMap &opts)
    {
        QFile f;
        if (f.open(dup(fd.fileDescriptor()), QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
            received = f.readAll();
        options = opts;
        return QDBusObjectPath(QStringLiteral("/org/freedesktop/portal/desktop/request/1_1/t"));
    }
};

const char *kTestSchemas = R"(<schemalist>
  <schema id="org.cinnamon.desktop.background" path="/org/cinnamon/desktop/background/">
    <key name="picture-uri" type="s"><default>''</default></key>
    <key name="picture-options" type="s"><default>'none'</default></key>
  </schema>
  <schema id="org.mate.background" path="/org/mate/desktop/background/">
    <key name="picture-filename" type="s"><default>''</default></key>
    <key name="picture-options" type="s"><default>'zoom'</default></key>
  </schema>
</schemalist>)";

const QString kBase = QStringLiteral("/org/gnome/settings-daemon/plugins/media-keys/");
const QString kOurs = QLatin1String(GnomeShortcutBinder::kPath);

QString dconf(const QStringList &arguments) { return run(QStringLiteral("dconf"), arguments); }

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

class DesktopServicesTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        if (!QDBusConnection::sessionBus().isConnected())
            QSKIP("no session bus: run under dbus-run-session");
        const QString schemas = m_dir.filePath(QStringLiteral("schemas"));
        QDir().mkpath(schemas);
        ImageFixtures::write(schemas + QStringLiteral("/quaydrop-test.gschema.xml"), kTestSchemas);
        QCOMPARE(QProcess::execute(QStringLiteral("glib-compile-schemas"), {schemas}), 0);
        qputenv("GSETTINGS_SCHEMA_DIR", schemas.toUtf8());
        qputenv("GSETTINGS_BACKEND", "dconf");
        QVERIFY2(GnomeShortcutBinder::available(), "GNOME's media-keys schema is missing (gnome-settings-daemon-common)");
        qDBusRegisterMetaType<QList<int>>();
        QVERIFY(!KGlobalAccelBinder::available());

        // The stand-ins answer from a thread of their own: the setters and binders wait for their
        // replies. Signals leave from here.
        m_services = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("services"));
        m_plasma = new PlasmaShell;
        m_portal = new WallpaperPortal;
        m_daemon = new FakeKGlobalAccel;
        for (QObject *service : std::initializer_list<QObject *>{m_plasma, m_portal, m_daemon})
            service->moveToThread(&m_serviceThread);
        m_serviceThread.start();
        QVERIFY(m_services.registerObject(QStringLiteral("/kglobalaccel"), m_daemon, QDBusConnection::ExportAllSlots));
        QVERIFY(m_services.registerObject(QStringLiteral("/component/quaydrop"), &m_component, QDBusConnection::ExportAllSignals));
        QVERIFY(m_services.registerService(QStringLiteral("org.kde.kglobalaccel")));
        QVERIFY(KGlobalAccelBinder::available());
        QVERIFY(m_services.registerService(QStringLiteral("org.kde.plasmashell")));
        QVERIFY(m_services.registerObject(QStringLiteral("/PlasmaShell"), m_plasma, QDBusConnection::ExportAllSlots));
        QVERIFY(m_services.registerService(QStringLiteral("org.freedesktop.portal.Desktop")));
        QVERIFY(m_services.registerObject(QStringLiteral("/org/freedesktop/portal/desktop"), m_portal,
                                          QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllProperties));
    }
    void cleanupTestCase()
    {
        m_serviceThread.quit();
        m_serviceThread.wait();
        qDeleteAll(std::initializer_list<QObject *>{m_plasma, m_portal, m_daemon});
    }
    void init()
    {
        QDir(Utils::QDappSupportPath()).removeRecursively();
        dconf({QStringLiteral("reset"), QStringLiteral("-f"), kBase});
        m_gnome = std::make_unique<DesktopWallpaper>(QDBusConnection::sessionBus(), QStringLiteral("GNOME"));
    }
    void gsettingsDesktops_data()
    {
        QTest::addColumn<QString>("xdg");
        QTest::addColumn<QStringList>("keys"); // dconf keys that must hold the picture
        QTest::addColumn<bool>("uri");
        QTest::newRow("gnome, as Ubuntu names it") << "ubuntu:GNOME"
                               << QStringList{"/org/gnome/desktop/background/picture-uri", "/org/gnome/desktop/background/picture-uri-dark"}
                               << true;
        QTest::newRow("cinnamon") << "X-Cinnamon" << QStringList{"/org/cinnamon/desktop/background/picture-uri"} << true;
        QTest::newRow("mate") << "MATE" << QStringList{"/org/mate/desktop/background/picture-filename"} << false;
    }
    void gsettingsDesktops()
    {
        QFETCH(QString, xdg);
        QFETCH(QStringList, keys);
        QFETCH(bool, uri);
        DesktopWallpaper desktop(QDBusConnection::sessionBus(), xdg);
        const QString path = picture(QStringLiteral("it's a harbour.png"));
        const Status set = desktop.setWallpaper(path);
        QVERIFY2(set.ok(), qPrintable(set.ok() ? QString() : set.error().message));
        const QString expected = uri ? QUrl::fromLocalFile(path).toString(QUrl::FullyEncoded) : path;
        for (const QString &key : keys) {
            QString stored = dconf({QStringLiteral("read"), key});
            QCOMPARE(stored.mid(1, stored.size() - 2).replace(QLatin1String("\\'"), QLatin1String("'")), expected);
        }
        QCOMPARE(desktop.currentWallpaper(), path);
    }
    // XFCE gets the picture on every monitor and workspace, Plasma on every desktop.
    void everyScreen()
    {
        const QStringList properties{QStringLiteral("/backdrop/screen0/monitorVirtual1/workspace0/last-image"),
                                     QStringLiteral("/backdrop/screen0/monitorVirtual1/workspace1/last-image"),
                                     QStringLiteral("/backdrop/screen0/monitor1/workspace0/last-image")};
        for (const QString &p : properties)
            QProcess::execute(QStringLiteral("xfconf-query"),
                              {"-c", "xfce4-desktop", "-p", p, "-n", "-t", "string", "-s", "/old.png"});
        DesktopWallpaper desktop(QDBusConnection::sessionBus(), QStringLiteral("XFCE"));
        const QString path = picture(QStringLiteral("xfce.png"));
        const Status set = desktop.setWallpaper(path);
        QVERIFY2(set.ok(), qPrintable(set.ok() ? QString() : set.error().message));
        for (const QString &p : properties)
            QCOMPARE(run(QStringLiteral("xfconf-query"), {"-c", "xfce4-desktop", "-p", p}), path);
        QCOMPARE(desktop.currentWallpaper(), path);
        DesktopWallpaper plasma(QDBusConnection::sessionBus(), QStringLiteral("KDE"));
        const QString quoted = picture(QStringLiteral("plasma \"quoted\".png"));
        const Status setOnPlasma = plasma.setWallpaper(quoted);
        QVERIFY2(setOnPlasma.ok(), qPrintable(setOnPlasma.ok() ? QString() : setOnPlasma.error().message));
        QVERIFY(m_plasma->scripts.size() >= 2);
        QVERIFY(m_plasma->scripts.first().contains(QLatin1String("for (var i = 0; i < all.length; ++i)")));
        QVERIFY(m_plasma->scripts.first().contains(QLatin1String("d.wallpaperPlugin = \"org.kde.image\"")));
        QCOMPARE(m_plasma->image, QUrl::fromLocalFile(quoted).toString(QUrl::FullyEncoded));
        QCOMPARE(plasma.currentWallpaper(), quoted);
    }
    void portalGetsTheFile()
    {
        DesktopWallpaper desktop(QDBusConnection::sessionBus(), QStringLiteral("sway"));
        const QString path = picture(QStringLiteral("portal.png"), Qt::blue);
        const Status set = desktop.setWallpaper(path);
        QVERIFY2(set.ok(), qPrintable(set.ok() ? QString() : set.error().message));
        QCOMPARE(m_portal->received, TestTree::contents(path));
        QCOMPARE(m_portal->options.value(QStringLiteral("show-preview")).toBool(), false);
    }
    void unknownDesktopIsNamed()
    {
        // No portal on this connection's bus, and no feh on the PATH.
        QDBusConnection other = QDBusConnection::connectToBus(QStringLiteral("disabled:"), QStringLiteral("none"));
        const QByteArray path = qgetenv("PATH");
        qputenv("PATH", m_dir.path().toUtf8());
        DesktopWallpaper desktop(other, QStringLiteral("Hyprland"));
        const Status set = desktop.setWallpaper(picture(QStringLiteral("x.png")));
        qputenv("PATH", path);
        QVERIFY(!set.ok());
        QVERIFY2(set.error().message.contains(QLatin1String("Hyprland")), qPrintable(set.error().message));
    }
    void historyRotates()
    {
        const QString first = picture(QStringLiteral("first.png"));
        QVERIFY(m_gnome->setWallpaper(first).ok());
        // First use: the present picture stands in slot 1 and is kept as "curWP".
        QCOMPARE(WallpaperHistory::slotsToShow(*m_gnome).slot1, first);
        QCOMPARE(WallpaperHistory::read().curWP, first);

        const QString folder = Utils::pathForWPFolder() + QLatin1Char('/');
        const QStringList names{"A.png", "B.png", "C.png", "D.png"};
        for (const QString &n : names)
            QVERIFY(WallpaperHistory::setDroppedPicture(picture(n), *m_gnome).ok());
        const WallpaperHistory::Entries list = WallpaperHistory::read();
        QCOMPARE((QStringList{list.curWP, list.oldWP1, list.oldWP2}), (QStringList{folder + "D.png", folder + "C.png", folder + "B.png"}));
        QCOMPARE(m_gnome->currentWallpaper(), folder + "D.png");
        QVERIFY(!QFile::exists(folder + "A.png")); // fell out of the history
        QVERIFY(QFile::exists(first));             // the user's own picture is never removed
        QCOMPARE(WallpaperHistory::slotsToShow(*m_gnome).slot2, folder + "B.png");

        // Back to the one before; the history stays.
        QVERIFY(WallpaperHistory::setSlot(1, *m_gnome).ok());
        QCOMPARE(m_gnome->currentWallpaper(), folder + "C.png");
        QCOMPARE(WallpaperHistory::read().curWP, folder + "D.png");
    }
    void sameNameKeepsHistory()
    {
        for (const char *n : {"A.png", "B.png"})
            QVERIFY(WallpaperHistory::setDroppedPicture(picture(QString::fromLatin1(n)), *m_gnome).ok());
        // A picture named as one in the history, from another folder: the copy is replaced, no shift.
        QDir().mkpath(m_dir.filePath(QStringLiteral("elsewhere")));
        const QString other = m_dir.filePath(QStringLiteral("elsewhere/A.png"));
        QImage green(10, 10, QImage::Format_RGB32);
        green.fill(Qt::green);
        QVERIFY(ImageFixtures::write(other, ImageFixtures::encoded(green, "png")));
        QVERIFY(WallpaperHistory::setDroppedPicture(other, *m_gnome).ok());
        const QString folder = Utils::pathForWPFolder() + QLatin1Char('/');
        QCOMPARE(WallpaperHistory::read().curWP, folder + "B.png");
        QCOMPARE(WallpaperHistory::read().oldWP1, folder + "A.png");
        QCOMPARE(QImage(folder + "A.png").pixelColor(0, 0), QColor(Qt::green));
        QCOMPARE(m_gnome->currentWallpaper(), folder + "A.png");
    }
    void damagedListAndVanishedFiles()
    {
        QVERIFY(ImageFixtures::write(Utils::getWallpapersPlistPath(), "<plist>not a list"));
        QVERIFY(!Utils::getWallpapersPlistDictionaryValues());
        QVERIFY(Utils::saveChangesToWPPlist("/gone/now.png", "/gone/old1.png", "/gone/old2.png").ok());
        const WallpaperHistory::Shown shown = WallpaperHistory::slotsToShow(*m_gnome);
        QVERIFY(shown.slot1.isEmpty() && shown.slot2.isEmpty());
        QVERIFY(!WallpaperHistory::setSlot(1, *m_gnome).ok());
        // The next change writes a whole list again.
        QVERIFY(ImageFixtures::write(Utils::getWallpapersPlistPath(), "garbage"));
        QVERIFY(WallpaperHistory::setDroppedPicture(picture(QStringLiteral("E.png")), *m_gnome).ok());
        QCOMPARE(WallpaperHistory::read().curWP, Utils::pathForWPFolder() + QStringLiteral("/E.png"));
    }
    void refusedPictures_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<int>("code");
        QTest::newRow("30000x20000") << ImageFixtures::pngClaiming(30000, 20000) << int(WallpaperHistory::kTooLarge);
        QTest::newRow("not a picture") << QByteArray("just text") << int(WallpaperHistory::kNotAPicture);
    }
    void refusedPictures()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(int, code);
        const QString before = m_gnome->currentWallpaper();
        const QString path = m_dir.filePath(QStringLiteral("huge.png"));
        QVERIFY(ImageFixtures::write(path, bytes));
        const Status set = WallpaperHistory::setDroppedPicture(path, *m_gnome);
        QVERIFY(!set.ok());
        QCOMPARE(set.error().code, code);
        QCOMPARE(m_gnome->currentWallpaper(), before);
    }
    void failedCopySetsTheDroppedFile()
    {
        QDir().mkpath(Utils::QDappSupportPath());
        QVERIFY(ImageFixtures::write(Utils::QDappSupportPath() + QStringLiteral("/QD_WP"), "a file in the folder's place"));
        const QString dropped = picture(QStringLiteral("F.png"));
        QVERIFY(WallpaperHistory::setDroppedPicture(dropped, *m_gnome).ok());
        QCOMPARE(m_gnome->currentWallpaper(), dropped);
    }
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

        Q_EMIT m_component.globalShortcutPressed(QStringLiteral("other"), QStringLiteral("toggle"), 1);
        Q_EMIT m_component.globalShortcutPressed(QStringLiteral("quaydrop"), QStringLiteral("toggle"), 2);
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
    QString picture(const QString &name, const QColor &colour = Qt::red)
    {
        QDir().mkpath(m_dir.filePath(QStringLiteral("pictures")));
        const QString path = m_dir.filePath(QStringLiteral("pictures/") + name);
        QImage image(64, 40, QImage::Format_RGB32);
        image.fill(colour);
        ImageFixtures::write(path, ImageFixtures::encoded(image, "png"));
        return path;
    }

    QTemporaryDir m_dir;
    QDBusConnection m_services{QString()};
    QThread m_serviceThread;
    PlasmaShell *m_plasma = nullptr;
    WallpaperPortal *m_portal = nullptr;
    std::unique_ptr<DesktopWallpaper> m_gnome;
    FakeKGlobalAccel *m_daemon = nullptr;
    FakeComponent m_component;
};

QTEST_GUILESS_MAIN(DesktopServicesTest)
#include "tst_desktopservices.moc"

// The resident program's shell: one instance per session and the requests that commands send it,
// termination signals, its notification center and texts; the per-user file-manager entries; desktop
// files matched to window classes, the exclusion list's file, and the hot key as an X11 grab.
#include "TestRows.h"
#include "TestSupport.h"
#include "TestTree.h"
#include "core/NotificationCenter.h"
#include "core/fs/NativePath.h"
#include "core/panels/PanelCatalog.h"
#include "core/plist/Plist.h"
#include "core/texts/Texts.h"
#include "platform/SingleInstance.h"
#include "platform/freedesktop/DesktopEntries.h"
#include "platform/freedesktop/FileManagerEntries.h"
#include "platform/posix/UnixSignalWatcher.h"
#include "platform/x11/X11HotKeyBinder.h"
#include "utils/Utils.h"

#include <QtTest>
#include <QXmlStreamReader>

#include <signal.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

using FileManagerEntries::Change;

namespace {

const QByteArray kHeader = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
// A user's action as Thunar writes it, with bytes that a rewrite through an XML library would change:
// an attribute order, an entity, a comment, a CR LF.
const QByteArray kUsersAction = "<action>\n\t<icon>utilities-terminal</icon>\n\t<name>Open Terminal Here</name>\n"
                                "\t<unique-id>1600000000000000-1</unique-id>\n"
                                "\t<command>exo-open --working-directory %f --launch TerminalEmulator</command>\n"
                                "\t<description>Example for a custom action &amp; more</description>\r\n"
                                "\t<!-- mine -->\n\t<patterns>*</patterns>\n\t<startup-notify/>\n\t<directories/>\n"
                                "</action>\n";

} // namespace

class AppShellTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        const QString apps = m_dir.path() + QStringLiteral("/apps");
        writeEntry(apps, QStringLiteral("org.gnome.Nautilus.desktop"),
                   QStringLiteral("Name=Files\nName[de]=Dateien\nIcon=org.gnome.Nautilus\nExec=nautilus --new-window %U\n"
                                  "StartupWMClass=org.gnome.Nautilus\n"));
        writeEntry(apps, QStringLiteral("gimp.desktop"), QStringLiteral("Name=GNU Image Manipulation Program\nExec=gimp-2.10 %U\n"));
        writeEntry(apps, QStringLiteral("org.kde.krita.desktop"), QStringLiteral("Name=Krita\nExec=krita %F\n"));
        writeEntry(apps, QStringLiteral("kde4/kate.desktop"), QStringLiteral("Name=Kate\nExec=env FOO=1 \"/usr/bin/kate\" -b %U\n"));
        writeEntry(apps, QStringLiteral("helper.desktop"), QStringLiteral("Name=Helper\nExec=helper\nNoDisplay=true\n"));
    }
    void cleanup()
    {
        QFile::remove(Utils::QDappSupportPath() + QStringLiteral("/exclAppList.plist"));
    }
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
        rowsOf<int>("signalNumber", {{"SIGTERM", SIGTERM}, {"SIGINT", SIGINT}});
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
    void thunarActions_data()
    {
        QTest::addColumn<QByteArray>("before"); // "<unreadable>": no file at all
        QTest::addColumn<int>("added");         // Change, or -1 for an error that leaves the file alone
        QTest::newRow("no file") << QByteArray("<unreadable>") << int(Change::Added);
        QTest::newRow("empty file") << QByteArray("") << int(Change::Added);
        QTest::newRow("no actions yet") << kHeader + "<actions>\n</actions>\n" << int(Change::Added);
        QTest::newRow("the user's actions") << kHeader + "<actions>\n" + kUsersAction + "</actions>" << int(Change::Added);
        QTest::newRow("closing tag on the same line") << kHeader + "<actions>" + kUsersAction.trimmed() + "</actions>\n"
                                                      << int(Change::Added);
        QTest::newRow("malformed") << kHeader + "<actions>\n" + kUsersAction.left(60) << -1;
        QTest::newRow("another root") << kHeader + "<settings/>\n" << -1;
        QTest::newRow("empty-tagged actions") << kHeader + "<actions/>\n" << -1;
    }
    // Added once, removed again, and the user's bytes are what they were at each step.
    void thunarActions()
    {
        QFETCH(QByteArray, before);
        QFETCH(int, added);
        QTemporaryDir dir;
        const QString uca = dir.filePath(QStringLiteral("Thunar/uca.xml"));
        const bool existed = before != "<unreadable>";
        if (existed)
            QVERIFY(QDir().mkpath(dir.filePath(QStringLiteral("Thunar"))) && writeFile(uca, before));
        const auto first = FileManagerEntries::integrateThunar(uca, false);
        if (added < 0) {
            QVERIFY(!first.ok());
            QVERIFY2(first.error().message.contains(QStringLiteral("left as it is")), qPrintable(first.error().message));
            QCOMPARE(TestTree::contents(uca), before);
            return;
        }
        QVERIFY2(first.ok(), first.ok() ? "" : qPrintable(first.error().message));
        QCOMPARE(int(first.value()), added);
        const QByteArray merged = TestTree::contents(uca);
        QCOMPARE(merged.count("com.velmora.Quaydrop.panel"), 1);
        QVERIFY(merged.contains("<command>quaydrop panel -- %F</command>"));
        if (before.contains(kUsersAction.trimmed()))
            QVERIFY(merged.contains(kUsersAction.trimmed()));
        // Well-formed for Thunar's own reader too.
        QXmlStreamReader reader(merged);
        while (!reader.atEnd())
            reader.readNext();
        QVERIFY2(!reader.hasError(), qPrintable(reader.errorString()));

        const auto again = FileManagerEntries::integrateThunar(uca, false);
        QCOMPARE(int(again.value()), int(Change::AlreadyThere));
        QCOMPARE(TestTree::contents(uca), merged);

        QCOMPARE(int(FileManagerEntries::integrateThunar(uca, true).value()), int(Change::Removed));
        const QByteArray removed = TestTree::contents(uca);
        QVERIFY(!removed.contains("Quaydrop"));
        if (existed && !before.trimmed().isEmpty())
            QCOMPARE(removed, before);
        QCOMPARE(int(FileManagerEntries::integrateThunar(uca, true).value()), int(Change::NotThere));
    }
    void nautilusScript()
    {
        QTemporaryDir dir;
        const QString folder = dir.filePath(QStringLiteral("nautilus/scripts"));
        const QString script = folder + QStringLiteral("/Open in Quaydrop");
        QCOMPARE(int(FileManagerEntries::integrateNautilus(folder, false).value()), int(Change::Added));
        QVERIFY(QFileInfo(script).isExecutable());
        QVERIFY(TestTree::contents(script).contains("exec quaydrop panel -- \"$@\""));
        QCOMPARE(int(FileManagerEntries::integrateNautilus(folder, false).value()), int(Change::AlreadyThere));
        QCOMPARE(int(FileManagerEntries::integrateNautilus(folder, true).value()), int(Change::Removed));
        QVERIFY(!QFile::exists(script));
        QCOMPARE(int(FileManagerEntries::integrateNautilus(folder, true).value()), int(Change::NotThere));
        // A script of the user's under that name is never replaced or removed.
        QVERIFY(writeFile(script, "#!/bin/sh\necho mine\n"));
        QVERIFY(!FileManagerEntries::integrateNautilus(folder, false).ok());
        QVERIFY(!FileManagerEntries::integrateNautilus(folder, true).ok());
        QCOMPARE(TestTree::contents(script), QByteArray("#!/bin/sh\necho mine\n"));
    }
    void requestsSurviveTheSocketLine_data()
    {
        QTest::addColumn<QStringList>("paths");
        QTest::newRow("plain") << QStringList{QStringLiteral("/home/u/a.png")};
        QTest::newRow("spaces, line breaks, percent") << QStringList{QStringLiteral("/a b/c\nd.txt"), QStringLiteral("/100% e")};
        QTest::newRow("not UTF-8") << QStringList{NativePath::fromNative("/tmp/caf\xe9.txt"), QStringLiteral("/tmp/Straße")};
    }
    void requestsSurviveTheSocketLine()
    {
        QFETCH(QStringList, paths);
        const QByteArray line = SingleInstance::encode({SingleInstance::Request::Kind::Panel, paths});
        QCOMPARE(line.count('\n'), 1);
        const auto request = SingleInstance::decode(line);
        QVERIFY(request);
        QCOMPARE(int(request->kind), int(SingleInstance::Request::Kind::Panel));
        QCOMPARE(request->paths, paths);
        QCOMPARE(int(SingleInstance::decode(SingleInstance::encode({SingleInstance::Request::Kind::Toggle}))->kind),
                 int(SingleInstance::Request::Kind::Toggle));
        QVERIFY(!SingleInstance::decode("panel\n"));
        QVERIFY(!SingleInstance::decode("remove-everything\n"));
    }
    void windowToApplication_data()
    {
        QTest::addColumn<QString>("instance");
        QTest::addColumn<QString>("wmClass");
        QTest::addColumn<QString>("program");
        QTest::addColumn<QString>("id");
        QTest::newRow("StartupWMClass") << "org.gnome.Nautilus" << "org.gnome.Nautilus" << "" << "org.gnome.Nautilus";
        QTest::newRow("class is the id's last part") << "krita" << "Krita" << "" << "org.kde.krita";
        QTest::newRow("instance is the file's name") << "gimp" << "Gimp-2.10" << "" << "gimp";
        QTest::newRow("only the program tells") << "x" << "Y" << "gimp-2.10" << "gimp";
        QTest::newRow("program behind env and quotes, id from a subfolder") << "" << "" << "kate" << "kde4-kate";
        QTest::newRow("hidden entries still name their windows") << "helper" << "Helper" << "" << "helper";
        QTest::newRow("unknown") << "qd_dragsource" << "qd_dragsource" << "qd_dragsource" << "";
    }
    void windowToApplication()
    {
        QFETCH(QString, instance);
        QFETCH(QString, wmClass);
        QFETCH(QString, program);
        QFETCH(QString, id);
        const DesktopEntries entries = DesktopEntries::load({m_dir.path() + QStringLiteral("/apps")});
        QCOMPARE(entries.idForWindow(instance, wmClass, program), id);
    }
    void earlierFoldersHideLaterOnes()
    {
        const QString mine = m_dir.path() + QStringLiteral("/mine");
        writeEntry(mine, QStringLiteral("gimp.desktop"), QStringLiteral("Name=My GIMP\nExec=gimp\n"));
        const DesktopEntries entries = DesktopEntries::load({mine, m_dir.path() + QStringLiteral("/apps")});
        QCOMPARE(entries.byId(QStringLiteral("gimp"))->name, QStringLiteral("My GIMP"));
        QVERIFY(!entries.byId(QStringLiteral("helper"))->shown);
        QCOMPARE(entries.byId(QStringLiteral("org.gnome.Nautilus"))->iconName, QStringLiteral("org.gnome.Nautilus"));
        QCOMPARE(entries.byId(QStringLiteral("org.gnome.Nautilus"))->executable, QStringLiteral("nautilus"));
    }
    void exclusionListFile()
    {
        const QString path = Utils::pathForExlAppsPlist();
        QVERIFY(QFileInfo(path).isFile());
        // First written as an empty dictionary, which reads as no applications.
        QCOMPARE(Plist::readFile(path).value().typeId(), QMetaType::QVariantMap);
        QVERIFY(Utils::exclBndlIDAppsArray().isEmpty());

        Utils::updateExlAppsPlistWithBundleId(QStringLiteral("gimp"), true); // removing from nothing
        QCOMPARE(Plist::readFile(path).value().typeId(), QMetaType::QVariantList);
        QVERIFY(Utils::exclBndlIDAppsArray().isEmpty());

        Utils::updateExlAppsPlistWithBundleId(QStringLiteral("gimp"), false);
        Utils::updateExlAppsPlistWithBundleId(QStringLiteral("org.kde.krita"), false);
        const auto inode = [&path] {
            struct stat st{};
            return ::stat(QFile::encodeName(path).constData(), &st) == 0 ? st.st_ino : ino_t(0);
        };
        const ino_t before = inode();
        Utils::updateExlAppsPlistWithBundleId(QStringLiteral("gimp"), false); // already there: rewritten as it was
        QCOMPARE(Utils::exclBndlIDAppsArray(), (QStringList{"gimp", "org.kde.krita"}));
        QVERIFY(inode() != before); // a new file took the old one's name
        Utils::updateExlAppsPlistWithBundleId(QStringLiteral("gimp"), true);
        QCOMPARE(Utils::exclBndlIDAppsArray(), QStringList{"org.kde.krita"});

        QVERIFY(writeFile(path, "not a property list"));
        QVERIFY(Utils::exclBndlIDAppsArray().isEmpty());
    }
    void grabOfAKeySequence_data()
    {
        QTest::addColumn<QString>("keys");
        QTest::addColumn<uint>("keysym");
        QTest::addColumn<uint>("modifiers"); // Shift 1, Control 4, Alt 8, Super 64
        QTest::newRow("the default") << "Ctrl+Alt+F" << uint('f') << 12u;
        QTest::newRow("a digit with Super") << "Meta+1" << uint('1') << 64u;
        QTest::newRow("a function key") << "Ctrl+Shift+F5" << 0xffc2u << 5u;
        QTest::newRow("space") << "Alt+Space" << 0x20u << 8u;
        QTest::newRow("a key alone is no global key") << "F" << uint('f') << 0u;
        QTest::newRow("two strokes cannot be grabbed") << "Ctrl+K, Ctrl+F" << 0u << 0u;
        QTest::newRow("nonsense") << "Ctrl+Nothing" << 0u << 0u;
    }
    void grabOfAKeySequence()
    {
        QFETCH(QString, keys);
        QFETCH(uint, keysym);
        QFETCH(uint, modifiers);
        const X11HotKeyBinder::Grab grab = X11HotKeyBinder::grabFor(keys);
        QCOMPARE(uint(grab.keysym), keysym);
        if (keysym)
            QCOMPARE(uint(grab.modifiers), modifiers);
    }

private:
    void writeEntry(const QString &folder, const QString &relativePath, const QString &body)
    {
        const QString path = folder + QLatin1Char('/') + relativePath;
        QDir().mkpath(QFileInfo(path).path());
        QVERIFY(writeFile(path, "# a comment\n[Desktop Entry]\nType=Application\n" + body.toUtf8() + "\n[Desktop Action new]\nName=Other\n"));
    }
    QTemporaryDir m_dir;
};

QTEST_MAIN(AppShellTest)
#include "tst_appshell.moc"

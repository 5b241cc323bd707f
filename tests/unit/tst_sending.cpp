// What sending builds before anything leaves the program: the mail escapes and queries, file URIs,
// Exec lines and MIME associations, each mail program's command line, and the byte-exact spawn.

#include "SendingFixtures.h"
#include "TestSupport.h"

#include "core/fs/NativePath.h"
#include "platform/fake/FakePlatform.h"
#include "platform/freedesktop/DesktopExec.h"
#include "platform/freedesktop/FreedesktopMail.h"
#include "platform/freedesktop/FreedesktopShare.h"
#include "platform/freedesktop/MailClients.h"
#include "platform/freedesktop/MimeApps.h"
#include "platform/posix/Spawn.h"
#include "sending/FileUris.h"
#include "utils/Utils.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusObjectPath>
#include <QDBusUnixFileDescriptor>
#include <QTest>
#include <QUrl>

// The desktop portal's Email interface, as the test's own service: it keeps what it was given.
class EmailPortal : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Email")
public:
    QList<QByteArray> attachedFiles; // what the descriptors lead to
    QVariantMap options;
public Q_SLOTS:
    QDBusObjectPath ComposeEmail(const QString &, const QVariantMap &given)
    {
        options = given;
        const QDBusArgument fds = given.value(QStringLiteral("attachment_fds")).value<QDBusArgument>();
        fds.beginArray();
        while (!fds.atEnd()) {
            QDBusUnixFileDescriptor fd;
            fds >> fd;
            char target[4096];
            const ssize_t n = ::readlink(QByteArray("/proc/self/fd/" + QByteArray::number(fd.fileDescriptor())).constData(), target, sizeof target);
            attachedFiles.append(QByteArray(target, n > 0 ? int(n) : 0));
        }
        fds.endArray();
        return QDBusObjectPath(QStringLiteral("/org/freedesktop/portal/desktop/request/1/quaydrop"));
    }
};

using namespace SendingFixtures;

class SendingTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void escapes_data()
    {
        QTest::addColumn<QString>("input");
        QTest::addColumn<QString>("escaped");
        QTest::newRow("blank and ampersand") << "a b&c" << "a%20b%26c";
        QTest::newRow("percent") << "50%" << "50%25";
        QTest::newRow("the table") << "!#$&'()*+,/:;=?@[]" << "%21%23%24%26%27%28%29%2A%2B%2C%2F%3A%3B%3D%3F%40%5B%5D";
        QTest::newRow("unreserved stay") << "Az09-._~" << "Az09-._~";
        QTest::newRow("non-ASCII as UTF-8") << QStringLiteral("ü€") << "%C3%BC%E2%82%AC";
        QTest::newRow("newline and quotes") << "a\n\"b\"" << "a%0A%22b%22";
    }
    void escapes()
    {
        QFETCH(QString, input);
        QFETCH(QString, escaped);
        QCOMPARE(Utils::percentEscapedString(input), escaped);
        // A query escapes its keys and values alike, pairs in order.
        QCOMPARE(Utils::urlQueryFromDictionary({{QStringLiteral("body"), input}}), QStringLiteral("body=") + escaped);
        QCOMPARE(Utils::urlQueryFromDictionary({{"a", 1}, {"b x", input}}), QStringLiteral("a=1&b%20x=") + escaped);
        QCOMPARE(Utils::urlQueryFromDictionary({}), QString());
    }
    void sendEmailToFormats()
    {
        FakeMail mail;
        Platform::install({.mail = &mail});
        Utils::sendEmailTo(QStringLiteral("support@example.com"), QString(), QStringLiteral("Help me"));
        Utils::sendEmailTo(QString(), QStringLiteral("a b&c"), QStringLiteral("S"));
        QCOMPARE(mail.mailtos, (QStringList{QStringLiteral("mailto:support@example.com?Subject=Help%20me&body="),
                                            QStringLiteral("mailto:?Subject=S&body=a%20b%26c")}));
        Platform::install(Platform());
    }
    void fileUrisKeepEveryByte()
    {
        for (const QByteArray &name : awkwardNames()) {
            const QByteArray path = "/home/someone/" + name;
            const QString uri = FileUris::fromPath(NativePath::fromNative(path));
            QVERIFY2(uri.startsWith(QLatin1String("file:///home/someone/")), qPrintable(uri));
            // Only unreserved characters, "/" and escapes: safe in a list, a query and a command line.
            for (const QChar c : uri.mid(7))
                QVERIFY2(c.isLetterOrNumber() || QStringLiteral("-._~/%").contains(c), qPrintable(uri));
            QCOMPARE(DesktopExec::localPathOf(uri), path);
            QCOMPARE(QUrl(uri).isValid(), true);
        }
        QCOMPARE(FileUris::fromPath(QStringLiteral("/a b/c,d")), QStringLiteral("file:///a%20b/c%2Cd"));
        QCOMPARE(DesktopExec::localPathOf(QStringLiteral("file://localhost/x%20y")), QByteArray("/x y"));
        QVERIFY(DesktopExec::localPathOf(QStringLiteral("https://example.com/x")).isEmpty());
    }
    void execLinesSplit_data()
    {
        QTest::addColumn<QString>("exec");
        QTest::addColumn<QStringList>("words");
        QTest::newRow("plain") << "thunderbird %u" << QStringList{"thunderbird", "%u"};
        QTest::newRow("quoted with blanks") << "\"/opt/My App/run\" --x %F" << QStringList{"/opt/My App/run", "--x", "%F"};
        QTest::newRow("escapes in quotes") << "sh -c \"echo \\\"\\$HOME\\\\\"" << QStringList{"sh", "-c", "echo \"$HOME\\"};
        QTest::newRow("many blanks") << "  a   b\tc " << QStringList{"a", "b", "c"};
        QTest::newRow("quotes join a word") << "a\"b c\"d" << QStringList{"ab cd"};
    }
    void execLinesSplit()
    {
        QFETCH(QString, exec);
        QFETCH(QStringList, words);
        QCOMPARE(DesktopExec::split(exec).value_or(QStringList{"<malformed>"}), words);
        QVERIFY(!DesktopExec::split(QStringLiteral("a \"unclosed")).has_value());
    }
    void fieldCodes_data()
    {
        QTest::addColumn<QString>("exec");
        QTest::addColumn<QStringList>("commands"); // arguments joined by "|", one row per command
        const QStringList uris{"file:///a%20b.png", "file:///c%2Cd.png"};
        QTest::newRow("%F: all files as paths") << "viewer --open %F" << QStringList{"viewer|--open|/a b.png|/c,d.png"};
        QTest::newRow("%U: all as URIs") << "viewer %U" << QStringList{"viewer|file:///a%20b.png|file:///c%2Cd.png"};
        QTest::newRow("%f: one command each") << "viewer %f" << QStringList{"viewer|/a b.png", "viewer|/c,d.png"};
        QTest::newRow("%u inside a word") << "viewer --file=%u" << QStringList{"viewer|--file=file:///a%20b.png", "viewer|--file=file:///c%2Cd.png"};
        QTest::newRow("%i %c %k %%") << "viewer %i --name %c 100%% %k %F"
                                     << QStringList{"viewer|--icon|viewer-icon|--name|Viewer|100%|/apps/viewer.desktop|/a b.png|/c,d.png"};
        QTest::newRow("flatpak markers") << "flatpak run org.x.V @@u %U @@" << QStringList{"flatpak|run|org.x.V|file:///a%20b.png|file:///c%2Cd.png"};
        QTest::newRow("no file code: files left out") << "viewer --new" << QStringList{"viewer|--new"};
        QTest::newRow("deprecated codes vanish") << "viewer %d %m %F" << QStringList{"viewer|/a b.png|/c,d.png"};
    }
    void fieldCodes()
    {
        QFETCH(QString, exec);
        QFETCH(QStringList, commands);
        DesktopApplication app;
        app.name = QStringLiteral("Viewer");
        app.iconName = QStringLiteral("viewer-icon");
        app.filePath = QStringLiteral("/apps/viewer.desktop");
        app.exec = exec;
        QStringList got;
        for (const Spawn::Argv &argv : DesktopExec::commandsFor(app, {"file:///a%20b.png", "file:///c%2Cd.png"})) {
            QStringList words;
            for (const QByteArray &a : argv)
                words.append(QString::fromUtf8(a));
            got.append(words.join(QLatin1Char('|')));
        }
        QCOMPARE(got, commands);
        // Without files, the file codes are simply left out.
        const QList<Spawn::Argv> none = DesktopExec::commandsFor(app, {});
        QCOMPARE(none.size(), 1);
        for (const QByteArray &a : none.first())
            QVERIFY(!a.startsWith("file:") && !a.startsWith("/a b"));
    }
    void mimeAssociations()
    {
        StubDesktop desktop;
        desktop.desktopFile("org.gnome.Evolution", "Evolution", "evolution %U", "x-scheme-handler/mailto;text/calendar;");
        desktop.desktopFile("thunderbird", "Thunderbird", "thunderbird %u", "x-scheme-handler/mailto;");
        desktop.desktopFile("mutt", "Mutt", "mutt %u", "x-scheme-handler/mailto;");
        desktop.desktopFile("gimp", "GIMP", "gimp %U", "image/png;");
        desktop.tree.file("config/mimeapps.list", "[Added Associations]\nimage/png=viewer.desktop;\n"
                                                  "[Removed Associations]\nx-scheme-handler/mailto=mutt.desktop;\n"
                                                  "[Default Applications]\nx-scheme-handler/mailto=gone.desktop;thunderbird.desktop;\n");
        desktop.tree.folder("config/xfce");
        desktop.desktopFile("viewer", "Viewer", "viewer %f");
        const MimeApps apps = MimeApps::load(DesktopEntries::load());
        // The first installed default wins; a removed association is gone; added ones come first.
        QCOMPARE(apps.defaultFor(QStringLiteral("x-scheme-handler/mailto")), QStringLiteral("thunderbird"));
        QCOMPARE(apps.applicationsFor(QStringLiteral("x-scheme-handler/mailto")),
                 (QStringList{"thunderbird", "org.gnome.Evolution"}));
        QCOMPARE(apps.applicationsFor(QStringLiteral("image/png")), (QStringList{"viewer", "gimp"}));
        QVERIFY(apps.applicationsFor(QStringLiteral("video/mp4")).isEmpty());

        // A desktop's own list comes before the user's general one.
        qputenv("XDG_CURRENT_DESKTOP", "XFCE");
        desktop.tree.file("config/xfce-mimeapps.list", "[Default Applications]\nx-scheme-handler/mailto=org.gnome.Evolution.desktop\n");
        QCOMPARE(MimeApps::load(DesktopEntries::load()).defaultFor(QStringLiteral("x-scheme-handler/mailto")),
                 QStringLiteral("org.gnome.Evolution"));
        qunsetenv("XDG_CURRENT_DESKTOP");
    }
    void mailClientForms_data()
    {
        QTest::addColumn<QString>("id");
        QTest::addColumn<QString>("exec");
        QTest::addColumn<QStringList>("argv");
        const QString a = QStringLiteral("file:///a%20b.pdf");
        const QString b = QStringLiteral("file:///c%2Cd%27e.pdf"); // as FileUris writes "c,d'e.pdf"
        QTest::newRow("Thunderbird") << "thunderbird" << "/usr/bin/thunderbird %u"
                                     << QStringList{"/usr/bin/thunderbird", "-compose", "attachment='" + a + "," + b + "'"};
        QTest::newRow("Thunderbird, flatpak")
            << "org.mozilla.Thunderbird" << "/usr/bin/flatpak run --command=thunderbird org.mozilla.Thunderbird @@u %u @@"
            << QStringList{"/usr/bin/flatpak", "run", "--command=thunderbird", "org.mozilla.Thunderbird", "-compose",
                           "attachment='" + a + "," + b + "'"};
        QTest::newRow("Evolution") << "org.gnome.Evolution" << "evolution %U"
                                   << QStringList{"evolution", "mailto:?attach=file%3A%2F%2F%2Fa%2520b.pdf&attach=file%3A%2F%2F%2Fc%252Cd%2527e.pdf"};
        QTest::newRow("Geary") << "org.gnome.Geary" << "geary %U"
                               << QStringList{"geary", "mailto:?attach=file%3A%2F%2F%2Fa%2520b.pdf&attach=file%3A%2F%2F%2Fc%252Cd%2527e.pdf"};
        QTest::newRow("KMail") << "org.kde.kmail2" << "kmail -qwindowtitle %c %u"
                               << QStringList{"kmail", "-qwindowtitle", "--composer", "--attach", a, "--attach", b};
        QTest::newRow("Claws Mail") << "claws-mail" << "claws-mail --compose %u" << QStringList{"claws-mail", "--attach", a, b};
        QTest::newRow("Sylpheed") << "sylpheed" << "sylpheed --compose %u" << QStringList{"sylpheed", "--attach", a, b};
        QTest::newRow("Mutt takes none") << "mutt" << "mutt %u" << QStringList{};
    }
    void mailClientForms()
    {
        QFETCH(QString, id);
        QFETCH(QString, exec);
        QFETCH(QStringList, argv);
        DesktopApplication app;
        app.id = id;
        app.exec = exec;
        app.executable = QFileInfo(exec.section(QLatin1Char(' '), 0, 0)).fileName();
        const auto command = MailClients::composeCommand(app, {"file:///a%20b.pdf", "file:///c%2Cd%27e.pdf"});
        QStringList got;
        if (command)
            for (const QByteArray &word : *command)
                got.append(QString::fromUtf8(word));
        QCOMPARE(got, argv);
        QCOMPARE(MailClients::formOf(app) == MailClients::Form::None, argv.isEmpty());
    }
    void spawnKeepsBytesAndReportsFailures()
    {
        TestTree tree;
        const QByteArray weird("caf\xe9 \"x\"\n,&%");
        const auto echoed = Spawn::run({"printf", "%s", weird});
        QVERIFY(echoed.ok());
        QCOMPARE(echoed.value().out, weird);
        QCOMPARE(echoed.value().exitCode, 0);
        const auto fed = Spawn::run({"cat"}, QByteArray(300000, 'x'));
        QVERIFY(fed.ok());
        QCOMPARE(fed.value().out.size(), 300000);
        const auto failing = Spawn::run({"sh", "-c", "echo oops >&2; exit 3"});
        QVERIFY(failing.ok());
        QCOMPARE(failing.value().exitCode, 3);
        QCOMPARE(failing.value().err, QByteArray("oops\n"));
        QCOMPARE(Spawn::run({"no-such-program-here"}).error().code, ENOENT);
        QCOMPARE(Spawn::run({"sleep", "5"}, {}, 200).error().code, ETIMEDOUT);

        // Detached: the program runs on after the call, with the very bytes it was given.
        const QByteArray record = tree.native() + "/detached";
        QVERIFY(Spawn::detached({"sh", "-c", "printf '%s' \"$1\" > \"$2\"", "sh", weird, record}).ok());
        QVERIFY(waitForFile(QString::fromUtf8(record)));
        QCOMPARE(TestTree::contents(record), weird);
        QCOMPARE(Spawn::detached({"no-such-program-here"}).error().code, ENOENT);
        const QByteArray notExecutable = tree.file("plain", "x");
        QCOMPARE(Spawn::detached({notExecutable}).error().code, ENOENT);
        // What exec cannot carry is refused before anything starts.
        QVERIFY(Spawn::fitsExecLimits({"a", QByteArray(100000, 'x')}));
        QVERIFY(!Spawn::fitsExecLimits({"a", QByteArray(140000, 'x')}));
        Spawn::Argv many{"a"};
        for (int i = 0; i < 400; ++i)
            many.append(QByteArray(100000, 'y'));
        QVERIFY(!Spawn::fitsExecLimits(many));
        QCOMPARE(Spawn::detached({"true", QByteArray(140000, 'x')}).error().code, E2BIG);
    }
    void stubProgramsGetTheFilesIntact()
    {
        StubDesktop desktop;
        desktop.tree.folder("files");
        QStringList paths;
        QList<QByteArray> natives;
        for (const QByteArray &name : awkwardNames()) {
            natives.append(desktop.tree.file("files/" + name, "x"));
            paths.append(NativePath::fromNative(natives.constLast()));
        }
        const QStringList uris = FileUris::fromPaths(paths);
        for (const char *program : {"thunderbird", "kdeconnect-cli", "bluetooth-sendto", "viewer", "dolphin"})
            desktop.stubProgram(program, 0, qstrcmp(program, "kdeconnect-cli") == 0 ? "abc123 Pixel 7\n" : "");
        desktop.desktopFile("thunderbird", "Thunderbird", "thunderbird %u", "x-scheme-handler/mailto;");
        desktop.desktopFile("viewer", "Viewer", "viewer %F", "text/plain;application/pdf;");
        desktop.desktopFile("org.kde.dolphin", "Dolphin", "dolphin %u", "inode/directory;");
        desktop.setDefaults("x-scheme-handler/mailto=thunderbird.desktop\ninode/directory=org.kde.dolphin.desktop\n");
        auto lastRun = [&desktop](const char *program) {
            return waitForFile(desktop.record(program)) ? readArguments(desktop.record(program)) : QList<QByteArray>{"<no run>"};
        };

        // Thunderbird: one compose field whose list gives back every file's bytes.
        FreedesktopMail mail(QDBusConnection(QStringLiteral("no bus")));
        QCOMPARE(mail.defaultClient().name, QStringLiteral("Thunderbird"));
        std::optional<Status> composed;
        mail.composeWithAttachments(uris, [&](Status s) { composed = s; });
        QTRY_VERIFY(composed.has_value());
        QVERIFY(composed->ok());
        const QList<QByteArray> compose = lastRun("thunderbird");
        QCOMPARE(compose.value(0), QByteArray("-compose"));
        QVERIFY(compose.value(1).startsWith("attachment='") && compose.value(1).endsWith('\''));
        const QList<QByteArray> listed = compose.value(1).mid(12).chopped(1).split(',');
        QCOMPARE(listed.size(), natives.size());
        for (qsizetype i = 0; i < natives.size(); ++i)
            QCOMPARE(DesktopExec::localPathOf(QString::fromLatin1(listed.at(i))), natives.at(i));

        // Share targets: only the tools that are there.
        FreedesktopShare share;
        auto ids = [&share] {
            QStringList found;
            for (const ShareTarget &t : share.fileTargets({QStringLiteral("text/plain")}))
                found.append(t.id + QLatin1Char('=') + t.title);
            return found;
        };
        QCOMPARE(ids(), (QStringList{"kdeconnect:abc123=Pixel 7", "bluetooth=Bluetooth", "open-with:viewer=Viewer"}));
        QVERIFY(share.shareFiles(QStringLiteral("kdeconnect:abc123"), uris).ok());
        QCOMPARE(lastRun("kdeconnect-cli"), (QList<QByteArray>{"--device", "abc123", "--share", uris.constLast().toLatin1()}));
        QVERIFY(share.shareFiles(QStringLiteral("bluetooth"), uris).ok());
        QCOMPARE(QString::fromLatin1(lastRun("bluetooth-sendto").join(' ')), uris.join(QLatin1Char(' ')));
        QVERIFY(share.shareFiles(QStringLiteral("open-with:viewer"), uris).ok());
        QCOMPARE(lastRun("viewer"), natives);
        QVERIFY(share.canSearchFiles());
        QVERIFY(share.searchFiles(QStringLiteral("a&b c"), QStringLiteral("file:///home/x%20y")).ok());
        QCOMPARE(lastRun("dolphin"), (QList<QByteArray>{"--new-window", "filenamesearch:?search=a%26b%20c&url=file%3A%2F%2F%2Fhome%2Fx%2520y"}));
        // Only the stubs from here on: a program installed on this machine must not count.
        const QByteArray path = qgetenv("PATH");
        qputenv("PATH", desktop.bin);
        for (const char *tool : {"/bluetooth-sendto", "/kdeconnect-cli", "/dolphin"})
            QFile::remove(QString::fromUtf8(desktop.bin + tool));
        QCOMPARE(ids(), QStringList{"open-with:viewer=Viewer"});
        QVERIFY(!share.canSearchFiles());

        // The command line lists the same targets, the mail program first.
        desktop.stubProgram("bluetooth-sendto");
        QCOMPARE(QString::fromUtf8(runProgram(QStringLiteral(QD_QUAYDROP_BINARY), {QStringLiteral("share"), QStringLiteral("--list"), paths.first()}).out),
                 QStringLiteral("mail\tMail with Thunderbird\nbluetooth\tBluetooth…\nopen-with:viewer\tOpen with Viewer\n"));
        qputenv("PATH", path);
    }
    void mailWithoutAClient()
    {
        StubDesktop desktop;
        FreedesktopMail mail(QDBusConnection(QStringLiteral("no bus")));
        std::optional<Status> result;
        mail.composeWithAttachments({QStringLiteral("file:///x")}, [&](Status s) { result = s; });
        QTRY_VERIFY(result.has_value());
        QCOMPARE(result->error().code, int(MailService::NoMailProgram));
        // A default that takes no attachments, and no portal: said, with its name.
        desktop.desktopFile("mutt", "Mutt", "mutt %u", "x-scheme-handler/mailto;");
        desktop.setDefaults("x-scheme-handler/mailto=mutt.desktop\n");
        QVERIFY(!mail.defaultClient().takesAttachments);
        result.reset();
        mail.composeWithAttachments({QStringLiteral("file:///x")}, [&](Status s) { result = s; });
        QTRY_VERIFY(result.has_value());
        QCOMPARE(result->error().code, int(MailService::NoAttachments));
        QVERIFY(result->error().message.contains(QLatin1String("Mutt")));
    }
    void portalGetsDescriptors()
    {
        QDBusConnection bus = QDBusConnection::sessionBus();
        if (!bus.isConnected())
            QSKIP("needs a session bus of its own (the test runs under dbus-run-session)");
        StubDesktop desktop;
        desktop.desktopFile("mutt", "Mutt", "mutt %u", "x-scheme-handler/mailto;");
        desktop.setDefaults("x-scheme-handler/mailto=mutt.desktop\n");
        const QByteArray a = desktop.tree.file("with space.pdf", "a");
        const QByteArray b = desktop.tree.file(QByteArray("caf\xe9.txt"), "b");
        QDBusConnection portalBus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("portal"));
        EmailPortal portal;
        QVERIFY(portalBus.registerObject(QStringLiteral("/org/freedesktop/portal/desktop"), &portal, QDBusConnection::ExportAllSlots));
        QVERIFY(portalBus.registerService(QStringLiteral("org.freedesktop.portal.Desktop")));
        FreedesktopMail mail(bus);
        QVERIFY(mail.defaultClient().takesAttachments);
        std::optional<Status> result;
        mail.composeWithAttachments(FileUris::fromPaths({NativePath::fromNative(a), NativePath::fromNative(b)}), [&](Status s) { result = s; });
        QTRY_VERIFY(result.has_value());
        QVERIFY(result->ok());
        QCOMPARE(portal.attachedFiles, (QList<QByteArray>{a, b}));
        QCOMPARE(portal.options.keys(), QStringList{"attachment_fds"});
        portalBus.unregisterService(QStringLiteral("org.freedesktop.portal.Desktop"));
        QDBusConnection::disconnectFromBus(QStringLiteral("portal"));
    }
};

QTEST_GUILESS_MAIN(SendingTest)
#include "tst_sending.moc"

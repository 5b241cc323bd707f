// The command line. In process: the table of commands against the parser and the help, usage errors,
// and the small commands' output byte for byte. As a shell runs it, a separate process: exit codes,
// what each command prints and what is on disk after; the image commands' outputs and their one
// vocabulary of errors; progress on a terminal; a command stopped in the middle by Ctrl+C or killed
// outright; and the short commands that start without the application object.

#include "ImageFixtures.h"
#include "ScratchMount.h"
#include "TestSupport.h"
#include "TestTree.h"
#include "cli/ArgumentParser.h"
#include "cli/CommandLine.h"
#include "cli/Console.h"
#include "cli/HelpText.h"
#include "core/fs/NativePath.h"
#include "utils/Utils.h"

#include <QBuffer>
#include <QtTest>

#include <signal.h>

namespace {

// The command line run in this process, its output caught as a shell would.
ProgramRun runCli(const QStringList &args)
{
    ProgramRun r;
    QBuffer o(&r.out), e(&r.err);
    o.open(QIODevice::WriteOnly);
    e.open(QIODevice::WriteOnly);
    Console console(o, e);
    r.code = CommandLine::run(QStringList{QStringLiteral("quaydrop")} + args, console);
    return r;
}

const QString kBinary = QStringLiteral(QD_QUAYDROP_BINARY);

// The program in `folder`, with a home of its own there and no display (the commands need none, and
// edit says so).
ProgramRun quaydrop(const QStringList &args, const QString &folder)
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("HOME"), folder + QStringLiteral("/home"));
    env.insert(QStringLiteral("XDG_DATA_HOME"), folder + QStringLiteral("/home/.local/share"));
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        env.remove(QLatin1String(name));
    return runProgram(kBinary, args, folder, env);
}

QByteArray checksum(const QString &path)
{
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    QCryptographicHash h(QCryptographicHash::Sha1);
    h.addData(&f);
    return h.result().toHex();
}

// Waits until a hidden file, the command's temporary, appears in `folder`.
bool waitForTemporary(const QString &folder, QProcess &p)
{
    if (!p.waitForStarted(5000))
        return false;
    QElapsedTimer t;
    t.start();
    while (t.elapsed() < 10000 && p.state() == QProcess::Running) {
        if (!QDir(folder).entryList({QStringLiteral(".*")}, QDir::Files | QDir::Hidden).isEmpty())
            return true;
        QThread::usleep(500);
    }
    return false;
}

} // namespace

class CliTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        QVERIFY(m_tree.isValid());
        QVERIFY(QDir::setCurrent(m_tree.path()));
        m_tree.file("pic.png");
        m_tree.folder("src");
        QByteArray block(1 << 20, 0);
        for (int i = 0; i < block.size(); ++i)
            block[i] = char(i * 131 + (i >> 9));
        QFile f(m_tree.path() + "/src/big.bin");
        QVERIFY(f.open(QIODevice::WriteOnly));
        for (int i = 0; i < 600; ++i) {
            block[0] = char(i);
            f.write(block);
        }
        f.close();
        m_big = f.fileName();
        m_bigSum = checksum(m_big);
        const QImage pic = ImageFixtures::picture(400, 300);
        QVERIFY(ImageFixtures::write(m_tree.at(QStringLiteral("photo.jpg")), ImageFixtures::encoded(pic, "jpeg", 300)));
        QVERIFY(ImageFixtures::write(m_tree.at(QStringLiteral("img2.png")), ImageFixtures::encoded(pic, "png")));
        QVERIFY(ImageFixtures::write(m_tree.at(QStringLiteral("img10.png")),
                                     ImageFixtures::encoded(ImageFixtures::picture(100, 50), "png")));
        QVERIFY(ImageFixtures::write(m_tree.at(QStringLiteral("broken.png")), QByteArray(200, 'b')));
        QVERIFY(ImageFixtures::pdfWithPages(m_tree.at(QStringLiteral("doc.pdf")), {QSizeF(72, 144), QSizeF(72, 72)}));
        QVERIFY(QDir().mkpath(m_tree.at(QStringLiteral("out"))));
        QVERIFY(ImageFixtures::write(m_tree.at(QStringLiteral("-dash.png")), ImageFixtures::encoded(pic, "png")));
        // Bad inputs, each under a name that promises an image.
        QVERIFY(QDir().mkpath(m_tree.at(QStringLiteral("folder.png"))));
        QVERIFY(ImageFixtures::write(m_tree.at(QStringLiteral("empty.png")), {}));
        QVERIFY(ImageFixtures::write(m_tree.at(QStringLiteral("words.png")), "some words, no picture"));
        QVERIFY(ImageFixtures::write(m_tree.at(QStringLiteral("damaged.png")), ImageFixtures::damagedPng(pic)));
    }
    void usageErrors_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QString>("message");
        QTest::newRow("unknown command") << QStringList{"frobnicate"} << "unknown command \"frobnicate\"";
        QTest::newRow("unknown option alone") << QStringList{"--frobnicate"} << "unknown option --frobnicate";
        QTest::newRow("type without paths") << QStringList{"type"} << "type: PATH is missing\nusage: quaydrop type PATH...";
        QTest::newRow("ledger with an argument") << QStringList{"ledger", "x"} << "ledger: unexpected argument \"x\"";
        QTest::newRow("a width of 0") << QStringList{"resize", "--width=0", "pic.png"} << "--width takes a whole number";
        QTest::newRow("a fraction of a pixel") << QStringList{"resize", "--height", "12.5", "pic.png"} << "--height takes";
        QTest::newRow("a value left out") << QStringList{"resize", "pic.png", "--width"} << "--width needs a value";
        QTest::newRow("no size at all") << QStringList{"resize", "pic.png"} << "resize: give --width, --height or both";
        QTest::newRow("an option of another command") << QStringList{"resize", "--merge", "pic.png"} << "unknown option --merge";
        QTest::newRow("a flag with a value") << QStringList{"img2pdf", "--merge=yes", "pic.png"} << "--merge takes no value";
        QTest::newRow("compression above 100") << QStringList{"convert", "jpg", "--compression", "101", "pic.png"}
                                               << "--compression takes a number from 0 to 100, not \"101\"";
        QTest::newRow("an unknown type") << QStringList{"convert", "webp", "pic.png"}
                                         << "TYPE is one of png, jpg, bmp, tiff, jp2, not \"webp\"";
        QTest::newRow("jp2 is no page type") << QStringList{"pdf2img", "jp2", "a.pdf"} << "TYPE is one of png, jpg, bmp, tiff,";
        QTest::newRow("two PDFs") << QStringList{"pdf2img", "png", "a.pdf", "b.pdf"} << "unexpected argument \"b.pdf\"";
        QTest::newRow("a resolution out of range") << QStringList{"pdf2img", "png", "--dpi", "5000", "a.pdf"}
                                                   << "--dpi takes a number of dots per inch from 30 to 1000";
        QTest::newRow("two answers to a clash") << QStringList{"copy", "--skip", "--replace", "a", "b"}
                                                << "choose one of --keep-both, --skip and --replace";
        QTest::newRow("an option after --") << QStringList{"resize", "--", "--width", "10", "pic.png"} << "give --width";
        QTest::newRow("four turns") << QStringList{"rotate", "--turns", "4", "pic.png"} << "--turns takes 1, 2 or 3 quarter turns";
        QTest::newRow("no turns") << QStringList{"rotate", "pic.png"} << "rotate: give --turns 1, 2 or 3";
        QTest::newRow("zip without items") << QStringList{"zip"} << "zip: FILE is missing";
        QTest::newRow("new of an unknown kind") << QStringList{"new", "pdf", "a"} << "new: KIND is one of folder, txt,";
        QTest::newRow("gather without a name") << QStringList{"gather", "a"} << "gather: --name takes the name of one new folder";
        QTest::newRow("rename with nothing asked") << QStringList{"rename", "a"} << "rename: give --name, --prefix or --suffix";
        QTest::newRow("wallpaper wants a file or --previous") << QStringList{"wallpaper"} << "give FILE or --previous, not both";
        QTest::newRow("a rectangle of no width") << QStringList{"crop", "--rect", "0,0,0,5", "pic.png"} << "--rect takes X,Y,W,H";
    }
    void usageErrors()
    {
        QFETCH(QStringList, args);
        QFETCH(QString, message);
        const ProgramRun r = runCli(args);
        QCOMPARE(r.code, Cli::kUsageError);
        QVERIFY2(r.err.startsWith("quaydrop: ") && r.err.contains(message.toUtf8()), r.err.constData());
        QVERIFY(r.out.isEmpty());
        // The line that follows is the command's usage, or where to find it.
        if (const Cli::Command *c = Cli::find(args.first()))
            QVERIFY(r.err.endsWith(("usage: " + HelpText::synopsis(*c) + "\n").toUtf8()));
        else
            QVERIFY(r.err.endsWith("Try \"quaydrop --help\".\n"));
    }
    void everyValueOfTheWrongKindIsAUsageError()
    {
        // Read from the table, so that an option added later is held to the same rule.
        for (const Cli::Command &c : Cli::commands()) {
            for (const Cli::Option &o : c.options) {
                if (o.kind == Cli::ValueKind::None || o.kind == Cli::ValueKind::Text || o.kind == Cli::ValueKind::Folder)
                    continue;
                QStringList args{QLatin1String(c.name), QLatin1String(o.name), QStringLiteral("abc")};
                for (const Cli::Argument &a : c.arguments)
                    args << (a.kind == Cli::ArgumentKind::Choice ? a.choices.first() : QStringLiteral("pic.png"));
                const ProgramRun r = runCli(args);
                QVERIFY2(r.code == Cli::kUsageError && r.err.contains(QByteArray(o.name) + " takes "),
                         qPrintable(args.join(' ') + ": " + r.err));
                QVERIFY(!ArgumentParser::accepts(o.kind, QStringLiteral("-1")));
            }
        }
    }
    void helpAndVersionComeFromTheTable()
    {
        for (const QString &asked : {QStringLiteral("--help"), QStringLiteral("-h"), QStringLiteral("help")}) {
            const ProgramRun r = runCli({asked});
            QCOMPARE(r.code, 0);
            QVERIFY(r.err.isEmpty());
            for (const Cli::Command &c : Cli::commands()) {
                QVERIFY2(r.out.contains("\n  " + HelpText::call(c).toUtf8() + "\n      " + c.summary), c.name);
                for (const Cli::Option &o : c.options)
                    QVERIFY2(r.out.contains(QByteArray("      ") + o.name), o.name);
            }
            for (const Cli::Option &o : Cli::commonOptions())
                QVERIFY(r.out.contains(QByteArray("  ") + o.name));
        }
        for (const Cli::Command &c : Cli::commands()) {
            // A command's own help, also where its arguments are missing.
            const ProgramRun r = runCli({QLatin1String(c.name), QStringLiteral("-h")});
            QCOMPARE(r.code, 0);
            QVERIFY(r.out.startsWith(("Usage: " + HelpText::synopsis(c) + "\n").toUtf8()));
            for (const Cli::Option &o : c.options)
                QVERIFY(r.out.contains(QByteArray("  ") + o.name));
            QCOMPARE(runCli({QStringLiteral("help"), QLatin1String(c.name)}).out, r.out);
        }
        const ProgramRun v = runCli({QStringLiteral("--version")});
        QCOMPARE(v.code, 0);
        QCOMPARE(v.out, QByteArray("quaydrop " QD_VERSION "\n"));
    }
    void typePrintsOneCodePerPath_data()
    {
        QTest::addColumn<QByteArrayList>("args"); // bytes, as a shell passes them
        QTest::addColumn<int>("code");
        QTest::addColumn<QByteArray>("out");
        QTest::addColumn<QByteArray>("err");
        m_tree.file("notes.txt");
        m_tree.folder("Folder");
        m_tree.file("\xe9t\xe9.jpg");
        m_tree.file("-dash.txt");
        QTest::newRow("one code per path, as given") << QByteArrayList{"pic.png", "notes.txt", "Folder"} << 0
                                                     << QByteArray("1\tpic.png\n2\tnotes.txt\n333\tFolder\n") << QByteArray();
        QTest::newRow("a name that is not UTF-8 keeps its bytes") << QByteArrayList{"\xe9t\xe9.jpg"} << 0
                                                                  << QByteArray("1\t\xe9t\xe9.jpg\n") << QByteArray();
        QTest::newRow("a missing path: only the error")
            << QByteArrayList{"gone.psd"} << 1 << QByteArray() << m_tree.native() + "/gone.psd: No such file or directory\n";
        QTest::newRow("a missing one among others") << QByteArrayList{"gone\xff", "pic.png"} << 1 << QByteArray("1\tpic.png\n")
                                                    << m_tree.native() + "/gone\xff: No such file or directory\n";
        QTest::newRow("a name like an option after --") << QByteArrayList{"--", "-dash.txt"} << 0
                                                        << QByteArray("2\t-dash.txt\n") << QByteArray();
    }
    void typePrintsOneCodePerPath()
    {
        QFETCH(QByteArrayList, args);
        QFETCH(int, code);
        QFETCH(QByteArray, out);
        QFETCH(QByteArray, err);
        QStringList paths{QStringLiteral("type")};
        for (const QByteArray &a : args)
            paths << NativePath::fromNative(a);
        const ProgramRun r = runCli(paths);
        QCOMPARE(r.code, code);
        QCOMPARE(r.out, out);
        QCOMPARE(r.err, err.isEmpty() ? QByteArray() : "quaydrop: " + err);
    }
    // Sizes and the ledger, byte for byte, and their failures.
    void sizeAndLedger()
    {
        m_tree.folder("sized");
        const QByteArray a = m_tree.file("sized/a", QByteArray(20000, 'a'));
        const QByteArray b = m_tree.file("sized/b", QByteArray(30000, 'b'));
        const quint64 expected = TestTree::allocated(a) + TestTree::allocated(b);
        const ProgramRun r = runCli({QStringLiteral("size"), QStringLiteral("sized")});
        QCOMPARE(r.code, 0);
        QCOMPARE(r.out, (Utils::getHumanReadableSizeFrom(expected) + QStringLiteral("\t%1 bytes\n").arg(expected)).toUtf8());

        const ProgramRun missing = runCli({QStringLiteral("size"), m_tree.path() + "/sized", m_tree.path() + "/nope"});
        QCOMPARE(missing.code, 1);
        QVERIFY(missing.err.contains("/nope: No such file or directory"));
        QFile::remove(Utils::QDappSupportPath() + QStringLiteral("/QDts.plist"));
        Utils::saveChangesToTimeSavedPlistByAddingSec(3661);
        const ProgramRun ledger = runCli({QStringLiteral("ledger")});
        QCOMPARE(ledger.code, 0);
        QCOMPARE(ledger.out, QByteArray("This week: 1h : 01m : 01s\nTotal:     1h : 01m : 01s\n"));

        QVERIFY(writeFile(Utils::QDappSupportPath() + QStringLiteral("/QDts.plist"), "<plist><dict><key>total"));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("could not read .*QDts.plist")));
        const ProgramRun bad = runCli({QStringLiteral("ledger")});
        QCOMPARE(bad.code, 1);
        QVERIFY(bad.err.contains("cannot be read"));
    }
    // Ctrl+C in the middle: cancelled cleanly, nothing half-written left; killed outright: nothing
    // under the final name, and the source is kept either way.
    void stoppedMidway_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<bool>("interrupted");
        QTest::newRow("move, interrupted") << "move" << true;
        QTest::newRow("move, killed") << "move" << false;
        QTest::newRow("zip, interrupted") << "zip" << true;
    }
    void stoppedMidway()
    {
        QFETCH(QString, command);
        QFETCH(bool, interrupted);
        ScratchMount other("1g");
        REQUIRE_SCRATCH_MOUNT(other);
        // A move writes onto the other device; an archive goes beside its item.
        const QString written = command == u"move" ? other.path() : m_tree.path() + QStringLiteral("/src");
        QProcess p;
        p.start(kBinary, command == u"move" ? QStringList{command, m_big, other.path()} : QStringList{command, m_big});
        QVERIFY(waitForTemporary(written, p));
        interrupted ? void(::kill(pid_t(p.processId()), SIGINT)) : p.kill();
        QVERIFY(p.waitForFinished(5000));
        QCOMPARE(checksum(m_big), m_bigSum);
        QVERIFY(!QFileInfo::exists(written + (command == u"move" ? "/big.bin" : "/big.zip"))); // nothing under the final name
        if (interrupted) {
            QCOMPARE(p.exitCode(), 130);
            QVERIFY(p.readAllStandardError().contains("cancelled"));
            QCOMPARE(TestTree::entries(written), command == u"move" ? QStringList() : QStringList{"big.bin"});
        }
    }
    void copyAndMoveFromTheShell()
    {
        TestTree t;
        t.folder("in");
        t.folder("out");
        t.file("in/a.txt", "a");
        t.file("out/a.txt", "old");
        auto run = [&](const QString &command, const QString &source, const QString &folder, const QStringList &more = {}) {
            return quaydrop(QStringList{command, t.path() + source, t.path() + folder} + more, t.path());
        };
        const ProgramRun kept = run(QStringLiteral("copy"), "/in/a.txt", "/out", {QStringLiteral("--keep-both")});
        QCOMPARE(kept.code, 0);
        QVERIFY(QFileInfo::exists(t.path() + "/out/a 1.txt"));
        QCOMPARE(kept.out, "copied 1 item to " + t.native() + "/out\n");
        const ProgramRun skipped = run(QStringLiteral("move"), "/in/a.txt", "/out", {QStringLiteral("--skip")});
        QVERIFY(skipped.code == 0 && skipped.err.contains("every item was skipped"));
        // A taken name and nobody to ask (no terminal): skipped, and said by the exit status.
        const ProgramRun asked = run(QStringLiteral("move"), "/in/a.txt", "/out");
        QCOMPARE(asked.code, 1);
        QVERIFY(QFileInfo::exists(t.path() + "/in/a.txt"));
        QVERIFY2(asked.err.contains(t.native() + "/out/a.txt: the name is taken; skipped") && asked.err.contains("nobody to ask"),
                 asked.err.constData());
        const ProgramRun missing = run(QStringLiteral("move"), "/in/nope.txt", "/out");
        QVERIFY(missing.code == 1 && missing.err.contains("nothing was done"));
        QCOMPARE(run(QStringLiteral("move"), "/in/a.txt", "/in").code, 1); // onto itself: refused
    }
    void progressOnATerminalEndsBeforeTheResult()
    {
        // script(1) gives the copy a terminal: the bar is redrawn in place, then ended with the final
        // figures before the plain result line.
        TestTree t;
        const QString out = QString::fromUtf8(t.folder("out"));
        QProcess p;
        p.start(QStringLiteral("script"), {QStringLiteral("-qec"), QStringLiteral("%1 copy %2 %3").arg(kBinary, m_big, out),
                                           QStringLiteral("/dev/null")});
        QVERIFY(p.waitForFinished(60000));
        QCOMPARE(p.exitCode(), 0);
        const QByteArray shown = p.readAllStandardOutput();
        QVERIFY2(QRegularExpression(QStringLiteral("\\r\\x1b\\[K\\[#{20}\\] 100%  ([0-9.]+ MB) of \\1 [^\\r\\n]+\\r\\n"
                                                   "copied 1 item to %1\\r\\n$").arg(QRegularExpression::escape(out)))
                     .match(QString::fromUtf8(shown))
                     .hasMatch(),
                 shown.right(300).constData());
        QVERIFY(shown.count("\r\x1b[K") >= 2); // at least the start and the end, in place
        QCOMPARE(checksum(out + "/big.bin"), m_bigSum);
    }

    // The short commands start without the application object; the texts come in the chosen language
    // all the same.
    void shortCommandsSpeakTheChosenLanguage()
    {
        TestTree t;
        t.folder("config");
        t.folder("config/com.velmora.Quaydrop");
        t.file("config/com.velmora.Quaydrop/Quaydrop.conf", "[General]\nqdInterfaceLanguage=de\n");
        t.file("empty");
        QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
        env.insert(QStringLiteral("XDG_CONFIG_HOME"), t.at(QStringLiteral("config")));
        const ProgramRun size = runProgram(kBinary, {QStringLiteral("size"), t.at(QStringLiteral("empty"))}, {}, env);
        QCOMPARE(size.out, QByteArray("Null KB\t0 bytes\n"));
        const ProgramRun type = runProgram(kBinary, {QStringLiteral("type"), t.at(QStringLiteral("empty")), QStringLiteral("/nowhere")}, {}, env);
        QCOMPARE(type.code, 1);
        QCOMPARE(type.out, QByteArray("777\t") + t.native() + "/empty\n");
        QVERIFY2(type.err.startsWith("quaydrop: /nowhere: "), type.err.constData());
    }
    void fileCommands_data()
    {
        QTest::addColumn<QByteArrayList>("files"); // made first; a name ending in '/' is a folder
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QByteArray>("stdoutEnds"); // the last line printed, relative to the tree
        QTest::addColumn<QByteArrayList>("thereAfter");
        QTest::addColumn<QByteArrayList>("goneAfter");

        QTest::newRow("zip several") << QByteArrayList{"d/", "d/x", "y"} << QStringList{"zip", "d/x", "y"} << 0
                                     << QByteArray("d/QuaydropZip.zip") << QByteArrayList{"d/QuaydropZip.zip"}
                                     << QByteArrayList{};
        QTest::newRow("zip a leading dash") << QByteArrayList{"-rf"} << QStringList{"zip", "--", "-rf"} << 0
                                            << QByteArray("-rf.zip") << QByteArrayList{"-rf.zip"} << QByteArrayList{};
        QTest::newRow("zip of nothing there") << QByteArrayList{} << QStringList{"zip", "gone"} << 1 << QByteArray()
                                              << QByteArrayList{} << QByteArrayList{"gone.zip"};
        QTest::newRow("new docx inside, named") << QByteArrayList{"box/"}
                                                << QStringList{"new", "docx", "--name", "-Plan", "--inside", "box"} << 0
                                                << QByteArray("box/-Plan.docx") << QByteArrayList{"box/-Plan.docx"} << QByteArrayList{};
        QTest::newRow("gather") << QByteArrayList{"a", "d/", "d/b"} << QStringList{"gather", "--name", "Box", "a", "d"} << 0
                                << QByteArray("Box") << QByteArrayList{"Box/a", "Box/d/b"} << QByteArrayList{"a", "d"};
        QTest::newRow("rename in order") << QByteArrayList{"b.jpg", "a.jpg", "sub/", "sub/c.jpg"}
                                         << QStringList{"rename", "--name", "Trip", "b.jpg", "a.jpg", "sub/c.jpg"} << 0
                                         << QByteArray("Trip 2.jpg") << QByteArrayList{"Trip.jpg", "Trip 1.jpg", "Trip 2.jpg"}
                                         << QByteArrayList{"a.jpg", "b.jpg", "sub/c.jpg"};
        QTest::newRow("rename with one item gone") << QByteArrayList{"a"} << QStringList{"rename", "--prefix", "x", "a", "gone"}
                                                   << 1 << QByteArray() << QByteArrayList{"a"} << QByteArrayList{"xa"};
        QTest::newRow("trash") << QByteArrayList{"a", "-x"} << QStringList{"trash", "--", "-x", "a"} << 0
                               << QByteArray("home/.local/share/Trash/files/a") << QByteArrayList{"home/.local/share/Trash/files/-x"}
                               << QByteArrayList{"a", "-x"};
        QTest::newRow("trash with one item gone") << QByteArrayList{"a"} << QStringList{"trash", "gone", "a"} << 1 << QByteArray()
                                                  << QByteArrayList{} << QByteArrayList{"a"};
        QTest::newRow("reveal of nothing there") << QByteArrayList{} << QStringList{"reveal", "gone"} << 1 << QByteArray()
                                                 << QByteArrayList{} << QByteArrayList{};
        QTest::newRow("undo with nothing done") << QByteArrayList{} << QStringList{"undo"} << 1 << QByteArray()
                                                << QByteArrayList{} << QByteArrayList{};
    }
    void fileCommands()
    {
        QFETCH(QByteArrayList, files);
        QFETCH(QStringList, args);
        QFETCH(int, exitCode);
        QFETCH(QByteArray, stdoutEnds);
        QFETCH(QByteArrayList, thereAfter);
        QFETCH(QByteArrayList, goneAfter);
        TestTree tree;
        tree.make(files);
        const ProgramRun r = quaydrop(args, tree.path());
        QVERIFY2(r.code == exitCode, r.err.constData());
        if (!stdoutEnds.isEmpty())
            QCOMPARE(r.out.trimmed().split('\n').last(), tree.native() + '/' + stdoutEnds);
        for (const QByteArray &f : thereAfter)
            QVERIFY2(QFileInfo::exists(tree.path() + '/' + QString::fromUtf8(f)), f.constData());
        for (const QByteArray &f : goneAfter)
            QVERIFY2(!QFileInfo::exists(tree.path() + '/' + QString::fromUtf8(f)), f.constData());
    }
    void undoPutsBackTheLastOperation_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::newRow("rename") << QStringList{"rename", "--suffix", "!", "a.txt", "d/b.txt"};
        QTest::newRow("gather") << QStringList{"gather", "--name", "Box", "a.txt", "d/b.txt"};
        QTest::newRow("trash") << QStringList{"trash", "a.txt", "d/b.txt"};
    }
    void undoPutsBackTheLastOperation()
    {
        QFETCH(QStringList, args);
        TestTree tree;
        tree.folder("d");
        tree.file("a.txt", "A");
        tree.file("d/b.txt", "B");
        QCOMPARE(quaydrop(args, tree.path()).code, 0);
        QVERIFY(!QFileInfo::exists(tree.path() + "/a.txt"));
        const ProgramRun undone = quaydrop({QStringLiteral("undo")}, tree.path());
        QVERIFY2(undone.code == 0, undone.err.constData());
        QCOMPARE(TestTree::contents(tree.path() + "/a.txt"), QByteArray("A"));
        QCOMPARE(TestTree::contents(tree.path() + "/d/b.txt"), QByteArray("B"));
        QCOMPARE(TestTree::entries(tree.path() + "/d"), QStringList{"b.txt"});
        QCOMPARE(quaydrop({QStringLiteral("undo")}, tree.path()).code, 1); // done once only
    }
    // What each command writes (relative to the tree, on stdout in this order), the size of the first
    // output, the exit code, and a piece of its messages. Edits of one picture take the next free name.
    void imageCommands_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<int>("code");
        QTest::addColumn<QStringList>("written");
        QTest::addColumn<QString>("size"); // empty: not checked
        QTest::addColumn<QString>("error");
        QTest::newRow("resize one side follows") << QStringList{"resize", "--width", "200", "photo.jpg"} << 0
                                                 << QStringList{"photo_200x150.jpg"} << "200x150" << "resizing photo.jpg (1/1)";
        QTest::newRow("resize into a folder") << QStringList{"resize", "--height", "30", "--dest", "out", "photo.jpg"} << 0
                                              << QStringList{"out/photo_40x30.jpg"} << "40x30" << "";
        QTest::newRow("resize a bad file among good ones")
            << QStringList{"resize", "--width", "20", "broken.png", "img2.png"} << 1 << QStringList{"img2_20x15.png"} << "20x15"
            << "broken.png: not an image";
        QTest::newRow("into a folder that is none") << QStringList{"resize", "--width", "9", "--dest", "photo.jpg", "img2.png"}
                                                    << 1 << QStringList{} << "" << "photo.jpg: not a folder";
        QTest::newRow("convert with compression") << QStringList{"convert", "jpg", "--compression", "40", "img2.png"} << 0
                                                  << QStringList{"img2.jpg"} << "400x300" << "converting img2.png";
        QTest::newRow("a name like an option after --") << QStringList{"convert", "jpg", "--", "-dash.png"} << 0
                                                        << QStringList{"-dash.jpg"} << "" << "converting -dash.png (1/1)";
        QTest::newRow("convert a missing file") << QStringList{"convert", "png", "nothing.jpg"} << 1 << QStringList{} << ""
                                                << "nothing was done";
        QTest::newRow("pages of a PDF") << QStringList{"pdf2img", "png", "--dpi", "144", "doc.pdf"} << 0
                                        << QStringList{"doc/Page_1.png", "doc/Page_2.png"} << "144x288" << "writing Page_2 (2/2)";
        QTest::newRow("a PDF that is none") << QStringList{"pdf2img", "png", "broken.png"} << 1 << QStringList{} << ""
                                            << "not a PDF document";
        QTest::newRow("images merged in natural order, named after page 1")
            << QStringList{"img2pdf", "--merge", "img10.png", "img2.png"} << 0 << QStringList{"img2.pdf"} << ""
            << "adding img2.png (1/2)\nadding img10.png (2/2)";
        QTest::newRow("images merged in the order given")
            << QStringList{"img2pdf", "--merge", "--order-as-given", "img10.png", "img2.png"} << 0 << QStringList{"img10.pdf"}
            << "" << "adding img10.png (1/2)\nadding img2.png (2/2)";
        QTest::newRow("one PDF per image") << QStringList{"img2pdf", "--dest", "out", "photo.jpg", "img2.png"} << 0
                                           << QStringList{"out/photo.pdf", "out/img2.pdf"} << "" << "";
        QTest::newRow("a quarter turn") << QStringList{"rotate", "--turns", "1", "photo.jpg"} << 0
                                        << QStringList{"_Quaydrop-photo.jpg"} << "300x400" << "turning photo.jpg (1/1)";
        QTest::newRow("a half turn, under a free name") << QStringList{"rotate", "--turns=2", "photo.jpg"} << 0
                                                        << QStringList{"_Quaydrop-photo 1.jpg"} << "400x300" << "";
        QTest::newRow("a part") << QStringList{"crop", "--rect", "10,20,100,50", "img2.png"} << 0
                                << QStringList{"_Quaydrop-img2.png"} << "100x50" << "cropping img2.png";
        QTest::newRow("a part into a folder") << QStringList{"crop", "--rect", "0,0,400,300", "--dest", "out", "photo.jpg"}
                                              << 0 << QStringList{"out/_Quaydrop-photo.jpg"} << "400x300" << "";
        QTest::newRow("an edit of a bad file among good ones") << QStringList{"rotate", "--turns", "3", "broken.png", "img10.png"}
                                                               << 1 << QStringList{"_Quaydrop-img10.png"} << "50x100"
                                                               << "broken.png: not an image";
        QTest::newRow("a rectangle reaching outside") << QStringList{"crop", "--rect", "350,0,100,100", "img2.png"} << 1
                                                      << QStringList{} << "" << "outside the picture of 400x300 pixels";
        QTest::newRow("edit a missing file") << QStringList{"edit", "nothing.jpg"} << 1 << QStringList{} << ""
                                             << "nothing.jpg: No such file";
        QTest::newRow("edit without a display") << QStringList{"edit", "photo.jpg"} << 1 << QStringList{} << "" << "no display";
    }
    void imageCommands()
    {
        QFETCH(QStringList, args);
        QFETCH(int, code);
        QFETCH(QStringList, written);
        QFETCH(QString, size);
        QFETCH(QString, error);
        const ProgramRun run = quaydrop(args, m_tree.path());
        QVERIFY2(run.code == code, run.err.constData());
        QStringList expected;
        for (const QString &w : written) {
            expected << m_tree.path() + QChar('/') + w;
            QVERIFY2(QFileInfo(expected.last()).size() > 0, qPrintable(w));
        }
        QCOMPARE(QString::fromUtf8(run.out).split(QChar('\n'), Qt::SkipEmptyParts), expected);
        QVERIFY2(run.err.contains(error.toUtf8()), run.err.constData());
        if (!size.isEmpty())
            QCOMPARE(Utils::getImageDimensionsAsStringImgPath(expected.first()), size);
    }
    void theSameBadInputGetsTheSameWords_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("reason");
        QTest::newRow("a folder") << "folder.png" << "a folder, not a file";
        QTest::newRow("an empty file") << "empty.png" << "the file is empty";
        QTest::newRow("words") << "words.png" << "not an image this program can read";
        QTest::newRow("damaged data") << "damaged.png" << "damaged image data";
    }
    void theSameBadInputGetsTheSameWords()
    {
        QFETCH(QString, name);
        QFETCH(QString, reason);
        const QString line = QStringLiteral("quaydrop: %1/%2: %3\n").arg(m_tree.path(), name, reason);
        const QList<QStringList> commands{{"resize", "--width", "20"}, {"convert", "jpg"}, {"convert", "png"}, {"img2pdf"},
                                          {"rotate", "--turns", "1"}, {"crop", "--rect", "0,0,1,1"}};
        for (const QStringList &command : commands) {
            const ProgramRun run = quaydrop(command + QStringList{name}, m_tree.path());
            QVERIFY2(run.code == 1 && run.out.isEmpty() && run.err.contains(line.toUtf8()),
                     qPrintable(QStringLiteral("%1: exit %2, out %3, err %4").arg(command.join(' ')).arg(run.code).arg(run.out, run.err)));
        }
    }

private:
    TestTree m_tree;
    QString m_big;
    QByteArray m_bigSum;
};

QTEST_MAIN(CliTest)
#include "tst_cli.moc"

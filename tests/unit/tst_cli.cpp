// The command line in process: the table of commands against the parser and the help, usage errors,
// and the small commands' output byte for byte.

#include "TestTree.h"
#include "TestSupport.h"
#include "cli/ArgumentParser.h"
#include "cli/CommandLine.h"
#include "cli/Console.h"
#include "cli/HelpText.h"
#include "core/fs/NativePath.h"
#include "utils/Utils.h"

#include <QBuffer>
#include <QtTest>

struct CliRun
{
    int code;
    QByteArray out, err;
};

static CliRun runCli(const QStringList &args)
{
    QByteArray out, err;
    QBuffer o(&out), e(&err);
    o.open(QIODevice::WriteOnly);
    e.open(QIODevice::WriteOnly);
    int code;
    {
        Console console(o, e);
        code = CommandLine::run(QStringList{QStringLiteral("quaydrop")} + args, console);
    }
    return {code, out, err};
}

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
        const CliRun r = runCli(args);
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
                const CliRun r = runCli(args);
                QVERIFY2(r.code == Cli::kUsageError && r.err.contains(QByteArray(o.name) + " takes "),
                         qPrintable(args.join(' ') + ": " + r.err));
                QVERIFY(!ArgumentParser::accepts(o.kind, QStringLiteral("-1")));
            }
        }
    }
    void helpAndVersionComeFromTheTable()
    {
        for (const QString &asked : {QStringLiteral("--help"), QStringLiteral("-h"), QStringLiteral("help")}) {
            const CliRun r = runCli({asked});
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
            const CliRun r = runCli({QLatin1String(c.name), QStringLiteral("-h")});
            QCOMPARE(r.code, 0);
            QVERIFY(r.out.startsWith(("Usage: " + HelpText::synopsis(c) + "\n").toUtf8()));
            for (const Cli::Option &o : c.options)
                QVERIFY(r.out.contains(QByteArray("  ") + o.name));
            QCOMPARE(runCli({QStringLiteral("help"), QLatin1String(c.name)}).out, r.out);
        }
        const CliRun v = runCli({QStringLiteral("--version")});
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
        const CliRun r = runCli(paths);
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
        const CliRun r = runCli({QStringLiteral("size"), QStringLiteral("sized")});
        QCOMPARE(r.code, 0);
        QCOMPARE(r.out, (Utils::getHumanReadableSizeFrom(expected) + QStringLiteral("\t%1 bytes\n").arg(expected)).toUtf8());

        const CliRun missing = runCli({QStringLiteral("size"), m_tree.path() + "/sized", m_tree.path() + "/nope"});
        QCOMPARE(missing.code, 1);
        QVERIFY(missing.err.contains("/nope: No such file or directory"));
        QFile::remove(Utils::QDappSupportPath() + QStringLiteral("/QDts.plist"));
        Utils::saveChangesToTimeSavedPlistByAddingSec(3661);
        const CliRun ledger = runCli({QStringLiteral("ledger")});
        QCOMPARE(ledger.code, 0);
        QCOMPARE(ledger.out, QByteArray("This week: 1h : 01m : 01s\nTotal:     1h : 01m : 01s\n"));

        QVERIFY(writeFile(Utils::QDappSupportPath() + QStringLiteral("/QDts.plist"), "<plist><dict><key>total"));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("could not read .*QDts.plist")));
        const CliRun bad = runCli({QStringLiteral("ledger")});
        QCOMPARE(bad.code, 1);
        QVERIFY(bad.err.contains("cannot be read"));
    }

private:
    TestTree m_tree;
};

QTEST_GUILESS_MAIN(CliTest)
#include "tst_cli.moc"

// The command line as a separate process: interrupted and killed in the middle of a move, and the
// short commands that start without the application object.

#include "ScratchMount.h"
#include "TestTree.h"
#include "UnitSupport.h"

#include <QtTest>

#include <signal.h>

namespace {
QByteArray checksum(const QString &path)
{
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    QCryptographicHash h(QCryptographicHash::Sha1);
    h.addData(&f);
    return h.result().toHex();
}

bool waitForTemporary(const QString &folder, QProcess &p)
{
    if (!p.waitForStarted(5000))
        return false;
    QElapsedTimer t;
    t.start();
    while (t.elapsed() < 10000 && p.state() == QProcess::Running) {
        if (!QDir(folder).entryList({QStringLiteral(".qd-*")}, QDir::Files | QDir::Hidden).isEmpty())
            return true;
        QThread::usleep(500);
    }
    return false;
}
} // namespace

class CliProcessTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
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
    }
    void stoppedInTheMiddleOfAMove_data()
    {
        QTest::addColumn<bool>("interrupted"); // Ctrl+C, or killed outright
        QTest::newRow("interrupted: cancelled cleanly") << true;
        QTest::newRow("killed: the source is kept") << false;
    }
    void stoppedInTheMiddleOfAMove()
    {
        QFETCH(bool, interrupted);
        ScratchMount other("1g");
        REQUIRE_SCRATCH_MOUNT(other);
        QProcess p;
        p.start(m_bin, {QStringLiteral("move"), m_big, other.path()});
        QVERIFY(waitForTemporary(other.path(), p));
        interrupted ? void(::kill(pid_t(p.processId()), SIGINT)) : p.kill();
        QVERIFY(p.waitForFinished(5000));
        QCOMPARE(checksum(m_big), m_bigSum);
        QVERIFY(!QFileInfo::exists(other.path() + "/big.bin")); // nothing under the final name
        if (interrupted) {
            QCOMPARE(p.exitCode(), 130);
            QVERIFY(p.readAllStandardError().contains("cancelled"));
            QCOMPARE(QDir(other.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), QStringList());
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
            return runProgram(m_bin, QStringList{command, t.path() + source, t.path() + folder} + more);
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
        p.start(QStringLiteral("script"), {QStringLiteral("-qec"), QStringLiteral("%1 copy %2 %3").arg(m_bin, m_big, out),
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
        const ProgramRun size = runProgram(m_bin, {QStringLiteral("size"), t.at(QStringLiteral("empty"))}, {}, env);
        QCOMPARE(size.out, QByteArray("Null KB\t0 bytes\n"));
        const ProgramRun type = runProgram(m_bin, {QStringLiteral("type"), t.at(QStringLiteral("empty")), QStringLiteral("/nowhere")}, {}, env);
        QCOMPARE(type.code, 1);
        QCOMPARE(type.out, QByteArray("777\t") + t.native() + "/empty\n");
        QVERIFY2(type.err.startsWith("quaydrop: /nowhere: "), type.err.constData());
    }

private:
    QString m_bin = QStringLiteral(QD_QUAYDROP_BINARY);
    TestTree m_tree;
    QString m_big;
    QByteArray m_bigSum;
};

QTEST_GUILESS_MAIN(CliProcessTest)
#include "tst_cli_process.moc"

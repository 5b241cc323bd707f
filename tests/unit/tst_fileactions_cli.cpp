// The file-action commands as a shell runs them: exit codes, what they print and what is on disk after.

#include "TestTree.h"
#include "UnitSupport.h"

#include <QtTest>

#include <signal.h>

namespace {

// The program in `folder`, with a home of its own there.
ProgramRun run(const QStringList &args, const QString &folder)
{
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("HOME"), folder + QStringLiteral("/home"));
    env.insert(QStringLiteral("XDG_DATA_HOME"), folder + QStringLiteral("/home/.local/share"));
    return runProgram(QStringLiteral(QD_QUAYDROP_BINARY), args, folder, env);
}

} // namespace

class FileActionsCliTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void commands_data()
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
        QTest::newRow("zip without items") << QByteArrayList{} << QStringList{"zip"} << 2 << QByteArray()
                                           << QByteArrayList{} << QByteArrayList{};
        QTest::newRow("new docx inside, named") << QByteArrayList{"box/"}
                                                << QStringList{"new", "docx", "--name", "-Plan", "--inside", "box"} << 0
                                                << QByteArray("box/-Plan.docx") << QByteArrayList{"box/-Plan.docx"} << QByteArrayList{};
        QTest::newRow("new of an unknown kind") << QByteArrayList{"a"} << QStringList{"new", "pdf", "a"} << 2 << QByteArray()
                                                << QByteArrayList{} << QByteArrayList{};
        QTest::newRow("gather") << QByteArrayList{"a", "d/", "d/b"} << QStringList{"gather", "--name", "Box", "a", "d"} << 0
                                << QByteArray("Box") << QByteArrayList{"Box/a", "Box/d/b"} << QByteArrayList{"a", "d"};
        QTest::newRow("gather without a name") << QByteArrayList{"a"} << QStringList{"gather", "a"} << 2 << QByteArray()
                                               << QByteArrayList{"a"} << QByteArrayList{};
        QTest::newRow("rename in order") << QByteArrayList{"b.jpg", "a.jpg", "sub/", "sub/c.jpg"}
                                         << QStringList{"rename", "--name", "Trip", "b.jpg", "a.jpg", "sub/c.jpg"} << 0
                                         << QByteArray("Trip 2.jpg") << QByteArrayList{"Trip.jpg", "Trip 1.jpg", "Trip 2.jpg"}
                                         << QByteArrayList{"a.jpg", "b.jpg", "sub/c.jpg"};
        QTest::newRow("rename with nothing asked") << QByteArrayList{"a"} << QStringList{"rename", "a"} << 2 << QByteArray()
                                                   << QByteArrayList{"a"} << QByteArrayList{};
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
    void commands()
    {
        QFETCH(QByteArrayList, files);
        QFETCH(QStringList, args);
        QFETCH(int, exitCode);
        QFETCH(QByteArray, stdoutEnds);
        QFETCH(QByteArrayList, thereAfter);
        QFETCH(QByteArrayList, goneAfter);
        TestTree tree;
        for (const QByteArray &f : files)
            f.endsWith('/') ? tree.folder(f.chopped(1)) : tree.file(f, "content of " + f);
        const ProgramRun r = run(args, tree.path());
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
        QCOMPARE(run(args, tree.path()).code, 0);
        QVERIFY(!QFileInfo::exists(tree.path() + "/a.txt"));
        const ProgramRun undone = run({QStringLiteral("undo")}, tree.path());
        QVERIFY2(undone.code == 0, undone.err.constData());
        QCOMPARE(TestTree::contents(tree.path() + "/a.txt"), QByteArray("A"));
        QCOMPARE(TestTree::contents(tree.path() + "/d/b.txt"), QByteArray("B"));
        QCOMPARE(TestTree::entries(tree.path() + "/d"), QStringList{"b.txt"});
        QCOMPARE(run({QStringLiteral("undo")}, tree.path()).code, 1); // done once only
    }
    void interruptLeavesNoArchive()
    {
        TestTree tree;
        tree.folder("big");
        QByteArray noise(8 << 20, Qt::Uninitialized);
        for (int i = 0; i < 12; ++i) {
            QRandomGenerator(i).fillRange(reinterpret_cast<quint32 *>(noise.data()), noise.size() / 4);
            tree.file("big/n" + QByteArray::number(i), noise);
        }
        QProcess p;
        p.setWorkingDirectory(tree.path());
        p.start(QStringLiteral(QD_QUAYDROP_BINARY), {QStringLiteral("zip"), QStringLiteral("big")});
        QVERIFY(p.waitForStarted());
        QTRY_VERIFY_WITH_TIMEOUT(TestTree::entries(tree.path()).join(' ').contains(".quaydrop-"), 20000);
        ::kill(pid_t(p.processId()), SIGINT);
        QVERIFY(p.waitForFinished(20000));
        QCOMPARE(p.exitCode(), 130);
        QCOMPARE(TestTree::entries(tree.path()), QStringList{"big"});
    }
};

QTEST_GUILESS_MAIN(FileActionsCliTest)
#include "tst_fileactions_cli.moc"

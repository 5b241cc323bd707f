#include "TestTree.h"
#include "cli/CommandLine.h"
#include "core/fs/NativePath.h"
#include "utils/Utils.h"

#include <QtTest>

struct CliRun
{
    int code;
    QString out, err;
};

static CliRun runCli(const QStringList &args)
{
    QString out, err;
    QTextStream o(&out), e(&err);
    const int code = CommandLine::run(QStringList{QStringLiteral("quaydrop")} + args, o, e);
    o.flush();
    e.flush();
    return {code, out, err};
}

class CliTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void usageErrors_data();
    void usageErrors();
    void helpListsEveryCommand();
    void typePrintsOneCodePerPath();
    void typeReportsMissingPathsButStillClassifies();
    void sizeOfATreeInBytes();
    void ledgerPrintsWeekAndTotal();

private:
    TestTree m_tree;
};

void CliTest::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QVERIFY(m_tree.isValid());
}

void CliTest::usageErrors_data()
{
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<QString>("message");
    QTest::newRow("unknown command") << QStringList{"frobnicate"} << "unknown command \"frobnicate\"";
    QTest::newRow("type without paths") << QStringList{"type"} << "usage: quaydrop type PATH...";
    QTest::newRow("size without paths") << QStringList{"size"} << "usage: quaydrop size PATH...";
    QTest::newRow("ledger with arguments") << QStringList{"ledger", "x"} << "usage: quaydrop ledger";
}

void CliTest::usageErrors()
{
    QFETCH(QStringList, args);
    QFETCH(QString, message);
    const CliRun r = runCli(args);
    QCOMPARE(r.code, CommandLine::kUsageError);
    QVERIFY2(r.err.contains(message), qPrintable(r.err));
    QVERIFY(r.out.isEmpty());
}

void CliTest::helpListsEveryCommand()
{
    const CliRun r = runCli({QStringLiteral("--help")});
    QCOMPARE(r.code, 0);
    for (const auto &c : CommandLine::commands())
        QVERIFY2(r.out.contains(QStringLiteral("  ") + c.name + QChar(' ')), qPrintable(c.name));
}

void CliTest::typePrintsOneCodePerPath()
{
    const QString img = NativePath::fromNative(m_tree.file("pic.png"));
    const QString txt = NativePath::fromNative(m_tree.file("notes.txt"));
    const QString dir = NativePath::fromNative(m_tree.folder("Folder"));
    const QString odd = NativePath::fromNative(m_tree.file("\xe9t\xe9.jpg"));
    const CliRun r = runCli({QStringLiteral("type"), img, txt, dir, odd});
    QCOMPARE(r.code, 0);
    QCOMPARE(r.out.split(QChar('\n'), Qt::SkipEmptyParts),
             (QStringList{"1\t" + img, "2\t" + txt, "333\t" + dir, "1\t" + NativePath::forDisplay(odd)}));
    QVERIFY(r.err.isEmpty());
}

void CliTest::typeReportsMissingPathsButStillClassifies()
{
    const QString missing = m_tree.path() + "/gone.psd";
    const CliRun r = runCli({QStringLiteral("type"), missing});
    QCOMPARE(r.code, 1);
    QCOMPARE(r.out, "777\t" + missing + "\n");
    QVERIFY(r.err.contains(QStringLiteral("No such file or directory")));
}

void CliTest::sizeOfATreeInBytes()
{
    m_tree.folder("sized");
    const QByteArray a = m_tree.file("sized/a", QByteArray(20000, 'a'));
    const QByteArray b = m_tree.file("sized/b", QByteArray(30000, 'b'));
    const quint64 expected = TestTree::allocated(a) + TestTree::allocated(b);
    const CliRun r = runCli({QStringLiteral("size"), m_tree.path() + "/sized"});
    QCOMPARE(r.code, 0);
    QCOMPARE(r.out, Utils::getHumanReadableSizeFrom(expected) + QStringLiteral("\t%1 bytes\n").arg(expected));

    const CliRun missing = runCli({QStringLiteral("size"), m_tree.path() + "/sized", m_tree.path() + "/nope"});
    QCOMPARE(missing.code, 1);
    QVERIFY(missing.err.contains(QStringLiteral("/nope: No such file or directory")));
}

void CliTest::ledgerPrintsWeekAndTotal()
{
    QFile::remove(Utils::QDappSupportPath() + QStringLiteral("/QDts.plist"));
    Utils::saveChangesToTimeSavedPlistByAddingSec(3661);
    const CliRun r = runCli({QStringLiteral("ledger")});
    QCOMPARE(r.code, 0);
    QCOMPARE(r.out, QStringLiteral("This week: 1h : 01m : 01s\nTotal:     1h : 01m : 01s\n"));

    QFile broken(Utils::QDappSupportPath() + QStringLiteral("/QDts.plist"));
    QVERIFY(broken.open(QIODevice::WriteOnly | QIODevice::Truncate));
    broken.write("<plist><dict><key>total");
    broken.close();
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("could not read .*QDts.plist")));
    const CliRun bad = runCli({QStringLiteral("ledger")});
    QCOMPARE(bad.code, 1);
    QVERIFY(bad.err.contains(QStringLiteral("cannot be read")));
}

QTEST_GUILESS_MAIN(CliTest)
#include "tst_cli.moc"

// The per-user file-manager entries and the requests that commands send to the running program.
#include "UnitSupport.h"
#include "core/fs/NativePath.h"
#include "platform/SingleInstance.h"
#include "platform/freedesktop/FileManagerEntries.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>
#include <QXmlStreamReader>

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

QByteArray readFile(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<missing>");
}

} // namespace

class IntegrationTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void thunarActions_data()
    {
        QTest::addColumn<QByteArray>("before"); // "<missing>": no file at all
        QTest::addColumn<int>("added");         // Change, or -1 for an error that leaves the file alone
        QTest::newRow("no file") << QByteArray("<missing>") << int(Change::Added);
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
        const bool existed = before != "<missing>";
        if (existed)
            QVERIFY(QDir().mkpath(dir.filePath(QStringLiteral("Thunar"))) && writeFile(uca, before));
        const auto first = FileManagerEntries::integrateThunar(uca, false);
        if (added < 0) {
            QVERIFY(!first.ok());
            QVERIFY2(first.error().message.contains(QStringLiteral("left as it is")), qPrintable(first.error().message));
            QCOMPARE(readFile(uca), before);
            return;
        }
        QVERIFY2(first.ok(), first.ok() ? "" : qPrintable(first.error().message));
        QCOMPARE(int(first.value()), added);
        const QByteArray merged = readFile(uca);
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
        QCOMPARE(readFile(uca), merged);

        QCOMPARE(int(FileManagerEntries::integrateThunar(uca, true).value()), int(Change::Removed));
        const QByteArray removed = readFile(uca);
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
        QVERIFY(readFile(script).contains("exec quaydrop panel -- \"$@\""));
        QCOMPARE(int(FileManagerEntries::integrateNautilus(folder, false).value()), int(Change::AlreadyThere));
        QCOMPARE(int(FileManagerEntries::integrateNautilus(folder, true).value()), int(Change::Removed));
        QVERIFY(!QFile::exists(script));
        QCOMPARE(int(FileManagerEntries::integrateNautilus(folder, true).value()), int(Change::NotThere));
        // A script of the user's under that name is never replaced or removed.
        QVERIFY(writeFile(script, "#!/bin/sh\necho mine\n"));
        QVERIFY(!FileManagerEntries::integrateNautilus(folder, false).ok());
        QVERIFY(!FileManagerEntries::integrateNautilus(folder, true).ok());
        QCOMPARE(readFile(script), QByteArray("#!/bin/sh\necho mine\n"));
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
};

QTEST_GUILESS_MAIN(IntegrationTest)
#include "tst_integration.moc"

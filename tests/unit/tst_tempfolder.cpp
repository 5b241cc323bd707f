#include "TestTree.h"
#include "core/fs/NativePath.h"
#include "utils/Utils.h"

#include <QtTest>

#include <sys/stat.h>

class TempFolderTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        m_expected = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) +
                     QStringLiteral("/com.velmora.Quaydrop/QDTempOperations");
        TreeWalk::removeRecursively(m_expected.toUtf8(), [](const QByteArray &, int) {});
    }
    void createdPrivateAndAnsweredNilOnce()
    {
        QVERIFY(!QFileInfo::exists(m_expected));
        QVERIFY(Utils::createTempFileOperationsFolderIfneeded().isNull());
        QCOMPARE(Utils::createTempFileOperationsFolderIfneeded(), m_expected);
        struct stat st;
        QCOMPARE(::stat(m_expected.toUtf8().constData(), &st), 0);
        QCOMPARE(st.st_mode & 0777, mode_t(0700));

        // Removed by hand while running: the next call makes it again and answers nil once more.
        QVERIFY(QDir(m_expected).removeRecursively());
        QVERIFY(Utils::createTempFileOperationsFolderIfneeded().isNull());
        QCOMPARE(Utils::createTempFileOperationsFolderIfneeded(), m_expected);

        // A folder left readable by others is made private again.
        QVERIFY(::chmod(m_expected.toUtf8().constData(), 0755) == 0);
        QCOMPARE(Utils::createTempFileOperationsFolderIfneeded(), m_expected);
        QCOMPARE(::stat(m_expected.toUtf8().constData(), &st), 0);
        QCOMPARE(st.st_mode & 0777, mode_t(0700));
    }
    void cleanUpEmptiesButKeepsTheFolder()
    {
        QVERIFY(!Utils::createTempFileOperationsFolderIfneeded().isNull());
        const QByteArray folder = m_expected.toUtf8();
        QVERIFY(QDir().mkpath(m_expected + "/7C3B-UUID/deeper"));
        QFile(m_expected + "/7C3B-UUID/deeper/promised.png").open(QIODevice::WriteOnly);
        QFile(m_expected + "/_tempDroppedStr.txt").open(QIODevice::WriteOnly);
        QFile(m_expected + "/.hidden").open(QIODevice::WriteOnly);
        QFile(QString::fromUtf8(folder) + "/plain").open(QIODevice::WriteOnly);
        const QByteArray oddName = folder + "/\xff-odd";
        QVERIFY(::close(::open(oddName.constData(), O_CREAT | O_WRONLY, 0600)) == 0);

        Utils::cleanUPTepmFileOperationsFolder();
        QVERIFY(QFileInfo(m_expected).isDir());
        QCOMPARE(QDir(m_expected).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot),
                 QStringList());
        struct stat st;
        QCOMPARE(::lstat(oddName.constData(), &st), -1);
    }
    // Links inside the folder are removed, not followed; a link in the folder's place is refused.
    void linksAreNeverFollowed()
    {
        TestTree outside;
        const QByteArray kept = outside.file("precious.txt", "mine");
        outside.folder("folder");
        outside.file("folder/also-precious", "mine too");
        QVERIFY(!Utils::createTempFileOperationsFolderIfneeded().isNull());
        QVERIFY(::symlink(kept.constData(), (m_expected + "/link-to-file").toUtf8().constData()) == 0);
        QVERIFY(::symlink((outside.native() + "/folder").constData(), (m_expected + "/link-to-folder").toUtf8().constData()) == 0);

        Utils::cleanUPTepmFileOperationsFolder();
        QVERIFY(QFileInfo::exists(QString::fromUtf8(kept)));
        QVERIFY(QFileInfo::exists(outside.path() + "/folder/also-precious"));
        QVERIFY(QDir(m_expected).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot));

        const QByteArray target = outside.folder("planted");
        outside.file("planted/keep-me", "x");
        QVERIFY(QDir(m_expected).removeRecursively());
        QVERIFY(::symlink(target.constData(), m_expected.toUtf8().constData()) == 0);

        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("is not a folder of this user")));
        QVERIFY(Utils::createTempFileOperationsFolderIfneeded().isNull());
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("is not a folder of this user")));
        Utils::cleanUPTepmFileOperationsFolder();
        QVERIFY(QFileInfo::exists(outside.path() + "/planted/keep-me"));
        QVERIFY(::unlink(m_expected.toUtf8().constData()) == 0);
    }

private:
    QString m_expected;
};

QTEST_GUILESS_MAIN(TempFolderTest)
#include "tst_tempfolder.moc"

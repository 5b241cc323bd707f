#include "TestTree.h"
#include "core/fs/NativePath.h"
#include "utils/Utils.h"

#include <QtTest>

class SizesTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_tree.isValid());
        m_folder = m_tree.folder("tree");
        m_tree.folder("tree/sub");
        m_tree.folder("tree/.hidden-folder");
        m_tree.folder("tree/empty");
        const QList<QByteArray> files{
            m_tree.file("tree/a.txt", QByteArray(5000, 'a')),
            m_tree.file("tree/sub/b.bin", QByteArray(70000, 'b')),
            m_tree.file("tree/.hidden-file", QByteArray(9000, 'h')),
            m_tree.file("tree/.hidden-folder/c", QByteArray(3000, 'c')),
            m_tree.file("tree/sub/\xff\xfe-not-utf8", QByteArray(12000, 'n')),
            m_tree.sparseFile("tree/sparse.img", 64 * 1024 * 1024, QByteArray(4096, 's')),
            m_tree.link("tree/link-to-big", "/usr/bin"),
        };
        for (const QByteArray &f : files)
            m_expectedFolder += TestTree::allocated(f);
    }
    // Sizes are what the disk holds: a sparse file's blocks, a link itself, a folder's contents.
    void allocatedSizes()
    {
        const QString sparse = NativePath::fromNative(m_tree.native() + "/tree/sparse.img");
        QCOMPARE(QFileInfo(sparse).size(), qint64(64 * 1024 * 1024));
        const quint64 size = Utils::fileSizeAtPath(sparse);
        QVERIFY2(size >= 4096 && size < 1024 * 1024, qPrintable(QString::number(size)));
        // A link counts as itself, never as what it points to.
        QVERIFY(Utils::fileSizeAtPath(NativePath::fromNative(m_tree.native() + "/tree/link-to-big")) < 8192);
        const QString folder = NativePath::fromNative(m_folder);
        QCOMPARE(Utils::folderSize(folder), m_expectedFolder);
        QVERIFY(m_expectedFolder > 5000 + 70000 + 9000 + 3000 + 12000);
    }
    // One item, several, dangling and missing paths; a link to a folder is never walked.
    void itemsLinksAndMissingPaths()
    {
        const QString folder = NativePath::fromNative(m_folder);
        const QString file = NativePath::fromNative(m_tree.native() + "/tree/a.txt");
        QCOMPARE(Utils::getTheSizeOfItemsInArr({}), QStringLiteral("n/a"));
        QCOMPARE(Utils::sizeOfItemsInArr({folder}), m_expectedFolder);
        QCOMPARE(Utils::sizeOfItemsInArr({file}), TestTree::allocated(m_tree.native() + "/tree/a.txt"));
        // Several items: a folder counts its contents plus its own entry.
        QCOMPARE(Utils::multipleItemsSize({folder, file}),
                 m_expectedFolder + TestTree::allocated(m_folder) + TestTree::allocated(m_tree.native() + "/tree/a.txt"));
        QCOMPARE(Utils::getTheSizeOfItemsInArr({file}),
                 Utils::getHumanReadableSizeFrom(TestTree::allocated(m_tree.native() + "/tree/a.txt")));
        const QString dangling = NativePath::fromNative(m_tree.link("dangling", "/no/such/target"));
        QCOMPARE(Utils::fileSizeAtPath(m_tree.path() + "/does-not-exist"), 0ull);
        QCOMPARE(Utils::getTheSizeOfItemsInArr({m_tree.path() + "/does-not-exist"}), QStringLiteral("Zero KB"));
        QVERIFY(Utils::fileSizeAtPath(dangling) < 8192);
        QVERIFY(!Utils::isThisAFolderHere(dangling));
        // A link to a folder is never walked, and that is no error.
        QTest::failOnWarning(QRegularExpression(QStringLiteral("ERROR ENUMERATING")));
        const QString linkToFolder = NativePath::fromNative(m_tree.link("link-to-tree", m_folder));
        QVERIFY(Utils::isThisAFolderHere(linkToFolder));
        QCOMPARE(Utils::folderSize(linkToFolder), 0ull);
    }
    void unreadableFolderIsLoggedAndPassedOver()
    {
        if (geteuid() == 0)
            QSKIP("root reads every folder; ctest runs this case again as an unprivileged user");
        const QByteArray locked = m_tree.folder("tree/locked");
        m_tree.file("tree/locked/inside", QByteArray(50000, 'x'));
        QVERIFY(::chmod(locked.constData(), 0) == 0);
        QTest::ignoreMessage(QtWarningMsg,
                             QRegularExpression(QStringLiteral("^ERROR ENUMERATING FOLDER> file://.*/tree/locked, Permission denied$")));
        const quint64 size = Utils::folderSize(NativePath::fromNative(m_folder));
        ::chmod(locked.constData(), 0755);
        QCOMPARE(size, m_expectedFolder);
    }
    void humanReadable_data()
    {
        QTest::addColumn<quint64>("bytes");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QLocale>("locale");
        const QLocale en(QLocale::English, QLocale::UnitedStates), de(QLocale::German, QLocale::Germany);
        QTest::newRow("zero") << quint64(0) << QStringLiteral("Zero KB") << en;
        QTest::newRow("one byte") << quint64(1) << QStringLiteral("1 byte") << en;
        QTest::newRow("999 bytes") << quint64(999) << QStringLiteral("999 bytes") << en;
        QTest::newRow("KB round down") << quint64(1499) << QStringLiteral("1 KB") << en;
        QTest::newRow("KB round up") << quint64(1500) << QStringLiteral("2 KB") << en;
        QTest::newRow("rounds up into MB") << quint64(999500) << QStringLiteral("1 MB") << en;
        QTest::newRow("1.5 MB") << quint64(1500000) << QStringLiteral("1.5 MB") << en;
        QTest::newRow("no trailing zero") << quint64(2000001) << QStringLiteral("2 MB") << en;
        QTest::newRow("1.23 GB") << quint64(1230000000) << QStringLiteral("1.23 GB") << en;
        QTest::newRow("TB") << quint64(4560000000000) << QStringLiteral("4.56 TB") << en;
        QTest::newRow("largest") << quint64(18446744073709551615ull) << QStringLiteral("18.45 EB") << en;
        QTest::newRow("German 1,5 MB") << quint64(1500000) << QStringLiteral("1,5 MB") << de;
        QTest::newRow("German 1,23 GB") << quint64(1230000000) << QStringLiteral("1,23 GB") << de;
    }
    void humanReadable()
    {
        QFETCH(quint64, bytes);
        QFETCH(QString, text);
        QFETCH(QLocale, locale);
        QCOMPARE(Utils::getHumanReadableSizeFrom(bytes, locale), text);
    }

private:
    TestTree m_tree;
    QByteArray m_folder;
    quint64 m_expectedFolder = 0;
};

QTEST_GUILESS_MAIN(SizesTest)
#include "tst_sizes.moc"

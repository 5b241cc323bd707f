#include "TestTree.h"
#include "core/classification/WordCount.h"
#include "core/fs/NativePath.h"
#include "utils/Utils.h"

#include <QtTest>

class ClassificationTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { QVERIFY(m_tree.isValid()); }
    void fileTypeByName_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<quint64>("code");
        QTest::addColumn<bool>("archive");
        // None of these files exist: the name alone decides.
        QTest::newRow("png") << "photo.png" << quint64(1) << false;
        QTest::newRow("upper-case JPG") << "IMG_0001.JPG" << quint64(1) << false;
        QTest::newRow("svg kept out") << "logo.svg" << quint64(777) << false;
        QTest::newRow("photoshop kept out") << "layers.psd" << quint64(777) << false;
        QTest::newRow("plain text") << "notes.txt" << quint64(2) << false;
        QTest::newRow("pdf") << "paper.pdf" << quint64(777) << false;
        QTest::newRow("zip") << "archive.zip" << quint64(777) << true;
        QTest::newRow("compressed tar") << "backup.tar.gz" << quint64(777) << true;
        QTest::newRow("dot file") << ".bashrc" << quint64(777) << false;
        QTest::newRow("unknown extension") << "thing.qqqzzz" << quint64(777) << false;
    }
    void fileTypeByName()
    {
        QFETCH(QString, name);
        QFETCH(quint64, code);
        QFETCH(bool, archive);
        QCOMPARE(Utils::determineFileType(m_tree.path() + QStringLiteral("/missing/") + name), code);
        QCOMPARE(Utils::isArchiveFile(m_tree.path() + QStringLiteral("/missing/") + name), archive);
    }
    void foldersAndPackages_data()
    {
        QTest::addColumn<QByteArray>("folder");
        QTest::addColumn<quint64>("code");
        QTest::addColumn<bool>("package");
        QTest::newRow("plain folder") << QByteArray("Photos") << quint64(333) << false;
        QTest::newRow("folder with a dot") << QByteArray("v1.2") << quint64(333) << false;
        QTest::newRow("folder named like an image") << QByteArray("shots.png") << quint64(333) << false;
        QTest::newRow("folder named like an archive") << QByteArray("old.zip") << quint64(333) << false;
        QTest::newRow("rtfd package") << QByteArray("Letter.rtfd") << quint64(2) << true;
        QTest::newRow("app package") << QByteArray("Tool.app") << quint64(777) << true;
        QTest::newRow("pages package") << QByteArray("Essay.pages") << quint64(777) << true;
        QTest::newRow("name that is not UTF-8") << QByteArray("caf\xe9") << quint64(333) << false;
    }
    void foldersAndPackages()
    {
        QFETCH(QByteArray, folder);
        QFETCH(quint64, code);
        QFETCH(bool, package);
        const QString path = NativePath::fromNative(m_tree.folder(folder));
        QVERIFY(Utils::isThisAFolderHere(path));
        QCOMPARE(Utils::isFilePackageAtPath(path), package);
        QCOMPARE(Utils::determineFileType(path), code);
        QVERIFY(!Utils::isArchiveFile(path)); // a folder is zipped whatever its name
    }
    void imagesOnlyKeepOrder()
    {
        const QString base = m_tree.path();
        m_tree.folder("gallery.jpg.d");
        const QStringList in{base + "/b.png", base + "/note.txt", base + "/a.JPEG", base + "/gallery.jpg.d",
                             NativePath::fromNative(m_tree.native() + "/\xff\xfe.gif")};
        const QStringList out{base + "/b.png", base + "/a.JPEG", in.last()};
        QCOMPARE(Utils::getImagesOnlyFromArrPaths(in), out);
        QCOMPARE(Utils::getImagesOnlyFromArrPaths({base}), QStringList());
    }
    void invisibility_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<bool>("invisible");
        QTest::newRow("ordinary") << QByteArray("visible.txt") << false;
        QTest::newRow("leading dot") << QByteArray(".secret") << true;
        QTest::newRow("listed in .hidden") << QByteArray("listed.txt") << true;
        QTest::newRow("listed, not UTF-8") << QByteArray("list\xe9") << true;
        QTest::newRow("only a prefix of a listed name") << QByteArray("listed") << false;
    }
    void invisibility()
    {
        QFETCH(QByteArray, name);
        QFETCH(bool, invisible);
        m_tree.folder("hid");
        m_tree.file("hid/.hidden", "listed.txt\r\nlist\xe9\n");
        const QString path = NativePath::fromNative(m_tree.file("hid/" + name));
        QCOMPARE(Utils::isFileOrFolderInVisible(path), invisible);
    }
    // The library test is a prefix of the home from the password database, whatever HOME says.
    void homeAndLibrary()
    {
        const QByteArray saved = qgetenv("HOME");
        qputenv("HOME", "/nowhere/at/all");
        const QString home = Utils::checkAndReturnHomeFolderPath(QStringLiteral("/ignored"));
        qputenv("HOME", saved);
        QVERIFY(!home.isEmpty());
        QVERIFY(home != QStringLiteral("/nowhere/at/all"));
        QVERIFY(QFileInfo(home).isDir());
        QVERIFY(Utils::checkIfFileIsFromLibraryFolder(home + "/Library/Caches/x"));
        QVERIFY(Utils::checkIfFileIsFromLibraryFolder(home + "/LibraryBooks/y")); // the string alone decides
        QVERIFY(!Utils::checkIfFileIsFromLibraryFolder(home + "/Documents/Library"));
        QVERIFY(!Utils::isFolderFromLibraryFolder(home + "/Library-does-not-exist-here"));
    }
    void nativePathsRoundTrip_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("shown");
        QTest::newRow("ascii") << QByteArray("/tmp/a b") << QStringLiteral("/tmp/a b");
        QTest::newRow("utf-8") << QByteArray("/tmp/Gr\xc3\xbc\xc3\x9f""e \xf0\x9f\x98\x80") << QStringLiteral("/tmp/Grüße 😀");
        QTest::newRow("latin-1 byte") << QByteArray("/tmp/caf\xe9") << QStringLiteral("/tmp/caf\uFFFD");
        QTest::newRow("lone continuation") << QByteArray("/\x80x") << QStringLiteral("/\uFFFDx");
        QTest::newRow("overlong slash") << QByteArray("/a\xc0\xaf") << QStringLiteral("/a\uFFFD\uFFFD");
        QTest::newRow("encoded surrogate") << QByteArray("/\xed\xb3\xbf") << QStringLiteral("/\uFFFD\uFFFD\uFFFD");
        QTest::newRow("cut-off sequence") << QByteArray("/a\xe2\x82") << QStringLiteral("/a\uFFFD\uFFFD");
    }
    void nativePathsRoundTrip()
    {
        QFETCH(QByteArray, bytes);
        QFETCH(QString, shown);
        const QString path = NativePath::fromNative(bytes);
        QCOMPARE(NativePath::toNative(path), bytes);
        QCOMPARE(NativePath::forDisplay(path), shown);
    }
    void wordCount_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<quint32>("words");
        QTest::newRow("empty") << QString() << 0u;
        QTest::newRow("punctuation only") << QStringLiteral("... !!! -- ?") << 0u;
        QTest::newRow("sentence") << QStringLiteral("Drop it, then move it.") << 5u;
        QTest::newRow("contraction and number") << QStringLiteral("don't pay 3.50 twice") << 4u;
        QTest::newRow("German") << QStringLiteral("Größe der Dateien: über 12 MB") << 6u;
        QTest::newRow("line breaks") << QStringLiteral("one\ntwo\r\nthree") << 3u;
    }
    void wordCount()
    {
        QFETCH(QString, text);
        QFETCH(quint32, words);
        QCOMPARE(wordCountFromString2(text), words);
    }

private:
    TestTree m_tree;
};

QTEST_GUILESS_MAIN(ClassificationTest)
#include "tst_classification.moc"

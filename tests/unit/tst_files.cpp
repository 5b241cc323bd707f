// What a dropped item is and how large: types by name, folders and packages, hidden names, native
// paths; sizes as the disk holds them; and the panel it gets: the panels' table, their enabling rules
// and the window geometry.
#include "TestTree.h"
#include "core/classification/MimeByName.h"
#include "core/classification/WordCount.h"
#include "core/panels/PanelCatalog.h"
#include "core/panels/PanelFrame.h"
#include "core/panels/PanelRules.h"
#include "core/fs/NativePath.h"
#include "utils/Utils.h"

#include <QtTest>

using States = QHash<QString, ButtonState>;
Q_DECLARE_METATYPE(PanelInputs)

namespace {
// A reader of the type folders given as XDG_DATA_HOME and XDG_DATA_DIRS; the session's are kept.
std::unique_ptr<MimeByName> mimeReaderOf(const QByteArray &home, const QByteArray &dirs)
{
    const QByteArray homeBefore = qgetenv("XDG_DATA_HOME"), dirsBefore = qgetenv("XDG_DATA_DIRS");
    qputenv("XDG_DATA_HOME", home);
    qputenv("XDG_DATA_DIRS", dirs);
    auto reader = std::make_unique<MimeByName>();
    qputenv("XDG_DATA_HOME", homeBefore);
    qputenv("XDG_DATA_DIRS", dirsBefore);
    return reader;
}
} // namespace

class FilesTest : public QObject
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

    // The cache read in place answers as Qt's own database does: for a name made from every pattern
    // the system knows, in either case, and with the type's ancestors in Qt's order.
    void typeByNameAsQtAnswers()
    {
        const MimeByName reader;
        if (!reader.readsTheCache())
            QSKIP("this session has no single MIME cache to read (a user's own types, or none at all)");
        QFile globs(QStandardPaths::locate(QStandardPaths::GenericDataLocation, QStringLiteral("mime/globs2")));
        QVERIFY(globs.open(QIODevice::ReadOnly));
        QStringList names{"", "a.", ".txt", "x.tar.gz", "notes.txt~", "README.md", "Makefile", "\u00e9t\u00e9.JPG", "a.b.c"};
        while (!globs.atEnd()) {
            const QList<QByteArray> fields = globs.readLine().trimmed().split(':');
            if (fields.size() < 3 || fields[0].startsWith('#'))
                continue;
            QString name = QString::fromUtf8(fields[2]).replace(QChar('*'), QStringLiteral("name")).replace(QChar('?'), QChar('q'));
            name.replace(QRegularExpression(QStringLiteral("\\[(.)[^\\]]*\\]")), QStringLiteral("\\1"));
            names << name << name.toUpper();
        }
        QVERIFY(names.size() > 1000);
        const QMimeDatabase qt;
        for (const QString &name : std::as_const(names)) {
            const QMimeType expected = qt.mimeTypeForFile(name, QMimeDatabase::MatchExtension);
            QVERIFY2(reader.typeOf(name) == expected.name(), qPrintable(name + QStringLiteral(": ") + reader.typeOf(name)));
            QCOMPARE(reader.typeAndAncestors(expected.name()), QStringList{expected.name()} + expected.allAncestors());
        }
    }
    // The rules that choose among several patterns, on a cache of types made up for it.
    void typeByNameChoosesAsTheDatabaseRulesSay_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QStringList>("lineage");
        QTest::newRow("the longer of two globs of one weight") << "report-7.logx" << QStringList{"application/x-qd-long", "application/octet-stream"};
        QTest::newRow("the heavier of two suffixes, and its parents") << "a.weigh"
            << QStringList{"application/x-qd-heavy", "text/x-qd-base", "text/x-qd-root", "text/plain", "application/octet-stream"};
        QTest::newRow("a case-sensitive suffix") << "b.QD" << QStringList{"application/x-qd-upper", "application/octet-stream"};
        QTest::newRow("in other letters, none") << "b.Qd" << QStringList{"application/octet-stream"};
        QTest::newRow("equal matches: the first by name") << "c.same" << QStringList{"application/x-qd-a", "application/octet-stream"};
        QTest::newRow("a literal name before any suffix") << "report.weigh" << QStringList{"application/x-qd-literal", "application/octet-stream"};
        QTest::newRow("nothing matches") << "d.unknown" << QStringList{"application/octet-stream"};
    }
    void typeByNameChoosesAsTheDatabaseRulesSay()
    {
        QFETCH(QString, name);
        QFETCH(QStringList, lineage);
        static TestTree data;
        static std::unique_ptr<MimeByName> reader;
        if (!reader) {
            data.folder("mime");
            data.folder("mime/packages");
            data.file("mime/packages/made-up.xml", R"(<?xml version='1.0'?>
<mime-info xmlns='http://www.freedesktop.org/standards/shared-mime-info'>
  <mime-type type='application/x-qd-long'><glob pattern='report-*.log*'/></mime-type>
  <mime-type type='application/x-qd-any'><glob pattern='report?*'/></mime-type>
  <mime-type type='application/x-qd-literal'><glob pattern='report.weigh'/></mime-type>
  <mime-type type='application/x-qd-heavy'><glob pattern='*.weigh' weight='80'/><sub-class-of type='text/x-qd-base'/></mime-type>
  <mime-type type='application/x-qd-light'><glob pattern='*.weigh'/></mime-type>
  <mime-type type='text/x-qd-base'><sub-class-of type='text/x-qd-root'/></mime-type>
  <mime-type type='application/x-qd-upper'><glob pattern='*.QD' case-sensitive='true'/></mime-type>
  <mime-type type='application/x-qd-b'><glob pattern='*.same'/></mime-type>
  <mime-type type='application/x-qd-a'><glob pattern='*.same'/></mime-type>
</mime-info>
)");
            QCOMPARE(QProcess::execute(QStringLiteral("update-mime-database"), {data.at(QStringLiteral("mime"))}), 0);
            reader = mimeReaderOf(data.native() + "/nothing", data.native());
            QVERIFY(reader->readsTheCache());
        }
        QCOMPARE(reader->typeAndAncestors(reader->typeOf(name)), lineage);
    }
    // Where the cache is not the session's only type database, or cannot be trusted, Qt answers; a
    // cache whose tables point anywhere is read without a step outside it.
    void typeByNameWhereTheCacheCannotServe_data()
    {
        QTest::addColumn<QByteArrayList>("folders"); // "mime" folders of XDG_DATA_HOME, then XDG_DATA_DIRS
        QTest::addColumn<int>("cut");                // the system cache's length kept; -1 all
        QTest::addColumn<bool>("scrambleTree");      // the suffix tree's nodes overwritten
        QTest::addColumn<bool>("read");
        QTest::newRow("a user's own types beside the system's") << QByteArrayList{"home", "system"} << -1 << false << false;
        QTest::newRow("no cache") << QByteArrayList{"none"} << -1 << false << false;
        QTest::newRow("cut short") << QByteArrayList{"system"} << 60000 << false << false;
        QTest::newRow("a header only") << QByteArrayList{"system"} << 40 << false << false;
        QTest::newRow("another version") << QByteArrayList{"future"} << -1 << false << false;
        QTest::newRow("a tree pointing anywhere") << QByteArrayList{"system"} << -1 << true << true;
    }
    void typeByNameWhereTheCacheCannotServe()
    {
        QFETCH(QByteArrayList, folders);
        QFETCH(int, cut);
        QFETCH(bool, scrambleTree);
        QFETCH(bool, read);
        QFile system(QStandardPaths::locate(QStandardPaths::GenericDataLocation, QStringLiteral("mime/mime.cache")));
        if (!system.open(QIODevice::ReadOnly))
            QSKIP("no MIME cache on this system to damage");
        QByteArray cache = system.readAll().left(cut < 0 ? system.size() : cut);
        if (folders.first() == "future")
            cache[1] = 9;
        if (scrambleTree) {
            // Every node: the name's last letter, with a thousand children far past the end.
            const quint32 roots = qFromBigEndian<quint32>(cache.constData() + qFromBigEndian<quint32>(cache.constData() + 16) + 4);
            const quint32 end = qFromBigEndian<quint32>(cache.constData() + 20); // the glob list follows the tree
            const quint32 node[3] = {qToBigEndian<quint32>('g'), qToBigEndian<quint32>(1000), qToBigEndian<quint32>(0x7ffffff0)};
            for (quint32 at = roots; at + 12 <= end; at += 12)
                memcpy(cache.data() + at, node, 12);
        }
        TestTree data;
        QStringList dirs;
        for (const QByteArray &folder : folders) {
            QVERIFY(QDir().mkpath(data.at(QString::fromUtf8(folder + "/mime/packages"))));
            if (folder != "none")
                data.file(folder + "/mime/mime.cache", cache);
            dirs << data.at(QString::fromUtf8(folder));
        }
        const QString home = folders.size() > 1 ? dirs.takeFirst() : data.at(QStringLiteral("nothing"));
        const auto reader = mimeReaderOf(home.toUtf8(), dirs.join(QChar(':')).toUtf8());
        QCOMPARE(reader->readsTheCache(), read);
        const QString type = reader->typeOf(QStringLiteral("photo.png"));
        if (!read)
            QCOMPARE(type, QStringLiteral("image/png"));
        QVERIFY(!reader->typeAndAncestors(type).isEmpty());
    }
    void enablingRules_data()
    {
        QTest::addColumn<quint64>("panel");
        QTest::addColumn<PanelInputs>("in");
        QTest::addColumn<QStringList>("enabled");
        QTest::addColumn<QStringList>("disabled");
        QTest::addColumn<QStringList>("hidden");

        const QStringList img = {"zipImgBtn", "createNewFImgBtn", "trashImgBtn", "revealImginFinderBtn"};
        QTest::newRow("image ignores OTHER") << quint64(1) << PanelInputs{false, true} << img << QStringList() << QStringList();
        const QStringList doc = {"revealdocInFinderBtn", "zipDocBtn", "trashdocBtn", "createNewDocBtn"};
        QTest::newRow("document ignores OTHER") << quint64(2) << PanelInputs{false, true} << doc << QStringList() << QStringList();
        const QStringList folder = {"trashFileBtn", "revealInFinderBtn", "zipBtn", "createNewBtn"};
        const QStringList pdfButtons = {"printPrTbleFileBtn", "convrtPDFToImgBtn"};
        QTest::newRow("folder, library") << quint64(333) << PanelInputs{true, false} << QStringList() << folder << pdfButtons;
        QTest::newRow("folder named like a PDF") << quint64(333) << PanelInputs{false, false, 0, true} << folder + pdfButtons
                                                 << QStringList() << QStringList();
        QTest::newRow("other file from another app") << quint64(777) << PanelInputs{false, true} << QStringList{"zipBtn"}
                                                     << QStringList{"trashFileBtn", "createNewBtn"} << pdfButtons;
        QTest::newRow("other file, library") << quint64(777) << PanelInputs{true, false} << QStringList()
                                             << QStringList{"trashFileBtn", "createNewBtn", "zipBtn"} << pdfButtons;
        const QStringList multi = {"moveToOneFoldBtn", "createFileMultiBtn", "trashMultiBtn", "revealInfinderMultibtn"};
        const QStringList imageButtons = {"multiConvrtImg", "multiResizeImg"};
        QTest::newRow("several, one image") << quint64(888) << PanelInputs{false, false, 1} << multi + imageButtons << QStringList()
                                            << QStringList();
        QTest::newRow("several from another app") << quint64(888) << PanelInputs{false, true, 3} << imageButtons << multi
                                                  << QStringList();
        QTest::newRow("text enables nothing") << quint64(222) << PanelInputs{true, true} << QStringList() << QStringList()
                                              << QStringList();
    }
    void enablingRules()
    {
        QFETCH(quint64, panel);
        QFETCH(PanelInputs, in);
        QFETCH(QStringList, enabled);
        QFETCH(QStringList, disabled);
        QFETCH(QStringList, hidden);
        const States states = PanelRules::buttonStatesFor(DropPanel(panel), in);
        QCOMPARE(states.size(), enabled.size() + disabled.size() + hidden.size());
        for (const QString &b : enabled)
            QVERIFY2(states.value(b) == (ButtonState{true, true}), qPrintable(b));
        for (const QString &b : disabled)
            QVERIFY2(states.value(b) == (ButtonState{false, true}), qPrintable(b));
        for (const QString &b : hidden)
            QVERIFY2(states.value(b) == (ButtonState{false, false}), qPrintable(b));
    }
    void panel777KeepsWhatPanel333Left()
    {
        // The two share one view: applying 777 after a library folder on 333 leaves reveal off; zip
        // follows the file of 777 itself.
        States view;
        for (const PanelButtonSpec &spec : PanelCatalog::buttonsOf(DropPanelFolder))
            view.insert(QString::fromLatin1(spec.outlet), ButtonState{});
        auto apply = [&](DropPanel p, const PanelInputs &in) {
            const States changes = PanelRules::buttonStatesFor(p, in);
            for (auto it = changes.cbegin(); it != changes.cend(); ++it)
                view.insert(it.key(), it.value());
        };
        apply(DropPanelFolder, PanelInputs{true, false});
        apply(DropPanelDefault, PanelInputs{false, false});
        QCOMPARE(view.value("zipBtn").enabled, true);
        QCOMPARE(view.value("revealInFinderBtn").enabled, false);
        apply(DropPanelDefault, PanelInputs{false, false, 0, false, true});
        apply(DropPanelDefault, PanelInputs{false, false});
        QCOMPARE(view.value("zipBtn").enabled, true); // an archive before leaves nothing behind
        QCOMPARE(view.value("trashFileBtn").enabled, true);
    }
    void zipButtonFollowsARunningZip_data()
    {
        QTest::addColumn<quint64>("panel");
        QTest::addColumn<QString>("zipButton");
        QTest::newRow("folder") << quint64(333) << "zipBtn";
        QTest::newRow("several") << quint64(888) << "zipMultiBtn";
        QTest::newRow("image of another app has no check") << quint64(444) << "";
    }
    void zipButtonFollowsARunningZip()
    {
        QFETCH(quint64, panel);
        QFETCH(QString, zipButton);
        PanelInputs in{.zipRunning = true};
        const States states = PanelRules::buttonStatesFor(DropPanel(panel), in);
        if (zipButton.isEmpty()) {
            QVERIFY(!states.contains("zipDrImgBtn"));
            return;
        }
        QCOMPARE(states.value(zipButton), (ButtonState{false, true}));
        in.zipRunning = false;
        QCOMPARE(PanelRules::buttonStatesFor(DropPanel(panel), in).value(zipButton, ButtonState{}).enabled, true);
    }
    void panelFrame_data()
    {
        QTest::addColumn<QRectF>("window");
        QTest::addColumn<qreal>("height");
        QTest::addColumn<QRectF>("visible");
        QTest::addColumn<QRectF>("expected");
        const QRectF screen(0, 0, 1440, 877);
        QTest::newRow("top-left corner kept") << QRectF(600, 400, 90, 90) << 235.0 << screen << QRectF(600, 255, 210, 235);
        QTest::newRow("move overlay height") << QRectF(600, 400, 90, 90) << 300.0 << screen << QRectF(600, 190, 210, 300);
        QTest::newRow("left edge clamped") << QRectF(-40, 400, 90, 90) << 235.0 << screen << QRectF(0, 255, 210, 235);
        QTest::newRow("bottom edge clamped") << QRectF(600, 10, 90, 90) << 235.0 << screen << QRectF(600, 0, 210, 235);
        QTest::newRow("right overflow shifted") << QRectF(1350, 400, 90, 90) << 235.0 << screen << QRectF(1230, 255, 210, 235);
        QTest::newRow("top overflow shifted") << QRectF(600, 800, 90, 90) << 235.0 << screen << QRectF(600, 642, 210, 235);
        QTest::newRow("visible frame above a dock") << QRectF(100, 20, 90, 90) << 235.0 << QRectF(0, 70, 1440, 807)
                                                    << QRectF(100, 70, 210, 235);
    }
    void panelFrame()
    {
        QFETCH(QRectF, window);
        QFETCH(qreal, height);
        QFETCH(QRectF, visible);
        QFETCH(QRectF, expected);
        QCOMPARE(PanelFrame::panelFrame(window, height, visible), expected);
    }
    void properWindowFrameToFit_data()
    {
        QTest::addColumn<QSizeF>("image");
        QTest::addColumn<QSizeF>("minSize");
        QTest::addColumn<qreal>("viewWidth");
        QTest::addColumn<QSizeF>("expected");
        // margin = 2 x (600/2 - 500/2) = 100; wide editor: scaled by width.
        QTest::newRow("wide editor, wide image") << QSizeF(1000, 500) << QSizeF(600, 500) << 500.0 << QSizeF(600, 500);
        QTest::newRow("wide editor, tall image") << QSizeF(500, 2000) << QSizeF(600, 500) << 500.0 << QSizeF(600, 2100);
        // Tall editor: scaled by height first, then by width when that made it wider than high.
        QTest::newRow("tall editor, tall image") << QSizeF(300, 600) << QSizeF(400, 700) << 300.0 << QSizeF(400, 700);
        QTest::newRow("tall editor, wide image") << QSizeF(1200, 600) << QSizeF(400, 700) << 300.0 << QSizeF(400, 700);
        QTest::newRow("tall editor, small tall image") << QSizeF(100, 400) << QSizeF(400, 700) << 300.0 << QSizeF(250, 700);
    }
    void properWindowFrameToFit()
    {
        QFETCH(QSizeF, image);
        QFETCH(QSizeF, minSize);
        QFETCH(qreal, viewWidth);
        QFETCH(QSizeF, expected);
        const QRectF r = PanelFrame::properWindowFrameToFit(image, minSize, viewWidth, QPointF(30, 40));
        QCOMPARE(r.topLeft(), QPointF(30, 40));
        QCOMPARE(r.size(), expected);
    }

private:
    TestTree m_tree;
    QByteArray m_folder;
    quint64 m_expectedFolder = 0;
};

QTEST_GUILESS_MAIN(FilesTest)
#include "tst_files.moc"

#include "ScratchMount.h"
#include "TestRows.h"
#include "TestTree.h"
#include "core/fs/NativePath.h"
#include "fileops/FileCopyHelper.h"
#include "platform/fake/FakePlatform.h"
#include "utils/Utils.h"

#include <QtTest>

#include <dirent.h>
#include <fcntl.h>
#include <sys/statvfs.h>
#include <sys/xattr.h>

namespace {


bool hasTemporaryLeftovers(const QString &folder)
{
    QDirIterator it(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                    QDirIterator::Subdirectories);
    while (it.hasNext())
        if (it.next().contains(QStringLiteral("/.qd-")))
            return true;
    return false;
}

QString s(const QByteArray &native) { return NativePath::fromNative(native); }

// An error as its code and message; a failure of the system as the system words it.
QString said(const Error &e) { return QString::number(e.code) + QStringLiteral(": ") + e.message; }
QString said(int code, int posixError) { return QString::number(code) + QStringLiteral(": ") + QString::fromLocal8Bit(strerror(posixError)); }

// By bytes: Qt's own listing drops names that are not UTF-8.
QList<QByteArray> nativeEntries(const QByteArray &folder)
{
    QList<QByteArray> names;
    if (DIR *d = ::opendir(folder.constData())) {
        while (const dirent *e = ::readdir(d))
            if (strcmp(e->d_name, ".") && strcmp(e->d_name, ".."))
                names.append(e->d_name);
        ::closedir(d);
    }
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace

class CopyEngineTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        Platform::install(m_platform.services());
    }
    void init() { m_platform.notifications.delivered.clear(); }
    // A file keeps its data, mode, times and attributes; a sparse one its holes; a link stays a link.
    void fileKeepsDataMetadataHolesAndLinks()
    {
        const QByteArray src = m_tree.file("meta.txt", "payload");
        QVERIFY(::setxattr(src.constData(), "user.tag", "blue", 4, 0) == 0);
        QVERIFY(::chmod(src.constData(), 0640) == 0);
        const timespec times[2] = {{1000000000, 123456789}, {1100000000, 987654321}};
        QVERIFY(::utimensat(AT_FDCWD, src.constData(), times, 0) == 0);
        m_tree.folder("meta-out");
        const QByteArray dst = m_tree.native() + "/meta-out/meta.txt";

        quint64 size = 0;
        Error error;
        QVERIFY(FileCopyHelper::copyFileAt(s(src), s(dst), nullptr, &size, &error));
        QCOMPARE(TestTree::contents(dst), QByteArray("payload"));
        QCOMPARE(size, TestTree::allocated(src));
        struct stat st;
        QVERIFY(::stat(dst.constData(), &st) == 0);
        QCOMPARE(st.st_mode & 07777, mode_t(0640));
        QCOMPARE(st.st_mtim.tv_sec, time_t(1100000000));
        QCOMPARE(st.st_mtim.tv_nsec, 987654321L);
        char value[16] = {};
        QCOMPARE(::getxattr(dst.constData(), "user.tag", value, sizeof value), ssize_t(4));
        QCOMPARE(QByteArray(value), QByteArray("blue"));
        QVERIFY(!hasTemporaryLeftovers(m_tree.path() + "/meta-out"));

        const QByteArray sparse = m_tree.sparseFile("sparse.img", 200 << 20, QByteArray(8192, 'd'));
        const QByteArray sparseCopy = m_tree.native() + "/sparse-copy.img";
        QVERIFY(FileCopyHelper::copyFileAt(s(sparse), s(sparseCopy), nullptr, nullptr, &error));
        QCOMPARE(QFileInfo(s(sparseCopy)).size(), qint64(200 << 20));
        QVERIFY2(TestTree::allocated(sparseCopy) < (1 << 20), qPrintable(QString::number(TestTree::allocated(sparseCopy))));
        QCOMPARE(TestTree::contents(sparseCopy).left(8192), QByteArray(8192, 'd'));

        const QByteArray link = m_tree.link("a-link", "/etc/hostname");
        const QString linkCopy = m_tree.path() + "/a-link-copy";
        QVERIFY(FileCopyHelper::copyFileAt(s(link), linkCopy, nullptr, nullptr, &error));
        QVERIFY(QFileInfo(linkCopy).isSymLink());
        QCOMPARE(QFileInfo(linkCopy).symLinkTarget(), QStringLiteral("/etc/hostname"));
    }
    // Refused before a byte is written: what is at the destination stays.
    void refusedFiles_data()
    {
        QTest::addColumn<QByteArray>("source");
        QTest::addColumn<QString>("expected");
        QTest::newRow("a folder") << m_tree.folder("not-a-file") << "1000: File being copied is not a File";
        QTest::newRow("the destination is taken") << m_tree.file("new.txt", "new") << said(1111, EEXIST);
        QTest::newRow("the source vanished") << m_tree.native() + "/never-was.txt" << said(1111, ENOENT);
    }
    void refusedFiles()
    {
        QFETCH(QByteArray, source);
        QFETCH(QString, expected);
        const QByteArray dst = m_tree.file("old.txt", "old");
        quint64 size = 4242;
        Error error;
        QVERIFY(!FileCopyHelper::copyFileAt(s(source), s(dst), nullptr, &size, &error));
        QCOMPARE(said(error), expected);
        QCOMPARE(error.domain, QStringLiteral("kQDFileCopyErrorDomain"));
        if (error.code == 1111 && QFileInfo::exists(s(source)))
            QCOMPARE(error.info.value("fileName").toString(), QStringLiteral("new.txt"));
        QCOMPARE(TestTree::contents(dst), QByteArray("old"));
        if (error.code == 1000)
            QCOMPARE(size, 4242ull);
    }
    void destinationAppearingDuringTheCopyFails()
    {
        m_tree.folder("race");
        const QByteArray src = m_tree.file("race-src.bin", QByteArray(3 << 20, 'r'));
        const QByteArray dst = m_tree.native() + "/race/race-src.bin";
        bool planted = false;
        Error error;
        const bool ok = FileCopyHelper::copyFileAt(s(src), s(dst), [&](quint64, quint64, bool *, const QString &) {
            if (!planted)
                planted = ::close(::open(dst.constData(), O_CREAT | O_WRONLY, 0644)) == 0;
        }, nullptr, &error);
        QVERIFY(planted);
        QVERIFY(!ok);
        QCOMPARE(said(error), said(1111, EEXIST));
        QCOMPARE(QFileInfo(s(dst)).size(), 0); // the item that appeared is untouched
        QVERIFY(!hasTemporaryLeftovers(m_tree.path() + "/race"));
    }
    void folderCopyIsComplete()
    {
        m_tree.make({"proj/", "proj/.git/", "proj/.git/objects/", "proj/.git/HEAD", "proj/empty/", "proj/src/",
                     "proj/src/main.cpp", "proj/.env"});
        m_tree.link("proj/src/loop", "../src"); // a link back up: copied as a link, never walked
        QVERIFY(::mkfifo((m_tree.native() + "/proj/pipe").constData(), 0600) == 0);
        const QByteArray dst = m_tree.native() + "/proj-copy";

        quint64 size = 0;
        Error error;
        QVERIFY2(FileCopyHelper::copyFolderAt(m_tree.path() + "/proj", s(dst), nullptr, &size, &error),
                 qPrintable(error.message));
        QCOMPARE(TestTree::entries(s(dst)), (QStringList{".env", ".git", "empty", "pipe", "src"}));
        QCOMPARE(TestTree::entries(s(dst) + "/.git"), (QStringList{"HEAD", "objects"}));
        QCOMPARE(TestTree::contents(dst + "/.git/HEAD"), QByteArray("data of proj/.git/HEAD"));
        QVERIFY(QFileInfo(s(dst) + "/.git/objects").isDir());
        QCOMPARE(QFileInfo(s(dst) + "/src/loop").symLinkTarget(), s(dst) + "/src");
        QCOMPARE(size, Utils::folderSize(m_tree.path() + "/proj"));
        QVERIFY(!hasTemporaryLeftovers(s(dst)));
    }
    void oddNamesSurvive_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::newRow("not UTF-8") << QByteArray("r\xe9sum\xe9.txt");
        QTest::newRow("newline") << QByteArray("two\nlines.txt");
        QTest::newRow("255 bytes") << QByteArray(251, 'n') + ".txt";
        QTest::newRow("leading dash") << QByteArray("-rf");
    }
    void oddNamesSurvive()
    {
        QFETCH(QByteArray, name);
        const QByteArray base = "odd-" + QByteArray::number(qHash(name));
        const QByteArray folder = m_tree.folder(base);
        m_tree.folder(base + "/in");
        m_tree.folder(base + "/out");
        const QByteArray src = m_tree.file(base + "/in/" + name, "x");
        Error error;
        QVERIFY2(FileCopyHelper::copyItemsToAnotherDrive({s(src)}, s(folder + "/out"), nullptr, &error),
                 qPrintable(error.message));
        QCOMPARE(TestTree::contents(folder + "/out/" + name), QByteArray("x"));
        // A second time the name collides and gets a number, still in bytes.
        QVERIFY2(FileCopyHelper::copyItemsToAnotherDrive({s(src)}, s(folder + "/out"), nullptr, &error),
                 qPrintable(error.message));
        const QList<QByteArray> names = nativeEntries(folder + "/out");
        QCOMPARE(names.size(), 2);
        QVERIFY(names.contains(name));
        for (const QByteArray &n : names)
            QVERIFY(n.size() <= 255);
    }
    void freeNames_data()
    {
        QTest::addColumn<QByteArrayList>("existing");
        QTest::addColumn<QString>("source");
        QTest::addColumn<QString>("expected");
        QTest::newRow("free") << QByteArrayList{} << "Report.pdf" << "Report.pdf";
        QTest::newRow("file") << QByteArrayList{"Report.pdf"} << "Report.pdf" << "Report 1.pdf";
        QTest::newRow("file twice") << QByteArrayList{"Report.pdf", "Report 1.pdf"} << "Report.pdf" << "Report 2.pdf";
        QTest::newRow("folder") << QByteArrayList{"Photos/"} << "Photos" << "Photos 1";
        QTest::newRow("two dots") << QByteArrayList{"a.tar.gz"} << "a.tar.gz" << "a.tar 1.gz";
        QTest::newRow("dot file") << QByteArrayList{".profile"} << ".profile" << ".profile 1";
    }
    void freeNames()
    {
        QFETCH(QByteArrayList, existing);
        QFETCH(QString, source);
        QFETCH(QString, expected);
        TestTree dest;
        dest.make(existing);
        QCOMPARE(FileCopyHelper::destPathForDuplicatefile("/elsewhere/" + source, dest.path()), dest.path() + '/' + expected);
    }
    void selectionGivesCollidingNamesANumber()
    {
        m_tree.folder("sel-a");
        m_tree.folder("sel-b");
        m_tree.folder("sel-out");
        const QByteArray a = m_tree.file("sel-a/notes.txt", "A");
        const QByteArray b = m_tree.file("sel-b/notes.txt", "B");
        Error error;
        QVERIFY(FileCopyHelper::copyItemsToAnotherDrive({s(a), s(b)}, m_tree.path() + "/sel-out", nullptr, &error));
        QCOMPARE(TestTree::contents(m_tree.native() + "/sel-out/notes.txt"), QByteArray("A"));
        QCOMPARE(TestTree::contents(m_tree.native() + "/sel-out/notes 1.txt"), QByteArray("B"));
        QCOMPARE(m_platform.notifications.delivered.size(), 1);
        const auto &note = m_platform.notifications.delivered.first();
        QCOMPARE(note.title, QStringLiteral("2 files have been copied!"));
        QCOMPARE(note.body, QStringLiteral("to ..%1/../sel-out").arg(QFileInfo(QDir::tempPath()).fileName()));
        QCOMPARE(note.userInfo.value("filePaths").toStringList(),
                 (QStringList{m_tree.path() + "/sel-out/notes.txt", m_tree.path() + "/sel-out/notes 1.txt"}));
    }
    // A stop in the middle of a file leaves nothing of it; between files, what was done stays.
    void cancel_data()
    {
        rowsOf<bool>("midFile", {{"in the middle of a file", true}, {"between files", false}});
    }
    void cancel()
    {
        QFETCH(bool, midFile);
        const QByteArray in = m_tree.folder(midFile ? "cancel-in" : "between");
        const QString out = s(m_tree.folder(midFile ? "cancel-out" : "between-out"));
        const QByteArray one = m_tree.file(in.mid(m_tree.native().size() + 1) + "/one.txt", midFile ? QByteArray(40 << 20, 'b') : "1");
        const QByteArray two = m_tree.file(in.mid(m_tree.native().size() + 1) + "/two.txt", "2");
        int calls = 0;
        quint64 seenAtStop = 0;
        Error error;
        const bool ok = FileCopyHelper::copyItemsToAnotherDrive({s(one), s(two)}, out,
                                                                [&](quint64 copied, quint64, bool *stop, const QString &name) {
                                                                    if (midFile ? ++calls == 2 : name == QStringLiteral("two.txt")) {
                                                                        seenAtStop = copied;
                                                                        *stop = true;
                                                                    }
                                                                }, &error);
        QVERIFY(!ok);
        QCOMPARE(said(error), QStringLiteral("1001: File copyIsCanceledbyUser"));
        QCOMPARE(TestTree::entries(out), midFile ? QStringList() : QStringList{"one.txt"});
        if (midFile)
            QVERIFY(seenAtStop > 0 && seenAtStop < quint64(40 << 20));
        QCOMPARE(QFileInfo(s(one)).size(), qint64(midFile ? 40 << 20 : 1));
        QVERIFY(m_platform.notifications.delivered.isEmpty());
    }
    void progressIsCumulative()
    {
        m_tree.folder("cum");
        m_tree.folder("cum-out");
        const QByteArray a = m_tree.file("cum/a.bin", QByteArray(12 << 20, 'a'));
        const QByteArray b = m_tree.file("cum/b.bin", QByteArray(12 << 20, 'b'));
        quint64 last = 0, total = 0;
        bool monotonic = true;
        Error error;
        QVERIFY(FileCopyHelper::copyItemsToAnotherDrive({s(a), s(b)}, m_tree.path() + "/cum-out",
                                                        [&](quint64 copied, quint64 t, bool *, const QString &) {
                                                            monotonic = monotonic && copied >= last;
                                                            last = copied;
                                                            total = t;
                                                        }, &error));
        QVERIFY(monotonic);
        QCOMPARE(total, TestTree::allocated(a) + TestTree::allocated(b));
        QCOMPARE(last, quint64(24 << 20));
    }
    void diskFullInTheMiddleOfAFile()
    {
        ScratchMount disk("8m");
        REQUIRE_SCRATCH_MOUNT(disk);
        const QByteArray src = m_tree.file("fills.bin", QByteArray(5 << 20, 'f'));
        const QByteArray filler = disk.path().toUtf8() + "/filler";
        bool filled = false;
        Error error;
        // Another program takes the space while the copy runs.
        const bool ok = FileCopyHelper::copyItemsToAnotherDrive({s(src)}, disk.path(),
                                                                [&](quint64, quint64, bool *, const QString &) {
                                                                    if (filled)
                                                                        return;
                                                                    const int fd = ::open(filler.constData(), O_CREAT | O_WRONLY, 0600);
                                                                    filled = ::posix_fallocate(fd, 0, 6 << 20) == 0;
                                                                    ::close(fd);
                                                                }, &error);
        QVERIFY(filled);
        QVERIFY(!ok);
        QCOMPARE(said(error), said(1111, ENOSPC));
        QCOMPARE(TestTree::entries(disk.path()), QStringList{"filler"}); // nothing half-written, no temporary left
        QCOMPARE(QFileInfo(s(src)).size(), qint64(5 << 20));
    }
    void spaceTestIsStrict()
    {
        ScratchMount disk("4m");
        REQUIRE_SCRATCH_MOUNT(disk);
        struct statvfs fs;
        QVERIFY(::statvfs(disk.path().toUtf8().constData(), &fs) == 0);
        const quint64 free = quint64(fs.f_bavail) * fs.f_frsize;
        QVERIFY(!Utils::checkIfTheresEnoughSpaceForNumberOfBytes(free, disk.path()));
        QVERIFY(Utils::checkIfTheresEnoughSpaceForNumberOfBytes(free - 1, disk.path()));
        QVERIFY(!Utils::checkIfTheresEnoughSpaceForNumberOfBytes(0, m_tree.path() + "/no/such/folder"));

        const QByteArray src = m_tree.file("too-big.bin", QByteArray(5 << 20, 't'));
        Error error;
        QTest::ignoreMessage(QtWarningMsg, "NOT_ENOUGH_SPACE");
        QVERIFY(!FileCopyHelper::copyItemsToAnotherDrive({s(src)}, disk.path(), nullptr, &error));
        QCOMPARE(said(error), QStringLiteral("1002: Not enough space!"));
        QCOMPARE(TestTree::entries(disk.path()), QStringList());
    }
    void unreadableFileInsideAFolderStopsTheCopy()
    {
        if (geteuid() == 0)
            QSKIP("root reads every file; ctest runs this case again as an unprivileged user");
        m_tree.folder("locked-in");
        m_tree.file("locked-in/a-readable.txt", "r");
        const QByteArray secret = m_tree.file("locked-in/b-secret.txt", "s");
        QVERIFY(::chmod(secret.constData(), 0) == 0);
        Error error;
        m_tree.folder("locked-out");
        QVERIFY(!FileCopyHelper::copyItemsToAnotherDrive({m_tree.path() + "/locked-in"}, m_tree.path() + "/locked-out",
                                                         nullptr, &error));
        QCOMPARE(said(error), said(1111, EACCES));
        QCOMPARE(error.info.value("fileName").toString(), QStringLiteral("b-secret.txt"));
        QVERIFY(!hasTemporaryLeftovers(m_tree.path() + "/locked-out"));
        QCOMPARE(TestTree::contents(secret), QByteArray("<unreadable>"));
    }

private:
    TestTree m_tree;
    FakePlatform m_platform{QDir::tempPath() + QStringLiteral("/quaydrop-engine-trash")};
};

QTEST_GUILESS_MAIN(CopyEngineTest)
#include "tst_copyengine.moc"

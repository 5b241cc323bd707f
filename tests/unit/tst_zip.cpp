// Archives of real trees, read back with Python's zipfile and checked with `unzip -t`.

#include "ScratchMount.h"
#include "TestRows.h"
#include "TestSupport.h"
#include "TestTree.h"
#include "fileops/zip/Deflater.h"
#include "fileops/zip/ZipJob.h"
#include "platform/fake/FakePlatform.h"

#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTemporaryFile>
#include <QTest>

#include <optional>

#include <sys/stat.h>

namespace {

// One line per entry: hex of the name's bytes, the UTF-8 flag, the Unix mode (octal), the CRC check.
const char *kInspect = R"(
import sys, zipfile
z = zipfile.ZipFile(sys.argv[1])
bad = z.testzip()
for i in z.infolist():
    raw = i.filename.encode('utf-8' if i.flag_bits & 0x800 else 'cp437')
    data = z.read(i).hex() if i.file_size < 1000 else '-'
    print(raw.hex(), 1 if i.flag_bits & 0x800 else 0, oct(i.external_attr >> 16), 'bad' if bad else 'ok', data or '-')
)";

struct Listed
{
    QByteArray name;
    bool utf8Flag = false;
    quint32 mode = 0;
    QByteArray data; // of a small entry
};

QList<Listed> inspect(const QString &archive)
{
    QList<Listed> entries;
    for (const QByteArray &line : python(kInspect, {archive}).split('\n')) {
        const QList<QByteArray> f = line.split(' ');
        if (f.size() == 5 && f[3] == "ok")
            entries.append({QByteArray::fromHex(f[0]), f[1] == "1", f[2].mid(2).toUInt(nullptr, 8),
                            f[4] == "-" ? QByteArray() : QByteArray::fromHex(f[4])});
    }
    return entries;
}

bool unzipTestPasses(const QString &archive) { return runProgram(QStringLiteral("unzip"), {QStringLiteral("-tqq"), archive}).code == 0; }

QByteArray extracted(const QString &archive, const QByteArray &name)
{
    return python("import sys,zipfile; sys.stdout.buffer.write(zipfile.ZipFile(sys.argv[1]).read(bytes.fromhex(sys.argv[2]).decode()))",
                  {archive, QString::fromLatin1(name.toHex())});
}

// Runs a job to its end and answers its result.
// `prepare` runs before the start, so that nothing it connects misses a signal and a cancel is in time.
// An older archive in the way goes to `trash`; without one, to a trash the test never looks at.
Result<QString> zip(const QStringList &paths, std::function<void(ZipJob &)> prepare = {}, const QString &target = {},
                    TrashService *trash = nullptr)
{
    FakeTrash unused(QDir::tempPath() + QStringLiteral("/quaydrop-zip-test-trash"));
    ZipJob job(paths, trash ? trash : &unused, target);
    QSignalSpy finished(&job, &ZipJob::finished);
    if (prepare)
        prepare(job);
    job.start();
    if (!job.isFinished())
        finished.wait(60000);
    return job.result();
}

QString str(const QByteArray &native) { return NativePath::fromNative(native); }

QByteArray noise(qsizetype size, quint32 seed)
{
    QByteArray bytes(size, Qt::Uninitialized);
    QRandomGenerator(seed).fillRange(reinterpret_cast<quint32 *>(bytes.data()), size / 4);
    return bytes;
}

// Words that deflate to about half, as notes and logs do.
QByteArray text(qsizetype size, quint32 seed)
{
    static const QByteArrayList words{"quay", "drop", "harbour", "crane", "tide", "ledger", "manifest", "berth", "cargo"};
    QRandomGenerator rng(seed);
    QByteArray bytes;
    bytes.reserve(size + 16);
    while (bytes.size() < size)
        bytes += words.at(rng.bounded(int(words.size()))) + (rng.bounded(12) ? ' ' : '\n');
    bytes.truncate(size);
    return bytes;
}

// Inflated by Python's zlib, an inflater of its own; a marker when the bytes are not one whole raw stream.
QByteArray inflated(const QByteArray &deflated)
{
    QTemporaryFile file;
    if (!file.open() || file.write(deflated) != deflated.size() || !file.flush())
        return "<not written>";
    return python("import sys, zlib\nd = zlib.decompressobj(-15)\nout = d.decompress(open(sys.argv[1], 'rb').read())\n"
                  "sys.stdout.buffer.write(out if d.eof and not d.unused_data else b'<not one whole stream>')",
                  {file.fileName()});
}

} // namespace

class TestZip : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Stored stretches and deflated ones make one stream that inflates to the input.
    void deflater_data()
    {
        QTest::addColumn<QByteArray>("input");
        QTest::addColumn<qint64>("piece"); // fed in pieces of this size
        QTest::addColumn<double>("atMost"); // output size over input size
        QTest::newRow("empty") << QByteArray() << qint64(1) << 0.0;
        QTest::newRow("a few bytes") << QByteArray("abcabcabc") << qint64(100) << 2.0;
        QTest::newRow("text") << text(1 << 20, 1) << qint64(1 << 20) << 0.5;
        QTest::newRow("text in odd pieces") << text(1 << 20, 2) << qint64(10007) << 0.5;
        QTest::newRow("noise, stored") << noise(1 << 20, 3) << qint64(1 << 20) << 1.0002; // deflate at level 6 makes 1.0003
        QTest::newRow("noise and text runs") << noise(300000, 4) + text(600000, 5) + noise(300000, 6) + text(5000, 7)
                                              << qint64(65536) << 0.75;
        QTest::newRow("one byte value") << QByteArray(3 << 20, 'q') << qint64(1 << 20) << 0.01;
    }
    void deflater()
    {
        QFETCH(QByteArray, input);
        QFETCH(qint64, piece);
        QFETCH(double, atMost);
        Deflater deflater;
        QByteArray out;
        for (qint64 at = 0; at < input.size() || at == 0; at += piece) {
            const qint64 n = std::min<qint64>(piece, input.size() - at);
            QVERIFY(deflater.feed(input.constData() + at, n, at + n >= input.size(), out));
            if (input.isEmpty())
                break;
        }
        QCOMPARE(inflated(out), input);
        QVERIFY2(out.size() <= qsizetype(atMost * double(input.size())) + 16, qPrintable(QString::number(out.size())));
    }

    // What goes in, per case of the dropped items.
    void contents_data()
    {
        QTest::addColumn<QByteArrayList>("files"); // made below the tree; a name ending in '/' is a folder
        QTest::addColumn<QByteArrayList>("dropped");
        QTest::addColumn<QByteArrayList>("expected");
        QTest::addColumn<QString>("archive");
        QTest::newRow("dot files below the first level left out")
            << QByteArrayList{"Photos/", "Photos/a.jpg", "Photos/.DS_Store", "Photos/sub/", "Photos/sub/.hidden",
                              "Photos/sub/b.txt", "Photos/.git/", "Photos/.git/config", "Photos/empty/"}
            << QByteArrayList{"Photos"}
            << QByteArrayList{"Photos/", "Photos/a.jpg", "Photos/empty/", "Photos/sub/", "Photos/sub/b.txt"} << "Photos.zip";
        QTest::newRow("a single dot file is kept") << QByteArrayList{".env"} << QByteArrayList{".env"}
                                                   << QByteArrayList{".env"} << ".env.zip";
        QTest::newRow("two dots") << QByteArrayList{"a.b.txt"} << QByteArrayList{"a.b.txt"} << QByteArrayList{"a.b.txt"}
                                  << "a.b.zip";
        QTest::newRow("items from several folders")
            << QByteArrayList{"x/", "x/a.txt", "y/", "y/b.txt", "y/c/", "y/c/d.txt", "y/c/.e"}
            << QByteArrayList{"x/a.txt", "y/b.txt", "y/c"} << QByteArrayList{"a.txt", "b.txt", "c/", "c/d.txt"}
            << "x/QuaydropZip.zip";
        QTest::newRow("one name from two folders")
            << QByteArrayList{"x/", "x/a.txt", "y/", "y/a.txt"} << QByteArrayList{"x/a.txt", "y/a.txt"}
            << QByteArrayList{"a.txt", "a 1.txt"} << "x/QuaydropZip.zip";
        QTest::newRow("odd names")
            << QByteArrayList{"-rf", "a b", "new\nline", "*", "?", "[x]", "caf\xc3\xa9.txt", "bad\xff\xfe"}
            << QByteArrayList{"-rf", "a b", "new\nline", "*", "?", "[x]", "caf\xc3\xa9.txt", "bad\xff\xfe"}
            << QByteArrayList{"-rf", "a b", "new\nline", "*", "?", "[x]", "caf\xc3\xa9.txt", "bad\xff\xfe"}
            << "QuaydropZip.zip";
    }
    void contents()
    {
        QFETCH(QByteArrayList, files);
        QFETCH(QByteArrayList, dropped);
        QFETCH(QByteArrayList, expected);
        QFETCH(QString, archive);
        TestTree tree;
        tree.make(files);
        QStringList paths;
        for (const QByteArray &d : dropped)
            paths.append(str(tree.native() + '/' + d));
        const Result<QString> made = zip(paths);
        QVERIFY2(made.ok(), made.ok() ? "" : qPrintable(made.error().message));
        QCOMPARE(made.value(), tree.at(archive));
        QVERIFY(unzipTestPasses(made.value()));
        const QList<Listed> listed = inspect(made.value());
        QByteArrayList names;
        for (const Listed &e : listed) {
            names.append(e.name);
            bool ascii = true;
            for (char c : e.name)
                ascii = ascii && uchar(c) < 0x80;
            // The flag says UTF-8 for a name that is UTF-8 and not plain ASCII; other bytes stand as they are.
            QCOMPARE(e.utf8Flag, !ascii && QByteArrayView(e.name).isValidUtf8());
            if (!e.name.endsWith('/'))
                QVERIFY(e.data.startsWith("data of "));
        }
        QCOMPARE(names, expected);
        QVERIFY(!TestTree::entries(tree.path()).join(' ').contains(".quaydrop-"));
    }

    void linksAndModesSurvive()
    {
        TestTree tree;
        tree.folder("T");
        const QByteArray tool = tree.file("T/tool.sh", "#!/bin/sh\n");
        ::chmod(tool.constData(), 0750);
        tree.link("T/link", "tool.sh");
        tree.link("T/loop1", "loop2"); // a loop is two links like any others
        tree.link("T/loop2", "loop1");
        tree.file("T/empty");
        const Result<QString> made = zip({tree.path() + "/T"});
        QVERIFY(made.ok());
        QVERIFY(unzipTestPasses(made.value()));
        QHash<QByteArray, quint32> modes;
        for (const Listed &e : inspect(made.value()))
            modes.insert(e.name, e.mode);
        QCOMPARE(modes.value("T/tool.sh"), quint32(S_IFREG | 0750));
        QCOMPARE(modes.value("T/link") & S_IFMT, quint32(S_IFLNK));
        QCOMPARE(modes.value("T/loop1") & S_IFMT, quint32(S_IFLNK));
        QCOMPARE(modes.value("T/") & S_IFMT, quint32(S_IFDIR));
        QCOMPARE(extracted(made.value(), "T/link"), QByteArray("tool.sh"));
        QCOMPARE(extracted(made.value(), "T/empty"), QByteArray());
    }

    // The older archive goes to the trash only once the new one is complete; a failure, a cancel or a
    // full disk leaves it and removes the partial one.
    void olderArchive_data()
    {
        QTest::addColumn<QString>("how");
        QTest::addColumn<bool>("replaced");
        QTest::newRow("replaced, old one in the trash") << "ok" << true;
        QTest::newRow("trash refuses: a free name") << "no trash" << false;
        QTest::newRow("cancelled before it starts") << "cancel" << false;
        QTest::newRow("item vanished before the zip") << "missing" << false;
        QTest::newRow("the disk fills up") << "full" << false;
    }
    void olderArchive()
    {
        QFETCH(QString, how);
        QFETCH(bool, replaced);
        TestTree tree;
        std::optional<ScratchMount> disk;
        if (how == "full") {
            disk.emplace("2m");
            REQUIRE_SCRATCH_MOUNT(*disk);
        }
        const QString folder = disk ? disk->path() : tree.path(); // where the archive goes
        tree.folder("Photos");
        for (int i = 0; i < 200; ++i)
            tree.file("Photos/p" + QByteArray::number(i) + ".txt", QByteArray(20000, char('a' + i % 26)));
        if (how == "full") // noise does not shrink: 3 MB cannot fit on a disk of 2
            tree.file("Photos/noise.bin", noise(3 << 20, 7));
        const QString old = folder + "/Photos.zip";
        QVERIFY(writeFile(old, "the older archive"));
        FakeTrash trash(folder + "/trash");
        FakeTrash refusing(folder + "/trash");
        refusing.refuse = true;
        QString item = tree.path() + "/Photos";
        if (how == "missing")
            item += "-gone";
        const Result<QString> made = zip({item}, [&](ZipJob &job) {
            if (how == "cancel")
                job.cancel();
        }, old, how == "no trash" ? &refusing : &trash);
        if (how == "ok" || how == "no trash") {
            QVERIFY(made.ok());
            QCOMPARE(made.value(), replaced ? old : tree.path() + "/Photos 1.zip");
            QVERIFY(unzipTestPasses(made.value()));
            QCOMPARE(inspect(made.value()).size(), 201);
            QCOMPARE(TestTree::contents(tree.path() + "/trash/Photos.zip") == "the older archive", replaced);
        } else {
            QVERIFY(!made.ok());
            QCOMPARE(made.error().code, how == "cancel" ? ECANCELED : how == "full" ? ENOSPC : ENOENT);
        }
        if (!replaced)
            QCOMPARE(TestTree::contents(old), QByteArray("the older archive"));
        QVERIFY(!TestTree::entries(folder).join(' ').contains(".quaydrop-"));
    }

    void unreadableFileFailsNamingIt()
    {
        if (::geteuid() == 0)
            QSKIP("root reads every file; this case runs again as an unprivileged user");
        TestTree tree;
        tree.folder("F");
        tree.file("F/ok.txt", "fine");
        const QByteArray secret = tree.file("F/secret.txt", "hidden");
        ::chmod(secret.constData(), 0);
        const Result<QString> made = zip({tree.path() + "/F"});
        QVERIFY(!made.ok());
        QCOMPARE(made.error().info.value("path").toString(), tree.path() + "/F/secret.txt");
        QCOMPARE(TestTree::entries(tree.path()), QStringList{"F"});
    }

    // Trees of the shapes that take different paths through the job: many files packed by the
    // workers, a file larger than a worker holds, and nothing but a folder.
    void shapes_data()
    {
        QTest::addColumn<int>("small");      // files of a few KB, noise and text by turns
        QTest::addColumn<qsizetype>("big");  // one file of noise and text runs, 0: none
        QTest::addColumn<int>("entries");
        QTest::newRow("many small files") << 3000 << qsizetype(0) << 3000 + 11;
        QTest::newRow("one big file") << 0 << qsizetype((72 << 20) + 12345) << 2; // not whole pieces
        QTest::newRow("an empty folder") << 0 << qsizetype(0) << 1;
    }
    void shapes()
    {
        QFETCH(int, small);
        QFETCH(qsizetype, big);
        QFETCH(int, entries);
        TestTree tree;
        tree.folder("S");
        quint64 bytes = quint64(big), lastDone = 0;
        for (int i = 0; i < small; ++i) {
            const QByteArray folder = "S/d" + QByteArray::number(i % 10);
            if (i < 10)
                tree.folder(folder);
            const QByteArray data = i % 2 ? noise(2000 + i, i) : text(3000 + i, i);
            tree.file(folder + "/f" + QByteArray::number(i), data);
            bytes += quint64(data.size());
        }
        QByteArray bigData;
        for (quint32 run = 0; bigData.size() < big; ++run)
            bigData += run % 2 ? noise(3 << 20, run) : text(5 << 20, run);
        bigData.truncate(big);
        if (big)
            tree.file("S/big.bin", bigData);
        const Result<QString> made = zip({tree.path() + "/S"}, [&](ZipJob &job) {
            QObject::connect(&job, &ZipJob::progress, &job, [&](quint64 done) { lastDone = done; });
        });
        QVERIFY2(made.ok(), made.ok() ? "" : qPrintable(made.error().message));
        QCOMPARE(lastDone, bytes); // progress counts every byte
        QVERIFY(unzipTestPasses(made.value()));
        const QList<Listed> listed = inspect(made.value()); // every CRC checked
        QCOMPARE(listed.size(), entries);
        if (small)
            QCOMPARE(extracted(made.value(), "S/d7/f2997"), tree.contents(tree.native() + "/S/d7/f2997"));
        if (big)
            QCOMPARE(extracted(made.value(), "S/big.bin"), bigData);
    }

    // Stopped while a large file streams: a cancel, or a file that goes away before its turn. Either
    // way no archive and no partial file stay behind.
    void stoppedMidway_data() { rowsOf<bool>("cancel", {{"cancelled", true}, {"a file vanishes", false}}); }
    void stoppedMidway()
    {
        QFETCH(bool, cancel);
        TestTree tree;
        tree.folder("M");
        // Text deflates slowly enough that the job is still at the first file when its progress arrives.
        tree.file("M/a.log", text(96 << 20, 1));
        const QByteArray later = tree.file("M/b.log", text(40 << 20, 2));
        bool acted = false;
        quint64 doneWhenActed = 0;
        const Result<QString> made = zip({tree.path() + "/M"}, [&](ZipJob &job) {
            QObject::connect(&job, &ZipJob::progress, &job, [&](quint64 done, quint64, const QString &name) {
                if (acted || done == 0 || !name.endsWith(QLatin1String("a.log")))
                    return;
                acted = true;
                doneWhenActed = done;
                cancel ? job.cancel() : void(::unlink(later.constData()));
            });
        });
        QVERIFY(acted);
        QVERIFY(doneWhenActed < quint64(96 << 20));
        QVERIFY(!made.ok());
        if (cancel) {
            QCOMPARE(made.error().code, ECANCELED);
        } else {
            QCOMPARE(made.error().code, ENOENT);
            QCOMPARE(made.error().info.value("path").toString(), str(later));
        }
        QCOMPARE(TestTree::entries(tree.path()), QStringList{"M"});
    }

};

QTEST_GUILESS_MAIN(TestZip)
#include "tst_zip.moc"

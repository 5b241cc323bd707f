// New items, gathering, batch rename, the freedesktop trash and undo, on real files.

#include "ScratchMount.h"
#include "TestRows.h"
#include "TestSupport.h"
#include "TestTree.h"
#include "core/fs/PathParts.h"
#include "fileops/actions/BatchRename.h"
#include "fileops/actions/Gather.h"
#include "fileops/actions/NewItems.h"
#include "fileops/actions/TrashItems.h"
#include "fileops/actions/TrashJob.h"
#include "fileops/actions/UndoLog.h"
#include "platform/fake/FakePlatform.h"
#include "platform/freedesktop/FreedesktopTrash.h"

#include <QSignalSpy>
#include <QStandardPaths>
#include <QTest>

#include <sys/mount.h>
#include <sys/stat.h>

namespace {

QString str(const QByteArray &native) { return NativePath::fromNative(native); }

} // namespace

class FileActionsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }
    void init() { QFile::remove(UndoLog::storePath()); }

    void newItems_data()
    {
        QTest::addColumn<QByteArrayList>("existing");
        QTest::addColumn<QString>("word");
        QTest::addColumn<QString>("entered");
        QTest::addColumn<qint64>("inside");
        QTest::addColumn<QString>("expected"); // relative to the tree
        QTest::newRow("empty name: the default") << QByteArrayList{"d.txt"} << "folder" << "" << qint64(0) << "_NewFolder";
        QTest::newRow("the default again: with 1") << QByteArrayList{"d.txt", "_NewFolder/"} << "folder" << "" << qint64(0)
                                                    << "_NewFolder 1";
        QTest::newRow("a name of one's own") << QByteArrayList{"report.pdf"} << "txt" << "report" << qint64(0) << "report.txt";
        QTest::newRow("an extension typed gets another") << QByteArrayList{"x"} << "txt" << "a.txt" << qint64(0) << "a.txt.txt";
        QTest::newRow("inside asked, but the item is a file") << QByteArrayList{"f.txt"} << "rtf" << "" << qint64(1)
                                                              << "_NewTextFile.rtf";
        QTest::newRow("inside a dropped folder") << QByteArrayList{"box/"} << "docx" << "" << qint64(1)
                                                 << "box/_NewMSWordDocument.docx";
        QTest::newRow("inside state 2 is not inside") << QByteArrayList{"box/"} << "xlsx" << "" << qint64(2) << "_NewWorkbook.xlsx";
        QTest::newRow("a taken document name") << QByteArrayList{"x", "Plan.ods"} << "ods" << "Plan" << qint64(0) << "Plan 1.ods";
    }
    void newItems()
    {
        QFETCH(QByteArrayList, existing);
        QFETCH(QString, word);
        QFETCH(QString, entered);
        QFETCH(qint64, inside);
        QFETCH(QString, expected);
        TestTree tree;
        const QStringList made = tree.make(existing);
        const auto spec = NewItems::forWord(word);
        QVERIFY(spec);
        const Result<QString> created = NewItems::create(*spec, NewItems::folderFor(made.first(), inside), entered);
        QVERIFY2(created.ok(), created.ok() ? "" : qPrintable(created.error().message));
        QCOMPARE(created.value(), tree.path() + '/' + expected);
        QCOMPARE(QFileInfo(created.value()).isDir(), word == "folder");
        if (word == "txt")
            QCOMPARE(QFileInfo(created.value()).size(), 0);
        for (const QString &m : made) // nothing that was there is touched
            QVERIFY(QFileInfo(m).isDir() || TestTree::contents(m).startsWith("data of "));
    }
    void templatesOpenInTheirLibraries()
    {
        TestTree tree;
        const char *check = R"(
import sys, docx, openpyxl
from odf.opendocument import load
d = docx.Document(sys.argv[1]); assert len(d.paragraphs) == 1 and d.paragraphs[0].text == ''
w = openpyxl.load_workbook(sys.argv[2]); assert w.sheetnames == ['Sheet1'] and w.active.max_row == 1
assert load(sys.argv[3]).mimetype == 'application/vnd.oasis.opendocument.text'
assert load(sys.argv[4]).mimetype == 'application/vnd.oasis.opendocument.spreadsheet'
rtf = open(sys.argv[5], 'rb').read(); assert rtf.startswith(b'{\\rtf1') and rtf.rstrip().endswith(b'}')
print('ok')
)";
        QStringList made;
        for (const char *word : {"docx", "xlsx", "odt", "ods", "rtf"})
            made.append(NewItems::create(*NewItems::forWord(QString::fromLatin1(word)), tree.path(), QString()).valueOr(QString()));
        QCOMPARE(python(check, made).trimmed(), QByteArray("ok"));
    }
    void gather_data()
    {
        QTest::addColumn<QByteArrayList>("existing");
        QTest::addColumn<QByteArrayList>("dropped");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("folder");
        QTest::addColumn<QStringList>("inFolder");
        QTest::newRow("two files") << QByteArrayList{"a.txt", "b.txt"} << QByteArrayList{"a.txt", "b.txt"} << "Box" << "Box"
                                   << QStringList{"a.txt", "b.txt"};
        QTest::newRow("a folder goes whole, hidden files too")
            << QByteArrayList{"P/", "P/.git/", "P/.git/HEAD", "P/x", "y"} << QByteArrayList{"P", "y"} << "Box" << "Box"
            << QStringList{"P", "y"};
        QTest::newRow("an existing folder is not merged into")
            << QByteArrayList{"Box/", "Box/old", "a"} << QByteArrayList{"a"} << "Box" << "Box 1" << QStringList{"a"};
        QTest::newRow("two of one name from two folders")
            << QByteArrayList{"x/", "x/n.txt", "y/", "y/n.txt"} << QByteArrayList{"x/n.txt", "y/n.txt"} << "Both" << "x/Both"
            << QStringList{"n 1.txt", "n.txt"};
        QTest::newRow("a vanished item is passed over") << QByteArrayList{"a"} << QByteArrayList{"a", "gone"} << "Box" << "Box"
                                                       << QStringList{"a"};
    }
    void gather()
    {
        QFETCH(QByteArrayList, existing);
        QFETCH(QByteArrayList, dropped);
        QFETCH(QString, name);
        QFETCH(QString, folder);
        QFETCH(QStringList, inFolder);
        TestTree tree;
        tree.make(existing);
        QStringList paths;
        for (const QByteArray &d : dropped)
            paths.append(tree.path() + '/' + QString::fromUtf8(d));
        const Gather::Outcome out = Gather::moveSelectedFilesIntoFolder(paths, name);
        QCOMPARE(out.folder, tree.path() + '/' + folder);
        QCOMPARE(TestTree::entries(out.folder), inFolder);
        QCOMPARE(out.failures.size(), qsizetype(paths.size() - inFolder.size()));
        if (QFileInfo::exists(out.folder + "/P"))
            QCOMPARE(TestTree::entries(out.folder + "/P"), (QStringList{".git", "x"}));
        for (const QString &p : paths)
            QVERIFY2(!QFileInfo::exists(p), qPrintable(p)); // moved ones are gone from their place
    }
    void gatherAcrossDevicesTakesHiddenEntries()
    {
        ScratchMount other;
        REQUIRE_SCRATCH_MOUNT(other);
        TestTree tree;
        tree.file("first", "1");
        QVERIFY(QDir().mkpath(other.path() + "/F/.hidden") && writeFile(other.path() + "/F/.hidden/deep", "deep"));
        const Gather::Outcome out = Gather::moveSelectedFilesIntoFolder({tree.path() + "/first", other.path() + "/F"}, "All");
        QVERIFY(out.failures.isEmpty());
        QCOMPARE(TestTree::contents(out.folder + "/F/.hidden/deep"), QByteArray("deep"));
        QVERIFY(!QFileInfo::exists(other.path() + "/F")); // the source goes only once everything arrived
    }
    void rename_data()
    {
        QTest::addColumn<QByteArrayList>("existing");
        QTest::addColumn<QByteArrayList>("dropped");
        QTest::addColumn<QStringList>("namePrefixSuffix");
        QTest::addColumn<QStringList>("expected"); // new names in the first one's folder, in order
        QTest::newRow("one name for three") << QByteArrayList{"a.jpg", "b.jpg", "c.jpg"} << QByteArrayList{"a.jpg", "b.jpg", "c.jpg"}
                                            << QStringList{"Trip", "", ""} << QStringList{"Trip.jpg", "Trip 1.jpg", "Trip 2.jpg"};
        QTest::newRow("other extensions do not collide")
            << QByteArrayList{"a.jpg", "b.png"} << QByteArrayList{"a.jpg", "b.png"} << QStringList{"Trip", "", ""}
            << QStringList{"Trip.jpg", "Trip.png"};
        QTest::newRow("prefix only") << QByteArrayList{"a.txt"} << QByteArrayList{"a.txt"} << QStringList{"", "x", ""}
                                     << QStringList{"xa.txt"};
        QTest::newRow("suffix before the extension") << QByteArrayList{"a.txt"} << QByteArrayList{"a.txt"}
                                                     << QStringList{"", "", "_v2"} << QStringList{"a_v2.txt"};
        QTest::newRow("its present name: the number 1") << QByteArrayList{"a.txt"} << QByteArrayList{"a.txt"}
                                                       << QStringList{"a", "", ""} << QStringList{"a 1.txt"};
        QTest::newRow("a taken name is never overwritten") << QByteArrayList{"x.txt", "New.txt"} << QByteArrayList{"x.txt"}
                                                          << QStringList{"New", "", ""} << QStringList{"New 1.txt"};
        QTest::newRow("a folder is a base name") << QByteArrayList{"Photos/"} << QByteArrayList{"Photos"}
                                                 << QStringList{"", "2020 ", ""} << QStringList{"2020 Photos"};
        QTest::newRow("another folder's file comes along") << QByteArrayList{"a.txt", "sub/", "sub/b.txt"}
                                                           << QByteArrayList{"a.txt", "sub/b.txt"} << QStringList{"", "", "!"}
                                                           << QStringList{"a!.txt", "b!.txt"};
        QTest::newRow("a vanished file is passed over") << QByteArrayList{"a.txt"} << QByteArrayList{"gone.txt", "a.txt"}
                                                       << QStringList{"N", "", ""} << QStringList{"N.txt"};
        QTest::newRow("odd names") << QByteArrayList{"-x*", "new\nline?", "bad\xff[1].txt"}
                                   << QByteArrayList{"-x*", "new\nline?", "bad\xff[1].txt"} << QStringList{"", "[", ""}
                                   << QStringList{"[-x*", "[new\nline?", QString::fromUtf8("[bad") + QChar(0xDCFF) + "[1].txt"};
    }
    void rename()
    {
        QFETCH(QByteArrayList, existing);
        QFETCH(QByteArrayList, dropped);
        QFETCH(QStringList, namePrefixSuffix);
        QFETCH(QStringList, expected);
        TestTree tree;
        tree.make(existing);
        QStringList paths;
        for (const QByteArray &d : dropped)
            paths.append(str(tree.native() + '/' + d));
        const BatchRename::Request request{paths, PathParts::parent(paths.first()), namePrefixSuffix.at(0), namePrefixSuffix.at(1),
                                           namePrefixSuffix.at(2)};
        const auto preview = BatchRename::preview(request, 10);
        const BatchRename::Outcome out = BatchRename::run(request);
        QStringList inFolder; // all in the first one's folder
        for (const QString &name : expected)
            inFolder.append(request.folder + QLatin1Char('/') + name);
        QCOMPARE(out.renamed, inFolder);
        QCOMPARE(out.failures.size(), qsizetype(dropped.size() - expected.size()));
        for (qsizetype i = 0; i < out.renamed.size(); ++i) {
            const QByteArray was = NativePath::toNative(out.steps.at(i).was).mid(tree.native().size() + 1);
            QVERIFY(TestTree::contents(out.renamed.at(i)) == "data of " + was || QFileInfo(out.renamed.at(i)).isDir());
        }
        if (out.failures.isEmpty()) { // what the preview said is what happened
            QStringList previewed;
            for (const auto &row : preview)
                previewed.append(row.second);
            QCOMPARE(previewed, expected);
        }
        QVERIFY(TestTree::contents(tree.path() + "/New.txt") == "data of New.txt" || !QFileInfo::exists(tree.path() + "/New.txt"));
    }
    void renameOfManyToOneNameStaysInOrder()
    {
        TestTree tree;
        QStringList paths;
        for (int i = 0; i < 300; ++i)
            paths.append(str(tree.file("Trip " + QByteArray::number(300 - i) + ".jpg", QByteArray::number(i))));
        const BatchRename::Outcome out = BatchRename::run({paths, tree.path(), QStringLiteral("Trip"), {}, {}});
        QCOMPARE(out.renamed.size(), 300);
        // Each item takes the lowest free number at its turn, numbers given up by earlier items included.
        QCOMPARE(PathParts::lastComponent(out.renamed.first()), QStringLiteral("Trip.jpg"));
        QSet<QString> unique(out.renamed.begin(), out.renamed.end());
        QCOMPARE(unique.size(), 300);
        for (int i = 0; i < 300; ++i)
            QCOMPARE(TestTree::contents(out.renamed.at(i)), QByteArray::number(i));
    }
    void trashAndRestore_data()
    {
        rowsOf<bool>("onOtherVolume", {{"home trash", false}, {"a tmpfs volume: its own .Trash-uid", true}});
    }
    void trashAndRestore()
    {
        QFETCH(bool, onOtherVolume);
        ScratchMount volume;
        if (onOtherVolume)
            REQUIRE_SCRATCH_MOUNT(volume);
        // The home trash is on the home's file system: put the item there, below the test's own data folder.
        const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
        const QString base = onOtherVolume ? volume.path() : data + "/items";
        QDir().mkpath(base);
        const QString item = base + QStringLiteral("/caf\u00e9 %41.txt");
        QVERIFY(writeFile(item, "keep me"));
        FreedesktopTrash trash;
        const Result<QString> trashed = trash.moveToTrash(item);
        QVERIFY2(trashed.ok(), trashed.ok() ? "" : qPrintable(trashed.error().message));
        QVERIFY(!QFileInfo::exists(item));
        const QString trashDir = PathParts::parent(PathParts::parent(trashed.value()));
        QCOMPARE(trashDir, onOtherVolume ? volume.path() + "/.Trash-" + QString::number(::geteuid()) : data + "/Trash");
        const QByteArray info = TestTree::contents(trashDir + "/info/" + PathParts::lastComponent(trashed.value()) + ".trashinfo");
        QVERIFY(info.startsWith("[Trash Info]\nPath="));
        QVERIFY(info.contains(onOtherVolume ? "\nPath=caf%C3%A9%20%2541.txt\n" : "/items/caf%C3%A9%20%2541.txt\n"));
        QVERIFY(info.contains("DeletionDate="));
        // A second item of the same name gets a name of its own in the trash.
        QVERIFY(writeFile(item));
        const Result<QString> second = trash.moveToTrash(item);
        QVERIFY(second.ok());
        QVERIFY(second.value() != trashed.value());
        // Back only while the name is free.
        QVERIFY(writeFile(item));
        const Result<QString> blocked = trash.restore(trashed.value());
        QVERIFY(!blocked.ok());
        QCOMPARE(blocked.error().code, TrashService::kNameTaken);
        QVERIFY(QFile::remove(item));
        const Result<QString> back = trash.restore(trashed.value());
        QVERIFY(back.ok());
        QCOMPARE(back.value(), QFileInfo(item).canonicalFilePath().isEmpty() ? item : QFileInfo(item).canonicalFilePath());
        QCOMPARE(TestTree::contents(item), QByteArray("keep me"));
        QVERIFY(!QFileInfo::exists(trashDir + "/info/" + PathParts::lastComponent(trashed.value()) + ".trashinfo"));
        QVERIFY(!trash.moveToTrash(base + "/vanished").ok());
    }
    void volumeWithoutATrash()
    {
        ScratchMount volume;
        REQUIRE_SCRATCH_MOUNT(volume);
        QVERIFY(writeFile(volume.path() + "/stays"));
        QVERIFY(::mount(nullptr, volume.path().toUtf8().constData(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr) == 0);
        FreedesktopTrash trash;
        const TrashItems::Outcome out = TrashItems::trashFiles({volume.path() + "/stays"}, &trash, nullptr);
        QCOMPARE(out.noTrash, QStringList{volume.path() + "/stays"}); // asked about, never deleted unasked
        QVERIFY(out.trashed.isEmpty());
        QVERIFY(QFileInfo::exists(volume.path() + "/stays"));
    }
    void ejectOnlyAMountPoint()
    {
        TestTree tree;
        const QStringList made = tree.make({"STICK/", "inner/", "inner/STICK"});
        FakeVolumeService volumes;
        volumes.volumes = {{made.at(0), QStringLiteral("STICK"), {}, {}, true, true}};
        FakeTrash trash(tree.path() + "/.trash");
        // The mount point itself is ejected; a file that only shares the volume's name goes to the trash.
        const TrashItems::Outcome out = TrashItems::trashFiles({made.at(0) + '/', made.at(2)}, &trash, &volumes);
        QCOMPARE(out.ejected, QStringList{made.at(0)});
        QCOMPARE(out.trashed.size(), 1);
        QCOMPARE(out.trashed.first().was, made.at(2));
        QVERIFY(volumes.volumes.isEmpty());
    }
    // The Trash button's job on the pool: each item either in the trash with its step for undo or where
    // it was, progress in items, finished once; deleting for good only what it was given.
    void trashJob_data()
    {
        QTest::addColumn<QString>("how");
        QTest::addColumn<int>("count");
        QTest::newRow("many items") << "trash" << 2000;
        QTest::newRow("cancelled at once: nothing lost") << "cancel" << 2000;
        QTest::newRow("destroyed while running") << "destroy" << 2000;
        QTest::newRow("folders deleted for good") << "delete" << 20;
    }
    void trashJob()
    {
        QFETCH(QString, how);
        QFETCH(int, count);
        const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
        QDir(data + "/Trash").removeRecursively();
        const QString base = data + "/items-" + how;
        QDir(base).removeRecursively();
        QVERIFY(QDir().mkpath(base));
        QStringList paths;
        for (int i = 0; i < count; ++i) {
            const QString p = base + QStringLiteral("/item %1").arg(i);
            QVERIFY(how == "delete" ? QDir().mkpath(p + "/sub") && writeFile(p + "/sub/f") : writeFile(p));
            paths.append(p);
        }
        FreedesktopTrash trash;
        FakeVolumeService volumes;
        const auto work = how == "delete" ? TrashJob::Work::DeleteForGood : TrashJob::Work::Trash;
        auto *job = new TrashJob(paths, work, &trash, &volumes);
        QSignalSpy progress(job, &TrashJob::progress);
        QSignalSpy finished(job, &TrashJob::finished);
        job->start();
        if (how == "cancel")
            job->cancel();
        if (how == "destroy") {
            delete job; // cancels and waits for the item in hand
            int left = 0;
            for (const QString &p : paths)
                left += QFileInfo::exists(p) ? 1 : 0;
            QCOMPARE(left + int(QDir(data + "/Trash/files").entryList(QDir::Files).size()), count);
            return;
        }
        QVERIFY(finished.wait(60000));
        QVERIFY(!finished.wait(100));
        QCOMPARE(finished.size(), 1);
        QVERIFY(job->isFinished());
        const TrashItems::Outcome &out = job->outcome();
        QVERIFY(out.failures.isEmpty());
        if (how != "cancel") { // a cancel may come before the first item
            QVERIFY(!progress.isEmpty());
            QCOMPARE(progress.first().at(0).toInt(), 0);
            QCOMPARE(progress.first().at(1).toInt(), count);
        }
        if (how == "delete") {
            QCOMPARE(job->deleted(), paths);
            QVERIFY(QDir(base).isEmpty());
            QVERIFY(!QDir(data + "/Trash/files").exists() || QDir(data + "/Trash/files").isEmpty());
        } else {
            // In order, each one gone from its place and in the trash; the rest untouched.
            for (int i = 0; i < out.trashed.size(); ++i) {
                QCOMPARE(out.trashed.at(i).was, paths.at(i));
                QVERIFY(!QFileInfo::exists(paths.at(i)));
                QVERIFY(QFileInfo::exists(out.trashed.at(i).now));
            }
            for (int i = int(out.trashed.size()); i < count; ++i)
                QVERIFY(QFileInfo::exists(paths.at(i)));
            if (how == "trash")
                QCOMPARE(out.trashed.size(), count);
        }
        delete job;
    }
    void undo_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<bool>("takeAName");
        for (const char *kind : {"rename", "gather", "trash"}) {
            QTest::addRow("%s", kind) << kind << false;
            QTest::addRow("%s, a name taken meanwhile", kind) << kind << true;
        }
    }
    void undo()
    {
        QFETCH(QString, kind);
        QFETCH(bool, takeAName);
        TestTree tree;
        const QStringList items = tree.make({"a.txt", "b.txt", "F/", "F/.h"});
        FakeTrash trash(tree.path() + "/.trash");
        QString id;
        if (kind == "rename") {
            const auto out = BatchRename::run({items.mid(0, 3), tree.path(), "N", "", ""});
            id = UndoLog::record(kind, out.steps);
        } else if (kind == "gather") {
            const auto out = Gather::moveSelectedFilesIntoFolder(items.mid(0, 3), "Box");
            id = UndoLog::record(kind, out.steps, out.folder);
        } else {
            const auto out = TrashItems::trashFiles(items.mid(0, 3), &trash, nullptr);
            id = UndoLog::record(kind, out.trashed);
        }
        QVERIFY(!id.isEmpty());
        QVERIFY(!QFileInfo::exists(items.at(1)));
        if (takeAName)
            QVERIFY(writeFile(items.at(1), "someone else's"));
        const QStringList before = TestTree::entries(tree.path());
        const Result<QStringList> undone = UndoLog::undo(QString(), &trash); // the last one
        if (takeAName) {
            QVERIFY(!undone.ok());
            QCOMPARE(undone.error().code, int(UndoLog::Blocked));
            QVERIFY(undone.error().message.contains("b.txt"));
            QCOMPARE(TestTree::entries(tree.path()), before); // nothing changed
            QCOMPARE(TestTree::contents(items.at(1)), QByteArray("someone else's"));
            QVERIFY(UndoLog::find(id)); // still there for another try
            return;
        }
        QVERIFY2(undone.ok(), undone.ok() ? "" : qPrintable(undone.error().message));
        QCOMPARE(undone.value(), items.mid(0, 3));
        for (int i = 0; i < 2; ++i)
            QCOMPARE(TestTree::contents(items.at(i)), "data of " + NativePath::toNative(PathParts::lastComponent(items.at(i))));
        QVERIFY(QFileInfo::exists(items.at(2) + "/.h"));
        QVERIFY(!QFileInfo::exists(tree.path() + "/Box")); // the folder it made is gone again
        QVERIFY(!UndoLog::find(id));
        QCOMPARE(UndoLog::undo(QString(), &trash).error().code, int(UndoLog::NothingToUndo));
    }
};

QTEST_GUILESS_MAIN(FileActionsTest)
#include "tst_fileops_actions.moc"

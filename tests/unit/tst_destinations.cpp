#include "TestSupport.h"
#include "TestTree.h"
#include "ScratchMount.h"
#include "core/fs/FsCalls.h"
#include "core/fs/NativePath.h"
#include "core/plist/Plist.h"
#include "fileops/destinations/DestinationEdits.h"
#include "fileops/destinations/DestinationRows.h"
#include "fileops/destinations/DestinationsFile.h"
#include "fileops/destinations/SubfolderListing.h"
#include "platform/fake/FakePlatform.h"
#include "platform/linux/LinuxVolumeService.h"
#include "platform/linux/MountTable.h"
#include "utils/Utils.h"

#include <QtTest>

namespace {
QStringList g_warnings;
void collectWarnings(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type == QtWarningMsg)
        g_warnings.append(message);
}
// The standard folders that are there, as the picker shows them on first use.
QStringList existingStandardFolders()
{
    QStringList existing;
    for (const QString &f : Utils::defFileMoveDestPaths(true))
        if (QFileInfo(f).isDir())
            existing.append(f);
    return existing;
}
// One field ("destPname" or "destPath") of each entry of the stored list, in order.
QStringList stored(const char *field)
{
    QStringList values;
    for (const QVariant &entry : Plist::readFile(Utils::moveCopyPathsPlistPath()).value().toList())
        values.append(entry.toMap().value(QLatin1String(field)).toString());
    return values;
}
} // namespace

class DestinationsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        m_home = QDir::homePath();
        // The XDG user folders of this test's home (Documents comes from the password database).
        for (const char *f : {"Desktop", "Videos", "Music", "Pictures", "Downloads"})
            QDir(m_home).mkpath(QString::fromLatin1(f));
    }
    void init()
    {
        QFile::remove(Utils::moveCopyPathsPlistPath());
        QFile::remove(Utils::pathForRecentDestnsPlist());
        m_tree = std::make_unique<TestTree>();
        m_platform = std::make_unique<FakePlatform>(m_tree->path() + "/Trash");
        Platform::install(m_platform->services());
    }
    void firstUseShowsTheStandardFolders()
    {
        QCOMPARE(Utils::defFileMoveDestPaths(true).at(1), m_home + "/Documents"); // $HOME's, not the password file's
        const QStringList existing = existingStandardFolders();
        QCOMPARE(Utils::createMoveDestArr(), existing);
        QCOMPARE(stored("destPath"), existing);
        QCOMPARE(stored("destPname").first(), QStringLiteral("Desktop"));
    }
    // An older plain list becomes named entries; a renamed destination keeps its name, a folder that is gone is dropped.
    void storedForms()
    {
        const QString a = m_tree->path();
        QVERIFY(Plist::writeFileAtomically(Utils::moveCopyPathsPlistPath(), QVariantList{a, m_home + "/Music"}).ok());
        QCOMPARE(Utils::movePathsFromPlistOfDics(), (QStringList{a, m_home + "/Music"}));
        QCOMPARE(stored("destPname"), (QStringList{QFileInfo(a).fileName(), "Music"}));
        const QString work = QString::fromUtf8(m_tree->folder("work"));
        const QString gone = m_tree->path() + "/gone";
        QVERIFY(Plist::writeFileAtomically(Utils::moveCopyPathsPlistPath(),
                                           QVariantList{QVariantMap{{"destPname", "My work"}, {"destPath", work}}})
                    .ok());
        Utils::updateMoveCopyPaths({work, gone, m_home + "/Music"});
        QCOMPARE(stored("destPname"), (QStringList{"My work", "Music"})); // a folder that is gone is dropped
    }
    void recentKeepsThreeAndSkipsStandardFolders()
    {
        // A fresh file is an empty dictionary, read as no recents.
        QCOMPARE(Utils::recentDestinations(), QStringList());
        const QStringList folders = m_tree->make({"r1/", "r2/", "r3/", "r4/"});
        for (const QString &f : folders)
            Utils::updateRecentDestnsPlistWithPath(f);
        QCOMPARE(Utils::recentDestinations(), folders.mid(1));
        Utils::updateRecentDestnsPlistWithPath(folders.at(3)); // already there: nothing changes
        QCOMPARE(Utils::recentDestinations(), folders.mid(1));

        Utils::updateRecentDestnsPlistWithPath(m_home + "/Music");
        QVERIFY(!Utils::recentDestinations().contains(m_home + "/Music"));
        QDir(m_home).mkpath("Music/Albums");
        Utils::updateRecentDestnsPlistWithPath(m_home + "/Music/Albums");
        QVERIFY(Utils::recentDestinations().contains(m_home + "/Music/Albums"));
    }
    // Removable media come first and are not stored; a volume is known by its name, a network share is not one.
    void removableMediaAndVolumes()
    {
        const QString stick = QStringLiteral("/media/%1/STICK").arg(QString::fromLocal8Bit(qgetenv("USER")));
        m_platform->volumes.plugIn({stick, "STICK", "/dev/sdz1", "usb", true, true, false, true});
        const QStringList withStick = Utils::createMoveDestArr();
        QCOMPARE(withStick.first(), stick);
        QVERIFY(!Utils::movePathsFromPlistOfDics().contains(stick));
        QVERIFY(m_platform->volumes.eject(stick).ok());
        QVERIFY(!Utils::createMoveDestArr().contains(stick));
        m_platform->volumes.plugIn({"/media/u/Backup", "Backup", "/dev/sdy1", "usb", true, true, false, true});
        m_platform->volumes.plugIn({"/mnt/share", "share", "server:/share", QString(), false, false, true, false});
        QVERIFY(Utils::checkIfPathIsAVolume("/media/u/Backup"));
        QVERIFY(Utils::checkIfPathIsAVolume("/home/u/old/Backup")); // the name alone decides
        QVERIFY(!Utils::checkIfPathIsAVolume("/mnt/share"));         // an internal network share is passed over
        QCOMPARE(Utils::getListOfEjectableMediaPathsOnly(), QStringList{"/media/u/Backup"});
    }
    void mountTableParsing()
    {
        const QByteArray sample =
            "22 1 8:1 / / rw,relatime shared:1 - ext4 /dev/sda1 rw\n"
            "40 22 0:5 / /proc rw shared:2 - proc proc rw\n"
            "61 22 8:17 / /media/u/My\\040Stick rw,nosuid master:9 - vfat /dev/sdb1 rw,uid=1000\n"
            "62 22 0:50 / /mnt/nas rw shared:30 - nfs4 nas:/export rw\n"
            "63 22 0:51 / /tmp rw - tmpfs tmpfs rw\n"
            "garbage line\n";
        const QList<MountEntry> m = MountTable::parse(sample);
        QCOMPARE(m.size(), 5);
        QCOMPARE(m.at(2).mountPoint, QByteArray("/media/u/My Stick"));
        QCOMPARE(m.at(2).fsType, QByteArray("vfat"));
        QCOMPARE(m.at(3).source, QByteArray("nas:/export"));
        QList<bool> visible;
        for (const MountEntry &e : m)
            visible.append(MountTable::isUserVisible(e));
        QCOMPARE(visible, (QList<bool>{true, false, true, true, false}));
    }
    void mountChangesAreSignalled()
    {
        LinuxVolumeService service;
        QSignalSpy changed(&service, &VolumeService::mountsChanged);
        QVERIFY(!changed.wait(300)); // quiet while nothing changes
        {
            ScratchMount mount("1m");
            REQUIRE_SCRATCH_MOUNT(mount);
            QVERIFY(changed.wait(3000));
        }
        changed.clear();
        QVERIFY(changed.wait(3000)); // and again when it goes
    }
    void damagedListsAreReadAsEmptyAndLeftAlone_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<int>("lines"); // logged: the recent list's own form, a dictionary, is no damage
        const QByteArray head = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">\n";
        QTest::newRow("garbage") << QByteArray("\x89PNG\r\n\x1a\n not a list at all") << 2;
        QTest::newRow("truncated") << head + "<array>\n<dict><key>destPath</key><string>/tm" << 2;
        QTest::newRow("wrong type") << head + "<dict><key>destPath</key><string>/tmp</string></dict></plist>" << 1;
        QTest::newRow("entries of the wrong kind") << head + "<array><integer>7</integer></array></plist>" << 2;
        QTest::newRow("bytes that are not UTF-8") << head + "<array><string>/tmp/caf\xe9</string></array></plist>" << 2;
    }
    void damagedListsAreReadAsEmptyAndLeftAlone()
    {
        QFETCH(QByteArray, content);
        QFETCH(int, lines);
        const QStringList standard = existingStandardFolders();
        for (const QString &file : {Utils::moveCopyPathsPlistPath(), Utils::pathForRecentDestnsPlist()})
            QVERIFY(writeFile(file, content));
        g_warnings.clear();
        const QtMessageHandler previous = qInstallMessageHandler(collectWarnings);
        const QStringList rows = Utils::createMoveDestArr();
        const QStringList recent = Utils::recentDestinations();
        qInstallMessageHandler(previous);
        QCOMPARE(rows, standard); // the picker still opens, with the standard folders
        QCOMPARE(recent, QStringList());
        QCOMPARE(g_warnings.size(), lines); // one line per damaged file
        QVERIFY(g_warnings.first().contains(QStringLiteral("pathsToMove.plist is damaged")));
        QCOMPARE(TestTree::contents(Utils::moveCopyPathsPlistPath()), content);
        QCOMPARE(TestTree::contents(Utils::pathForRecentDestnsPlist()), content);

        // The user's first change writes a sound list: the new folder, then what was shown.
        const QString added = QString::fromUtf8(m_tree->folder("added"));
        QVERIFY(DestinationEdits::add(added, rows).ok());
        QCOMPARE(Utils::createMoveDestArr(), QStringList{added} + standard);
    }
    void namesThatAreNotUtf8KeepTheirBytes()
    {
        const QByteArray bytes = m_tree->folder("caf\xe9");
        const QString path = NativePath::fromNative(bytes);
        const Status added = DestinationEdits::add(path);
        QVERIFY2(added.ok(), qPrintable(added.ok() ? QString() : added.error().message));
        QVERIFY(TestTree::contents(Utils::moveCopyPathsPlistPath()).contains("<data>"));
        QCOMPARE(DestinationsFile::readPaths().entries.first().path, path);
        QCOMPARE(NativePath::toNative(Utils::createMoveDestArr().first()), bytes);
        Utils::updateRecentDestnsPlistWithPath(path);
        QCOMPARE(Utils::recentDestinations(), QStringList{path});
    }
    void aFailedWriteLeavesTheOldList()
    {
        const QStringList made = m_tree->make({"kept/", "later/"});
        const QString kept = made.first(), later = made.last();
        ScratchMount full("64k", Utils::QDappSupportPath());
        REQUIRE_SCRATCH_MOUNT(full);
        QVERIFY(DestinationEdits::add(kept).ok());
        const QByteArray before = TestTree::contents(Utils::moveCopyPathsPlistPath());
        // Every last byte taken.
        FsCalls::UniqueFd filler(::open((full.path() + QStringLiteral("/filler")).toUtf8().constData(), O_WRONLY | O_CREAT, 0644));
        while (::write(filler.fd, "x", 1) > 0) {
        }
        const Status s = DestinationEdits::add(later);
        QVERIFY(!s.ok());
        QVERIFY2(s.error().message.contains(QStringLiteral("No space left")), qPrintable(s.error().message));
        QCOMPARE(TestTree::contents(Utils::moveCopyPathsPlistPath()), before);
    }
    void editsAreWrittenAndReadBack()
    {
        const QString work = QString::fromUtf8(m_tree->folder("work"));
        const QString gone = QString::fromUtf8(m_tree->folder("gone"));
        Utils::createMoveDestArr();
        QVERIFY(DestinationEdits::add(gone).ok());
        QVERIFY(QDir(gone).removeRecursively());
        QVERIFY(DestinationEdits::add(work).ok());
        QCOMPARE(Utils::movePathsFromPlistOfDics().first(), work);
        QVERIFY(!Utils::movePathsFromPlistOfDics().contains(gone)); // a folder that is gone leaves on the next add
        QCOMPARE(DestinationEdits::add(work + "/").error().code, int(DestinationEdits::AlreadyADestination));
        QCOMPARE(DestinationEdits::add(m_tree->path() + "/none").error().code, int(DestinationEdits::NoSuchFolder));
        QCOMPARE(DestinationEdits::add("/media/u/STICK", {"/media/u/STICK"}).error().code, int(DestinationEdits::NoSuchFolder));

        QVERIFY(DestinationEdits::rename(work, QStringLiteral("  Quay work ")).ok());
        QCOMPARE(DestinationEdits::destNameForDestPath(work), QStringLiteral("Quay work"));
        QVERIFY(DestinationEdits::rename(work, QString()).ok());
        QCOMPARE(DestinationEdits::destNameForDestPath(work), QStringLiteral("work"));
        QCOMPARE(DestinationEdits::rename(gone, QStringLiteral("x")).error().code, int(DestinationEdits::NotADestination));

        // Removing every destination brings the standard folders back.
        for (const QString &p : Utils::movePathsFromPlistOfDics())
            QVERIFY(DestinationEdits::remove(p).ok());
        QCOMPARE(DestinationEdits::remove(work).error().code, int(DestinationEdits::NotADestination));
        QVERIFY(Utils::createMoveDestArr().contains(m_home + "/Desktop"));
    }
    void reorderKeepsThePlacesOfUnmountedVolumes()
    {
        const QStringList made = m_tree->make({"a/", "b/", "c/"});
        const QString a = made.at(0), b = made.at(1), c = made.at(2);
        const QString away = QStringLiteral("/media/%1/AWAY").arg(QString::fromLocal8Bit(qgetenv("USER")));
        QVERIFY(DestinationsFile::writePaths({{"a", a}, {"AWAY", away}, {"b", b}, {"c", c}}).ok());
        // Another stick is mounted meanwhile: its row is shown, the stored one is not.
        const QString stick = QStringLiteral("/media/%1/STICK").arg(QString::fromLocal8Bit(qgetenv("USER")));
        m_platform->volumes.plugIn({stick, "STICK", "/dev/sdz1", "usb", true, true, false, true});
        const QStringList rows = Utils::createMoveDestArr();
        QCOMPARE(rows, (QStringList{stick, a, b, c}));
        QVERIFY(DestinationEdits::reorder(DestinationEdits::performDragReorder(rows, 3, 1)).ok());
        QCOMPARE(Utils::movePathsFromPlistOfDics(), (QStringList{stick, away, c, a, b}));
    }
    void dragReorder_data()
    {
        QTest::addColumn<int>("source");
        QTest::addColumn<int>("target");
        QTest::addColumn<QStringList>("result");
        QTest::newRow("down") << 0 << 2 << QStringList{"b", "a", "c"};
        QTest::newRow("to the end") << 0 << 3 << QStringList{"b", "c", "a"};
        QTest::newRow("up") << 2 << 0 << QStringList{"c", "a", "b"};
        QTest::newRow("onto its own place") << 1 << 1 << QStringList{"a", "b", "c"};
        QTest::newRow("onto the gap below it") << 1 << 2 << QStringList{"a", "b", "c"};
    }
    void dragReorder()
    {
        QFETCH(int, source);
        QFETCH(int, target);
        QFETCH(QStringList, result);
        QCOMPARE(DestinationEdits::performDragReorder({"a", "b", "c"}, source, target), result);
        QCOMPARE(DestinationEdits::isRealMove(source, target), result != QStringList({"a", "b", "c"}));
    }
    void rowRules_data()
    {
        QTest::addColumn<QString>("row");
        QTest::addColumn<QString>("dropped");
        QTest::addColumn<bool>("inactive");
        QTest::addColumn<bool>("buttonHidden");
        QTest::newRow("the dropped folder") << "/t/a/item" << "/t/a/item" << true << true;
        QTest::newRow("inside it") << "/t/a/item/sub" << "/t/a/item" << true << true;
        QTest::newRow("its own folder") << "/t/a" << "/t/a/item" << true << false;
        QTest::newRow("a name that only begins alike") << "/t/a/items" << "/t/a/item" << false << false;
        QTest::newRow("elsewhere") << "/t/b" << "/t/a/item" << false << false;
        QTest::newRow("nothing dropped") << "/t/a" << "" << false << false;
    }
    void rowRules()
    {
        QFETCH(QString, row);
        QFETCH(QString, dropped);
        QFETCH(bool, inactive);
        QFETCH(bool, buttonHidden);
        const DestinationRow r = DestinationRows::rowsFor({row}, {}, dropped).first();
        QCOMPARE(r.inactive, inactive);
        QCOMPARE(r.buttonHidden, buttonHidden);

        // Kinds and names, the same for every drop.
        const QString work = QString::fromUtf8(m_tree->folder("work"));
        QVERIFY(DestinationEdits::add(work).ok());
        QVERIFY(DestinationEdits::rename(work, QStringLiteral("Quay")).ok());
        const QList<DestinationRow> rows = DestinationRows::rowsFor({work, m_home + "/Music", "/mnt/nas"}, {m_home + "/Music"}, dropped);
        QCOMPARE(rows.at(0).name, QStringLiteral("Quay"));
        QVERIFY(rows.at(0).stored);
        QCOMPARE(rows.at(0).kind, DestinationRow::Kind::UserFolder);
        QCOMPARE(rows.at(1).kind, DestinationRow::Kind::StandardFolder);
        QCOMPARE(rows.at(2).kind, DestinationRow::Kind::Volume);
        QVERIFY(!rows.at(2).stored);
    }
    void subfoldersOneLevel()
    {
        for (const char *f : {"top", "top/b", "top/A", "top/c10", "top/c9", "top/c9/deeper", "top/.hidden", "elsewhere"})
            m_tree->folder(f);
        m_tree->file("top/file.txt", "x");
        m_tree->link("top/link", m_tree->path().toUtf8() + "/elsewhere");
        const QString top = m_tree->path() + "/top";
        const QStringList sorted = *SubfolderListing::subfoldersForParentFolderAtPathOneLevel(top);
        QCOMPARE(sorted, (QStringList{top + "/A", top + "/b", top + "/c9", top + "/c10", m_tree->path() + "/elsewhere"}));
        QStringList listed = *SubfolderListing::subfoldersForParentFolderAtPathOneLevel(top, {}, SubfolderListing::Order::AsListed);
        std::sort(listed.begin(), listed.end());
        QStringList expected = sorted;
        std::sort(expected.begin(), expected.end());
        QCOMPARE(listed, expected);
        const auto nodes = *SubfolderListing::createDicsForPaths(top, {});
        QCOMPARE(nodes.at(2).path, top + "/c9");
        QVERIFY(nodes.at(2).isExpndble);
        QVERIFY(!nodes.at(0).isExpndble);
        // A newer fetch ends this one between entries.
        int asked = 0;
        QVERIFY(!SubfolderListing::subfoldersForParentFolderAtPathOneLevel(top, [&] { return ++asked > 2; }));
        QCOMPARE(SubfolderListing::subfoldersForParentFolderAtPathOneLevel(m_tree->path() + "/none"), QStringList());
    }

private:
    QString m_home;
    std::unique_ptr<FakePlatform> m_platform;
    std::unique_ptr<TestTree> m_tree;
};

QTEST_GUILESS_MAIN(DestinationsTest)
#include "tst_destinations.moc"

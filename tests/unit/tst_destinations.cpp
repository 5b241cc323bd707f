#include "TestTree.h"
#include "ScratchMount.h"
#include "core/plist/Plist.h"
#include "platform/fake/FakePlatform.h"
#include "platform/linux/LinuxVolumeService.h"
#include "platform/linux/MountTable.h"
#include "utils/Utils.h"

#include <QtTest>

class DestinationsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void firstUseShowsTheStandardFolders();
    void olderPlainListIsConverted();
    void renamedDestinationKeepsItsName();
    void recentKeepsThreeAndSkipsStandardFolders();
    void removableMediaComeFirstAndAreNotStored();
    void volumeNameTests();
    void mountTableParsing();
    void mountChangesAreSignalled();

private:
    QString m_home;
    std::unique_ptr<FakePlatform> m_platform;
    std::unique_ptr<TestTree> m_tree;
};

void DestinationsTest::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    m_home = QDir::homePath();
    // The XDG user folders of this test's home (Documents comes from the password database).
    for (const char *f : {"Desktop", "Videos", "Music", "Pictures", "Downloads"})
        QDir(m_home).mkpath(QString::fromLatin1(f));
}

void DestinationsTest::init()
{
    QFile::remove(Utils::moveCopyPathsPlistPath());
    QFile::remove(Utils::pathForRecentDestnsPlist());
    m_tree = std::make_unique<TestTree>();
    m_platform = std::make_unique<FakePlatform>(m_tree->path() + "/Trash");
    Platform::install(m_platform->services());
}

void DestinationsTest::firstUseShowsTheStandardFolders()
{
    const QStringList six = Utils::defFileMoveDestPaths(true);
    QCOMPARE(six.size(), 6);
    QCOMPARE(six.at(0), m_home + "/Desktop");
    QCOMPARE(six.at(1), m_home + "/Documents"); // $HOME's, not the password file's
    QCOMPARE(six.mid(2), (QStringList{m_home + "/Videos", m_home + "/Music", m_home + "/Pictures", m_home + "/Downloads"}));

    QStringList existing;
    for (const QString &f : six)
        if (QFileInfo(f).isDir())
            existing.append(f);
    QCOMPARE(Utils::createMoveDestArr(), existing);
    const QVariantList stored = Plist::readFile(Utils::moveCopyPathsPlistPath()).value().toList();
    QCOMPARE(stored.size(), existing.size());
    QCOMPARE(stored.first().toMap().value("destPname").toString(), QStringLiteral("Desktop"));
    QCOMPARE(stored.first().toMap().value("destPath").toString(), m_home + "/Desktop");
}

void DestinationsTest::olderPlainListIsConverted()
{
    const QString a = m_tree->path();
    QVERIFY(Plist::writeFileAtomically(Utils::moveCopyPathsPlistPath(), QVariantList{a, m_home + "/Music"}).ok());
    QCOMPARE(Utils::movePathsFromPlistOfDics(), (QStringList{a, m_home + "/Music"}));
    const QVariantList stored = Plist::readFile(Utils::moveCopyPathsPlistPath()).value().toList();
    QCOMPARE(stored.at(0).toMap().value("destPname").toString(), QFileInfo(a).fileName());
    QCOMPARE(stored.at(1).toMap().value("destPath").toString(), m_home + "/Music");
}

void DestinationsTest::renamedDestinationKeepsItsName()
{
    const QString work = QString::fromUtf8(m_tree->folder("work"));
    const QString gone = m_tree->path() + "/gone";
    QVERIFY(Plist::writeFileAtomically(Utils::moveCopyPathsPlistPath(),
                                       QVariantList{QVariantMap{{"destPname", "My work"}, {"destPath", work}}})
                .ok());
    Utils::updateMoveCopyPaths({work, gone, m_home + "/Music"});
    const QVariantList stored = Plist::readFile(Utils::moveCopyPathsPlistPath()).value().toList();
    QCOMPARE(stored.size(), 2); // a folder that is gone is dropped
    QCOMPARE(stored.at(0).toMap().value("destPname").toString(), QStringLiteral("My work"));
    QCOMPARE(stored.at(1).toMap().value("destPname").toString(), QStringLiteral("Music"));
}

void DestinationsTest::recentKeepsThreeAndSkipsStandardFolders()
{
    // A fresh file is an empty dictionary, read as no recents.
    QCOMPARE(Utils::recentDestinations(), QStringList());
    QStringList folders;
    for (const char *n : {"r1", "r2", "r3", "r4"})
        folders.append(QString::fromUtf8(m_tree->folder(n)));
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

void DestinationsTest::removableMediaComeFirstAndAreNotStored()
{
    const QString stick = QStringLiteral("/media/%1/STICK").arg(QString::fromLocal8Bit(qgetenv("USER")));
    m_platform->volumes.plugIn({stick, "STICK", "/dev/sdz1", "usb", true, true, false, true});
    const QStringList withStick = Utils::createMoveDestArr();
    QCOMPARE(withStick.first(), stick);
    QVERIFY(!Utils::movePathsFromPlistOfDics().contains(stick));
    QVERIFY(m_platform->volumes.eject(stick).ok());
    QVERIFY(!Utils::createMoveDestArr().contains(stick));
}

void DestinationsTest::volumeNameTests()
{
    m_platform->volumes.plugIn({"/media/u/Backup", "Backup", "/dev/sdy1", "usb", true, true, false, true});
    m_platform->volumes.plugIn({"/mnt/share", "share", "server:/share", QString(), false, false, true, false});
    QVERIFY(Utils::checkIfPathIsAVolume("/media/u/Backup"));
    QVERIFY(Utils::checkIfPathIsAVolume("/home/u/old/Backup")); // the name alone decides
    QVERIFY(!Utils::checkIfPathIsAVolume("/mnt/share"));         // an internal network share is passed over
    QVERIFY(Utils::checkIfVolumeIsRemovable("/mnt/share"));
    QCOMPARE(Utils::getListOfEjectableMediaPathsOnly(), QStringList{"/media/u/Backup"});
    QCOMPARE(Utils::getListOfEjectableMediaPathsAndNames().value("volName").toString(), QStringLiteral("Backup"));
}

void DestinationsTest::mountTableParsing()
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

void DestinationsTest::mountChangesAreSignalled()
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

QTEST_GUILESS_MAIN(DestinationsTest)
#include "tst_destinations.moc"

// Who a window belongs to and what the user keeps out: desktop files matched to window classes, the
// exclusion list's file, and the hot key as an X11 grab.

#include "UnitSupport.h"
#include "core/plist/Plist.h"
#include "platform/freedesktop/DesktopEntries.h"
#include "platform/x11/X11HotKeyBinder.h"
#include "utils/Utils.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

class DesktopTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        const QString apps = m_dir.path() + QStringLiteral("/apps");
        writeEntry(apps, QStringLiteral("org.gnome.Nautilus.desktop"),
                   QStringLiteral("Name=Files\nName[de]=Dateien\nIcon=org.gnome.Nautilus\nExec=nautilus --new-window %U\n"
                                  "StartupWMClass=org.gnome.Nautilus\n"));
        writeEntry(apps, QStringLiteral("gimp.desktop"), QStringLiteral("Name=GNU Image Manipulation Program\nExec=gimp-2.10 %U\n"));
        writeEntry(apps, QStringLiteral("org.kde.krita.desktop"), QStringLiteral("Name=Krita\nExec=krita %F\n"));
        writeEntry(apps, QStringLiteral("kde4/kate.desktop"), QStringLiteral("Name=Kate\nExec=env FOO=1 \"/usr/bin/kate\" -b %U\n"));
        writeEntry(apps, QStringLiteral("helper.desktop"), QStringLiteral("Name=Helper\nExec=helper\nNoDisplay=true\n"));
    }
    void cleanup()
    {
        QFile::remove(Utils::QDappSupportPath() + QStringLiteral("/exclAppList.plist"));
    }
    void windowToApplication_data()
    {
        QTest::addColumn<QString>("instance");
        QTest::addColumn<QString>("wmClass");
        QTest::addColumn<QString>("program");
        QTest::addColumn<QString>("id");
        QTest::newRow("StartupWMClass") << "org.gnome.Nautilus" << "org.gnome.Nautilus" << "" << "org.gnome.Nautilus";
        QTest::newRow("class is the id's last part") << "krita" << "Krita" << "" << "org.kde.krita";
        QTest::newRow("instance is the file's name") << "gimp" << "Gimp-2.10" << "" << "gimp";
        QTest::newRow("only the program tells") << "x" << "Y" << "gimp-2.10" << "gimp";
        QTest::newRow("program behind env and quotes, id from a subfolder") << "" << "" << "kate" << "kde4-kate";
        QTest::newRow("hidden entries still name their windows") << "helper" << "Helper" << "" << "helper";
        QTest::newRow("unknown") << "qd_dragsource" << "qd_dragsource" << "qd_dragsource" << "";
    }
    void windowToApplication()
    {
        QFETCH(QString, instance);
        QFETCH(QString, wmClass);
        QFETCH(QString, program);
        QFETCH(QString, id);
        const DesktopEntries entries = DesktopEntries::load({m_dir.path() + QStringLiteral("/apps")});
        QCOMPARE(entries.idForWindow(instance, wmClass, program), id);
    }
    void earlierFoldersHideLaterOnes()
    {
        const QString mine = m_dir.path() + QStringLiteral("/mine");
        writeEntry(mine, QStringLiteral("gimp.desktop"), QStringLiteral("Name=My GIMP\nExec=gimp\n"));
        const DesktopEntries entries = DesktopEntries::load({mine, m_dir.path() + QStringLiteral("/apps")});
        QCOMPARE(entries.byId(QStringLiteral("gimp"))->name, QStringLiteral("My GIMP"));
        QVERIFY(!entries.byId(QStringLiteral("helper"))->shown);
        QCOMPARE(entries.byId(QStringLiteral("org.gnome.Nautilus"))->iconName, QStringLiteral("org.gnome.Nautilus"));
        QCOMPARE(entries.byId(QStringLiteral("org.gnome.Nautilus"))->executable, QStringLiteral("nautilus"));
    }
    void exclusionListFile()
    {
        const QString path = Utils::pathForExlAppsPlist();
        QVERIFY(QFileInfo(path).isFile());
        // First written as an empty dictionary, which reads as no applications.
        QCOMPARE(Plist::readFile(path).value().typeId(), QMetaType::QVariantMap);
        QVERIFY(Utils::exclBndlIDAppsArray().isEmpty());

        Utils::updateExlAppsPlistWithBundleId(QStringLiteral("gimp"), true); // removing from nothing
        QCOMPARE(Plist::readFile(path).value().typeId(), QMetaType::QVariantList);
        QVERIFY(Utils::exclBndlIDAppsArray().isEmpty());

        Utils::updateExlAppsPlistWithBundleId(QStringLiteral("gimp"), false);
        Utils::updateExlAppsPlistWithBundleId(QStringLiteral("org.kde.krita"), false);
        const auto inode = [&path] {
            struct stat st{};
            return ::stat(QFile::encodeName(path).constData(), &st) == 0 ? st.st_ino : ino_t(0);
        };
        const ino_t before = inode();
        Utils::updateExlAppsPlistWithBundleId(QStringLiteral("gimp"), false); // already there: rewritten as it was
        QCOMPARE(Utils::exclBndlIDAppsArray(), (QStringList{"gimp", "org.kde.krita"}));
        QVERIFY(inode() != before); // a new file took the old one's name
        Utils::updateExlAppsPlistWithBundleId(QStringLiteral("gimp"), true);
        QCOMPARE(Utils::exclBndlIDAppsArray(), QStringList{"org.kde.krita"});

        QVERIFY(writeFile(path, "not a property list"));
        QVERIFY(Utils::exclBndlIDAppsArray().isEmpty());
    }
    void grabOfAKeySequence_data()
    {
        QTest::addColumn<QString>("keys");
        QTest::addColumn<uint>("keysym");
        QTest::addColumn<uint>("modifiers"); // Shift 1, Control 4, Alt 8, Super 64
        QTest::newRow("the default") << "Ctrl+Alt+F" << uint('f') << 12u;
        QTest::newRow("a digit with Super") << "Meta+1" << uint('1') << 64u;
        QTest::newRow("a function key") << "Ctrl+Shift+F5" << 0xffc2u << 5u;
        QTest::newRow("space") << "Alt+Space" << 0x20u << 8u;
        QTest::newRow("a key alone is no global key") << "F" << uint('f') << 0u;
        QTest::newRow("two strokes cannot be grabbed") << "Ctrl+K, Ctrl+F" << 0u << 0u;
        QTest::newRow("nonsense") << "Ctrl+Nothing" << 0u << 0u;
    }
    void grabOfAKeySequence()
    {
        QFETCH(QString, keys);
        QFETCH(uint, keysym);
        QFETCH(uint, modifiers);
        const X11HotKeyBinder::Grab grab = X11HotKeyBinder::grabFor(keys);
        QCOMPARE(uint(grab.keysym), keysym);
        if (keysym)
            QCOMPARE(uint(grab.modifiers), modifiers);
    }

private:
    void writeEntry(const QString &folder, const QString &relativePath, const QString &body)
    {
        const QString path = folder + QLatin1Char('/') + relativePath;
        QDir().mkpath(QFileInfo(path).path());
        QVERIFY(writeFile(path, "# a comment\n[Desktop Entry]\nType=Application\n" + body.toUtf8() + "\n[Desktop Action new]\nName=Other\n"));
    }
    QTemporaryDir m_dir;
};

QTEST_MAIN(DesktopTest)
#include "tst_desktop.moc"

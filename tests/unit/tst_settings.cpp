#include "UnitSupport.h"
#include "core/settings/SettingsKeys.h"
#include "core/settings/SettingsStore.h"
#include "utils/Utils.h"

#include <QtTest>

class SettingsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }
    void init()
    {
        SettingsStore::shared().resetAll();
        QVERIFY(!SettingsStore::shared().contains(SettingsKey::EnableUserNotifWhenDoneSwitch));
    }
    // The notification switch is written yes on its first read; the login alert answers no only once.
    void firstReads()
    {
        QVERIFY(Utils::enableUserNotifWhenDoneSwitchValue());
        SettingsStore reread(SettingsStore::shared().filePath());
        QVERIFY(reread.contains(SettingsKey::EnableUserNotifWhenDoneSwitch));
        QVERIFY(reread.boolValue(SettingsKey::EnableUserNotifWhenDoneSwitch));
        QCOMPARE(Utils::showLoginAtLaunchUserDefaultsValue(), false);
        QCOMPARE(Utils::showLoginAtLaunchUserDefaultsValue(), true);
        Utils::showLoginAtLaunchSetUserDefVal(false);
        QCOMPARE(Utils::showLoginAtLaunchUserDefaultsValue(), false);
    }
    void onlyTheTwoHotKeyDefaultsAreRegistered()
    {
        // A reset forgets a recorded key: the default is back, and off.
        SettingsStore::shared().setString(SettingsKey::ShowPanelHK, QStringLiteral("Meta+X"));
        SettingsStore::shared().setBool(SettingsKey::ShowPanelHKEnabled, true);
        SettingsStore::shared().resetAll();
        SettingsStore::shared().registerHotKeyDefaults();
        QVERIFY(!Utils::isShortcutEnabled());
        QCOMPARE(Utils::showPanelHotKey(), QStringLiteral("Ctrl+Alt+F"));
        // Registered values are not stored.
        QVERIFY(!SettingsStore::shared().contains(SettingsKey::ShowPanelHK));
    }
    void garbledFileReadsAsDefaultsAndIsRewritten()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("Quaydrop.conf"));
        QVERIFY(writeFile(path, QByteArray("\x00\xff\xfe[[[General\nkQuaydropIsOffKey", 31)));
        SettingsStore garbled(path);
        QCOMPARE(garbled.boolValue(SettingsKey::QuaydropIsOff), false);
        QCOMPARE(garbled.integerValue(SettingsKey::DropHereWindowShowAlignment), qint64(0));
        garbled.setBool(SettingsKey::QuaydropIsOff, true);
        garbled.synchronize();

        SettingsStore reread(path);
        QCOMPARE(reread.boolValue(SettingsKey::QuaydropIsOff), true);
    }
};

QTEST_GUILESS_MAIN(SettingsTest)
#include "tst_settings.moc"

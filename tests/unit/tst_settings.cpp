#include "core/settings/SettingsKeys.h"
#include "core/settings/SettingsStore.h"
#include "utils/Utils.h"

#include <QtTest>

#include <functional>

using Reader = std::function<QVariant()>;
Q_DECLARE_METATYPE(Reader)

class SettingsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void defaultsOfAFreshSystem_data();
    void defaultsOfAFreshSystem();
    void storedValuesAreRead_data();
    void storedValuesAreRead();
    void notificationSwitchIsWrittenYesOnFirstRead();
    void launchResetsTheSwitchToOn();
    void loginAlertFlagAnswersNoOnlyOnce();
    void onlyTheTwoHotKeyDefaultsAreRegistered();
    void resetLeavesTheHotKeyAtItsDefaultAndOff();
    void reminderDatesAreWrittenOnlyWhenUnset();
    void settingsLiveInTheConfigFolder();
    void garbledFileReadsAsDefaultsAndIsRewritten();
};

void SettingsTest::initTestCase() { QStandardPaths::setTestModeEnabled(true); }

void SettingsTest::init()
{
    SettingsStore::shared().resetAll();
    QVERIFY(!SettingsStore::shared().contains(SettingsKey::EnableUserNotifWhenDoneSwitch));
}

void SettingsTest::defaultsOfAFreshSystem_data()
{
    QTest::addColumn<Reader>("read");
    QTest::addColumn<QVariant>("expected");
    QTest::newRow("kQuaydropIsOffKey") << Reader([] { return QVariant(Utils::QuaydropIsOFFSate()); }) << QVariant(false);
    QTest::newRow("kShowPanelHKEnabled") << Reader([] { return QVariant(Utils::isShortcutEnabled()); }) << QVariant(false);
    QTest::newRow("showPanelHK unregistered") << Reader([] { return QVariant(Utils::showPanelHotKey()); }) << QVariant(QString());
    QTest::newRow("kDropHereWindowShowAlignment") << Reader([] { return QVariant(Utils::dropHereWindowAlignment()); })
                                                   << QVariant(qint64(0));
    QTest::newRow("kExclAllButFinder") << Reader([] { return QVariant(Utils::exclAllButFinderValue()); }) << QVariant(false);
    QTest::newRow("kDontShowIntroSlider") << Reader([] { return QVariant(Utils::dontshowIntroSlides()); }) << QVariant(false);
    QTest::newRow("shouldHideStatusBarItem") << Reader([] { return QVariant(Utils::shouldHideStatusBarItem()); })
                                              << QVariant(false);
    QTest::newRow("kStartEditingOnceCreated") << Reader([] { return QVariant(Utils::checkIfStartEditingOnceCreated()); })
                                               << QVariant(false);
    QTest::newRow("lastSavePaneUrlKEY") << Reader([] { return QVariant(Utils::getSavePanelURL().isNull()); }) << QVariant(true);
    QTest::newRow("lastOpenPaneUrlKEY") << Reader([] { return QVariant(Utils::getOpenPanelURL().isNull()); }) << QVariant(true);
    QTest::newRow("someQDactionHappened") << Reader([] { return QVariant(Utils::checkIfQDactionHappened()); }) << QVariant(false);
}

void SettingsTest::defaultsOfAFreshSystem()
{
    QFETCH(Reader, read);
    QFETCH(QVariant, expected);
    QCOMPARE(read(), expected);
}

void SettingsTest::storedValuesAreRead_data()
{
    using Writer = std::function<void()>;
    QTest::addColumn<Writer>("write");
    QTest::addColumn<Reader>("read");
    QTest::addColumn<QVariant>("expected");
    auto &s = SettingsStore::shared();
    QTest::newRow("alignment centred") << Writer([&s] { s.setInteger(SettingsKey::DropHereWindowShowAlignment, 1); })
                                       << Reader([] { return QVariant(Utils::dropHereWindowAlignment()); }) << QVariant(qint64(1));
    QTest::newRow("hot key mode") << Writer([&s] { s.setBool(SettingsKey::ShowPanelHKEnabled, true); })
                                  << Reader([] { return QVariant(Utils::isShortcutEnabled()); }) << QVariant(true);
    QTest::newRow("recorded hot key") << Writer([&s] { s.setString(SettingsKey::ShowPanelHK, QStringLiteral("Meta+Shift+D")); })
                                      << Reader([] { return QVariant(Utils::showPanelHotKey()); })
                                      << QVariant(QStringLiteral("Meta+Shift+D"));
    QTest::newRow("save panel folder") << Writer([] { Utils::overWriteSavePanelLastSaveURL(QStringLiteral("/srv/out")); })
                                       << Reader([] { return QVariant(Utils::getSavePanelURL()); })
                                       << QVariant(QStringLiteral("/srv/out"));
    QTest::newRow("open panel folder") << Writer([] { Utils::overWriteOpenPanelLastSaveURL(QStringLiteral("/srv/in")); })
                                       << Reader([] { return QVariant(Utils::getOpenPanelURL()); })
                                       << QVariant(QStringLiteral("/srv/in"));
    QTest::newRow("status item hidden") << Writer([] { Utils::shouldHideStatusBarItem(true); })
                                        << Reader([] { return QVariant(Utils::shouldHideStatusBarItem()); }) << QVariant(true);
    QTest::newRow("an action happened") << Writer([] { Utils::someQDactionHappened(); })
                                        << Reader([] { return QVariant(Utils::checkIfQDactionHappened()); }) << QVariant(true);
    QTest::newRow("notifications switched off") << Writer([&s] { s.setBool(SettingsKey::EnableUserNotifWhenDoneSwitch, false); })
                                                << Reader([] { return QVariant(Utils::enableUserNotifWhenDoneSwitchValue()); })
                                                << QVariant(false);
}

void SettingsTest::storedValuesAreRead()
{
    using Writer = std::function<void()>;
    QFETCH(Writer, write);
    QFETCH(Reader, read);
    QFETCH(QVariant, expected);
    write();
    QCOMPARE(read(), expected);
}

void SettingsTest::notificationSwitchIsWrittenYesOnFirstRead()
{
    QVERIFY(Utils::enableUserNotifWhenDoneSwitchValue());
    SettingsStore reread(SettingsStore::shared().filePath());
    QVERIFY(reread.contains(SettingsKey::EnableUserNotifWhenDoneSwitch));
    QVERIFY(reread.boolValue(SettingsKey::EnableUserNotifWhenDoneSwitch));
}

void SettingsTest::launchResetsTheSwitchToOn()
{
    SettingsStore::shared().setBool(SettingsKey::QuaydropIsOff, false);
    QVERIFY(!Utils::QuaydropIsOFFSate());
    Utils::resetkQuaydropIsOffKeyToON();
    QVERIFY(Utils::QuaydropIsOFFSate());
}

void SettingsTest::loginAlertFlagAnswersNoOnlyOnce()
{
    QCOMPARE(Utils::showLoginAtLaunchUserDefaultsValue(), false);
    QCOMPARE(Utils::showLoginAtLaunchUserDefaultsValue(), true);
    Utils::showLoginAtLaunchSetUserDefVal(false);
    QCOMPARE(Utils::showLoginAtLaunchUserDefaultsValue(), false);
}

void SettingsTest::onlyTheTwoHotKeyDefaultsAreRegistered()
{
    SettingsStore::shared().registerHotKeyDefaults();
    const QVariantMap registered = SettingsStore::shared().registeredDefaults();
    QCOMPARE(registered.keys(), (QStringList{QStringLiteral("kShowPanelHKEnabled"), QStringLiteral("showPanelHK")}));
    QCOMPARE(Utils::showPanelHotKey(), QStringLiteral("Ctrl+Alt+F"));
    // Registered values are not stored.
    QVERIFY(!SettingsStore::shared().contains(SettingsKey::ShowPanelHK));
}

void SettingsTest::resetLeavesTheHotKeyAtItsDefaultAndOff()
{
    SettingsStore::shared().setString(SettingsKey::ShowPanelHK, QStringLiteral("Meta+X"));
    SettingsStore::shared().setBool(SettingsKey::ShowPanelHKEnabled, true);
    SettingsStore::shared().resetAll();
    SettingsStore::shared().registerHotKeyDefaults();
    QCOMPARE(Utils::showPanelHotKey(), QStringLiteral("Ctrl+Alt+F"));
    QVERIFY(!Utils::isShortcutEnabled());
}

void SettingsTest::reminderDatesAreWrittenOnlyWhenUnset()
{
    const QDateTime before = QDateTime::currentDateTimeUtc();
    const QDateTime first = Utils::setFutureDevHappyAlertDate();
    QVERIFY(qAbs(before.secsTo(first) - 864000) <= 2);
    QCOMPARE(Utils::setFutureDevHappyAlertDate(), first);
    Utils::reWriteFutureDevHappyAlertDate();
    QVERIFY(qAbs(before.secsTo(Utils::setFutureDevHappyAlertDate()) - 432000) <= 2);

    Utils::savefutureDate();
    const QDateTime saved = SettingsStore::shared().dateValue(SettingsKey::SavefutureDate);
    QVERIFY(qAbs(before.secsTo(saved) - 432000) <= 2);
    SettingsStore::shared().setDate(SettingsKey::SavefutureDate, before);
    Utils::savefutureDate();
    QCOMPARE(SettingsStore::shared().dateValue(SettingsKey::SavefutureDate), before);
}

void SettingsTest::settingsLiveInTheConfigFolder()
{
    QVERIFY(SettingsStore::shared().filePath().endsWith(QStringLiteral("/com.velmora.Quaydrop/Quaydrop.conf")));
    QVERIFY(SettingsStore::shared().filePath().startsWith(
        QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)));
    QVERIFY(Utils::QDappSupportPath().endsWith(QStringLiteral("/com.velmora.Quaydrop")));
}

void SettingsTest::garbledFileReadsAsDefaultsAndIsRewritten()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("Quaydrop.conf"));
    {
        QFile f(path);
        QVERIFY(f.open(QIODevice::WriteOnly));
        static const char garbage[] = "\x00\xff\xfe[[[General\nkQuaydropIsOffKey";
        f.write(garbage, sizeof garbage - 1);
    }
    SettingsStore garbled(path);
    QCOMPARE(garbled.boolValue(SettingsKey::QuaydropIsOff), false);
    QCOMPARE(garbled.integerValue(SettingsKey::DropHereWindowShowAlignment), qint64(0));
    garbled.setBool(SettingsKey::QuaydropIsOff, true);
    garbled.synchronize();

    SettingsStore reread(path);
    QCOMPARE(reread.boolValue(SettingsKey::QuaydropIsOff), true);
}

QTEST_GUILESS_MAIN(SettingsTest)
#include "tst_settings.moc"

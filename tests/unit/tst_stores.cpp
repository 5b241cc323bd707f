// What the program keeps on disk: property lists in Apple's form, the settings with their first
// reads and defaults, and the ledger of time saved with its weeks, damaged files read as empty and
// left alone; and the private temporary folder, emptied without following a link out of it.
#include "TestSupport.h"
#include "TestTree.h"
#include "core/ledger/TimeSavedLedger.h"
#include "core/plist/Plist.h"
#include "core/settings/SettingsKeys.h"
#include "core/settings/SettingsStore.h"
#include "utils/Utils.h"

#include <QtTest>

#include <cmath>

#include <sys/stat.h>

namespace {
QDateTime utc(int y, int m, int d, int h = 12) { return QDateTime(QDate(y, m, d), QTime(h, 0), Qt::UTC); }
} // namespace

class StoresTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        m_expected = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) +
                     QStringLiteral("/com.velmora.Quaydrop/QDTempOperations");
        TreeWalk::removeRecursively(m_expected.toUtf8(), [](const QByteArray &, int) {});
    }
    void init()
    {
        SettingsStore::shared().resetAll();
        QVERIFY(!SettingsStore::shared().contains(SettingsKey::EnableUserNotifWhenDoneSwitch));
    }
    void roundTrip_data()
    {
        QTest::addColumn<QVariant>("value");
        const QDateTime when(QDate(2026, 11, 23), QTime(9, 4, 57), Qt::UTC);
        QTest::newRow("string") << QVariant(QStringLiteral("Grüße <&> \"quoted\""));
        QTest::newRow("empty string") << QVariant(QString(""));
        QTest::newRow("integer") << QVariant(qlonglong(-42));
        QTest::newRow("large unsigned") << QVariant(qulonglong(18446744073709551615ull));
        QTest::newRow("real") << QVariant(3.25);
        QTest::newRow("real with long fraction") << QVariant(0.1 + 0.2);
        QTest::newRow("true") << QVariant(true);
        QTest::newRow("false") << QVariant(false);
        QTest::newRow("date") << QVariant(when);
        QTest::newRow("data") << QVariant(QByteArray("\x00\x01\xff", 3) + QByteArray("binary and long enough to wrap the base64 lines of the writer"));
        QTest::newRow("empty dict") << QVariant(QVariantMap());
        QTest::newRow("empty array") << QVariant(QVariantList());
        QTest::newRow("nested") << QVariant(QVariantMap{
            {QStringLiteral("paths"), QVariantList{QStringLiteral("/home/a b/c"), QStringLiteral("/tmp")}},
            {QStringLiteral("inner"), QVariantMap{{QStringLiteral("n"), qlonglong(7)}, {QStringLiteral("ok"), true}}},
            {QStringLiteral("weeklyLastSaveDate"), when}});
    }
    void roundTrip()
    {
        QFETCH(QVariant, value);
        auto xml = Plist::serialize(value);
        QVERIFY2(xml.ok(), qPrintable(xml.ok() ? QString() : xml.error().message));
        auto back = Plist::parse(xml.value());
        QVERIFY2(back.ok(), qPrintable(back.ok() ? QString() : back.error().message));
        QCOMPARE(back.value(), value);
    }
    // Written as Foundation lays it out; read as Foundation writes it: DOCTYPE, tabs, a multi-line data block, a comment.
    void appleForm()
    {
        const QVariantMap dict{{QStringLiteral("weeklySecSaved"), qulonglong(15)},
                               {QStringLiteral("totalSecSaved"), qulonglong(3661)},
                               {QStringLiteral("list"), QVariantList{true, 1.5}}};
        const QByteArray expected =
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" \"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
            "<plist version=\"1.0\">\n"
            "<dict>\n"
            "\t<key>list</key>\n"
            "\t<array>\n"
            "\t\t<true/>\n"
            "\t\t<real>1.5</real>\n"
            "\t</array>\n"
            "\t<key>totalSecSaved</key>\n"
            "\t<integer>3661</integer>\n"
            "\t<key>weeklySecSaved</key>\n"
            "\t<integer>15</integer>\n"
            "</dict>\n"
            "</plist>\n";
        QCOMPARE(Plist::serialize(dict).value(), expected);
        // As Foundation writes it: DOCTYPE, tabs, a multi-line data block, a comment.
        const QByteArray xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                               "<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
                               "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">\n"
                               "<plist version=\"1.0\">\n<dict>\n"
                               "\t<!-- a comment -->\n"
                               "\t<key>blob</key>\n\t<data>\n\tSGVsbG8g\n\td29ybGQ=\n\t</data>\n"
                               "\t<key>exclBndlIDAppsArray</key>\n\t<array>\n\t\t<string>com.example.App</string>\n\t</array>\n"
                               "\t<key>when</key>\n\t<date>2019-03-01T12:00:00Z</date>\n"
                               "\t<key>amp</key>\n\t<string>a &amp; b &lt;c&gt;</string>\n"
                               "\t<key>inf</key>\n\t<real>-infinity</real>\n"
                               "</dict>\n</plist>\n";
        auto parsed = Plist::parse(xml);
        QVERIFY(parsed.ok());
        const QVariantMap read = parsed.value().toMap();
        QCOMPARE(read.value(QStringLiteral("blob")).toByteArray(), QByteArray("Hello world"));
        QCOMPARE(read.value(QStringLiteral("exclBndlIDAppsArray")).toList().value(0).toString(),
                 QStringLiteral("com.example.App"));
        QCOMPARE(read.value(QStringLiteral("when")).toDateTime(), QDateTime(QDate(2019, 3, 1), QTime(12, 0), Qt::UTC));
        QCOMPARE(read.value(QStringLiteral("amp")).toString(), QStringLiteral("a & b <c>"));
        QVERIFY(std::isinf(read.value(QStringLiteral("inf")).toDouble()));
    }
    void badInputIsAnError_data()
    {
        QTest::addColumn<QByteArray>("xml");
        QTest::newRow("empty file") << QByteArray();
        QTest::newRow("not xml") << QByteArray("\x89PNG\r\n\x1a\n binary");
        QTest::newRow("truncated") << QByteArray("<?xml version=\"1.0\"?><plist version=\"1.0\"><dict><key>a</key><integer>1");
        QTest::newRow("key without value") << QByteArray("<plist><dict><key>a</key></dict></plist>");
        QTest::newRow("value without key") << QByteArray("<plist><dict><string>a</string></dict></plist>");
        QTest::newRow("unknown element") << QByteArray("<plist><thing/></plist>");
        QTest::newRow("bad integer") << QByteArray("<plist><integer>12x</integer></plist>");
        QTest::newRow("bad date") << QByteArray("<plist><date>yesterday</date></plist>");
        QTest::newRow("two top values") << QByteArray("<plist><true/><false/></plist>");
        QTest::newRow("element in a string") << QByteArray("<plist><string>a<b/></string></plist>");
        QTest::newRow("hostile depth") << QByteArray("<plist>") + QByteArray("<array>").repeated(5000) + "</plist>";
    }
    void badInputIsAnError()
    {
        QFETCH(QByteArray, xml);
        auto parsed = Plist::parse(xml);
        QVERIFY(!parsed.ok());
        QVERIFY(!parsed.error().message.isEmpty());
    }
    // What XML cannot carry is refused, and a refused write leaves the old file whole.
    void refusedValuesLeaveTheFile()
    {
        // A file name byte that is not UTF-8 travels as a lone surrogate; XML has no form for it.
        const QString withEscapedByte = QStringLiteral("/tmp/a") + QChar(char16_t(0xDCFF));
        QVERIFY(!Plist::serialize(withEscapedByte).ok());
        QVERIFY(!Plist::serialize(QString(QChar(char16_t(1)))).ok());
        QVERIFY(!Plist::serialize(QVariant()).ok());
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("list.plist"));
        QVERIFY(Plist::writeFileAtomically(path, QVariantList{QStringLiteral("first")}).ok());
        // A value that cannot be written leaves the old file whole.
        QVERIFY(!Plist::writeFileAtomically(path, QVariantList{QVariant()}).ok());
        QCOMPARE(Plist::readFile(path).value(), QVariant(QVariantList{QStringLiteral("first")}));
        QCOMPARE(QDir(dir.path()).entryList(QDir::Files | QDir::Hidden).size(), 1);
        QVERIFY(!Plist::readFile(dir.filePath(QStringLiteral("missing.plist"))).ok());
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
        const QString path = m_dir.filePath(QStringLiteral("Quaydrop.conf"));
        QVERIFY(writeFile(path, QByteArray("\x00\xff\xfe[[[General\nkQuaydropIsOffKey", 31)));
        SettingsStore garbled(path);
        QCOMPARE(garbled.boolValue(SettingsKey::QuaydropIsOff), false);
        QCOMPARE(garbled.integerValue(SettingsKey::DropHereWindowShowAlignment), qint64(0));
        garbled.setBool(SettingsKey::QuaydropIsOff, true);
        garbled.synchronize();

        SettingsStore reread(path);
        QCOMPARE(reread.boolValue(SettingsKey::QuaydropIsOff), true);
    }
    void weekOfMonth_data()
    {
        QTest::addColumn<QDate>("date");
        QTest::addColumn<int>("firstDay");
        QTest::addColumn<int>("week");
        // November 2026 begins on a Sunday.
        QTest::newRow("1 Nov, Monday weeks") << QDate(2026, 11, 1) << int(Qt::Monday) << 1;
        QTest::newRow("2 Nov, Monday weeks") << QDate(2026, 11, 2) << int(Qt::Monday) << 2;
        QTest::newRow("2 Nov, Sunday weeks") << QDate(2026, 11, 2) << int(Qt::Sunday) << 1;
        QTest::newRow("30 Nov, Monday weeks") << QDate(2026, 11, 30) << int(Qt::Monday) << 6;
        QTest::newRow("30 Nov, Sunday weeks") << QDate(2026, 11, 30) << int(Qt::Sunday) << 5;
        QTest::newRow("1 Dec (Tuesday), Monday weeks") << QDate(2026, 12, 1) << int(Qt::Monday) << 1;
        QTest::newRow("7 Dec, Monday weeks") << QDate(2026, 12, 7) << int(Qt::Monday) << 2;
        QTest::newRow("a month that begins on the first weekday") << QDate(2027, 2, 7) << int(Qt::Monday) << 1;
    }
    void weekOfMonth()
    {
        QFETCH(QDate, date);
        QFETCH(int, firstDay);
        QFETCH(int, week);
        QCOMPARE(TimeSavedLedger::weekOfMonth(date, Qt::DayOfWeek(firstDay)), week);
    }
    void weeklySum_data()
    {
        QTest::addColumn<QDateTime>("first");
        QTest::addColumn<QDateTime>("second");
        QTest::addColumn<int>("firstDay");
        QTest::addColumn<quint64>("weekly");
        QTest::newRow("same week") << utc(2026, 11, 23) << utc(2026, 11, 25) << int(Qt::Monday) << quint64(15 + 10);
        QTest::newRow("next week") << utc(2026, 11, 23) << utc(2026, 11, 30) << int(Qt::Monday) << quint64(10);
        QTest::newRow("same calendar week across the month end")
            << utc(2026, 11, 30) << utc(2026, 12, 1) << int(Qt::Monday) << quint64(10);
        QTest::newRow("five weeks later on the same week number")
            << utc(2026, 11, 2) << utc(2026, 12, 7) << int(Qt::Monday) << quint64(15 + 10);
        QTest::newRow("Sunday then Monday, weeks from Monday") << utc(2026, 11, 8) << utc(2026, 11, 9) << int(Qt::Monday)
                                                              << quint64(10);
        QTest::newRow("Sunday then Monday, weeks from Sunday") << utc(2026, 11, 8) << utc(2026, 11, 9) << int(Qt::Sunday)
                                                              << quint64(15 + 10);
    }
    void weeklySum()
    {
        QFETCH(QDateTime, first);
        QFETCH(QDateTime, second);
        QFETCH(int, firstDay);
        QFETCH(quint64, weekly);
        const auto l = ledger(Qt::DayOfWeek(firstDay), QString::fromLatin1(QTest::currentDataTag()) + QStringLiteral(".plist"));
        m_now = first;
        l.addSeconds(15); // on a fresh install
        QCOMPARE(l.values()->value(QStringLiteral("weeklySecSaved")).toULongLong(), 15ull);
        m_now = second;
        l.addSeconds(10);
        const auto v = l.values();
        QVERIFY(v.has_value());
        QCOMPARE(v->value(QStringLiteral("weeklySecSaved")).toULongLong(), weekly);
        QCOMPARE(v->value(QStringLiteral("totalSecSaved")).toULongLong(), 25ull);
        QCOMPARE(v->value(QStringLiteral("weeklyLastSaveDate")).toDateTime(), second);
    }
    void missingDateCountsAsThisWeek()
    {
        const QString path = m_dir.filePath(QStringLiteral("nodate.plist"));
        QVERIFY(Plist::writeFileAtomically(path, QVariantMap{{QStringLiteral("totalSecSaved"), 100},
                                                             {QStringLiteral("weeklySecSaved"), 40}})
                    .ok());
        m_now = utc(2026, 11, 23);
        const auto l = ledger(Qt::Monday, QStringLiteral("nodate.plist"));
        l.addSeconds(5);
        const auto v = l.values();
        QVERIFY(v.has_value());
        QCOMPARE(v->value(QStringLiteral("weeklySecSaved")).toULongLong(), 45ull);
        QCOMPARE(v->value(QStringLiteral("totalSecSaved")).toULongLong(), 105ull);
    }
    void unreadableLedgerLosesTheCreditAndIsLeftAlone_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("truncated") << QByteArray("<?xml version=\"1.0\"?><plist><dict><key>totalSecSaved</key><integer>9");
        QTest::newRow("not xml") << QByteArray("\x00\x01\x02", 3) + QByteArray("garbage");
        QTest::newRow("array at the top") << QByteArray("<plist><array/></plist>");
    }
    void unreadableLedgerLosesTheCreditAndIsLeftAlone()
    {
        QFETCH(QByteArray, content);
        const QString name = QString::fromLatin1(QTest::currentDataTag()) + QStringLiteral("-bad.plist");
        QVERIFY(writeFile(m_dir.filePath(name), content));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("could not read .*-bad.plist")));
        ledger(Qt::Monday, name).addSeconds(30);
        QFile f(m_dir.filePath(name));
        QVERIFY(f.open(QIODevice::ReadOnly));
        QCOMPARE(f.readAll(), content);
    }
    void relativeTimeText_data()
    {
        QTest::addColumn<quint64>("seconds");
        QTest::addColumn<QString>("text");
        QTest::newRow("zero is never n/a") << quint64(0) << QStringLiteral("0h : 00m : 00s");
        QTest::newRow("3661") << quint64(3661) << QStringLiteral("1h : 01m : 01s");
        QTest::newRow("hours beyond a day") << quint64(100 * 3600 + 59 * 60 + 7) << QStringLiteral("100h : 59m : 07s");
    }
    void relativeTimeText()
    {
        QFETCH(quint64, seconds);
        QFETCH(QString, text);
        QCOMPARE(relativeTime(seconds), text);
    }

    void createdPrivateAndAnsweredNilOnce()
    {
        QVERIFY(!QFileInfo::exists(m_expected));
        QVERIFY(Utils::createTempFileOperationsFolderIfneeded().isNull());
        QCOMPARE(Utils::createTempFileOperationsFolderIfneeded(), m_expected);
        struct stat st;
        QCOMPARE(::stat(m_expected.toUtf8().constData(), &st), 0);
        QCOMPARE(st.st_mode & 0777, mode_t(0700));

        // Removed by hand while running: the next call makes it again and answers nil once more.
        QVERIFY(QDir(m_expected).removeRecursively());
        QVERIFY(Utils::createTempFileOperationsFolderIfneeded().isNull());
        QCOMPARE(Utils::createTempFileOperationsFolderIfneeded(), m_expected);

        // A folder left readable by others is made private again.
        QVERIFY(::chmod(m_expected.toUtf8().constData(), 0755) == 0);
        QCOMPARE(Utils::createTempFileOperationsFolderIfneeded(), m_expected);
        QCOMPARE(::stat(m_expected.toUtf8().constData(), &st), 0);
        QCOMPARE(st.st_mode & 0777, mode_t(0700));
    }
    void cleanUpEmptiesButKeepsTheFolder()
    {
        QVERIFY(!Utils::createTempFileOperationsFolderIfneeded().isNull());
        const QByteArray folder = m_expected.toUtf8();
        QVERIFY(QDir().mkpath(m_expected + "/7C3B-UUID/deeper"));
        QFile(m_expected + "/7C3B-UUID/deeper/promised.png").open(QIODevice::WriteOnly);
        QFile(m_expected + "/_tempDroppedStr.txt").open(QIODevice::WriteOnly);
        QFile(m_expected + "/.hidden").open(QIODevice::WriteOnly);
        QFile(QString::fromUtf8(folder) + "/plain").open(QIODevice::WriteOnly);
        const QByteArray oddName = folder + "/\xff-odd";
        QVERIFY(::close(::open(oddName.constData(), O_CREAT | O_WRONLY, 0600)) == 0);

        Utils::cleanUPTepmFileOperationsFolder();
        QVERIFY(QFileInfo(m_expected).isDir());
        QCOMPARE(QDir(m_expected).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot),
                 QStringList());
        struct stat st;
        QCOMPARE(::lstat(oddName.constData(), &st), -1);
    }
    // Links inside the folder are removed, not followed; a link in the folder's place is refused.
    void linksAreNeverFollowed()
    {
        TestTree outside;
        const QByteArray kept = outside.file("precious.txt", "mine");
        outside.folder("folder");
        outside.file("folder/also-precious", "mine too");
        QVERIFY(!Utils::createTempFileOperationsFolderIfneeded().isNull());
        QVERIFY(::symlink(kept.constData(), (m_expected + "/link-to-file").toUtf8().constData()) == 0);
        QVERIFY(::symlink((outside.native() + "/folder").constData(), (m_expected + "/link-to-folder").toUtf8().constData()) == 0);

        Utils::cleanUPTepmFileOperationsFolder();
        QVERIFY(QFileInfo::exists(QString::fromUtf8(kept)));
        QVERIFY(QFileInfo::exists(outside.path() + "/folder/also-precious"));
        QVERIFY(QDir(m_expected).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot));

        const QByteArray target = outside.folder("planted");
        outside.file("planted/keep-me", "x");
        QVERIFY(QDir(m_expected).removeRecursively());
        QVERIFY(::symlink(target.constData(), m_expected.toUtf8().constData()) == 0);

        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("is not a folder of this user")));
        QVERIFY(Utils::createTempFileOperationsFolderIfneeded().isNull());
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("is not a folder of this user")));
        Utils::cleanUPTepmFileOperationsFolder();
        QVERIFY(QFileInfo::exists(outside.path() + "/planted/keep-me"));
        QVERIFY(::unlink(m_expected.toUtf8().constData()) == 0);
    }

private:
    QString m_expected; // the temporary folder
    QTemporaryDir m_dir;
    QDateTime m_now;
    TimeSavedLedger ledger(Qt::DayOfWeek firstDay, const QString &name)
    {
        return TimeSavedLedger(m_dir.filePath(name), [this] { return m_now; }, {firstDay, QTimeZone::utc()});
    }
};

QTEST_GUILESS_MAIN(StoresTest)
#include "tst_stores.moc"

#include "UnitSupport.h"
#include "core/ledger/TimeSavedLedger.h"
#include "core/plist/Plist.h"

#include <QtTest>

namespace {
QDateTime utc(int y, int m, int d, int h = 12) { return QDateTime(QDate(y, m, d), QTime(h, 0), Qt::UTC); }
} // namespace

class LedgerTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }
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

private:
    QTemporaryDir m_dir;
    QDateTime m_now;
    TimeSavedLedger ledger(Qt::DayOfWeek firstDay, const QString &name)
    {
        return TimeSavedLedger(m_dir.filePath(name), [this] { return m_now; }, {firstDay, QTimeZone::utc()});
    }
};

QTEST_GUILESS_MAIN(LedgerTest)
#include "tst_ledger.moc"

#pragma once

#include <QDateTime>
#include <QString>
#include <QTimeZone>
#include <QVariantMap>

#include <functional>
#include <optional>

// The running score of seconds saved, kept in "QDts.plist". Reads and writes the small file on every
// credit; there is no lock, and a credit lost to a race between threads is accepted.
class TimeSavedLedger
{
public:
    using Clock = std::function<QDateTime()>;

    struct Calendar
    {
        Qt::DayOfWeek firstDayOfWeek;
        QTimeZone timeZone;
    };
    // The user's calendar: the locale's first weekday and the local time zone.
    static Calendar currentCalendar();

    explicit TimeSavedLedger(QString plistPath, Clock now = &QDateTime::currentDateTimeUtc,
                             Calendar calendar = currentCalendar());

    // Creates the file with 0, 0 and now when it is missing.
    QString plistPath() const;
    std::optional<QVariantMap> values() const;
    void addSeconds(quint64 seconds) const;

    // Number of the week inside its month; week 1 is the week that holds the first of the month.
    static int weekOfMonth(const QDate &date, Qt::DayOfWeek firstDayOfWeek);

private:
    QString m_path;
    Clock m_now;
    Calendar m_calendar;
};

namespace LedgerKey {
inline constexpr char TotalSecSaved[] = "totalSecSaved";
inline constexpr char WeeklySecSaved[] = "weeklySecSaved";
inline constexpr char WeeklyLastSaveDate[] = "weeklyLastSaveDate";
} // namespace LedgerKey

// "1h : 01m : 01s"
QString relativeTime(quint64 seconds);

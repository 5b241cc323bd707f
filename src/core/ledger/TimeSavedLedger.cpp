#include "TimeSavedLedger.h"

#include "core/plist/Plist.h"
#include "utils/Utils.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QMutex>

namespace {
QString key(const char *k) { return QString::fromLatin1(k); }
} // namespace

TimeSavedLedger::Calendar TimeSavedLedger::currentCalendar()
{
    return {QLocale().firstDayOfWeek(), QTimeZone::systemTimeZone()};
}

TimeSavedLedger::TimeSavedLedger(QString plistPath, Clock now, Calendar calendar)
    : m_path(std::move(plistPath)), m_now(std::move(now)), m_calendar(std::move(calendar))
{
}

QString TimeSavedLedger::plistPath() const
{
    if (!QFileInfo::exists(m_path)) {
        QDir().mkpath(QFileInfo(m_path).absolutePath());
        const QVariantMap fresh{{key(LedgerKey::TotalSecSaved), quint64(0)},
                                {key(LedgerKey::WeeklySecSaved), quint64(0)},
                                {key(LedgerKey::WeeklyLastSaveDate), m_now()}};
        if (auto s = Plist::writeFileAtomically(m_path, fresh); !s.ok())
            qWarning("could not create %s: %s", qPrintable(m_path), qPrintable(s.error().message));
    }
    return m_path;
}

std::optional<QVariantMap> TimeSavedLedger::values() const
{
    auto read = Plist::readFile(plistPath());
    if (!read.ok() || read.value().metaType().id() != QMetaType::QVariantMap) {
        qWarning("could not read %s: %s", qPrintable(m_path),
                 read.ok() ? "the top value is not a dictionary" : qPrintable(read.error().message));
        return std::nullopt;
    }
    return read.value().toMap();
}

int TimeSavedLedger::weekOfMonth(const QDate &date, Qt::DayOfWeek firstDayOfWeek)
{
    const QDate first(date.year(), date.month(), 1);
    const int lead = (first.dayOfWeek() - int(firstDayOfWeek) + 7) % 7;
    return (date.day() + lead - 1) / 7 + 1;
}

void TimeSavedLedger::addSeconds(quint64 seconds) const
{
    auto dict = values();
    if (!dict) // an unreadable ledger loses this credit and is left as it is
        return;
    const QDateTime now = m_now();
    const quint64 total = dict->value(key(LedgerKey::TotalSecSaved)).toULongLong() + seconds;
    QDateTime last = dict->value(key(LedgerKey::WeeklyLastSaveDate)).toDateTime();
    if (!last.isValid())
        last = now;

    const QDate today = now.toTimeZone(m_calendar.timeZone).date();
    const QDate lastDay = last.toTimeZone(m_calendar.timeZone).date();
    quint64 weekly = seconds;
    if (weekOfMonth(today, m_calendar.firstDayOfWeek) == weekOfMonth(lastDay, m_calendar.firstDayOfWeek))
        weekly += dict->value(key(LedgerKey::WeeklySecSaved)).toULongLong();

    dict->insert(key(LedgerKey::WeeklySecSaved), weekly);
    dict->insert(key(LedgerKey::WeeklyLastSaveDate), now);
    dict->insert(key(LedgerKey::TotalSecSaved), total);
    if (auto s = Plist::writeFileAtomically(m_path, *dict); !s.ok())
        qWarning("could not write %s: %s", qPrintable(m_path), qPrintable(s.error().message));
}

QString relativeTime(quint64 s)
{
    return QStringLiteral("%1h : %2m : %3s")
        .arg(s / 3600)
        .arg((s % 3600) / 60, 2, 10, QChar('0'))
        .arg(s % 60, 2, 10, QChar('0'));
}

// ---- the Utils face of the ledger ----

namespace {
TimeSavedLedger appLedger() { return TimeSavedLedger(Utils::QDappSupportPath() + QStringLiteral("/QDts.plist")); }
} // namespace

QString Utils::getTimeSavedPlistPath() { return appLedger().plistPath(); }
std::optional<QVariantMap> Utils::getTimeSavedDictionaryValues() { return appLedger().values(); }
void Utils::saveChangesToTimeSavedPlistByAddingSec(quint64 seconds)
{
    // Image jobs credit from their worker threads: a read-modify-write at a time, or credits get lost.
    static QMutex mutex;
    QMutexLocker lock(&mutex);
    appLedger().addSeconds(seconds);
}

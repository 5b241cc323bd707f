#include "SettingsStore.h"

#include "SettingsKeys.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace {
QString keyName(const char *key) { return QString::fromLatin1(key); }
} // namespace

SettingsStore::SettingsStore(const QString &filePath)
    : m_settings(std::make_unique<QSettings>(filePath, QSettings::IniFormat))
{
    QDir().mkpath(QFileInfo(filePath).absolutePath());
    if (m_settings->status() != QSettings::NoError)
        qWarning("Settings file %s could not be read; it is rewritten on the next change",
                 qPrintable(filePath));
}

QString SettingsStore::defaultFilePath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/" QD_BUNDLE_ID "/Quaydrop.conf");
}

SettingsStore &SettingsStore::shared()
{
    static SettingsStore store(defaultFilePath());
    return store;
}

QVariant SettingsStore::lookup(const char *key) const
{
    QMutexLocker lock(&m_mutex);
    const QVariant stored = m_settings->value(keyName(key));
    if (stored.isValid())
        return stored;
    return m_registered.value(keyName(key));
}

void SettingsStore::store(const char *key, const QVariant &value)
{
    QMutexLocker lock(&m_mutex);
    m_settings->setValue(keyName(key), value);
    m_settings->sync();
}

bool SettingsStore::contains(const char *key) const
{
    QMutexLocker lock(&m_mutex);
    return m_settings->contains(keyName(key));
}

bool SettingsStore::boolValue(const char *key) const
{
    const QVariant v = lookup(key);
    if (v.metaType().id() == QMetaType::QString) {
        const QString s = v.toString().trimmed().toLower();
        return s == u"true" || s == u"yes" || s.toLongLong() != 0;
    }
    return v.toBool();
}

qint64 SettingsStore::integerValue(const char *key) const { return lookup(key).toLongLong(); }

QString SettingsStore::stringValue(const char *key) const
{
    const QVariant v = lookup(key);
    return v.isValid() ? v.toString() : QString();
}

QDateTime SettingsStore::dateValue(const char *key) const
{
    const QVariant v = lookup(key);
    if (v.metaType().id() == QMetaType::QDateTime)
        return v.toDateTime();
    return QDateTime::fromString(v.toString(), Qt::ISODateWithMs);
}

void SettingsStore::setBool(const char *key, bool value) { store(key, value); }
void SettingsStore::setInteger(const char *key, qint64 value) { store(key, value); }
void SettingsStore::setString(const char *key, const QString &value) { store(key, value); }

void SettingsStore::setDate(const char *key, const QDateTime &value)
{
    // Text keeps the file readable; QSettings would store a binary variant.
    store(key, value.toUTC().toString(Qt::ISODateWithMs));
}

void SettingsStore::remove(const char *key)
{
    QMutexLocker lock(&m_mutex);
    m_settings->remove(keyName(key));
    m_settings->sync();
}

void SettingsStore::registerDefaults(const QVariantMap &defaults)
{
    QMutexLocker lock(&m_mutex);
    for (auto it = defaults.begin(); it != defaults.end(); ++it)
        m_registered.insert(it.key(), it.value());
}

void SettingsStore::registerHotKeyDefaults()
{
    registerDefaults({{keyName(SettingsKey::ShowPanelHKEnabled), false},
                      {keyName(SettingsKey::ShowPanelHK), QString::fromLatin1(kDefaultShowPanelHotKey)}});
}

QVariantMap SettingsStore::registeredDefaults() const
{
    QMutexLocker lock(&m_mutex);
    return m_registered;
}

bool SettingsStore::synchronize()
{
    QMutexLocker lock(&m_mutex);
    m_settings->sync();
    return m_settings->status() == QSettings::NoError;
}

void SettingsStore::resetAll()
{
    QMutexLocker lock(&m_mutex);
    m_settings->clear();
    m_settings->sync();
    m_registered.clear();
}

QString SettingsStore::filePath() const { return m_settings->fileName(); }

#pragma once

#include <QDateTime>
#include <QMutex>
#include <QSettings>
#include <QString>
#include <QVariantMap>

#include <memory>

// A key-value store that persists at once, over an INI file. A key without a stored value reads as
// its registered default, else as the type's empty value (NO, 0, nil), as a reader's conversion would.
// Safe to call from any thread.
class SettingsStore
{
public:
    explicit SettingsStore(const QString &filePath);

    // $XDG_CONFIG_HOME/com.velmora.Quaydrop/Quaydrop.conf
    static SettingsStore &shared();
    static QString defaultFilePath();

    bool contains(const char *key) const;
    bool boolValue(const char *key) const;
    qint64 integerValue(const char *key) const;
    QString stringValue(const char *key) const;
    QDateTime dateValue(const char *key) const;

    void setBool(const char *key, bool value);
    void setInteger(const char *key, qint64 value);
    void setString(const char *key, const QString &value);
    void setDate(const char *key, const QDateTime &value);
    void remove(const char *key);

    // In-memory fallbacks, never written to the file.
    void registerDefaults(const QVariantMap &defaults);
    // The two hot-key settings, registered by the options panel when it loads.
    void registerHotKeyDefaults();
    QVariantMap registeredDefaults() const;

    bool synchronize();
    // Forgets every stored value and every registration.
    void resetAll();
    QString filePath() const;

private:
    QVariant lookup(const char *key) const;
    void store(const char *key, const QVariant &value);

    mutable QMutex m_mutex;
    std::unique_ptr<QSettings> m_settings;
    QVariantMap m_registered;
};

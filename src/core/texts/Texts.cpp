#include "Texts.h"

#include "core/settings/SettingsKeys.h"
#include "core/settings/SettingsStore.h"

#include <QCoreApplication>
#include <QMutex>
#include <QTranslator>

#include <atomic>
#include <memory>

namespace {

struct State
{
    QMutex mutex;
    QString language = QStringLiteral("en");
    std::unique_ptr<QTranslator> translator;
    std::atomic<bool> startupLanguagePending = false;
};

State &state()
{
    static State s;
    return s;
}

void settleLanguage()
{
    State &s = state();
    if (!s.startupLanguagePending.load(std::memory_order_acquire))
        return;
    static QMutex settling; // not s.mutex: setLanguage takes that one
    QMutexLocker lock(&settling);
    if (s.startupLanguagePending.load(std::memory_order_acquire)) {
        Texts::setLanguage(Texts::startupLanguage());
        s.startupLanguagePending.store(false, std::memory_order_release);
    }
}

} // namespace

QString Texts::localized(const char *key)
{
    settleLanguage();
    return QCoreApplication::translate("Quaydrop", key);
}

void Texts::setStartupLanguageOnFirstUse() { state().startupLanguagePending.store(true, std::memory_order_release); }

bool Texts::setLanguage(const QString &language)
{
    if (language != u"en" && language != u"de")
        return false;
    auto next = std::make_unique<QTranslator>();
    if (!next->load(QStringLiteral(":/i18n/quaydrop_%1.qm").arg(language))) {
        qWarning("the %s text table is missing from the program", qPrintable(language));
        return false;
    }
    State &s = state();
    s.startupLanguagePending.store(false, std::memory_order_release);
    QMutexLocker lock(&s.mutex);
    if (s.translator)
        QCoreApplication::removeTranslator(s.translator.get());
    QCoreApplication::installTranslator(next.get());
    s.translator = std::move(next);
    s.language = language;
    return true;
}

QString Texts::language()
{
    settleLanguage();
    QMutexLocker lock(&state().mutex);
    return state().language;
}

QString Texts::preferredLanguage()
{
    const QStringList ui = QLocale::system().uiLanguages();
    if (!ui.isEmpty() && ui.first().startsWith(u"de"))
        return QStringLiteral("de");
    return QStringLiteral("en");
}

QLocale Texts::locale()
{
    return language() == u"de" ? QLocale(QLocale::German, QLocale::Germany)
                               : QLocale(QLocale::English, QLocale::UnitedStates);
}

bool Texts::chooseLanguage(const QString &language)
{
    const bool known = language == u"en" || language == u"de";
    if (known)
        SettingsStore::shared().setString(SettingsKey::InterfaceLanguage, language);
    else
        SettingsStore::shared().remove(SettingsKey::InterfaceLanguage);
    SettingsStore::shared().synchronize();
    return setLanguage(known ? language : preferredLanguage());
}

QString Texts::startupLanguage()
{
    const QString chosen = SettingsStore::shared().stringValue(SettingsKey::InterfaceLanguage);
    return chosen == u"en" || chosen == u"de" ? chosen : preferredLanguage();
}

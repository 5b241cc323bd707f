#include "Texts.h"

#include "core/settings/SettingsKeys.h"
#include "core/settings/SettingsStore.h"

#include <QCoreApplication>
#include <QMutex>
#include <QTranslator>

#include <atomic>
#include <memory>
#include <utility>

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
    // From the table itself, not through the application: a short command runs without one.
    State &s = state();
    QMutexLocker lock(&s.mutex);
    const QString text = s.translator ? s.translator->translate("Quaydrop", key) : QString();
    return text.isEmpty() ? QString::fromUtf8(key) : text;
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
    QTranslator *const current = next.get();
    std::unique_ptr<QTranslator> previous;
    {
        QMutexLocker lock(&s.mutex);
        previous = std::exchange(s.translator, std::move(next));
        s.language = language;
    }
    // Installed where there is an application, for the LanguageChange its windows re-translate on;
    // outside the lock, as they ask for texts while they do.
    if (QCoreApplication::instance()) {
        if (previous)
            QCoreApplication::removeTranslator(previous.get());
        QCoreApplication::installTranslator(current);
    }
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

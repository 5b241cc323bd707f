#include "Texts.h"

#include "core/settings/SettingsKeys.h"
#include "core/settings/SettingsStore.h"

#include <QCoreApplication>
#include <QMutex>
#include <QTranslator>

#include <memory>

namespace {

struct State
{
    QMutex mutex;
    QString language = QStringLiteral("en");
    std::unique_ptr<QTranslator> translator;
};

State &state()
{
    static State s;
    return s;
}

} // namespace

QString Texts::localized(const char *key) { return QCoreApplication::translate("Quaydrop", key); }

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

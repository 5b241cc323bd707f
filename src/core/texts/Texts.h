#pragma once

#include <QLocale>
#include <QString>

// Localised texts by key, from the "en" and "de" tables compiled into the program.
namespace Texts {

QString localized(const char *key);

// "en" or "de"; anything else is refused.
bool setLanguage(const QString &language);
QString language();
// The system's first UI language if there is a table for it, else "en".
QString preferredLanguage();
// The user's choice from the options panel, kept across starts; an unknown or empty code falls back to
// the system's language. Open windows re-translate on the QEvent::LanguageChange this sends.
bool chooseLanguage(const QString &language);
// What chooseLanguage last kept, else the system's language.
QString startupLanguage();
// The startup language, set when a text, the language or the locale is first asked for: a command
// that prints none of them neither reads the settings nor unpacks a table.
void setStartupLanguageOnFirstUse();
// Numbers are written the way the chosen language writes them.
QLocale locale();

} // namespace Texts

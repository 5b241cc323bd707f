#include "OnlyIntegerValueFormatter.h"

#include <QApplication>
#include <QRegularExpression>

bool OnlyIntegerValueFormatter::isPartialStringValid(const QString &text, int maxLength, bool *wouldBeep)
{
    if (wouldBeep)
        *wouldBeep = false;
    if (text.isEmpty())
        return true;
    // A whole number and nothing after it, as a number scanner reads it.
    static const QRegularExpression integer(QStringLiteral("^\\s*[+-]?\\d+$"));
    if (!integer.match(text).hasMatch()) {
        if (wouldBeep)
            *wouldBeep = true;
        return false;
    }
    if (text.size() > maxLength || text.startsWith(QChar('0')))
        return false;
    return text == text.toUpper();
}

QValidator::State OnlyIntegerValueFormatter::validate(QString &input, int &) const
{
    bool beep = false;
    if (isPartialStringValid(input, maxLength, &beep))
        return Acceptable;
    if (beep)
        QApplication::beep();
    return Invalid;
}

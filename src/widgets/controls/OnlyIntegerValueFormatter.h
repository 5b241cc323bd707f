#pragma once

#include <QValidator>

// A field that takes a whole number of at most maxLength characters, not starting with 0. Anything
// that is no number beeps.
class OnlyIntegerValueFormatter : public QValidator
{
    Q_OBJECT
public:
    explicit OnlyIntegerValueFormatter(QObject *parent = nullptr) : QValidator(parent) {}
    int maxLength = 4;
    State validate(QString &input, int &pos) const override;
    // The rule alone, without the beep.
    static bool isPartialStringValid(const QString &text, int maxLength, bool *wouldBeep = nullptr);
};

#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QPointer>
#include <QWidget>

// The labels and buttons of a view whose texts follow the language: each is kept with its key and set
// again by retranslate(), which the view calls on QEvent::LanguageChange.
class TranslatedTexts
{
public:
    // Sets the text now as well.
    void add(QWidget *labelOrButton, const char *key);
    void retranslate() const;

private:
    QList<QPair<QPointer<QWidget>, QByteArray>> m_items;
};

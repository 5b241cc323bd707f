#pragma once

#include <QByteArray>
#include <QList>
#include <QPointer>
#include <QWidget>

// The labels and buttons of a view whose texts follow the language: each is kept with its key and set
// again by retranslate(), which the view calls on QEvent::LanguageChange.
class TranslatedTexts
{
public:
    // Sets the text now as well; `asToolTip` for a control that shows a picture instead of words.
    void add(QWidget *labelOrButton, const char *key, bool asToolTip = false);
    void retranslate() const;

private:
    struct Item
    {
        QPointer<QWidget> widget;
        QByteArray key;
        bool asToolTip;
    };
    QList<Item> m_items;
};

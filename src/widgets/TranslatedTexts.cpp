#include "TranslatedTexts.h"

#include "core/texts/Texts.h"

#include <QAbstractButton>
#include <QLabel>

namespace {
void apply(QWidget *widget, const QByteArray &key, bool asToolTip)
{
    if (asToolTip)
        widget->setToolTip(Texts::localized(key.constData()));
    else if (auto *label = qobject_cast<QLabel *>(widget))
        label->setText(Texts::localized(key.constData()));
    else if (auto *button = qobject_cast<QAbstractButton *>(widget))
        button->setText(Texts::localized(key.constData()));
}
} // namespace

void TranslatedTexts::add(QWidget *labelOrButton, const char *key, bool asToolTip)
{
    m_items.append({labelOrButton, QByteArray(key), asToolTip});
    apply(labelOrButton, m_items.last().key, asToolTip);
}

void TranslatedTexts::retranslate() const
{
    for (const Item &item : m_items)
        if (item.widget)
            apply(item.widget, item.key, item.asToolTip);
}

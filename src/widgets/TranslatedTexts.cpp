#include "TranslatedTexts.h"

#include "core/texts/Texts.h"

#include <QAbstractButton>
#include <QLabel>

namespace {
void apply(QWidget *widget, const QByteArray &key)
{
    if (auto *label = qobject_cast<QLabel *>(widget))
        label->setText(Texts::localized(key.constData()));
    else if (auto *button = qobject_cast<QAbstractButton *>(widget))
        button->setText(Texts::localized(key.constData()));
}
} // namespace

void TranslatedTexts::add(QWidget *labelOrButton, const char *key)
{
    m_items.append({labelOrButton, QByteArray(key)});
    apply(labelOrButton, m_items.last().second);
}

void TranslatedTexts::retranslate() const
{
    for (const auto &[widget, key] : m_items)
        if (widget)
            apply(widget, key);
}

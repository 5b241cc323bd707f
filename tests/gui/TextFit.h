#pragma once

// The texts a window shows that do not fit where they are drawn: cut off at an edge, or elided by the
// style. Each problem reads "widget: "text" needs N px, has M".

#include "widgets/ActionButton.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFontMetricsF>
#include <QLabel>
#include <QPushButton>
#include <QStyleOptionButton>
#include <QStyleOptionComboBox>

inline QStringList clippedTexts(QWidget *root)
{
    QStringList problems;
    auto report = [&](QWidget *w, const QString &text, qreal needs, int has) {
        problems << QStringLiteral("%1 (%2): \"%3\" needs %4 px, has %5")
                        .arg(w->objectName(), QString::fromLatin1(w->metaObject()->className()), text)
                        .arg(needs, 0, 'f', 1)
                        .arg(has);
    };
    QList<QWidget *> widgets = root->findChildren<QWidget *>();
    widgets.prepend(root);
    for (QWidget *w : std::as_const(widgets)) {
        if (!w->isVisibleTo(root) && w != root)
            continue;
        if (auto *button = qobject_cast<ActionButton *>(w)) {
            if (button->text().isEmpty() || button->isBusy())
                continue;
            const QFontMetricsF metrics(button->labelFont());
            const QRect room = button->labelRect();
            if (metrics.horizontalAdvance(button->text()) > room.width() || metrics.height() > room.height() + 1)
                report(w, button->text(), metrics.horizontalAdvance(button->text()), room.width());
        } else if (auto *label = qobject_cast<QLabel *>(w)) {
            if (label->text().isEmpty() || label->textFormat() == Qt::RichText)
                continue;
            const QRect room = label->contentsRect().adjusted(label->margin(), label->margin(), -label->margin(), -label->margin());
            if (label->wordWrap()) {
                const int needs = label->heightForWidth(label->width());
                if (needs > label->height())
                    report(w, label->text(), needs, label->height()); // lines cut off at the bottom
                continue;
            }
            const QFontMetricsF metrics(label->font());
            qreal widest = 0;
            const QStringList lines = label->text().split(QLatin1Char('\n'));
            for (const QString &line : lines)
                widest = std::max(widest, metrics.horizontalAdvance(line));
            if (widest > room.width() || metrics.height() * lines.size() > room.height() + 1)
                report(w, label->text(), widest, room.width());
        } else if (qobject_cast<QCheckBox *>(w) || qobject_cast<QPushButton *>(w)) {
            auto *button = static_cast<QAbstractButton *>(w);
            const bool check = qobject_cast<QCheckBox *>(w);
            QStyleOptionButton option;
            option.initFrom(button);
            option.text = button->text();
            const QRect room = button->style()->subElementRect(check ? QStyle::SE_CheckBoxContents : QStyle::SE_PushButtonContents, &option, button);
            const int icon = check || button->icon().isNull() ? 0 : button->iconSize().width() + 4;
            const qreal needs = QFontMetricsF(button->font()).horizontalAdvance(button->text()) + icon;
            if (needs > room.width())
                report(w, button->text(), needs, room.width());
        } else if (auto *combo = qobject_cast<QComboBox *>(w)) {
            QStyleOptionComboBox option;
            option.initFrom(combo);
            const QRect room = combo->style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, combo);
            const qreal needs = QFontMetricsF(combo->font()).horizontalAdvance(combo->currentText());
            if (needs > room.width())
                report(w, combo->currentText(), needs, room.width());
        }
    }
    return problems;
}

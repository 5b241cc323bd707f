#pragma once

#include "core/panels/DropPanel.h"

#include <QHash>
#include <QWidget>

class ActionButton;
class QLabel;

// One action panel, built from the catalog: image buttons in a grid, title buttons below. A button
// only reports which action it stands for; the controller decides.
class ActionPanelView : public QWidget
{
    Q_OBJECT
public:
    explicit ActionPanelView(DropPanel panel, QWidget *parent = nullptr);

    ActionButton *button(const QString &outlet) const { return m_buttons.value(outlet); }
    QList<ActionButton *> buttons() const;
    // Loads both images of every image button again, as each opening of the panel does.
    void refreshImages();
    // Labels again in the current language, in a size at which they fit.
    void retranslate();

    // Panel 222 only: the text's counts.
    QLabel *glyphCountLbl = nullptr;
    QLabel *wordsCountLbl = nullptr;

Q_SIGNALS:
    void actionTriggered(const QString &action, ActionButton *sender);

protected:
    void changeEvent(QEvent *event) override;

private:
    void fitLabels();

    DropPanel m_panel;
    QHash<QString, ActionButton *> m_buttons;
    QHash<ActionButton *, QString> m_stems;
    QHash<ActionButton *, QByteArray> m_labelKeys;
    QLabel *m_glyphCaption = nullptr;
    QLabel *m_wordsCaption = nullptr;
};

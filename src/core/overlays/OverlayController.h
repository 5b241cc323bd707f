#pragma once

#include "widgets/TranslatedTexts.h"

#include <QWidget>

class QBoxLayout;
class QLabel;
class QPushButton;

// The shape every overlay controller shares: a title, its own fields, and a row of buttons that
// each carry an integer tag. A pressed button calls the controller's one completion handler.
class OverlayController : public QWidget
{
    Q_OBJECT
public:
    static constexpr qint64 kCloseTag = 101;

    explicit OverlayController(const char *titleKey, QWidget *parent = nullptr);
    // The text fields that take the keyboard first when the overlay shows, if any.
    virtual QWidget *firstResponder() const { return nullptr; }
    // The tag of the button that only closes the overlay.
    virtual qint64 closeTag() const { return kCloseTag; }

protected:
    QBoxLayout *body() const { return m_body; }
    // A small control at the right end of the title's row.
    void addTitleWidget(QWidget *widget);
    // `iconOnly`: the words go to the tool tip, the button shows a picture set by the caller.
    QPushButton *addTagButton(const char *textKey, qint64 tag, bool primary = false, bool iconOnly = false);
    // A label, or a button or label of the controller's own, whose text follows the language.
    QLabel *addLabel(const char *textKey);
    void translateLater(QWidget *labelOrButton, const char *textKey);
    // Calls the completion with the tag of the pressed button.
    virtual void fire(qint64 tag) = 0;
    void changeEvent(QEvent *event) override;

private:
    void retranslate();

    QByteArray m_titleKey;
    QLabel *m_title;
    QBoxLayout *m_titleRow;
    QBoxLayout *m_body;
    QBoxLayout *m_buttons;
    TranslatedTexts m_texts;
};

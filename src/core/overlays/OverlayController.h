#pragma once

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

protected:
    QBoxLayout *body() const { return m_body; }
    QPushButton *addTagButton(const char *textKey, qint64 tag, bool primary = false);
    // Calls the completion with the tag of the pressed button.
    virtual void fire(qint64 tag) = 0;
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *) override;

private:
    void retranslate();

    QByteArray m_titleKey;
    QLabel *m_title;
    QBoxLayout *m_body;
    QBoxLayout *m_buttons;
    QList<QPair<QPushButton *, QByteArray>> m_buttonKeys;
};

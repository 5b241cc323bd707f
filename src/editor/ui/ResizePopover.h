#pragma once

#include <QFrame>

class QCheckBox;
class QLineEdit;
class QPushButton;

// The editor's resize popover: a new pixel size for the picture, with its proportions kept while
// typing when the box is on. It only collects the numbers; the window decides.
class ResizePopover : public QFrame
{
    Q_OBJECT
public:
    explicit ResizePopover(QWidget *parent = nullptr);

    QLineEdit *resizeWTxtFld;
    QLineEdit *resizeHtxtFld;
    QCheckBox *proportionCheckBox;
    QPushButton *doneButton;

    // Shown under `anchor`, the fields filled with the picture's pixel size.
    void showFrom(QWidget *anchor, QSize pixels);
    bool isShown() const { return isVisible(); }
    void retranslate();

Q_SIGNALS:
    void resizeDonePressed();
    // A field's text changed by the user or by the arrow keys.
    void controlTextDidChange(QLineEdit *field);
    void proportionToggled(bool on);
    void stepRequested(QLineEdit *field, bool up);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void changeEvent(QEvent *event) override;
};

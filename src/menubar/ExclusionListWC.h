#pragma once

#include "platform/freedesktop/DesktopEntries.h"
#include "widgets/TranslatedTexts.h"

#include <QDialog>
#include <QWidget>

class QLineEdit;
class QListWidget;
class QMessageBox;
class QToolButton;

// The applications whose drags never wake the drop window: one row each, with its name and icon
// from its desktop file, a button that removes it after asking, and a way to add installed ones.
class ExclusionListWC : public QWidget
{
    Q_OBJECT
public:
    explicit ExclusionListWC(DesktopEntries entries, QWidget *parent = nullptr);

    QStringList exclApps;     // the ids shown, in the list's order
    QListWidget *exclTblView; // one row of 30 points per id
    QToolButton *hintBtn;

    void chooseApplication();             // opens the picker of installed applications
    void removeAppFromExclList(int row); // asks, then removes
    void updTblViewData();
    void showHint();
    QDialog *picker() const { return m_picker; }
    QMessageBox *removalQuestion() const { return m_question; }

    static QIcon iconFor(const DesktopApplication *app);

protected:
    void changeEvent(QEvent *event) override;

private:
    void retranslate();
    void addChosen(const QStringList &ids);
    TranslatedTexts m_texts;
    DesktopEntries m_entries;
    QDialog *m_picker = nullptr;
    QMessageBox *m_question = nullptr;
};

// Installed applications with their icons, several of them chosen at once, narrowed by typing.
class ApplicationPicker : public QDialog
{
    Q_OBJECT
public:
    ApplicationPicker(const DesktopEntries &entries, const QStringList &alreadyListed, QWidget *parent);
    QStringList chosenIds() const;
    QListWidget *list() const { return m_list; }
    QLineEdit *filter() const { return m_filter; }

private:
    QListWidget *m_list;
    QLineEdit *m_filter;
};

#pragma once

#include "utils/Result.h"

#include <QDateTime>
#include <QFileDialog>
#include <QMessageBox>
#include <QListView>
#include <QPointer>
#include <QWidget>

#include <functional>

class DestinationListModel;
class DestinationRowDelegate;
class QFileSystemWatcher;
class QTimer;
class SubfolderPopup;

// The table of a destination list with the keys it answers: Return picks, Escape goes back, Delete
// removes in edit mode, F2 renames.
class DestinationListView : public QListView
{
    Q_OBJECT
public:
    using QListView::QListView;
    bool editMode = false;
    bool isEditing() const { return state() == EditingState; }
Q_SIGNALS:
    void returnPressed(const QModelIndex &index);
    void escapePressed();
    void deletePressed(const QModelIndex &index);
    void subfoldersPressed(const QModelIndex &index); // the right arrow: the row's subfolders
    void renamePressed(const QModelIndex &index);     // F2

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
};

// The destination list that the picker and the manager window share: rows from the store, the
// one-second click filter, the question for a folder that is gone, renaming in place, removing,
// adding, reordering by dragging, the subfolder popup, and a rebuild whenever a volume comes or
// goes or the stored list changes (also from another window or process).
class DestinationList : public QWidget
{
    Q_OBJECT
public:
    enum class Kind {
        Picker,  // rows are chosen; edit mode on demand; the dropped item's rows are inactive
        Manager, // always the edit look; nothing is chosen
    };
    explicit DestinationList(Kind kind, QWidget *parent = nullptr);

    // The first dropped item ("destParentFldrPath"); empty where nothing is dropped.
    void setDestParentFldrPath(const QString &path);
    const QString &destParentFldrPath() const { return m_dropped; }
    void setEditMode(bool on);
    bool editMode() const { return m_editMode; }
    // Rows from the store, as createMoveDestArr gives them.
    void reload();
    // Rows as given (the picker is filled by the controller).
    void setDestinationsArr(const QStringList &paths);
    QStringList destinationsArr() const;
    void setDefDestArr(const QStringList &paths) { m_standard = paths; }

    // Called with true while a question or the folder panel is up, false after (the drop window's
    // do-not-close notice).
    std::function<void(bool)> holdWindowOpen;

    // The actions behind the row's clicks and keys.
    void rowClicked(const QModelIndex &index);
    void showSubfolders(const QModelIndex &index);
    void removeUserDest(const QModelIndex &index);
    void addNewDestination();
    void addDestinationPath(const QString &path); // the folder panel's or the popup's answer
    void beginRename(const QModelIndex &index);

    DestinationListView *destTablView;
    DestinationListModel *model() const { return m_model; }
    DestinationRowDelegate *delegate() const { return m_delegate; }
    SubfolderPopup *subfolderPopup() const { return m_popup; }
    QMessageBox *question() const { return m_question; }
    QFileDialog *folderPanel() const { return m_folderPanel; }
    QModelIndex indexOfPath(const QString &path) const;

Q_SIGNALS:
    void destinationChosen(const QString &path); // a row (picker)
    void subfolderChosen(const QString &path);   // a folder of the popup (picker)
    void backRequested();                        // Escape

private:
    bool allowClick();
    void applyRows(const QStringList &paths);
    void ask(const QString &message, const QString &informative, std::function<void()> onYes);
    void report(const Status &status);
    void storeChanged();

    Kind m_kind;
    bool m_editMode = false;
    QString m_dropped;
    QStringList m_standard;
    QDateTime dateOfLastClick;
    DestinationListModel *m_model;
    DestinationRowDelegate *m_delegate;
    SubfolderPopup *m_popup;
    QPointer<QMessageBox> m_question;
    QPointer<QFileDialog> m_folderPanel;
    QFileSystemWatcher *m_watcher;
    QTimer *m_reloadLater;
};

#pragma once

#include "fileops/destinations/SubfolderListing.h"

#include <QFrame>

#include <atomic>
#include <memory>

class QLabel;
class QPushButton;
class QStandardItem;
class QStandardItemModel;
class QTreeView;

// The subfolder browser of a destination row: a tree that opens beside the row's button, one level
// at a time, each level listed on a pool thread. Every new fetch takes a new generation of
// `fetchSubfoldersCounter`; a fetch whose generation is no longer the newest gives up between
// entries, so a click on another row's button ends the earlier listing. An empty folder shows a note.
class SubfolderPopup : public QFrame
{
    Q_OBJECT
public:
    enum class Mode {
        Choose, // the picker: a click on a folder chooses it
        Add,    // the manager: a folder is selected, then added with the button
    };
    static constexpr int kMaxHeight = 400;

    explicit SubfolderPopup(Mode mode, QWidget *parent = nullptr);
    ~SubfolderPopup() override;

    // Starts listing `folder`; the popup opens beside `anchor` (global) once the list is there, and
    // `fetched` runs then (or when nothing came), unless a newer fetch took over. Folders at or inside
    // `protectedPath` (the dropped item) are shown but cannot be chosen.
    void fetch(const QString &folder, const QRect &anchor, const QString &protectedPath, std::function<void()> fetched = {});
    int generation() const { return fetchSubfoldersCounter->load(); }

    QTreeView *subFldrOutlineView() const { return m_tree; }
    QLabel *noSubfoldersNote() const { return m_note; }
    QPushButton *addButton() const { return m_add; }
    QString selectedPath() const;
    // The paths of the tree's rows at one level (below `parentPath`, or the roots).
    QStringList shownPaths(const QString &parentPath = {}) const;
    // Lists the children of a shown folder (as expanding it does).
    void expandPath(const QString &path);

Q_SIGNALS:
    void chosen(const QString &path);           // Mode::Choose
    void addRequested(const QString &path);     // Mode::Add
    void levelLoaded(const QString &parentPath); // children arrived, for tests and sizing
    void closed();

protected:
    void hideEvent(QHideEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void fillChildren(QStandardItem *parent, const QList<SubfolderListing::Node> &nodes);
    void loadChildren(const QModelIndex &index);
    void resizePopoverToFitFileTree();
    void itemClicked(const QModelIndex &index);
    QStandardItem *itemForPath(const QString &path) const;

    Mode m_mode;
    std::shared_ptr<std::atomic_int> fetchSubfoldersCounter;
    QString m_protected;
    QString m_root;
    QTreeView *m_tree;
    QStandardItemModel *m_model;
    QLabel *m_note;
    QPushButton *m_add = nullptr;
};

#pragma once

#include <QAbstractListModel>

class LRHMPagesManager;
class PageThumbnails;

// The board's entries for the view: name, thumbnail, path. Reordering by drag carries the dragged
// rows under the board's own type; files dropped from elsewhere are handed to the window, which
// decides which it takes.
class PageBoardModel : public QAbstractListModel
{
    Q_OBJECT
public:
    static constexpr const char *kDragType = "application/x-quaydrop-browserViewDragIndexsType";
    enum Role { IdentifyRole = Qt::UserRole + 1, FailedRole };

    PageBoardModel(LRHMPagesManager &pages, PageThumbnails &thumbnails, QObject *parent = nullptr);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    Qt::DropActions supportedDropActions() const override { return Qt::MoveAction | Qt::CopyAction; }
    QStringList mimeTypes() const override;
    QMimeData *mimeData(const QModelIndexList &indexes) const override;
    bool canDropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column, const QModelIndex &parent) const override;
    bool dropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column, const QModelIndex &parent) override;

Q_SIGNALS:
    void filesDropped(const QStringList &paths);
    void rowsMovedTo(int first, int count); // after a reorder: where the block stands now

private:
    LRHMPagesManager &m_pages;
    PageThumbnails &m_thumbnails;
};

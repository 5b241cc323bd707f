#pragma once

#include "fileops/destinations/DestinationRows.h"

#include <QAbstractListModel>

// The rows of a destination list. A row's name can be edited in place when the list allows it; a
// drag of a row onto the gap above another asks for the move, which the list writes to the store
// before it shows the new order.
class DestinationListModel : public QAbstractListModel
{
    Q_OBJECT
public:
    enum Role { PathRole = Qt::UserRole + 1, InactiveRole, KindRole, ButtonHiddenRole, StoredRole };
    static constexpr char kRowMimeType[] = "application/x-quaydrop-destination-row";

    using QAbstractListModel::QAbstractListModel;
    void setRows(const QList<DestinationRow> &rows);
    const QList<DestinationRow> &rows() const { return m_rows; }
    QStringList paths() const;
    void setRenamable(bool on) { m_renamable = on; }

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    QStringList mimeTypes() const override;
    QMimeData *mimeData(const QModelIndexList &indexes) const override;
    Qt::DropActions supportedDropActions() const override { return Qt::MoveAction; }
    bool canDropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                         const QModelIndex &parent) const override;
    bool dropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column, const QModelIndex &parent) override;

Q_SIGNALS:
    void renameRequested(const QString &path, const QString &name);
    // The row at `source` goes to the gap above `target` (rowCount(): the end).
    void moveRequested(int source, int target);

private:
    int draggedRow(const QMimeData *data) const;
    static int gapOf(int row, const QModelIndex &parent, int count);

    QList<DestinationRow> m_rows;
    bool m_renamable = false;
};

#include "DestinationListModel.h"

#include "core/fs/NativePath.h"
#include "fileops/destinations/DestinationEdits.h"

#include <QMimeData>

void DestinationListModel::setRows(const QList<DestinationRow> &rows)
{
    beginResetModel();
    m_rows = rows;
    endResetModel();
}

QStringList DestinationListModel::paths() const
{
    QStringList out;
    for (const DestinationRow &r : m_rows)
        out.append(r.path);
    return out;
}

int DestinationListModel::rowCount(const QModelIndex &parent) const { return parent.isValid() ? 0 : int(m_rows.size()); }

QVariant DestinationListModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= m_rows.size())
        return {};
    const DestinationRow &r = m_rows.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return NativePath::forDisplay(r.name);
    case Qt::EditRole:
        return r.name;
    case Qt::ToolTipRole:
        return NativePath::forDisplay(r.path);
    case PathRole:
        return r.path;
    case InactiveRole:
        return r.inactive;
    case KindRole:
        return int(r.kind);
    case ButtonHiddenRole:
        return r.buttonHidden;
    case StoredRole:
        return r.stored;
    default:
        return {};
    }
}

bool DestinationListModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (role != Qt::EditRole || !index.isValid() || !(flags(index) & Qt::ItemIsEditable))
        return false;
    // The list writes the store and rebuilds its rows from it.
    Q_EMIT renameRequested(m_rows.at(index.row()).path, value.toString());
    return true;
}

Qt::ItemFlags DestinationListModel::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::ItemIsDropEnabled;
    const DestinationRow &r = m_rows.at(index.row());
    if (r.inactive)
        return Qt::NoItemFlags;
    Qt::ItemFlags f = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled;
    if (m_renamable && r.stored)
        f |= Qt::ItemIsEditable;
    return f;
}

QStringList DestinationListModel::mimeTypes() const { return {QString::fromLatin1(kRowMimeType)}; }

QMimeData *DestinationListModel::mimeData(const QModelIndexList &indexes) const
{
    if (indexes.isEmpty())
        return nullptr;
    // One row moves at a time: the first one dragged.
    auto *data = new QMimeData;
    data->setData(QString::fromLatin1(kRowMimeType), QByteArray::number(indexes.first().row()));
    return data;
}

int DestinationListModel::draggedRow(const QMimeData *data) const
{
    if (!data || !data->hasFormat(QString::fromLatin1(kRowMimeType)))
        return -1;
    bool ok = false;
    const int row = data->data(QString::fromLatin1(kRowMimeType)).toInt(&ok);
    return ok && row >= 0 && row < m_rows.size() ? row : -1;
}

int DestinationListModel::gapOf(int row, const QModelIndex &parent, int count)
{
    if (row >= 0)
        return row;
    return parent.isValid() ? parent.row() : count; // onto a row: the gap above it
}

bool DestinationListModel::canDropMimeData(const QMimeData *data, Qt::DropAction action, int row, int,
                                           const QModelIndex &parent) const
{
    const int source = draggedRow(data);
    return action == Qt::MoveAction && source >= 0 &&
           DestinationEdits::isRealMove(source, gapOf(row, parent, int(m_rows.size())));
}

bool DestinationListModel::dropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                                        const QModelIndex &parent)
{
    if (!canDropMimeData(data, action, row, column, parent))
        return false;
    Q_EMIT moveRequested(draggedRow(data), gapOf(row, parent, int(m_rows.size())));
    // Not taken as done: the view must not remove the dragged row itself.
    return false;
}

#include "PageBoardModel.h"

#include "images/board/LRHMPagesManager.h"
#include "images/board/PageThumbnails.h"

#include <QDataStream>
#include <QIODevice>
#include <QMimeData>
#include <QUrl>

PageBoardModel::PageBoardModel(LRHMPagesManager &pages, PageThumbnails &thumbnails, QObject *parent)
    : QAbstractListModel(parent), m_pages(pages), m_thumbnails(thumbnails)
{
    connect(&pages, &LRHMPagesManager::listChanged, this, [this] {
        beginResetModel();
        endResetModel();
    });
    connect(&pages, &LRHMPagesManager::itemChanged, this, [this](qsizetype row) {
        Q_EMIT dataChanged(index(int(row)), index(int(row)));
    });
    connect(&thumbnails, &PageThumbnails::ready, this, [this](const QString &identify) {
        const auto &items = m_pages.items();
        for (int row = 0; row < items.size(); ++row)
            if (items.at(row).identify == identify)
                Q_EMIT dataChanged(index(row), index(row), {Qt::DecorationRole, FailedRole});
    });
}

int PageBoardModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_pages.pageImageCount());
}

QVariant PageBoardModel::data(const QModelIndex &index, int role) const
{
    const auto item = m_pages.pageItemAt(index.row());
    if (!item)
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return item->fileName();
    case Qt::ToolTipRole:
        return item->filePath;
    case Qt::DecorationRole:
        return m_thumbnails.thumbnail(*item);
    case IdentifyRole:
        return item->identify;
    case FailedRole:
        return m_thumbnails.failed(item->identify);
    default:
        return {};
    }
}

Qt::ItemFlags PageBoardModel::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::ItemIsDropEnabled;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled | Qt::ItemIsDropEnabled;
}

QStringList PageBoardModel::mimeTypes() const
{
    return {QString::fromLatin1(kDragType), QStringLiteral("text/uri-list")};
}

QMimeData *PageBoardModel::mimeData(const QModelIndexList &indexes) const
{
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    QList<qint64> rows;
    for (const QModelIndex &i : indexes)
        rows.append(i.row());
    out << rows;
    auto *data = new QMimeData;
    data->setData(QString::fromLatin1(kDragType), bytes);
    return data;
}

bool PageBoardModel::canDropMimeData(const QMimeData *data, Qt::DropAction, int, int, const QModelIndex &) const
{
    return data->hasFormat(QString::fromLatin1(kDragType)) || data->hasUrls();
}

bool PageBoardModel::dropMimeData(const QMimeData *data, Qt::DropAction, int row, int, const QModelIndex &parent)
{
    // Dropped on a cell: the block goes before it.
    const int destination = parent.isValid() ? parent.row() : row < 0 ? rowCount() : row;
    if (data->hasFormat(QString::fromLatin1(kDragType))) {
        QList<qint64> rows;
        QDataStream in(data->data(QString::fromLatin1(kDragType)));
        in >> rows;
        QList<qsizetype> indexes(rows.cbegin(), rows.cend());
        const qsizetype below = std::count_if(rows.cbegin(), rows.cend(), [destination](qint64 r) { return r < destination; });
        m_pages.moveItemsAtIndexes(indexes, destination);
        Q_EMIT rowsMovedTo(int(std::clamp<qsizetype>(destination - below, 0, m_pages.pageImageCount())), int(rows.size()));
        // The view must not remove the dragged rows itself: the store has moved them already.
        return false;
    }
    QStringList paths;
    for (const QUrl &url : data->urls())
        if (url.isLocalFile())
            paths << url.toLocalFile();
    Q_EMIT filesDropped(paths);
    return true;
}

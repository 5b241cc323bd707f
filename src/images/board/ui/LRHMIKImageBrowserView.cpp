#include "LRHMIKImageBrowserView.h"

#include "ImageBrowserCell.h"

#include <QApplication>
#include <QKeyEvent>

#include <algorithm>

LRHMIKImageBrowserView::LRHMIKImageBrowserView(QWidget *parent) : QListView(parent)
{
    setObjectName(QStringLiteral("imageBrowserView"));
    setViewMode(QListView::IconMode);
    // Static: a drag reorders the model's rows instead of leaving icons where they were dropped.
    setMovement(QListView::Static);
    setResizeMode(QListView::Adjust);
    setWrapping(true);
    setUniformItemSizes(true);
    setGridSize(QSize(ImageBrowserCell::kCellWidth + 8, ImageBrowserCell::kCellHeight + 8));
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setDragEnabled(true);
    setAcceptDrops(true);
    setDropIndicatorShown(true);
    setDragDropMode(QAbstractItemView::DragDrop);
    setDefaultDropAction(Qt::MoveAction);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setItemDelegate(new ImageBrowserCell(this));
}

QList<qsizetype> LRHMIKImageBrowserView::selectedRows() const
{
    QList<qsizetype> rows;
    for (const QModelIndex &i : selectionModel()->selectedIndexes())
        rows.append(i.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

void LRHMIKImageBrowserView::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Delete || event->key() == Qt::Key_Backspace) {
        const QList<qsizetype> rows = selectedRows();
        if (rows.isEmpty())
            QApplication::beep();
        else
            Q_EMIT removeItems(rows);
        return;
    }
    if (event->matches(QKeySequence::SelectAll)) {
        selectAll();
        return;
    }
    QListView::keyPressEvent(event);
}

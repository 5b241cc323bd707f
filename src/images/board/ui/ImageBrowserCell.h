#pragma once

#include <QStyledItemDelegate>

// A cell of the page board: the thumbnail in a fixed square, the file's name under it, and the two
// layers of the board's look: a soft placeholder until the thumbnail is ready, a green frame when
// selected.
class ImageBrowserCell : public QStyledItemDelegate
{
    Q_OBJECT
public:
    static constexpr int kImageSide = 160;
    static constexpr int kCellWidth = kImageSide + 24;
    static constexpr int kCellHeight = kImageSide + 40;

    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &, const QModelIndex &) const override { return {kCellWidth, kCellHeight}; }
};

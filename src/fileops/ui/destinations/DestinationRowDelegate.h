#pragma once

#include <QPersistentModelIndex>
#include <QStyledItemDelegate>

// The look of one destination row (the picker's "destCellView"): 25 points high, an icon by kind
// (standard folder, the user's folder, a removable volume), the name underlined under the pointer,
// grey when the row makes no sense for the drop, and on the right the row's buttons: the
// subfolder arrow, the remove button, or both.
class DestinationRowDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    static constexpr int kRowHeight = 25;
    enum Button { NoButton = 0, SubfoldersButton = 1, RemoveButton = 2 };
    Q_DECLARE_FLAGS(Buttons, Button)

    using QStyledItemDelegate::QStyledItemDelegate;
    void setButtons(Buttons buttons) { m_buttons = buttons; }
    Buttons buttons() const { return m_buttons; }
    // The row whose subfolders are being fetched shows a busy mark instead of its arrow.
    void setFetchingRow(const QPersistentModelIndex &index) { m_fetching = index; }

    // Where a row's button sits, in the view's coordinates; empty when the row does not show it.
    QRect buttonRect(const QStyleOptionViewItem &option, const QModelIndex &index, Button button) const;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    void updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option, const QModelIndex &index) const override;

Q_SIGNALS:
    void buttonClicked(const QModelIndex &index, DestinationRowDelegate::Button button);

protected:
    bool editorEvent(QEvent *event, QAbstractItemModel *model, const QStyleOptionViewItem &option,
                     const QModelIndex &index) override;

private:
    QRect textRect(const QStyleOptionViewItem &option, const QModelIndex &index) const;

    Buttons m_buttons = SubfoldersButton;
    QPersistentModelIndex m_fetching;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(DestinationRowDelegate::Buttons)

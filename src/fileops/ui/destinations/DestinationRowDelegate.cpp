#include "DestinationRowDelegate.h"

#include "DestinationListModel.h"
#include "widgets/ButtonImages.h"

#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>

namespace {

constexpr int kIconSide = 18;
constexpr int kButtonSide = 18;
constexpr int kMargin = 6;

QString iconStem(DestinationRow::Kind kind)
{
    switch (kind) {
    case DestinationRow::Kind::StandardFolder:
        return QStringLiteral("NSFolder");
    case DestinationRow::Kind::Volume:
        return QStringLiteral("Drive2");
    case DestinationRow::Kind::UserFolder:
        break;
    }
    return QStringLiteral("folder3");
}

} // namespace

QRect DestinationRowDelegate::buttonRect(const QStyleOptionViewItem &option, const QModelIndex &index, Button button) const
{
    if (!(m_buttons & button))
        return {};
    if (button == SubfoldersButton && index.data(DestinationListModel::ButtonHiddenRole).toBool())
        return {};
    // The remove button sits at the right edge; the arrow left of it when both show.
    int right = option.rect.right() - kMargin;
    if (button == SubfoldersButton && (m_buttons & RemoveButton))
        right -= kButtonSide + 4;
    return QRect(right - kButtonSide + 1, option.rect.center().y() - kButtonSide / 2, kButtonSide, kButtonSide);
}

QRect DestinationRowDelegate::textRect(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    int right = option.rect.right() - kMargin;
    for (const Button b : {SubfoldersButton, RemoveButton})
        if (const QRect r = buttonRect(option, index, b); !r.isEmpty())
            right = qMin(right, r.left() - 4);
    const int left = option.rect.left() + kMargin + kIconSide + 6;
    return QRect(left, option.rect.top(), right - left, option.rect.height());
}

void DestinationRowDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyleOptionViewItem opt = option;
    initStyleOption(&opt, index);
    const bool inactive = index.data(DestinationListModel::InactiveRole).toBool();
    const bool hovered = (opt.state & QStyle::State_MouseOver) && !inactive;
    const bool selected = opt.state & QStyle::State_Selected;

    // The background and focus as the style draws them, without its text and icon.
    opt.text.clear();
    opt.icon = QIcon();
    opt.widget->style()->drawControl(QStyle::CE_ItemViewItem, &opt, painter, opt.widget);

    // Grey by fading the row's own colours: a theme's disabled text is not always distinct.
    const QPalette::ColorGroup group = QPalette::Active;
    painter->save();
    if (inactive)
        painter->setOpacity(0.4);
    const QPalette::ColorRole textRole = selected ? QPalette::HighlightedText : QPalette::Text;
    QPalette iconPalette = option.palette;
    iconPalette.setColor(QPalette::ButtonText, option.palette.color(group, textRole));
    const qreal dpr = painter->device() ? painter->device()->devicePixelRatioF() : 1.0;
    const auto kind = DestinationRow::Kind(index.data(DestinationListModel::KindRole).toInt());
    const QPixmap icon = ButtonImages::forStem(iconStem(kind), kIconSide, iconPalette, dpr).normal;
    painter->drawPixmap(QPoint(option.rect.left() + kMargin, option.rect.center().y() - kIconSide / 2), icon);

    QFont font = option.font;
    font.setUnderline(hovered);
    painter->save();
    painter->setFont(font);
    painter->setPen(option.palette.color(group, textRole));
    const QRect text = textRect(option, index);
    painter->drawText(text, Qt::AlignVCenter | Qt::AlignLeft,
                      QFontMetrics(font).elidedText(index.data(Qt::DisplayRole).toString(), Qt::ElideMiddle, text.width()));
    painter->restore();

    for (const Button b : {SubfoldersButton, RemoveButton}) {
        const QRect r = buttonRect(option, index, b);
        if (r.isEmpty())
            continue;
        if (b == SubfoldersButton && m_fetching.isValid() && QModelIndex(m_fetching) == index) {
            painter->save();
            painter->setPen(option.palette.color(group, textRole));
            painter->drawText(r, Qt::AlignCenter, QStringLiteral("…"));
            painter->restore();
            continue;
        }
        const auto images = ButtonImages::forStem(b == RemoveButton ? QStringLiteral("Black_Remove") : QStringLiteral("expand"),
                                                  kButtonSide, iconPalette, dpr);
        const bool overButton = hovered && r.contains(opt.widget->mapFromGlobal(QCursor::pos()));
        painter->drawPixmap(r.topLeft(), overButton ? images.hover : images.normal);
    }
    painter->restore();
}

QSize DestinationRowDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    return QSize(QStyledItemDelegate::sizeHint(option, index).width(), kRowHeight);
}

QWidget *DestinationRowDelegate::createEditor(QWidget *parent, const QStyleOptionViewItem &, const QModelIndex &) const
{
    auto *editor = new QLineEdit(parent);
    editor->setObjectName(QStringLiteral("destNameEditor"));
    editor->setFrame(false);
    return editor;
}

void DestinationRowDelegate::updateEditorGeometry(QWidget *editor, const QStyleOptionViewItem &option,
                                                  const QModelIndex &index) const
{
    editor->setGeometry(textRect(option, index).adjusted(-3, 2, 0, -2));
}

bool DestinationRowDelegate::editorEvent(QEvent *event, QAbstractItemModel *model, const QStyleOptionViewItem &option,
                                         const QModelIndex &index)
{
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonRelease ||
        event->type() == QEvent::MouseButtonDblClick) {
        const auto *mouse = static_cast<QMouseEvent *>(event);
        for (const Button b : {SubfoldersButton, RemoveButton}) {
            if (!buttonRect(option, index, b).contains(mouse->position().toPoint()))
                continue;
            // A press on a button is the button's, never the row's.
            if (event->type() == QEvent::MouseButtonRelease && mouse->button() == Qt::LeftButton)
                Q_EMIT buttonClicked(index, b);
            return true;
        }
    }
    return QStyledItemDelegate::editorEvent(event, model, option, index);
}

#include "ImageBrowserCell.h"

#include "PageBoardModel.h"

#include <QIcon>
#include <QPainter>
#include <QPainterPath>

void ImageBrowserCell::paint(QPainter *p, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    p->save();
    p->setRenderHint(QPainter::Antialiasing);
    const QRectF cell = QRectF(option.rect).adjusted(4, 4, -4, -4);
    const QRectF imageFrame(cell.x() + (cell.width() - kImageSide) / 2, cell.y() + 4, kImageSide, kImageSide);

    if (option.state & QStyle::State_Selected) {
        p->setPen(QPen(QColor::fromRgbF(0.5, 1.0, 0.5, 1.0), 1.0));
        p->setBrush(QColor::fromRgbF(0.5, 1.0, 0.5, 0.3));
        p->drawRoundedRect(cell, 5.0, 5.0);
    }

    const QImage thumbnail = index.data(Qt::DecorationRole).value<QImage>();
    if (thumbnail.isNull()) {
        // The placeholder layer, on any theme: white at 30 %, a frame at 90 % of the text colour's contrast.
        p->setPen(QPen(option.palette.color(QPalette::Mid), 2.0));
        p->setBrush(QColor::fromRgbF(1.0, 1.0, 1.0, 0.3));
        p->drawRoundedRect(imageFrame.adjusted(8, 8, -8, -8), 10.0, 10.0);
        if (index.data(PageBoardModel::FailedRole).toBool())
            QIcon::fromTheme(QStringLiteral("image-missing")).paint(p, imageFrame.toRect().adjusted(48, 48, -48, -48));
    } else {
        const QSizeF shown = QSizeF(thumbnail.size()).scaled(imageFrame.size(), Qt::KeepAspectRatio);
        const QRectF target(imageFrame.center().x() - shown.width() / 2, imageFrame.bottom() - shown.height(), shown.width(),
                            shown.height());
        p->setPen(Qt::NoPen);
        p->setBrush(QColor(0, 0, 0, 40));
        p->drawRect(target.translated(1.5, 1.5)); // a faint shadow lifts the page off the board
        p->drawImage(target, thumbnail);
    }

    const QRectF textRect(cell.x() + 2, imageFrame.bottom() + 6, cell.width() - 4, option.fontMetrics.height());
    p->setPen(option.palette.color(option.state & QStyle::State_Selected ? QPalette::WindowText : QPalette::Text));
    p->drawText(textRect, Qt::AlignHCenter | Qt::AlignTop,
                option.fontMetrics.elidedText(index.data(Qt::DisplayRole).toString(), Qt::ElideMiddle, int(textRect.width())));
    p->restore();
}

#include "DropFilesHereView.h"

#include "core/panels/PanelCatalog.h"
#include "core/texts/Texts.h"
#include "widgets/ButtonImages.h"

#include <QDragEnterEvent>
#include <QPainter>

DropFilesHereView::DropFilesHereView(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("dropFilesHereView"));
    setAcceptDrops(true);
    setFixedSize(PanelCatalog::kDropTargetSide, PanelCatalog::kDropTargetSide);
}

void DropFilesHereView::dragEnterEvent(QDragEnterEvent *event)
{
    m_hovered = true;
    update();
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

void DropFilesHereView::dragMoveEvent(QDragMoveEvent *event)
{
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

void DropFilesHereView::dragLeaveEvent(QDragLeaveEvent *)
{
    m_hovered = false;
    update();
}

void DropFilesHereView::dropEvent(QDropEvent *event)
{
    m_hovered = false;
    update();
    event->setDropAction(Qt::CopyAction);
    event->accept();
    Q_EMIT dropped(event->mimeData());
}

void DropFilesHereView::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const QPalette pal = palette();
    if (m_hovered) {
        QColor tile = pal.color(QPalette::Highlight);
        tile.setAlphaF(0.18);
        p.setPen(Qt::NoPen);
        p.setBrush(tile);
        p.drawRoundedRect(QRectF(rect()).adjusted(3, 3, -3, -3), 10, 10);
    }
    const QPixmap icon = m_hovered ? ButtonImages::forStem(QStringLiteral("dragNdropIcon"), 44, pal).hover
                                   : ButtonImages::forStem(QStringLiteral("dragNdropIcon"), 44, pal).normal;
    p.drawPixmap((width() - 44) / 2, 10, icon);
    QFont f = font();
    f.setPointSizeF(f.pointSizeF() * 0.85);
    p.setFont(f);
    p.setPen(pal.color(m_hovered ? QPalette::Highlight : QPalette::WindowText));
    p.drawText(QRect(0, 58, width(), 24), Qt::AlignCenter, Texts::localized("Drop here"));
}

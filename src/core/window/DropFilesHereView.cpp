#include "DropFilesHereView.h"

#include "DropView.h"
#include "core/intake/DropOperation.h"
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
    dropQuickMoveView = new DropView(this);
    dropQuickMoveView->setMDropViewTag(DropView::kQuickMoveTag);
    createAliasDropView = new DropView(this);
    createAliasDropView->setMDropViewTag(DropView::kAliasTag);
}

namespace {
constexpr int kIconSide = 32;
constexpr int kSmallTargetsHeight = 32;
} // namespace

void DropFilesHereView::resizeEvent(QResizeEvent *)
{
    const int half = width() / 2;
    const int top = height() - kSmallTargetsHeight - 2;
    dropQuickMoveView->setGeometry(2, top, half - 3, kSmallTargetsHeight);
    createAliasDropView->setGeometry(half + 1, top, width() - half - 3, kSmallTargetsHeight);
}

void DropFilesHereView::dragEnterEvent(QDragEnterEvent *event)
{
    if (!DropOperation::offersTypeFor(event->mimeData(), DropOperation::Target::Window)) {
        event->ignore();
        return;
    }
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
    const DropOperation::Outcome outcome = DropOperation::perform(event->mimeData(), DropOperation::Target::Window, window()->winId());
    if (!outcome.accepted) {
        event->ignore(); // the window keeps waiting
        return;
    }
    event->setDropAction(Qt::CopyAction);
    event->accept();
    Q_EMIT dropped(event->mimeData(), outcome.promisedPaths);
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
        p.drawRoundedRect(QRectF(0, 0, width(), height() - kSmallTargetsHeight - 2).adjusted(2, 2, -2, -1), 8, 8);
    }
    const ButtonImages::Pair icon = ButtonImages::forStem(QStringLiteral("dragNdropIcon"), kIconSide, pal, devicePixelRatioF());
    p.drawPixmap((width() - kIconSide) / 2, 4, m_hovered ? icon.hover : icon.normal);
    QFont f = font();
    f.setPointSizeF(f.pointSizeF() * 0.8);
    p.setFont(f);
    p.setPen(pal.color(m_hovered ? QPalette::Highlight : QPalette::WindowText));
    p.drawText(QRect(0, kIconSide + 4, width(), 16), Qt::AlignCenter, Texts::localized("Drop here"));
}

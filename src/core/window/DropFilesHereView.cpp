#include "DropFilesHereView.h"

#include "DropView.h"
#include "core/intake/DropOperation.h"
#include "core/panels/PanelCatalog.h"
#include "core/texts/Texts.h"
#include "widgets/ButtonImages.h"

#include <QDragEnterEvent>
#include <QLabel>
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
    dropHereLbl = new QLabel(this);
    dropHereLbl->setObjectName(QStringLiteral("dropHereLbl"));
    dropHereLbl->setAlignment(Qt::AlignCenter);
    dropHereLbl->setAttribute(Qt::WA_TransparentForMouseEvents);
    QFont small = dropHereLbl->font();
    small.setPointSizeF(small.pointSizeF() * 0.85);
    dropHereLbl->setFont(small);
    retranslate();
}

namespace {
constexpr int kIconSide = 32;
constexpr int kIconTop = 3;
constexpr int kCaptionHeight = 15;
constexpr int kRowHeight = 17; // each small target is a row under the big one
} // namespace

void DropFilesHereView::resizeEvent(QResizeEvent *)
{
    const int rows = height() - 2 * kRowHeight - 2;
    dropQuickMoveView->setGeometry(2, rows, width() - 4, kRowHeight);
    createAliasDropView->setGeometry(2, rows + kRowHeight + 1, width() - 4, kRowHeight);
    dropHereLbl->setGeometry(0, kIconTop + kIconSide, width(), kCaptionHeight);
}

void DropFilesHereView::retranslate()
{
    dropHereLbl->setText(Texts::localized("Drop here"));
    QPalette pal = dropHereLbl->palette();
    pal.setColor(QPalette::WindowText, palette().color(m_hovered ? QPalette::Highlight : QPalette::WindowText));
    dropHereLbl->setPalette(pal);
}

void DropFilesHereView::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange || event->type() == QEvent::PaletteChange)
        retranslate();
    QWidget::changeEvent(event);
}

void DropFilesHereView::dragEnterEvent(QDragEnterEvent *event)
{
    if (!DropOperation::offersTypeFor(event->mimeData(), DropOperation::Target::Window)) {
        event->ignore();
        return;
    }
    m_hovered = true;
    retranslate();
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
    retranslate();
    update();
}

void DropFilesHereView::dropEvent(QDropEvent *event)
{
    m_hovered = false;
    retranslate();
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
        p.drawRoundedRect(QRectF(0, 0, width(), dropQuickMoveView->y() - 1).adjusted(2, 2, -2, -1), 8, 8);
    }
    const ButtonImages::Pair icon = ButtonImages::forStem(QStringLiteral("dragNdropIcon"), kIconSide, pal, devicePixelRatioF());
    p.drawPixmap((width() - kIconSide) / 2, kIconTop, m_hovered ? icon.hover : icon.normal);
}

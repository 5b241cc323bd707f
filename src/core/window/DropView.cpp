#include "DropView.h"

#include "core/intake/DropOperation.h"
#include "core/texts/Texts.h"
#include "widgets/ButtonImages.h"

#include <QDragEnterEvent>
#include <QLabel>
#include <QPainter>

namespace {
constexpr int kIconSide = 18;
}

DropView::DropView(QWidget *parent) : QWidget(parent)
{
    setAcceptDrops(true);
    labelTextFld = new QLabel(this);
    labelTextFld->setAlignment(Qt::AlignCenter);
    QFont small = labelTextFld->font();
    small.setPointSizeF(small.pointSizeF() * 0.7);
    labelTextFld->setFont(small);
    // The caption must never take the drop from the view.
    labelTextFld->setAttribute(Qt::WA_TransparentForMouseEvents);
    setMDropViewTag(kQuickMoveTag);
}

void DropView::setMDropViewTag(qint64 tag)
{
    m_tag = tag;
    setObjectName(tag == kAliasTag ? QStringLiteral("createAliasDropView") : QStringLiteral("dropQuickMoveView"));
    retranslate();
}

void DropView::retranslate()
{
    labelTextFld->setText(m_tag == kAliasTag ? Texts::localized("aliasDropCaption") : Texts::localized("quickMoveDropCaption"));
    setToolTip(m_tag == kAliasTag ? Texts::localized("aliasDropHint") : Texts::localized("quickMoveDropHint"));
    update();
}

void DropView::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QWidget::changeEvent(event);
}

QString DropView::iconStem() const
{
    return m_tag == kAliasTag ? QStringLiteral("alias") : QStringLiteral("quickMove");
}

void DropView::dragEnterEvent(QDragEnterEvent *event)
{
    if (!DropOperation::offersTypeFor(event->mimeData(), DropOperation::Target::DropView)) {
        event->ignore();
        return;
    }
    m_hovered = true;
    labelTextFld->setText(QStringLiteral("Move/Copy"));
    update();
    event->setDropAction(Qt::LinkAction);
    event->accept();
}

void DropView::dragMoveEvent(QDragMoveEvent *event)
{
    event->setDropAction(Qt::LinkAction);
    event->accept();
}

void DropView::dragLeaveEvent(QDragLeaveEvent *)
{
    m_hovered = false;
    labelTextFld->setText(Texts::localized("Drop here"));
    update();
}

void DropView::dropEvent(QDropEvent *event)
{
    // The caption stays as it is after a drop; only the icon rests again.
    m_hovered = false;
    update();
    const DropOperation::Outcome outcome = DropOperation::perform(event->mimeData(), DropOperation::Target::DropView, window()->winId());
    if (!outcome.accepted) {
        event->ignore();
        return;
    }
    event->setDropAction(Qt::LinkAction);
    event->accept();
    Q_EMIT dropped(this, event->mimeData(), outcome.promisedPaths);
}

void DropView::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    const QPalette pal = palette();
    QColor tile = pal.color(m_hovered ? QPalette::Highlight : QPalette::Mid);
    tile.setAlphaF(m_hovered ? 0.22 : 0.12);
    p.setPen(Qt::NoPen);
    p.setBrush(tile);
    p.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 6, 6);
    const ButtonImages::Pair icon = ButtonImages::forStem(iconStem(), kIconSide, pal, devicePixelRatioF());
    p.drawPixmap((width() - kIconSide) / 2, 2, m_hovered ? icon.hover : icon.normal);
}

void DropView::resizeEvent(QResizeEvent *)
{
    labelTextFld->setGeometry(0, kIconSide + 2, width(), height() - kIconSide - 3);
}

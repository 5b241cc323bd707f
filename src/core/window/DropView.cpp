#include "DropView.h"

#include "core/intake/DropOperation.h"
#include "core/texts/Texts.h"
#include "widgets/ButtonImages.h"

#include <QDragEnterEvent>
#include <QFontMetricsF>
#include <QLabel>
#include <QPainter>

namespace {
constexpr int kIconSide = 14;
constexpr int kIconLeft = 4;
// The caption is small; a language with long words gets it smaller still, never cut.
constexpr qreal kCaptionScale = 0.85;
constexpr qreal kMinCaptionScale = 0.65;
} // namespace

DropView::DropView(QWidget *parent) : QWidget(parent)
{
    setAcceptDrops(true);
    labelTextFld = new QLabel(this);
    labelTextFld->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
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
    const bool alias = m_tag == kAliasTag;
    // While something hovers, the caption says what a drop here does; at rest, what the target is.
    if (m_hovered)
        labelTextFld->setText(alias ? Texts::localized("aliasDropHoverCaption") : Texts::localized("quickMoveDropHoverCaption"));
    else
        labelTextFld->setText(alias ? Texts::localized("aliasDropCaption") : Texts::localized("quickMoveDropCaption"));
    setToolTip(alias ? Texts::localized("aliasDropHint") : Texts::localized("quickMoveDropHint"));
    fitCaption();
    update();
}

void DropView::fitCaption()
{
    const QFont base = font();
    QFont caption = base;
    for (qreal scale = kCaptionScale; scale >= kMinCaptionScale - 0.001; scale -= 0.05) {
        caption.setPointSizeF(base.pointSizeF() * scale);
        if (QFontMetricsF(caption).horizontalAdvance(labelTextFld->text()) <= labelTextFld->width())
            break;
    }
    labelTextFld->setFont(caption);
    QPalette pal = labelTextFld->palette();
    pal.setColor(QPalette::WindowText, palette().color(m_hovered ? QPalette::Highlight : QPalette::WindowText));
    labelTextFld->setPalette(pal);
}

void DropView::setHovered(bool hovered)
{
    m_hovered = hovered;
    retranslate();
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
    setHovered(true);
    event->setDropAction(Qt::LinkAction);
    event->accept();
}

void DropView::dragMoveEvent(QDragMoveEvent *event)
{
    event->setDropAction(Qt::LinkAction);
    event->accept();
}

void DropView::dragLeaveEvent(QDragLeaveEvent *) { setHovered(false); }

void DropView::dropEvent(QDropEvent *event)
{
    setHovered(false);
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
    p.drawPixmap(kIconLeft, (height() - kIconSide) / 2, m_hovered ? icon.hover : icon.normal);
}

void DropView::resizeEvent(QResizeEvent *)
{
    const int left = kIconLeft + kIconSide + 3;
    labelTextFld->setGeometry(left, 0, width() - left - 2, height());
    fitCaption();
}

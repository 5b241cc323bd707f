#include "ActionPanelView.h"

#include "core/panels/PanelCatalog.h"
#include "core/texts/Texts.h"
#include "widgets/ActionButton.h"
#include "widgets/ButtonImages.h"

#include <QEvent>
#include <QFontMetricsF>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace {
constexpr int kColumns = 3;
constexpr int kImageSide = 26;
constexpr int kMargin = 4;
constexpr QSize kImageButton(66, 50); // three to a row fill the panel
// Labels are a little smaller than the rest, and smaller still where a language's words are long.
constexpr qreal kLabelScale = 0.9;
constexpr qreal kMinLabelScale = 0.7;
} // namespace

ActionPanelView::ActionPanelView(DropPanel panel, QWidget *parent) : QWidget(parent), m_panel(panel)
{
    setObjectName(PanelCatalog::contentViewName(panel));
    setFixedSize(PanelCatalog::kPanelWidth, PanelCatalog::kPanelHeight);
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(kMargin, 8, kMargin, 8);
    outer->setSpacing(6);
    auto *grid = new QGridLayout;
    grid->setSpacing(1);
    outer->addLayout(grid);
    auto *titles = new QVBoxLayout;
    titles->setSpacing(4);
    titles->setContentsMargins(4, 0, 4, 0); // the grid may use the whole width, the rest sits in

    int slot = 0;
    for (const PanelButtonSpec &spec : PanelCatalog::buttonsOf(panel)) {
        auto *b = new ActionButton(this);
        const QString outlet = QString::fromLatin1(spec.outlet);
        b->setObjectName(outlet);
        b->setProperty("action", QString::fromLatin1(spec.action));
        m_labelKeys.insert(b, QByteArray(spec.labelKey));
        m_buttons.insert(outlet, b);
        const QString action = QString::fromLatin1(spec.action);
        auto fire = [this, action, b] { Q_EMIT actionTriggered(action, b); };
        if (PanelCatalog::firesOnPress(outlet))
            connect(b, &ActionButton::pressed, this, fire);
        else
            connect(b, &ActionButton::clicked, this, fire);
        if (*spec.imageStem) {
            m_stems.insert(b, QString::fromLatin1(spec.imageStem));
            b->setFixedSize(kImageButton);
            b->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
            grid->addWidget(b, slot / kColumns, slot % kColumns, Qt::AlignCenter);
            ++slot;
        } else {
            b->setToolButtonStyle(Qt::ToolButtonTextOnly);
            b->setFixedHeight(24);
            b->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
            titles->addWidget(b);
        }
    }
    outer->addStretch(1);
    if (panel == DropPanelString) {
        auto *counts = new QGridLayout;
        counts->setContentsMargins(4, 0, 4, 0);
        m_glyphCaption = new QLabel(this);
        m_wordsCaption = new QLabel(this);
        glyphCountLbl = new QLabel(QStringLiteral("0"), this);
        glyphCountLbl->setObjectName(QStringLiteral("glyphCountLbl"));
        wordsCountLbl = new QLabel(QStringLiteral("0"), this);
        wordsCountLbl->setObjectName(QStringLiteral("wordsCountLbl"));
        for (QLabel *l : {glyphCountLbl, wordsCountLbl})
            l->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        counts->addWidget(m_glyphCaption, 0, 0);
        counts->addWidget(glyphCountLbl, 0, 1);
        counts->addWidget(m_wordsCaption, 1, 0);
        counts->addWidget(wordsCountLbl, 1, 1);
        outer->addLayout(counts);
    }
    outer->addLayout(titles);
    refreshImages();
    retranslate();
}

QList<ActionButton *> ActionPanelView::buttons() const
{
    QList<ActionButton *> list;
    for (const PanelButtonSpec &spec : PanelCatalog::buttonsOf(m_panel))
        list.append(m_buttons.value(QString::fromLatin1(spec.outlet)));
    return list;
}

void ActionPanelView::refreshImages()
{
    for (auto it = m_stems.cbegin(); it != m_stems.cend(); ++it) {
        const ButtonImages::Pair pair = ButtonImages::forStem(it.value(), kImageSide, palette(), devicePixelRatioF());
        it.key()->setImages(pair.normal, pair.hover);
    }
}

void ActionPanelView::retranslate()
{
    for (auto it = m_labelKeys.cbegin(); it != m_labelKeys.cend(); ++it) {
        // Title buttons with no key get their title from the controller (sizes, dimensions).
        if (!it.value().isEmpty() && (m_stems.contains(it.key()) || it.key()->text().isEmpty() ||
                                      it.key()->property("titleFromKey").toBool())) {
            it.key()->setText(Texts::localized(it.value().constData()));
            it.key()->setProperty("titleFromKey", true);
        }
        it.key()->setToolTip(it.key()->text());
    }
    if (m_glyphCaption) {
        m_glyphCaption->setText(Texts::localized("Characters"));
        m_wordsCaption->setText(Texts::localized("Words"));
    }
    fitLabels();
}

void ActionPanelView::fitLabels()
{
    // One size for every label of the panel, so that the row reads evenly: the largest at which the
    // longest label fits its button.
    const QFont base = font();
    auto scaled = [&base](qreal scale) {
        QFont f = base;
        if (base.pointSizeF() > 0)
            f.setPointSizeF(base.pointSizeF() * scale);
        else
            f.setPixelSize(std::max(1, int(base.pixelSize() * scale)));
        return f;
    };
    QFont label;
    for (qreal scale = kLabelScale; scale >= kMinLabelScale - 0.001; scale -= 0.02) {
        label = scaled(scale);
        const QFontMetricsF metrics(label);
        bool fits = true;
        for (auto it = m_stems.cbegin(); it != m_stems.cend() && fits; ++it)
            fits = metrics.horizontalAdvance(it.key()->text()) <= it.key()->labelRect().width();
        if (fits)
            break;
    }
    for (auto it = m_stems.cbegin(); it != m_stems.cend(); ++it)
        it.key()->setLabelFont(label);
}

void ActionPanelView::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::PaletteChange)
        refreshImages();
    else if (event->type() == QEvent::FontChange)
        fitLabels();
    else if (event->type() == QEvent::LanguageChange)
        retranslate();
    QWidget::changeEvent(event);
}

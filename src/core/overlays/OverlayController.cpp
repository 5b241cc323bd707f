#include "OverlayController.h"

#include "core/texts/Texts.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

OverlayController::OverlayController(const char *titleKey, QWidget *parent)
    : QWidget(parent), m_titleKey(titleKey)
{
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(8, 8, 8, 8); // inside the overlay's card
    outer->setSpacing(8);
    m_title = new QLabel(this);
    QFont f = m_title->font();
    f.setBold(true);
    m_title->setFont(f);
    m_title->setWordWrap(true);
    m_titleRow = new QHBoxLayout;
    m_titleRow->setSpacing(2);
    m_titleRow->addWidget(m_title, 1);
    outer->addLayout(m_titleRow);
    m_body = new QVBoxLayout;
    m_body->setSpacing(6);
    outer->addLayout(m_body, 1);
    m_buttons = new QHBoxLayout;
    m_buttons->setSpacing(6);
    outer->addLayout(m_buttons);
    retranslate();
}

void OverlayController::addTitleWidget(QWidget *widget) { m_titleRow->addWidget(widget, 0, Qt::AlignTop); }

QPushButton *OverlayController::addTagButton(const char *textKey, qint64 tag, bool primary, bool iconOnly)
{
    auto *b = new QPushButton(this);
    b->setProperty("tag", tag);
    b->setDefault(primary);
    b->setAutoDefault(primary);
    connect(b, &QPushButton::clicked, this, [this, tag] { fire(tag); });
    m_buttons->addWidget(b);
    m_texts.add(b, textKey, iconOnly);
    return b;
}

QLabel *OverlayController::addLabel(const char *textKey)
{
    auto *label = new QLabel(this);
    translateLater(label, textKey);
    return label;
}

void OverlayController::translateLater(QWidget *labelOrButton, const char *textKey) { m_texts.add(labelOrButton, textKey); }

void OverlayController::retranslate()
{
    m_title->setText(Texts::localized(m_titleKey.constData()));
    m_texts.retranslate();
}

void OverlayController::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QWidget::changeEvent(event);
}

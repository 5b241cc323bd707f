#include "ManageDestinationsWC.h"

#include "DestinationList.h"
#include "core/texts/Texts.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

ManageDestinationsWC::ManageDestinationsWC(QWidget *parent) : QWidget(parent, Qt::Window)
{
    setObjectName(QStringLiteral("manageDestinationsWC"));
    auto *layout = new QVBoxLayout(this);
    auto *intro = new QLabel(this);
    intro->setObjectName(QStringLiteral("manageDestIntro"));
    intro->setWordWrap(true);
    m_texts.add(intro, "manageDestIntro");
    layout->addWidget(intro);
    destList = new DestinationList(DestinationList::Kind::Manager, this);
    destTablView = destList->destTablView;
    layout->addWidget(destList, 1);
    auto *buttons = new QHBoxLayout;
    addDestBtn = new QPushButton(this);
    addDestBtn->setObjectName(QStringLiteral("addDestBtn"));
    m_texts.add(addDestBtn, "addDestBtn");
    buttons->addWidget(addDestBtn);
    buttons->addStretch(1);
    layout->addLayout(buttons);
    connect(addDestBtn, &QPushButton::clicked, destList, &DestinationList::addNewDestination);
    connect(destList, &DestinationList::backRequested, this, &QWidget::close);
    setWindowTitle(Texts::localized("manageDestTitle"));
    resize(380, 420);
}

void ManageDestinationsWC::showEvent(QShowEvent *event)
{
    destList->reload();
    destTablView->setFocus();
    QWidget::showEvent(event);
}

void ManageDestinationsWC::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange) {
        m_texts.retranslate();
        setWindowTitle(Texts::localized("manageDestTitle"));
    }
    QWidget::changeEvent(event);
}

#include "StatusItem.h"

#include "ExclusionListWC.h"
#include "core/texts/Texts.h"
#include "utils/Utils.h"

#include <QCursor>
#include <QIcon>
#include <QMenu>
#include <QSystemTrayIcon>

StatusItem::StatusItem(QObject *parent) : QObject(parent)
{
    m_menu = new QMenu();
    QAction *exclusions = m_menu->addAction(Texts::localized("exclListMenuItem"));
    connect(exclusions, &QAction::triggered, this, &StatusItem::showExclusionList);
    m_menu->addSeparator();
    QAction *quit = m_menu->addAction(Texts::localized("Quit Quaydrop"));
    connect(quit, &QAction::triggered, this, &StatusItem::quitRequested);

    m_tray = new QSystemTrayIcon(QIcon(QStringLiteral(":/icons/bw_menuBarIcon.svg")), this);
    m_tray->setToolTip(Texts::localized("Quaydrop is running"));
    m_tray->setContextMenu(m_menu);
    connect(m_tray, &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        if (reason == QSystemTrayIcon::Trigger)
            showStatusItemWindow();
    });
}

StatusItem::~StatusItem()
{
    delete m_exclusionList;
    delete m_menu;
}

void StatusItem::showExclusionList()
{
    if (!m_exclusionList)
        m_exclusionList = new ExclusionListWC(DesktopEntries::load());
    m_exclusionList->show();
    m_exclusionList->raise();
    m_exclusionList->activateWindow();
}

bool StatusItem::isTrayAvailable() { return QSystemTrayIcon::isSystemTrayAvailable(); }

void StatusItem::present()
{
    m_removed = false;
    m_tray->show();
}

void StatusItem::removeStatusItem()
{
    m_removed = true;
    Utils::shouldHideStatusBarItem(true);
    m_tray->hide();
}

void StatusItem::showStatusItemWindow()
{
    const QRect at = m_tray->geometry();
    m_menu->popup(at.isValid() ? at.bottomLeft() : QCursor::pos());
}

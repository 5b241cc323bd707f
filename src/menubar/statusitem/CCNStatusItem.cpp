#include "CCNStatusItem.h"

#include "core/NotificationCenter.h"
#include "core/texts/Texts.h"
#include "utils/Utils.h"

#include <QApplication>
#include <QCursor>
#include <QMenu>
#include <QScreen>
#include <QSystemTrayIcon>

CCNStatusItem::CCNStatusItem(QObject *parent)
    : QObject(parent), m_controller(new CCNStatusItemWindowController(StatusItemWindowConfiguration{}, this))
{
}

CCNStatusItem::~CCNStatusItem() { delete m_menu; }

bool CCNStatusItem::isTrayAvailable() { return QSystemTrayIcon::isSystemTrayAvailable(); }

bool CCNStatusItem::isDarkMode() { return QApplication::palette().color(QPalette::Window).lightness() < 128; }

void CCNStatusItem::presentStatusItemWithImage(const QIcon &image, QWidget *contentViewController)
{
    m_image = image;
    m_removed = false;
    m_controller->setContentView(contentViewController);
    if (!m_tray) {
        m_menu = new QMenu();
        QAction *show = m_menu->addAction(QString());
        connect(show, &QAction::triggered, this, &CCNStatusItem::showStatusItemWindow);
        m_menu->addSeparator();
        QAction *quit = m_menu->addAction(QString());
        connect(quit, &QAction::triggered, this, &CCNStatusItem::quitRequested);
        m_tray = new QSystemTrayIcon(this);
        connect(m_tray, &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
            if (reason == QSystemTrayIcon::Trigger)
                handleStatusItemButtonAction();
        });
        m_tray->setContextMenu(m_menu);
        // The menu, a window of its own, hears of language and theme changes like every window.
        m_menu->installEventFilter(this);
    }
    // The texts follow the language; set here and again on each change.
    m_menu->actions().at(0)->setText(Texts::localized("showOptionsMenuItem"));
    m_menu->actions().at(2)->setText(Texts::localized("Quit Quaydrop"));
    m_tray->setToolTip(m_controller->configuration().toolTip.isEmpty() ? Texts::localized("Quaydrop is running")
                                                                       : m_controller->configuration().toolTip);
    setAppearsDisabled(m_appearsDisabled);
    m_tray->show();
}

void CCNStatusItem::updateContentViewController(QWidget *contentViewController)
{
    m_controller->setContentView(contentViewController);
}

void CCNStatusItem::setWindowConfiguration(const StatusItemWindowConfiguration &configuration)
{
    m_controller->setConfiguration(configuration);
    if (m_tray && !configuration.toolTip.isEmpty())
        m_tray->setToolTip(configuration.toolTip);
}

void CCNStatusItem::setPresentationTransition(int transition)
{
    StatusItemWindowConfiguration c = m_controller->configuration();
    c.setPresentationTransition(transition);
    setWindowConfiguration(c);
}

void CCNStatusItem::setPinned(bool pinned)
{
    StatusItemWindowConfiguration c = m_controller->configuration();
    const bool was = c.pinned;
    c.pinned = pinned;
    setWindowConfiguration(c);
    // Unpinning puts the panel away, as a pinned panel was only there because it was pinned.
    if (was && !pinned)
        dismissStatusItemWindow();
}

void CCNStatusItem::handleStatusItemButtonAction()
{
    if (isStatusItemWindowVisible())
        dismissStatusItemWindow();
    else
        showStatusItemWindow();
}

QRect CCNStatusItem::iconGeometry() const
{
    const QRect icon = m_tray ? m_tray->geometry() : QRect();
    return icon.isValid() && !icon.isEmpty() ? icon : QRect(QCursor::pos(), QSize(1, 1));
}

void CCNStatusItem::showStatusItemWindow()
{
    if (!isTrayAvailable() || m_removed) {
        m_controller->showAsNormalWindow();
        return;
    }
    const QRect icon = iconGeometry();
    const QScreen *screen = QGuiApplication::screenAt(icon.center());
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    m_controller->showStatusItemWindow(icon, screen ? screen->availableGeometry() : QRect(0, 0, 1280, 800));
}

void CCNStatusItem::dismissStatusItemWindow() { m_controller->dismissStatusItemWindow(); }

void CCNStatusItem::removeStatusItem()
{
    m_removed = true;
    Utils::shouldHideStatusBarItem(true);
    if (m_tray)
        m_tray->hide();
}

void CCNStatusItem::setAppearsDisabled(bool disabled)
{
    m_appearsDisabled = disabled;
    if (m_tray)
        m_tray->setIcon(disabled ? QIcon(m_image.pixmap(22, QIcon::Disabled)) : m_image);
}

bool CCNStatusItem::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_menu && event->type() == QEvent::PaletteChange)
        NotificationCenter::defaultCenter().post(QString::fromLatin1(NotificationName::SystemInterfaceThemeChanged));
    if (watched == m_menu && event->type() == QEvent::LanguageChange) {
        m_menu->actions().at(0)->setText(Texts::localized("showOptionsMenuItem"));
        m_menu->actions().at(2)->setText(Texts::localized("Quit Quaydrop"));
        m_tray->setToolTip(Texts::localized("Quaydrop is running"));
    }
    return QObject::eventFilter(watched, event);
}

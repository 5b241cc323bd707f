#pragma once

#include "CCNStatusItemWindowController.h"

#include <QIcon>
#include <QObject>
#include <QPointer>

class QMenu;
class QSystemTrayIcon;

// The program's icon in the tray with its panel hanging from it: a click toggles the panel. Without a
// tray host the icon cannot show; the program says so once, and showing the panel opens it as a
// normal window instead.
class CCNStatusItem : public QObject
{
    Q_OBJECT
public:
    explicit CCNStatusItem(QObject *parent = nullptr);
    ~CCNStatusItem() override;

    static bool isTrayAvailable();
    // Dark when the theme's window colour is.
    static bool isDarkMode();

    void presentStatusItemWithImage(const QIcon &image, QWidget *contentViewController);
    void updateContentViewController(QWidget *contentViewController);
    StatusItemWindowConfiguration windowConfiguration() const { return m_controller->configuration(); }
    void setWindowConfiguration(const StatusItemWindowConfiguration &configuration);
    void setPresentationTransition(int transition);
    void setPinned(bool pinned);

    void handleStatusItemButtonAction(); // toggles
    void showStatusItemWindow();
    void dismissStatusItemWindow();
    bool isStatusItemWindowVisible() const { return m_controller->windowIsOpen(); }
    void removeStatusItem();
    bool isRemoved() const { return m_removed; }
    void setAppearsDisabled(bool disabled);
    bool appearsDisabled() const { return m_appearsDisabled; }

    // Where the icon is on screen; the pointer where the tray does not say.
    QRect iconGeometry() const;
    CCNStatusItemWindowController *windowController() const { return m_controller; }
    QSystemTrayIcon *trayIcon() const { return m_tray; }

Q_SIGNALS:
    void quitRequested();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QSystemTrayIcon *m_tray = nullptr;
    QMenu *m_menu = nullptr;
    CCNStatusItemWindowController *m_controller;
    QIcon m_image;
    bool m_removed = false;
    bool m_appearsDisabled = false;
};

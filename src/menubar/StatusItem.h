#pragma once

#include <QObject>
#include <QPointer>

class ExclusionListWC;
class QMenu;
class QSystemTrayIcon;

// The program's presence in the panel's tray.
class StatusItem : public QObject
{
    Q_OBJECT
public:
    explicit StatusItem(QObject *parent = nullptr);
    ~StatusItem() override;

    static bool isTrayAvailable();
    void present();
    void removeStatusItem(); // the user hid it
    bool isRemoved() const { return m_removed; }
    void showStatusItemWindow();
    void showExclusionList();

Q_SIGNALS:
    void quitRequested();

private:
    QSystemTrayIcon *m_tray = nullptr;
    QMenu *m_menu = nullptr;
    bool m_removed = false;
    QPointer<ExclusionListWC> m_exclusionList;
};

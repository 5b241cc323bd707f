#pragma once

#include <QObject>
#include <QVariantMap>

#include <functional>

// Notifications by plain string name, as the controllers have always talked to each other.
// An observer is a context object plus a handler; it is called on the context's thread and is
// dropped when the context is destroyed.
class NotificationCenter : public QObject
{
    Q_OBJECT
public:
    static NotificationCenter &defaultCenter();

    void post(const QString &name, const QVariantMap &userInfo = {});
    QMetaObject::Connection observe(const QString &name, QObject *context,
                                    std::function<void(const QVariantMap &)> handler);
    void removeObserver(QObject *context);

Q_SIGNALS:
    void posted(const QString &name, const QVariantMap &userInfo);
};

// Names used across the program.
namespace NotificationName {
inline constexpr char ShowPanelHK[] = "showPanelHKnotif";
inline constexpr char ActivateViaSettingsChanged[] = "activateViaSettingsChanged";
inline constexpr char ShouldNotCloseYet[] = "shouldNotCloseYetNotif";
inline constexpr char OpenPanelHasJustClosed[] = "NSOpenPanelHasJustClosed";
inline constexpr char CropWindowClosed[] = "cropWindowClosed";
inline constexpr char StatusItemPopupShown[] = "AXStatusItemPopupShown";
inline constexpr char StatusItemWindowWillShow[] = "CCNStatusItemWindowWillShowNotification";
inline constexpr char StatusItemWindowDidShow[] = "CCNStatusItemWindowDidShowNotification";
inline constexpr char StatusItemWindowWillDismiss[] = "CCNStatusItemWindowWillDismissNotification";
inline constexpr char StatusItemWindowDidDismiss[] = "CCNStatusItemWindowDidDismissNotification";
inline constexpr char HotKeyUnavailable[] = "hotKeyUnavailable"; // {"keys", "message"}
inline constexpr char SystemInterfaceThemeChanged[] = "CCNSystemInterfaceThemeChangedNotification";
} // namespace NotificationName

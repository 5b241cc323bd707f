#include "SettingsKeys.h"
#include "SettingsStore.h"
#include "core/plist/Plist.h"
#include "platform/Platform.h"
#include "utils/Utils.h"

#include <QDir>
#include <QStandardPaths>

namespace {
SettingsStore &store() { return SettingsStore::shared(); }
constexpr qint64 kTenDays = 864000;
constexpr qint64 kFiveDays = 432000;
} // namespace

bool Utils::QuaydropIsOFFSate() { return store().boolValue(SettingsKey::QuaydropIsOff); }

void Utils::resetkQuaydropIsOffKeyToON()
{
    store().setBool(SettingsKey::QuaydropIsOff, true);
    store().synchronize();
}

bool Utils::isShortcutEnabled() { return store().boolValue(SettingsKey::ShowPanelHKEnabled); }
QString Utils::showPanelHotKey() { return store().stringValue(SettingsKey::ShowPanelHK); }
qint64 Utils::dropHereWindowAlignment() { return store().integerValue(SettingsKey::DropHereWindowShowAlignment); }
bool Utils::exclAllButFinderValue() { return store().boolValue(SettingsKey::ExclAllButFinder); }
bool Utils::dontshowIntroSlides() { return store().boolValue(SettingsKey::DontShowIntroSlider); }
bool Utils::shouldHideStatusBarItem() { return store().boolValue(SettingsKey::ShouldHideStatusBarItem); }

void Utils::shouldHideStatusBarItem(bool hide)
{
    store().setBool(SettingsKey::ShouldHideStatusBarItem, hide);
    store().synchronize();
}

bool Utils::enableUserNotifWhenDoneSwitchValue()
{
    if (!store().contains(SettingsKey::EnableUserNotifWhenDoneSwitch)) {
        store().setBool(SettingsKey::EnableUserNotifWhenDoneSwitch, true);
        store().synchronize();
    }
    return store().boolValue(SettingsKey::EnableUserNotifWhenDoneSwitch);
}

// Answers NO exactly once, on the first launch, and remembers that it did.
bool Utils::showLoginAtLaunchUserDefaultsValue()
{
    const bool shown = store().boolValue(SettingsKey::ShowLoginAtLaunchBool);
    if (!shown) {
        store().setBool(SettingsKey::ShowLoginAtLaunchBool, true);
        store().synchronize();
    }
    return shown;
}

void Utils::showLoginAtLaunchSetUserDefVal(bool value)
{
    store().setBool(SettingsKey::ShowLoginAtLaunchBool, value);
    store().synchronize();
}

bool Utils::checkIfStartEditingOnceCreated() { return store().boolValue(SettingsKey::StartEditingOnceCreated); }
QString Utils::getSavePanelURL() { return store().stringValue(SettingsKey::LastSavePaneUrl); }
void Utils::overWriteSavePanelLastSaveURL(const QString &path) { store().setString(SettingsKey::LastSavePaneUrl, path); }
QString Utils::getOpenPanelURL() { return store().stringValue(SettingsKey::LastOpenPaneUrl); }
void Utils::overWriteOpenPanelLastSaveURL(const QString &path) { store().setString(SettingsKey::LastOpenPaneUrl, path); }
bool Utils::checkIfQDactionHappened() { return store().boolValue(SettingsKey::SomeQDactionHappened); }
void Utils::someQDactionHappened() { store().setBool(SettingsKey::SomeQDactionHappened, true); }

QDateTime Utils::setFutureDevHappyAlertDate()
{
    QDateTime date = store().dateValue(SettingsKey::FutureDevHappyAlertDateForNewUser);
    if (!date.isValid()) {
        date = QDateTime::currentDateTimeUtc().addSecs(kTenDays);
        store().setDate(SettingsKey::FutureDevHappyAlertDateForNewUser, date);
    }
    return date;
}

void Utils::reWriteFutureDevHappyAlertDate()
{
    store().setDate(SettingsKey::FutureDevHappyAlertDateForNewUser, QDateTime::currentDateTimeUtc().addSecs(kFiveDays));
}

void Utils::savefutureDate()
{
    if (!store().dateValue(SettingsKey::SavefutureDate).isValid())
        store().setDate(SettingsKey::SavefutureDate, QDateTime::currentDateTimeUtc().addSecs(kFiveDays));
}

QString Utils::QDappSupportPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + QStringLiteral("/" QD_BUNDLE_ID);
}

bool Utils::isLogInAtLaunch()
{
    const LoginItemService *items = Platform::current().loginItems;
    return items && items->isEnabled();
}

void Utils::setLogInAtLaunch(bool enabled)
{
    LoginItemService *items = Platform::current().loginItems;
    if (!items) {
        qWarning("launch at login: no login item service on this desktop");
        return;
    }
    if (const Status s = items->setEnabled(enabled); !s.ok())
        qWarning("launch at login could not be %s: %s", enabled ? "set" : "removed", qPrintable(s.error().message));
}

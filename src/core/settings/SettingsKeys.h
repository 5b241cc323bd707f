#pragma once

// The stored settings, by the names they have always had on disk.
namespace SettingsKey {
inline constexpr char QuaydropIsOff[] = "kQuaydropIsOffKey"; // YES means switched on
inline constexpr char ShowPanelHKEnabled[] = "kShowPanelHKEnabled";
inline constexpr char ShowPanelHK[] = "showPanelHK";
inline constexpr char DropHereWindowShowAlignment[] = "kDropHereWindowShowAlignment";
inline constexpr char ExclAllButFinder[] = "kExclAllButFinder";
inline constexpr char DontShowIntroSlider[] = "kDontShowIntroSlider";
inline constexpr char ShouldHideStatusBarItem[] = "shouldHideStatusBarItem";
inline constexpr char EnableUserNotifWhenDoneSwitch[] = "enableUserNotifWhenDoneSwitch";
inline constexpr char ShowLoginAtLaunchBool[] = "showLoginAtLaunchBoolKey";
inline constexpr char InsideFolderEnabledValue[] = "kInsideFolderEnabledValue";
inline constexpr char StartEditingOnceCreated[] = "kStartEditingOnceCreated";
inline constexpr char LastSavePaneUrl[] = "lastSavePaneUrlKEY";
inline constexpr char LastOpenPaneUrl[] = "lastOpenPaneUrlKEY";
inline constexpr char SomeQDactionHappened[] = "someQDactionHappened";
inline constexpr char FutureDevHappyAlertDateForNewUser[] = "futureDevHappyAlertDateForNewUser";
inline constexpr char SavefutureDate[] = "savefutureDate";
inline constexpr char InterfaceLanguage[] = "qdInterfaceLanguage"; // "en" or "de"; absent: the system's
} // namespace SettingsKey

// The hot key as portable text. Ctrl+F is Find everywhere on Linux, so Alt joins the modifier.
inline constexpr char kDefaultShowPanelHotKey[] = "Ctrl+Alt+F";

#include "AppDelegate.h"

#include "core/settings/SettingsStore.h"
#include "menubar/StatusItem.h"
#include "utils/Utils.h"

#include <QCoreApplication>

#include <cstdio>

AppDelegate::AppDelegate(const Platform &platform, QObject *parent) : QObject(parent), m_platform(platform)
{
    connect(qApp, &QCoreApplication::aboutToQuit, this, &AppDelegate::applicationWillTerminate);
}

void AppDelegate::applicationDidFinishLaunching()
{
    Utils::cleanUPTepmFileOperationsFolder();
    // Each launch starts switched on, whatever the last run left.
    Utils::resetkQuaydropIsOffKeyToON();
    if (!Utils::shouldHideStatusBarItem())
        createStatusItem();
}

void AppDelegate::createStatusItem()
{
    // The options panel registers the hot-key defaults as it loads with the status item.
    SettingsStore::shared().registerHotKeyDefaults();
    if (!StatusItem::isTrayAvailable()) {
        std::fprintf(stderr, "quaydrop: no system tray is running; Quaydrop stays resident without an icon\n");
        std::fflush(stderr);
    }
    statusItemForYos = new StatusItem(this);
    connect(statusItemForYos, &StatusItem::quitRequested, this, &AppDelegate::quitQuaydrop);
    statusItemForYos->present();
}

bool AppDelegate::applicationShouldHandleReopen()
{
    std::fprintf(stderr, "quaydrop: already running; a second start was passed to this process\n");
    std::fflush(stderr);
    if (statusItemForYos && !statusItemForYos->isRemoved())
        return false;
    // The way back to a hidden status item.
    delete statusItemForYos;
    statusItemForYos = nullptr;
    Utils::shouldHideStatusBarItem(false);
    createStatusItem();
    statusItemForYos->showStatusItemWindow();
    return false;
}

void AppDelegate::quitQuaydrop()
{
    SettingsStore::shared().synchronize();
    QCoreApplication::quit();
}

void AppDelegate::applicationWillTerminate()
{
    if (m_terminated)
        return;
    m_terminated = true;
    Utils::cleanUPTepmFileOperationsFolder();
}

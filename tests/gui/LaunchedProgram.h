#pragma once

// The program as it stands after launch, on fake desktop services: what every window test starts from.

#include "core/controller/AppDelegate.h"
#include "core/settings/SettingsKeys.h"
#include "core/settings/SettingsStore.h"
#include "platform/fake/FakePlatform.h"

#include <memory>

// Installed as the running services, past the first start's login question, launched.
inline std::unique_ptr<AppDelegate> launchedOn(const Platform &services)
{
    Platform::install(services);
    SettingsStore::shared().setBool(SettingsKey::ShowLoginAtLaunchBool, true); // no alert in the way
    auto app = std::make_unique<AppDelegate>(services);
    app->applicationDidFinishLaunching();
    return app;
}

inline std::unique_ptr<AppDelegate> launchedOn(FakePlatform &fakes)
{
    return launchedOn(fakes.services());
}

// A removable drive at /media/someone/STICK, for the lone-volume rule.
inline VolumeInfo fakeStick()
{
    VolumeInfo stick;
    stick.mountPoint = QStringLiteral("/media/someone/STICK");
    stick.name = QStringLiteral("STICK");
    stick.removable = stick.ejectable = true;
    stick.internal = false;
    return stick;
}

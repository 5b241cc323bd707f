#pragma once

#include "platform/Platform.h"

#include <QObject>

class StatusItem;

// The one controller of the resident program: start, reopen and stop.
class AppDelegate : public QObject
{
    Q_OBJECT
public:
    explicit AppDelegate(const Platform &platform, QObject *parent = nullptr);

    void applicationDidFinishLaunching();
    // A second start of the program lands here.
    bool applicationShouldHandleReopen();
    void applicationWillTerminate();
    // The one way out, also taken on SIGTERM and SIGINT.
    void quitQuaydrop();

    StatusItem *statusItem() const { return statusItemForYos; }

private:
    void createStatusItem();

    Platform m_platform;
    StatusItem *statusItemForYos = nullptr;
    bool m_terminated = false;
};

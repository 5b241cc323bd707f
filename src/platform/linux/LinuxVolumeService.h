#pragma once

#include "platform/Platform.h"

class QSocketNotifier;

// Mounted volumes from /proc/self/mountinfo; what kind of drive is behind each from UDisks2 on the
// system bus, else from /sys/block. The kernel flags the mount table on every change, so the signal
// needs no timer.
class LinuxVolumeService : public VolumeService
{
    Q_OBJECT
public:
    explicit LinuxVolumeService(QObject *parent = nullptr);
    ~LinuxVolumeService() override;

    QList<VolumeInfo> mountedVolumes() const override;
    Status eject(const QString &mountPoint) override;

private:
    int m_fd = -1;
    QSocketNotifier *m_notifier = nullptr;
};

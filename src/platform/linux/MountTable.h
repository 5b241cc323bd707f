#pragma once

#include <QByteArray>
#include <QList>

// One line of /proc/self/mountinfo.
struct MountEntry
{
    QByteArray mountPoint; // unescaped bytes
    QByteArray fsType;
    QByteArray source;
};

namespace MountTable {
QList<MountEntry> parse(const QByteArray &mountinfo);
QList<MountEntry> read(); // this process's mounts
// Mounts a file manager would show: disks and network shares, not the kernel's own file systems.
bool isUserVisible(const MountEntry &entry);
bool isNetwork(const MountEntry &entry);
} // namespace MountTable

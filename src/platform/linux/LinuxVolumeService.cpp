#include "LinuxVolumeService.h"

#include "MountTable.h"

#include <QDBusConnection>
#include <QDBusInterface>
#include <QDBusReply>
#include <QDBusObjectPath>
#include <QFile>
#include <QSocketNotifier>

#include <cctype>
#include <fcntl.h>
#include <unistd.h>

namespace {

const QString kService = QStringLiteral("org.freedesktop.UDisks2");

QString nameOf(const QByteArray &mountPoint)
{
    if (mountPoint == "/")
        return QStringLiteral("/");
    return QString::fromUtf8(mountPoint.mid(mountPoint.lastIndexOf('/') + 1));
}

// "/dev/sdb1" -> "sdb" (the whole disk), for /sys/block.
QByteArray diskOf(const QByteArray &device)
{
    QByteArray name = device.mid(device.lastIndexOf('/') + 1);
    if (name.startsWith("nvme") || name.startsWith("mmcblk")) {
        const qsizetype p = name.lastIndexOf('p');
        return p > 4 ? name.left(p) : name;
    }
    while (!name.isEmpty() && std::isdigit(static_cast<unsigned char>(name.back())))
        name.chop(1);
    return name;
}

QVariant udisksProperty(const QString &path, const QString &interface, const QString &property)
{
    QDBusInterface props(kService, path, QStringLiteral("org.freedesktop.DBus.Properties"), QDBusConnection::systemBus());
    if (!props.isValid())
        return {};
    props.setTimeout(500);
    QDBusReply<QVariant> reply = props.call(QStringLiteral("Get"), interface, property);
    return reply.isValid() ? reply.value() : QVariant();
}

QString blockObjectPath(const QByteArray &device)
{
    QString path = QStringLiteral("/org/freedesktop/UDisks2/block_devices/");
    for (char c : device.mid(device.lastIndexOf('/') + 1))
        path += std::isalnum(static_cast<unsigned char>(c)) ? QString(QChar(c)) : QStringLiteral("_%1").arg(uchar(c), 2, 16, QChar('0'));
    return path;
}

void describeDrive(const MountEntry &e, VolumeInfo &v)
{
    if (!e.source.startsWith("/dev/"))
        return;
    if (QDBusConnection::systemBus().isConnected()) {
        const QVariant drive = udisksProperty(blockObjectPath(e.source), QStringLiteral("org.freedesktop.UDisks2.Block"),
                                              QStringLiteral("Drive"));
        const QString drivePath = drive.value<QDBusObjectPath>().path();
        if (!drivePath.isEmpty() && drivePath != u"/") {
            const QString iface = QStringLiteral("org.freedesktop.UDisks2.Drive");
            v.removable = udisksProperty(drivePath, iface, QStringLiteral("Removable")).toBool();
            v.ejectable = udisksProperty(drivePath, iface, QStringLiteral("Ejectable")).toBool();
            v.connectionBus = udisksProperty(drivePath, iface, QStringLiteral("ConnectionBus")).toString();
            v.internal = !v.removable;
            return;
        }
    }
    // No UDisks2: the kernel's own view of the disk.
    const QByteArray disk = diskOf(e.source);
    QFile removable(QStringLiteral("/sys/block/%1/removable").arg(QString::fromLatin1(disk)));
    if (removable.open(QIODevice::ReadOnly))
        v.removable = removable.readAll().trimmed() == "1";
    const QByteArray sysPath = QFile::symLinkTarget(QStringLiteral("/sys/block/%1").arg(QString::fromLatin1(disk))).toUtf8();
    if (sysPath.contains("/usb"))
        v.connectionBus = QStringLiteral("usb");
    v.ejectable = v.removable;
    v.internal = !v.removable && v.connectionBus.isEmpty();
}

} // namespace

LinuxVolumeService::LinuxVolumeService(QObject *parent) : VolumeService(parent)
{
    m_fd = ::open("/proc/self/mountinfo", O_RDONLY | O_CLOEXEC);
    if (m_fd < 0)
        return;
    m_notifier = new QSocketNotifier(m_fd, QSocketNotifier::Exception, this);
    connect(m_notifier, &QSocketNotifier::activated, this, [this] {
        // Reading the table to its end re-arms the notification.
        char buffer[65536];
        ::lseek(m_fd, 0, SEEK_SET);
        while (::read(m_fd, buffer, sizeof buffer) > 0) {
        }
        Q_EMIT mountsChanged();
    });
}

LinuxVolumeService::~LinuxVolumeService()
{
    delete m_notifier;
    if (m_fd >= 0)
        ::close(m_fd);
}

QList<VolumeInfo> LinuxVolumeService::mountedVolumes() const
{
    QList<VolumeInfo> volumes;
    for (const MountEntry &e : MountTable::read()) {
        if (!MountTable::isUserVisible(e))
            continue;
        VolumeInfo v;
        v.mountPoint = QString::fromUtf8(e.mountPoint);
        v.name = nameOf(e.mountPoint);
        v.device = QString::fromUtf8(e.source);
        v.local = !MountTable::isNetwork(e);
        describeDrive(e, v);
        volumes.append(v);
    }
    return volumes;
}

Status LinuxVolumeService::eject(const QString &mountPoint)
{
    for (const MountEntry &e : MountTable::read()) {
        if (QString::fromUtf8(e.mountPoint) != mountPoint || !e.source.startsWith("/dev/"))
            continue;
        const QString block = blockObjectPath(e.source);
        QDBusInterface fs(kService, block, QStringLiteral("org.freedesktop.UDisks2.Filesystem"), QDBusConnection::systemBus());
        QDBusReply<void> unmounted = fs.call(QStringLiteral("Unmount"), QVariantMap());
        if (!unmounted.isValid())
            return Error{QStringLiteral("Volumes"), 1, unmounted.error().message()};
        const QString drive = udisksProperty(block, QStringLiteral("org.freedesktop.UDisks2.Block"), QStringLiteral("Drive"))
                                  .value<QDBusObjectPath>()
                                  .path();
        QDBusInterface driveIface(kService, drive, QStringLiteral("org.freedesktop.UDisks2.Drive"), QDBusConnection::systemBus());
        driveIface.call(QStringLiteral("Eject"), QVariantMap()); // unmounted is what matters; not every drive ejects
        return success();
    }
    return Error{QStringLiteral("Volumes"), 2, QStringLiteral("%1 is not a mounted drive").arg(mountPoint)};
}

// Its meta-object code of its own (see SingleInstance.cpp).
#include "moc_LinuxVolumeService.cpp"

#include "core/fs/PathParts.h"
#include "platform/Platform.h"
#include "utils/Utils.h"

namespace {
QList<VolumeInfo> mounted()
{
    VolumeService *service = Platform::current().volumes;
    return service ? service->mountedVolumes() : QList<VolumeInfo>();
}

// Removable media as the destination list shows them: ejectable, or on USB.
bool isRemovableMedium(const VolumeInfo &v) { return v.ejectable || v.connectionBus == u"usb"; }
} // namespace

QStringList Utils::listAllVolumes()
{
    QStringList paths;
    for (const VolumeInfo &v : mounted())
        paths.append(v.mountPoint);
    return paths;
}

QStringList Utils::getListOfEjectableMediaPathsOnly()
{
    QStringList paths;
    for (const VolumeInfo &v : mounted())
        if (isRemovableMedium(v))
            paths.append(v.mountPoint);
    return paths;
}

QVariantMap Utils::getListOfEjectableMediaPathsAndNames()
{
    QVariantMap last; // one dictionary, which the last medium found overwrites
    for (const VolumeInfo &v : mounted())
        if (isRemovableMedium(v))
            last = {{QStringLiteral("volPath"), v.mountPoint}, {QStringLiteral("volName"), v.name}};
    return last;
}

QStringList Utils::listAllVolumesButExcludeMountable()
{
    const QStringList removable = getListOfEjectableMediaPathsOnly();
    QStringList paths;
    for (const VolumeInfo &v : mounted())
        if (isUnderVolumesRoot(v.mountPoint) && !removable.contains(v.mountPoint))
            paths.append(v.mountPoint);
    return paths;
}

bool Utils::checkIfpathisInallButmountableVols(const QString &path)
{
    for (const QString &volume : listAllVolumesButExcludeMountable())
        if (path.startsWith(volume))
            return true;
    return false;
}

// By name, as the file manager shows volumes: a folder that shares a volume's name counts too.
bool Utils::checkIfVolumeIsRemovable(const QString &path)
{
    const QString name = PathParts::lastComponent(path);
    for (const VolumeInfo &v : mounted())
        if (v.name == name)
            return true;
    return false;
}

bool Utils::checkIfPathIsAVolume(const QString &path)
{
    const QString name = PathParts::lastComponent(path);
    for (const VolumeInfo &v : mounted()) {
        if (!v.removable && v.internal && !v.local)
            continue;
        if (v.name == name)
            return true;
    }
    return false;
}

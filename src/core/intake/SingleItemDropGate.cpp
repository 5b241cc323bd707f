#include "SingleItemDropGate.h"

#include "core/fs/PathParts.h"
#include "utils/Utils.h"

namespace SingleItemDropGate {

bool passes(const QStringList &paths)
{
    if (paths.isEmpty())
        return false;
    if (paths.size() >= 2)
        return true;
    const QString &p = paths.first();
    const QString home = Utils::checkAndReturnHomeFolderPath(p);
    // In this order: each test is cheaper to skip than the volume lookup.
    if (!home.isEmpty() && p.startsWith(home) && !Utils::isFileOrFolderInVisible(p) && Utils::isFileOrFolderReadable(p) &&
        !Utils::isFolderFromLibraryFolder(p) && Utils::isFileOrFolderWritable(p) && PathParts::parent(p) != home)
        return true;
    return !Utils::checkIfPathIsAVolume(p);
}

} // namespace SingleItemDropGate

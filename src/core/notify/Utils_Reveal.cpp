#include "platform/Platform.h"
#include "utils/Utils.h"

void Utils::revealInFinder(const QString &path)
{
    revealMultiFilesInFinder(path.isEmpty() ? QStringList() : QStringList{path});
}

void Utils::revealMultiFilesInFinder(const QStringList &paths)
{
    Workspace *workspace = Platform::current().workspace;
    if (paths.isEmpty() || !workspace)
        return;
    if (const Status s = workspace->revealItems(paths); !s.ok())
        qWarning("cannot show the files: %s", qPrintable(s.error().message));
}

// The checks that refuse an operation before anything is touched.

#include "MoveCopyOrchestrator.h"

#include "core/fs/PathParts.h"
#include "core/texts/Texts.h"
#include "utils/Utils.h"

#include <QMutexLocker>

namespace {
QString joinedNames(const QStringList &names) { return names.join(QStringLiteral(";\n")); }

bool isInside(const QString &path, const QString &folder)
{
    return path == folder || path.startsWith(folder.endsWith(QChar('/')) ? folder : folder + QChar('/'));
}
} // namespace

QStringList MoveCopyOrchestrator::getFileNamesFromArrOfPaths(const QStringList &paths, const QList<int> &indexes)
{
    QStringList names;
    for (int i : indexes)
        names.append(PathParts::lastComponent(paths.at(i)));
    return names;
}

// Items moved or copied onto themselves: their own folder, or a folder inside them.
QList<int> MoveCopyOrchestrator::getFilescopiedToSelf(const QStringList &paths, const QString &dest) const
{
    QList<int> hits;
    for (int i = 0; i < paths.size(); ++i)
        if (PathParts::parent(paths.at(i)) == dest || isInside(dest, paths.at(i)))
            hits.append(i);
    return hits;
}

bool MoveCopyOrchestrator::isCopyingFilesToSelf(const QStringList &paths, const QString &dest)
{
    const QList<int> hits = getFilescopiedToSelf(paths, dest);
    if (hits.isEmpty())
        return false;
    m_alerts->showBasicAlert(Texts::localized("overwriteNotPermited").arg(joinedNames(getFileNamesFromArrOfPaths(paths, hits))),
                             Texts::localized("FilesAlreadyBeingoved"));
    Q_EMIT orderOutTheWindow();
    return true;
}

// The same item already on its way to the same folder in a running job.
QList<int> MoveCopyOrchestrator::getFilePathsAlreadyInCopy(const QStringList &paths, const QString &dest) const
{
    QMutexLocker lock(&m_jobsLock);
    QList<int> hits;
    for (int i = 0; i < paths.size(); ++i) {
        for (const FileCopyParamsPtr &job : copyProgressParams) {
            if (job->destFolder() == dest && job->sourcePathsArr().contains(paths.at(i))) {
                hits.append(i);
                break;
            }
        }
    }
    return hits;
}

bool MoveCopyOrchestrator::isAnyOfFilesInCopy(const QStringList &paths, const QString &dest, bool showAlertIfYES)
{
    const QList<int> hits = getFilePathsAlreadyInCopy(paths, dest);
    if (hits.isEmpty())
        return false;
    if (showAlertIfYES) {
        m_alerts->showBasicAlert(Texts::localized("notPermitted").arg(joinedNames(getFileNamesFromArrOfPaths(paths, hits))),
                                 Texts::localized("FilesAlreadyBeingoved2").arg(dest));
        Q_EMIT orderOutTheWindow();
    }
    return true;
}

QStringList MoveCopyOrchestrator::getDestPathsForFilesUsedByMoveOrCopy() const
{
    QMutexLocker lock(&m_jobsLock);
    QStringList targets;
    for (const FileCopyParamsPtr &job : copyProgressParams)
        for (const QString &source : job->sourcePathsArr())
            targets.append(job->destFolder() + QChar('/') + PathParts::lastComponent(source));
    return targets;
}

// A source that a running job is still writing.
bool MoveCopyOrchestrator::isFilePathsUsedByMoveOrCopyAsDest(const QStringList &paths, const QString &)
{
    const QStringList beingWritten = getDestPathsForFilesUsedByMoveOrCopy();
    QList<int> hits;
    for (int i = 0; i < paths.size(); ++i)
        if (beingWritten.contains(paths.at(i)))
            hits.append(i);
    if (hits.isEmpty())
        return false;
    m_alerts->showBasicAlert(Texts::localized("notPermitted").arg(joinedNames(getFileNamesFromArrOfPaths(paths, hits))),
                             Texts::localized("FilesStillbeingCopied"));
    Q_EMIT orderOutTheWindow();
    return true;
}

bool MoveCopyOrchestrator::passesRunningJobGuards(const QStringList &paths, const QString &dest)
{
    return !isAnyOfFilesInCopy(paths, dest, true) && !isFilePathsUsedByMoveOrCopyAsDest(paths, dest);
}

// A folder that would replace a folder that contains it.
bool MoveCopyOrchestrator::cantBeReplacedBytheItemItContains(const QStringList &paths, const QString &destination)
{
    QString dest = destination;
    QList<int> hits;
    for (int i = 0; i < paths.size(); ++i) {
        if (dest.contains(QStringLiteral(QD_BUNDLE_ID)))
            dest = Utils::nonSandboxPathFor(PathParts::lastComponent(dest));
        const QString &path = paths.at(i);
        if (Utils::isThisAFolderHere(path) && path.contains(dest + QChar('/') + PathParts::lastComponent(path)))
            hits.append(i);
        if (!hits.isEmpty())
            m_alerts->showBasicAlert(joinedNames(getFileNamesFromArrOfPaths(paths, hits)), Texts::localized("canNotBeReplaced"));
    }
    return !hits.isEmpty();
}

QList<int> MoveCopyOrchestrator::getFilePathsNOTUsedByMoveOrCopy(const QStringList &paths) const
{
    QMutexLocker lock(&m_jobsLock);
    QList<int> unused;
    for (int i = 0; i < paths.size(); ++i) {
        bool used = false;
        for (const FileCopyParamsPtr &job : copyProgressParams)
            used = used || job->sourcePathsArr().contains(paths.at(i));
        if (!used)
            unused.append(i);
    }
    return unused;
}

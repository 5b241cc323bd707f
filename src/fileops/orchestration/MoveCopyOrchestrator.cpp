#include "MoveCopyOrchestrator.h"

#include "core/fs/FsCalls.h"
#include "core/fs/PathParts.h"
#include "core/texts/Texts.h"
#include "utils/Utils.h"

#include <QPointer>

#include <memory>

MoveCopyOrchestrator::MoveCopyOrchestrator(ConflictResolver *resolver, UserAlerts *alerts, JobObserver *observer,
                                           TrashService *trash, QObject *parent)
    : QObject(parent), m_resolver(resolver), m_alerts(alerts), m_observer(observer), m_trash(trash)
{
}

MoveCopyOrchestrator::~MoveCopyOrchestrator() { cancelAll(); }

MoveCopyOrchestrator::Outcome MoveCopyOrchestrator::copyitemsForFileCopy(const QStringList &paths,
                                                                         const QString &parFolder, bool isVolumeSame)
{
    if (m_pass) {
        qWarning("an operation is waiting for an answer; this one is not started");
        return Outcome::Refused;
    }
    filesToSkip.clear();
    filesToReplace.clear();
    applyForAllDublicAlert = false;

    if (!Utils::checkIfTheresEnoughSpaceForNumberOfBytes(Utils::multipleItemsSize(paths), parFolder)) {
        m_alerts->showBasicAlert(Texts::localized("NotEnoughspaceAlrtTitle"), Texts::localized("NotEnoughspaceAlrtInfTxt"));
        qWarning("NOT_ENOUGH_SPACE");
        return Outcome::Refused;
    }
    if (isCopyingFilesToSelf(paths, parFolder) || !passesRunningJobGuards(paths, parFolder) ||
        cantBeReplacedBytheItemItContains(paths, parFolder))
        return Outcome::Refused;

    m_pass = Pass{paths, parFolder, isVolumeSame};
    return continueConflictPass(0);
}

// Walks the items from `from` on; stops to ask about a clash and picks up again with the answer.
MoveCopyOrchestrator::Outcome MoveCopyOrchestrator::continueConflictPass(int from)
{
    const QStringList paths = m_pass->paths;
    const QString dest = m_pass->dest;
    for (int i = from; i < paths.size(); ++i) {
        const QString &path = paths.at(i);
        const QString candidate = dest + QChar('/') + PathParts::lastComponent(path);
        const QString parent = PathParts::parent(path);
        if (parent == dest || (parent == Utils::nonSandboxPathFor(PathParts::lastComponent(dest)) &&
                               parent.endsWith(PathParts::lastComponent(path)))) {
            m_pass.reset();
            return Outcome::Refused;
        }
        if (!FsCalls::exists(candidate))
            continue;
        if (applyForAllDublicAlert) {
            if (!filesToKeepBoth.contains(path) && !filesToReplace.contains(path))
                filesToSkip.append(path);
            continue;
        }

        struct AskState
        {
            bool returned = false;
            bool answered = false;
        };
        auto state = std::make_shared<AskState>();
        QPointer<MoveCopyOrchestrator> self(this);
        alertOrSaveOrOpenPanelIsShown = true;
        m_resolver->ask({PathParts::lastComponent(candidate), candidate, path}, [self, i, state](ConflictReply reply) {
            if (!self || state->answered || !self->m_pass)
                return;
            state->answered = true;
            self->alertOrSaveOrOpenPanelIsShown = false;
            self->applyAnswer(reply, i);
            if (state->returned) { // answered later: carry on from here
                const Outcome outcome = self->continueConflictPass(i + 1);
                if (outcome != Outcome::WaitingForAnswer)
                    Q_EMIT self->operationEnded(outcome);
            }
        });
        state->returned = true;
        if (!state->answered)
            return Outcome::WaitingForAnswer;
    }
    const Pass pass = *m_pass;
    m_pass.reset();
    // With every clash skipped nothing starts, and the keep-both list waits for the next operation.
    QStringList remaining = pass.paths;
    for (const QString &skipped : std::as_const(filesToSkip))
        remaining.removeAll(skipped);
    if (remaining.isEmpty())
        return Outcome::NothingToDo;
    return doCopyItems(remaining, pass.dest, pass.sameVolume);
}

void MoveCopyOrchestrator::applyAnswer(const ConflictReply &reply, int index)
{
    const QStringList &paths = m_pass->paths;
    const QString &path = paths.at(index);
    const QString dest = m_pass->dest;
    applyForAllDublicAlert = reply.applyToAll;
    // Every item of the list, not skipped already, that clashes in the destination.
    auto clashing = [&] {
        QStringList result;
        for (const QString &p : paths)
            if (!filesToSkip.contains(p) && FsCalls::exists(dest + QChar('/') + PathParts::lastComponent(p)))
                result.append(p);
        return result;
    };
    switch (reply.answer) {
    case ConflictAnswer::KeepBoth:
        if (reply.applyToAll)
            filesToKeepBoth += clashing();
        else
            filesToKeepBoth.append(path);
        break;
    case ConflictAnswer::Skip:
        filesToSkip.append(path);
        break;
    case ConflictAnswer::Replace:
        // Nothing is removed now: the old item goes only once its replacement is complete.
        if (reply.applyToAll)
            filesToReplace += clashing();
        else
            filesToReplace.append(path);
        break;
    }
}

MoveCopyOrchestrator::Outcome MoveCopyOrchestrator::doCopyItems(const QStringList &paths, const QString &destFolder,
                                                                bool toSameVolume)
{
    const QStringList keepBoth = std::exchange(filesToKeepBoth, {});
    const QStringList replace = std::exchange(filesToReplace, {});
    const QSet<QString> replacing(replace.begin(), replace.end());
    if (!toSameVolume || isFileOperationCopy)
        return copyFilesToAnotherVolume(paths, destFolder, replacing);

    const Utils::MoveResult moved = Utils::moveOneOrMultipleFiles(
        paths, destFolder, keepBoth, replace, [this](const QString &p) { return setAside(p); });
    m_lastRenameFailures = int(paths.size() - moved.moved.size() - moved.needsCopying.size());
    if (!moved.needsCopying.isEmpty())
        return copyFilesToAnotherVolume(moved.needsCopying, destFolder, replacing);
    return Outcome::Moved;
}

#pragma once

#include "MoveCopyInterfaces.h"

#include <QMutex>
#include <QObject>
#include <QSet>
#include <QStringList>

class TrashService;

// Gets dropped items to one destination: the guards that refuse an operation, the conflict pass, the
// choice between a rename and a copy job, the running jobs, and the deletion of moved sources once
// their copies are complete. Lives on the main thread; the bytes travel on the thread pool.
class MoveCopyOrchestrator : public QObject
{
    Q_OBJECT
public:
    MoveCopyOrchestrator(ConflictResolver *resolver, UserAlerts *alerts, JobObserver *observer, TrashService *trash,
                         QObject *parent = nullptr);
    ~MoveCopyOrchestrator() override;

    enum class Outcome { Refused, NothingToDo, Moved, JobStarted, WaitingForAnswer };

    // The copy checkbox: copy instead of move.
    bool isFileOperationCopy = false;

    Outcome copyitemsForFileCopy(const QStringList &paths, const QString &parFolder, bool isVolumeSame);
    void cancelCopyProgress(const FileCopyParamsPtr &job);
    void cancelAll();

    QList<FileCopyParamsPtr> runningJobs() const;
    // "Copying NAME to FOLDER" / "Moving NAME to FOLDER", for a job's progress row.
    static QString progressText(const FileCopyParams &job, const QString &fileName);
    // Items of the last same-volume move that could not be renamed (logged one by one).
    int lastRenameFailures() const { return m_lastRenameFailures; }
    // Items the last operation left out because their name was taken in the destination.
    const QStringList &lastSkipped() const { return filesToSkip; }
    QStringList pathsBeingMovedToBeDeletedAfter;
    bool alertOrSaveOrOpenPanelIsShown = false;
    bool copyingFilesToOtherVolume = false;

Q_SIGNALS:
    // The drop window should close (after a refusal, or once an operation has started).
    void orderOutTheWindow();
    // A decision that waited for an answer has been carried out.
    void operationEnded(Outcome outcome);
    void allJobsFinished();

private:
    // guards (MoveCopyGuards.cpp)
    bool isCopyingFilesToSelf(const QStringList &paths, const QString &dest);
    bool isAnyOfFilesInCopy(const QStringList &paths, const QString &dest, bool showAlertIfYES);
    bool isFilePathsUsedByMoveOrCopyAsDest(const QStringList &paths, const QString &dest);
    bool cantBeReplacedBytheItemItContains(const QStringList &paths, const QString &dest);
    bool passesRunningJobGuards(const QStringList &paths, const QString &dest);
    QList<int> getFilescopiedToSelf(const QStringList &paths, const QString &dest) const;
    QList<int> getFilePathsAlreadyInCopy(const QStringList &paths, const QString &dest) const;
    QList<int> getFilePathsNOTUsedByMoveOrCopy(const QStringList &paths) const;
    QStringList getDestPathsForFilesUsedByMoveOrCopy() const;
    static QStringList getFileNamesFromArrOfPaths(const QStringList &paths, const QList<int> &indexes);

    // conflicts (MoveCopyOrchestrator.cpp)
    Outcome continueConflictPass(int from);
    void applyAnswer(const ConflictReply &reply, int index);
    Outcome doCopyItems(const QStringList &paths, const QString &destFolder, bool toSameVolume);

    // jobs (MoveCopyJobs.cpp)
    Outcome copyFilesToAnotherVolume(const QStringList &paths, const QString &destParentPath, const QSet<QString> &replacing);
    void runJob(const FileCopyParamsPtr &job, const QSet<QString> &replacing);
    void finishJob(const FileCopyParamsPtr &job, bool ok, const Error &error);
    void cleanUpPathsNotUsedByMoveCopy(const QStringList &paths);
    Status setAside(const QString &path);
    static Status setAsideIn(TrashService *trash, const QString &path);

    ConflictResolver *m_resolver;
    UserAlerts *m_alerts;
    JobObserver *m_observer;
    TrashService *m_trash;

    // One operation at a time on the main thread.
    struct Pass
    {
        QStringList paths;
        QString dest;
        bool sameVolume = false;
    };
    std::optional<Pass> m_pass;
    QStringList filesToSkip;
    QStringList filesToKeepBoth;
    QStringList filesToReplace;
    bool applyForAllDublicAlert = false;
    int m_lastRenameFailures = 0;

    mutable QMutex m_jobsLock; // the one lock: guards copyProgressParams
    QList<FileCopyParamsPtr> copyProgressParams;
};

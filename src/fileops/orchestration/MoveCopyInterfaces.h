#pragma once

// What the move and copy logic asks of whoever shows it: the window's dialogs, the command line, or
// a test. The logic never opens a window itself.

#include "fileops/FileCopyParams.h"
#include "utils/Result.h"

#include <functional>
#include <optional>

enum class ConflictAnswer { Replace = 1000, Skip = 1001, KeepBoth = 1002 };

struct ConflictQuestion
{
    QString existingName; // shown in "%1 already exists"
    QString existingPath;
    QString sourcePath;
};

struct ConflictReply
{
    ConflictAnswer answer;
    bool applyToAll = false;
};

// Replace / Skip / Keep both, with apply-to-all. The reply may come at once or later; the
// operation waits for it without blocking the event loop.
class ConflictResolver
{
public:
    virtual ~ConflictResolver() = default;
    virtual void ask(const ConflictQuestion &question, std::function<void(ConflictReply)> reply) = 0;
};

class UserAlerts
{
public:
    virtual ~UserAlerts() = default;
    virtual void showBasicAlert(const QString &title, const QString &informativeText) = 0;
    virtual void showCriticalAlert(const QString &title, const QString &informativeText) = 0;
};

// Progress of the running copy jobs, on the main thread.
class JobObserver
{
public:
    virtual ~JobObserver() = default;
    virtual void jobsChanged(int runningJobs) = 0; // rows of the progress panel
    virtual void jobProgress(const FileCopyParamsPtr &job, int percent, const QString &text) = 0;
    virtual void jobFinished(const FileCopyParamsPtr &job, const std::optional<Error> &error) = 0;
};

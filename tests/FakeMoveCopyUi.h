#pragma once

// Stand-ins for the dialogs of move and copy: preset answers, recorded alerts and progress.

#include "fileops/orchestration/MoveCopyInterfaces.h"

#include <QList>
#include <QPair>

class FakeResolver : public ConflictResolver
{
public:
    // Answers in order; the last one repeats. With `deferred`, replies wait until answerPending().
    QList<ConflictReply> answers{{ConflictAnswer::Skip, false}};
    bool deferred = false;
    QStringList askedAbout; // names of the clashing items, in order
    std::function<void(ConflictReply)> pending;

    void ask(const ConflictQuestion &q, std::function<void(ConflictReply)> reply) override
    {
        askedAbout.append(q.existingName);
        const ConflictReply answer = answers.at(qMin<qsizetype>(askedAbout.size() - 1, answers.size() - 1));
        if (deferred)
            pending = [reply, answer](ConflictReply) { reply(answer); };
        else
            reply(answer);
    }
    void answerPending()
    {
        auto p = std::exchange(pending, {});
        if (p)
            p({});
    }
};

class FakeAlerts : public UserAlerts
{
public:
    QList<QPair<QString, QString>> basic, critical;
    void showBasicAlert(const QString &t, const QString &i) override { basic.append({t, i}); }
    void showCriticalAlert(const QString &t, const QString &i) override { critical.append({t, i}); }
};

class FakeObserver : public JobObserver
{
public:
    QList<int> counts;
    QList<std::optional<Error>> finished;
    std::function<void(const FileCopyParamsPtr &)> onFinished;
    void jobsChanged(int n) override { counts.append(n); }
    void jobProgress(const FileCopyParamsPtr &, int, const QString &) override {}
    void jobFinished(const FileCopyParamsPtr &job, const std::optional<Error> &e) override
    {
        finished.append(e);
        if (onFinished)
            onFinished(job);
    }
};

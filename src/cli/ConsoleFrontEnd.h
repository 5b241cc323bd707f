#pragma once

// The move and copy dialogs for a terminal: answers from a flag or a prompt, alerts as lines, and a
// progress bar on stderr.

#include "fileops/orchestration/MoveCopyInterfaces.h"
#include "platform/Platform.h"

#include <QElapsedTimer>
#include <QTextStream>

#include <optional>

class ConsoleResolver : public ConflictResolver
{
public:
    ConsoleResolver(std::optional<ConflictAnswer> policy, QTextStream &err) : m_policy(policy), m_err(err) {}
    void ask(const ConflictQuestion &question, std::function<void(ConflictReply)> reply) override;

private:
    std::optional<ConflictAnswer> m_policy;
    QTextStream &m_err;
};

class ConsoleAlerts : public UserAlerts
{
public:
    explicit ConsoleAlerts(QTextStream &err) : m_err(err) {}
    void showBasicAlert(const QString &title, const QString &text) override;
    void showCriticalAlert(const QString &title, const QString &text) override { showBasicAlert(title, text); }
    bool shown = false;

private:
    QTextStream &m_err;
};

class ConsoleProgress : public JobObserver
{
public:
    explicit ConsoleProgress(QTextStream &err);
    void jobsChanged(int) override {}
    void jobProgress(const FileCopyParamsPtr &job, int percent, const QString &text) override;
    void jobFinished(const FileCopyParamsPtr &job, const std::optional<Error> &error) override;
    std::optional<Error> firstError;

private:
    QTextStream &m_err;
    bool m_terminal;
    QElapsedTimer m_clock;
    qint64 m_lastLine = -1;
};

class ConsoleNotifications : public NotificationService
{
public:
    explicit ConsoleNotifications(QTextStream &out) : m_out(out) {}
    Status deliver(const QString &title, const QString &body, const QVariantMap &) override;

private:
    QTextStream &m_out;
};

#pragma once

// The move and copy dialogs for a terminal: answers from a flag or a prompt, alerts as lines, and a
// progress line on standard error.

#include "fileops/orchestration/MoveCopyInterfaces.h"

#include <QElapsedTimer>

#include <optional>

class Console;

class ConsoleResolver : public ConflictResolver
{
public:
    ConsoleResolver(std::optional<ConflictAnswer> policy, Console &console) : m_policy(policy), m_console(console) {}
    void ask(const ConflictQuestion &question, std::function<void(ConflictReply)> reply) override;
    // Items skipped because nobody could be asked (no terminal, or its input ended).
    int unasked() const { return m_unasked; }

private:
    std::optional<ConflictAnswer> m_policy;
    Console &m_console;
    int m_unasked = 0;
};

class ConsoleAlerts : public UserAlerts
{
public:
    explicit ConsoleAlerts(Console &console) : m_console(console) {}
    void showBasicAlert(const QString &title, const QString &text) override;
    void showCriticalAlert(const QString &title, const QString &text) override { showBasicAlert(title, text); }
    bool shown = false;

private:
    Console &m_console;
};

// On a terminal one line redrawn in place as the bytes are written, ended with the job's final figures;
// elsewhere a line every two seconds and the final one.
class ConsoleProgress : public JobObserver
{
public:
    ConsoleProgress(Console &console, bool terminal);
    void jobsChanged(int) override {}
    void jobProgress(const FileCopyParamsPtr &job, int percent, const QString &text) override;
    void jobFinished(const FileCopyParamsPtr &job, const std::optional<Error> &error) override;
    std::optional<Error> firstError;

private:
    void draw(const FileCopyParams &job, int percent, quint64 bytes, const QString &text);

    Console &m_console;
    const bool m_terminal;
    QElapsedTimer m_clock; // since the first figures
    qint64 m_lastLine = -1;
    QString m_lastText;
};

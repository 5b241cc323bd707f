#include "ConsoleFrontEnd.h"

#include "core/fs/NativePath.h"
#include "utils/Utils.h"

#include <cstdio>
#include <unistd.h>

void ConsoleResolver::ask(const ConflictQuestion &q, std::function<void(ConflictReply)> reply)
{
    if (m_policy)
        return reply({*m_policy, true});
    if (!::isatty(STDIN_FILENO)) {
        m_err << "quaydrop: " << NativePath::forDisplay(q.existingName) << " already exists; skipped\n";
        m_err.flush();
        return reply({ConflictAnswer::Skip, false});
    }
    while (true) {
        m_err << "\"" << NativePath::forDisplay(q.existingName)
              << "\" already exists. [r]eplace, [s]kip, [k]eep both (capital letter: for all the rest)? ";
        m_err.flush();
        char line[64] = {};
        if (!std::fgets(line, sizeof line, stdin))
            return reply({ConflictAnswer::Skip, true});
        const char c = line[0];
        const bool all = c >= 'A' && c <= 'Z';
        switch (c | 0x20) {
        case 'r':
            return reply({ConflictAnswer::Replace, all});
        case 's':
            return reply({ConflictAnswer::Skip, all});
        case 'k':
            return reply({ConflictAnswer::KeepBoth, all});
        default:
            break;
        }
    }
}

void ConsoleAlerts::showBasicAlert(const QString &title, const QString &text)
{
    shown = true;
    m_err << "quaydrop: " << NativePath::forDisplay(title);
    if (!text.isEmpty())
        m_err << "\n  " << NativePath::forDisplay(text);
    m_err << '\n';
    m_err.flush();
}

ConsoleProgress::ConsoleProgress(QTextStream &err) : m_err(err), m_terminal(::isatty(STDERR_FILENO))
{
    m_clock.start();
}

void ConsoleProgress::jobProgress(const FileCopyParamsPtr &job, int percent, const QString &text)
{
    // A bar redrawn in place on a terminal; elsewhere a line every two seconds.
    const qint64 now = m_clock.elapsed();
    if (!m_terminal && m_lastLine >= 0 && now - m_lastLine < 2000)
        return;
    m_lastLine = now;
    const double seconds = qMax<qint64>(now, 1) / 1000.0;
    const quint64 current = job->current;
    const QString bar = QString(percent / 5, QChar('#')).leftJustified(20, QChar('.'));
    m_err << (m_terminal ? "\r\033[K" : "") << '[' << bar << "] " << QString::number(percent).rightJustified(3) << "%  "
          << Utils::getHumanReadableSizeFrom(current) << " of " << Utils::getHumanReadableSizeFrom(job->total) << "  "
          << Utils::getHumanReadableSizeFrom(quint64(current / seconds)) << "/s  " << NativePath::forDisplay(text)
          << (m_terminal ? "" : "\n");
    m_err.flush();
}

void ConsoleProgress::jobFinished(const FileCopyParamsPtr &, const std::optional<Error> &error)
{
    if (m_terminal && m_lastLine >= 0)
        m_err << "\r\033[K";
    if (error && !firstError)
        firstError = error;
    m_err.flush();
}

Status ConsoleNotifications::deliver(const QString &title, const QString &body, const QVariantMap &)
{
    m_out << NativePath::forDisplay(title) << ' ' << NativePath::forDisplay(body) << '\n';
    m_out.flush();
    return success();
}

#include "ConsoleFrontEnd.h"

#include "Console.h"
#include "utils/Utils.h"

#include <cstdio>
#include <unistd.h>

namespace {
constexpr qint64 kPipeLineIntervalMs = 2000;
} // namespace

void ConsoleResolver::ask(const ConflictQuestion &q, std::function<void(ConflictReply)> reply)
{
    if (m_policy)
        return reply({*m_policy, true});
    auto skipUnasked = [&](bool all) {
        ++m_unasked;
        m_console.fail(q.existingPath + QStringLiteral(": the name is taken; skipped"));
        reply({ConflictAnswer::Skip, all});
    };
    if (!::isatty(STDIN_FILENO))
        return skipUnasked(false);
    while (true) {
        m_console.err << "\"" << q.existingName
                      << "\" already exists. [r]eplace, [s]kip, [k]eep both (capital letter: for all the rest)? ";
        m_console.err.flush();
        char line[64] = {};
        if (!std::fgets(line, sizeof line, stdin))
            return skipUnasked(false);
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
    m_console.fail(text.isEmpty() ? title : title + QStringLiteral("\n  ") + text);
}

ConsoleProgress::ConsoleProgress(Console &console, bool terminal) : m_console(console), m_terminal(terminal) {}

void ConsoleProgress::draw(const FileCopyParams &job, int percent, quint64 bytes, const QString &text)
{
    const double seconds = qMax<qint64>(m_clock.elapsed(), 1) / 1000.0;
    const QString bar = QString(percent / 5, QChar('#')).leftJustified(20, QChar('.'));
    m_console.err << (m_terminal ? "\r\033[K" : "") << '[' << bar << "] " << QString::number(percent).rightJustified(3)
                  << "%  " << Utils::getHumanReadableSizeFrom(bytes) << " of " << Utils::getHumanReadableSizeFrom(job.total)
                  << "  " << Utils::getHumanReadableSizeFrom(quint64(bytes / seconds)) << "/s  " << text;
    if (m_terminal) {
        m_console.lineOpen = true;
        m_console.err.flush();
    } else {
        m_console.err << '\n';
    }
}

void ConsoleProgress::jobProgress(const FileCopyParamsPtr &job, int percent, const QString &text)
{
    if (!m_clock.isValid())
        m_clock.start();
    m_lastText = text;
    const qint64 now = m_clock.elapsed();
    if (!m_terminal && m_lastLine >= 0 && now - m_lastLine < kPipeLineIntervalMs)
        return;
    m_lastLine = now;
    draw(*job, percent, job->current, text);
}

void ConsoleProgress::jobFinished(const FileCopyParamsPtr &job, const std::optional<Error> &error)
{
    // A complete job's line ends with its final figures; a failed one's where it stopped, before its
    // error.
    if (!error && !m_lastText.isEmpty())
        draw(*job, 100, job->total, m_lastText);
    m_console.endLine();
    m_lastText.clear();
    m_clock.invalidate();
    m_lastLine = -1;
    if (error && !firstError)
        firstError = error;
}

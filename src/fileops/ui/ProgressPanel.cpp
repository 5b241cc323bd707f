#include "ProgressPanel.h"

#include "ProgressRow.h"
#include "core/texts/Texts.h"

#include <QEvent>
#include <QScrollArea>
#include <QVBoxLayout>

ProgressPanel::ProgressPanel(std::function<QList<FileCopyParamsPtr>()> jobs,
                             std::function<void(const FileCopyParamsPtr &)> cancel, QWidget *parent)
    : QWidget(parent, Qt::Tool | Qt::WindowStaysOnTopHint), m_jobs(std::move(jobs)), m_cancel(std::move(cancel))
{
    setObjectName(QStringLiteral("moveFilesProgress"));
    setWindowTitle(Texts::localized("Copying files"));
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    m_scroll = new QScrollArea(this);
    m_scroll->setObjectName(QStringLiteral("moveFilesParentScrollView"));
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setWidgetResizable(true);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_rowsHost = new QWidget(m_scroll);
    m_rowsLayout = new QVBoxLayout(m_rowsHost);
    m_rowsLayout->setContentsMargins(0, 0, 0, 0);
    m_rowsLayout->setSpacing(0);
    m_rowsLayout->addStretch(1);
    m_scroll->setWidget(m_rowsHost);
    outer->addWidget(m_scroll);
    setMinimumWidth(380);
}

int ProgressPanel::numberOfRows() const
{
    return int(m_rows.size());
}

ProgressRow *ProgressPanel::row(int index) const
{
    return index >= 0 && index < m_rows.size() ? m_rows.at(index) : nullptr;
}

void ProgressPanel::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        setWindowTitle(Texts::localized("Copying files"));
    QWidget::changeEvent(event);
}

void ProgressPanel::jobsChanged(int runningJobs)
{
    const QList<FileCopyParamsPtr> jobs = m_jobs();
    // Keep the rows of jobs still running, in the list's order; add rows for new jobs.
    QList<ProgressRow *> kept;
    for (const FileCopyParamsPtr &job : jobs) {
        ProgressRow *existing = nullptr;
        for (ProgressRow *r : std::as_const(m_rows))
            if (r->job() == job)
                existing = r;
        if (!existing) {
            existing = new ProgressRow(job, kept.isEmpty(), m_rowsHost);
            connect(existing, &ProgressRow::cancelRequested, this, [this](const FileCopyParamsPtr &j) { m_cancel(j); });
        }
        kept.append(existing);
    }
    for (ProgressRow *r : std::as_const(m_rows))
        if (!kept.contains(r))
            r->deleteLater();
    m_rows = kept;
    for (int i = 0; i < m_rows.size(); ++i) {
        m_rowsLayout->removeWidget(m_rows.at(i));
        m_rowsLayout->insertWidget(i, m_rows.at(i));
    }
    Q_UNUSED(runningJobs);
    refreshMoveFilesProgressPanelSize();
}

void ProgressPanel::refreshMoveFilesProgressPanelSize()
{
    const int rows = int(m_rows.size());
    if (rows == 0) {
        close();
        return;
    }
    m_scroll->setVerticalScrollBarPolicy(rows == 1 ? Qt::ScrollBarAlwaysOff : Qt::ScrollBarAsNeeded);
    const int visibleRows = qMin(rows, 5);
    setFixedHeight(heightForRows(visibleRows));
    if (!isVisible()) {
        show();
        raise();
    }
}

void ProgressPanel::jobProgress(const FileCopyParamsPtr &job, int percent, const QString &text)
{
    for (ProgressRow *r : std::as_const(m_rows))
        if (r->job() == job)
            r->setProgress(percent, text);
}

void ProgressPanel::jobFinished(const FileCopyParamsPtr &, const std::optional<Error> &)
{
    // The row went with jobsChanged; errors are the alerts' business.
}

#pragma once

#include "fileops/orchestration/MoveCopyInterfaces.h"

#include <QWidget>

#include <functional>

class QVBoxLayout;
class QScrollArea;
class ProgressRow;

// The window that lists every running copy or move: one row per job with a bar, the file being
// copied and a cancel button. It grows and shrinks by rows and closes when the last job ends.
class ProgressPanel : public QWidget, public JobObserver
{
    Q_OBJECT
public:
    static constexpr int kRowHeight = 70;
    static constexpr int kExtraHeight = 17;

    // `jobs` answers the running jobs in order; `cancel` stops one.
    ProgressPanel(std::function<QList<FileCopyParamsPtr>()> jobs, std::function<void(const FileCopyParamsPtr &)> cancel,
                  QWidget *parent = nullptr);

    void jobsChanged(int runningJobs) override;
    void jobProgress(const FileCopyParamsPtr &job, int percent, const QString &text) override;
    void jobFinished(const FileCopyParamsPtr &job, const std::optional<Error> &error) override;

    int numberOfRows() const;
    ProgressRow *row(int index) const;
    // Rows times the row height plus the margin.
    static int heightForRows(int rows) { return rows * kRowHeight + kExtraHeight; }

protected:
    void changeEvent(QEvent *event) override;

private:
    void refreshMoveFilesProgressPanelSize();

    std::function<QList<FileCopyParamsPtr>()> m_jobs;
    std::function<void(const FileCopyParamsPtr &)> m_cancel;
    QScrollArea *m_scroll;
    QWidget *m_rowsHost;
    QVBoxLayout *m_rowsLayout;
    QList<ProgressRow *> m_rows;
};

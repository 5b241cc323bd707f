#pragma once

#include "fileops/FileCopyParams.h"

#include <QWidget>

class QLabel;
class QProgressBar;
class QToolButton;

// One row of the progress panel: progIndicForCopyCell, the text, cancelCopyBtn.
class ProgressRow : public QWidget
{
    Q_OBJECT
public:
    ProgressRow(FileCopyParamsPtr job, bool first, QWidget *parent = nullptr);
    const FileCopyParamsPtr &job() const { return m_job; }
    void setProgress(int percent, const QString &text);
    int percent() const;
    QString text() const;
    QToolButton *cancelCopyBtn;

Q_SIGNALS:
    void cancelRequested(const FileCopyParamsPtr &job);

protected:
    void paintEvent(QPaintEvent *) override;

private:
    FileCopyParamsPtr m_job;
    bool m_first;
    QProgressBar *m_bar;
    QLabel *m_text;
};

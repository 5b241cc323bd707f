#include "ProgressRow.h"

#include "core/fs/PathParts.h"
#include "core/texts/Texts.h"
#include "fileops/orchestration/MoveCopyOrchestrator.h"
#include "widgets/ButtonImages.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QProgressBar>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>

ProgressRow::ProgressRow(FileCopyParamsPtr job, bool first, QWidget *parent)
    : QWidget(parent), m_job(std::move(job)), m_first(first)
{
    setFixedHeight(70);
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(14, 8, 10, 8);
    auto *column = new QVBoxLayout;
    m_text = new QLabel(this);
    m_text->setTextFormat(Qt::PlainText);
    m_text->setMinimumWidth(260);
    const QStringList sources = m_job->sourcePathsArr();
    m_text->setText(MoveCopyOrchestrator::progressText(*m_job, sources.isEmpty() ? QString()
                                                                                 : PathParts::lastComponent(sources.first())));
    m_bar = new QProgressBar(this);
    m_bar->setObjectName(QStringLiteral("progIndicForCopyCell"));
    m_bar->setRange(0, 100);
    m_bar->setValue(0); // a new row's bar is still, at 0
    m_bar->setTextVisible(false);
    m_bar->setFixedHeight(8);
    column->addWidget(m_text);
    column->addWidget(m_bar);
    layout->addLayout(column, 1);
    cancelCopyBtn = new QToolButton(this);
    cancelCopyBtn->setObjectName(QStringLiteral("cancelCopyBtn"));
    const ButtonImages::Pair stop = ButtonImages::forStem(QStringLiteral("stop"), 20, palette(), devicePixelRatioF());
    cancelCopyBtn->setIcon(QIcon(stop.normal));
    cancelCopyBtn->setIconSize(QSize(20, 20));
    cancelCopyBtn->setToolTip(Texts::localized("Cancel"));
    cancelCopyBtn->setAutoRaise(true);
    layout->addWidget(cancelCopyBtn);
    connect(cancelCopyBtn, &QToolButton::clicked, this, [this] { Q_EMIT cancelRequested(m_job); });
}

void ProgressRow::setProgress(int percent, const QString &text)
{
    m_bar->setValue(percent);
    m_text->setText(text);
}

int ProgressRow::percent() const
{
    return m_bar->value();
}

QString ProgressRow::text() const
{
    return m_text->text();
}

void ProgressRow::paintEvent(QPaintEvent *)
{
    if (m_first)
        return;
    // Rows after the first have a thin shadow at the top edge.
    QPainter p(this);
    QLinearGradient shade(0, 0, 0, 4);
    QColor c = palette().color(QPalette::WindowText);
    c.setAlphaF(0.18);
    shade.setColorAt(0, c);
    c.setAlphaF(0);
    shade.setColorAt(1, c);
    p.fillRect(QRect(0, 0, width(), 4), shade);
}

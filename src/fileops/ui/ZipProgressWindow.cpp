#include "ZipProgressWindow.h"

#include "core/fs/NativePath.h"
#include "core/texts/Texts.h"
#include "utils/Utils.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

ZipProgressWindow::ZipProgressWindow(QWidget *parent) : QWidget(parent, Qt::Tool | Qt::WindowStaysOnTopHint)
{
    setObjectName(QStringLiteral("zippingTaskPanel"));
    auto *outer = new QVBoxLayout(this);
    outer->setContentsMargins(14, 12, 14, 12);
    outer->setSpacing(6);
    m_state = new QLabel(this);
    QFont bold = m_state->font();
    bold.setBold(true);
    m_state->setFont(bold);
    outer->addWidget(m_state);
    taskProgressIndic = new QProgressBar(this);
    taskProgressIndic->setObjectName(QStringLiteral("taskProgressIndic"));
    taskProgressIndic->setRange(0, 1000);
    taskProgressIndic->setTextVisible(false);
    outer->addWidget(taskProgressIndic);
    auto *row = new QHBoxLayout;
    m_detail = new QLabel(this);
    m_detail->setObjectName(QStringLiteral("zipDetailLbl"));
    m_detail->setTextFormat(Qt::PlainText);
    m_detail->setMinimumWidth(260);
    row->addWidget(m_detail, 1);
    cancelBtn = new QPushButton(this);
    cancelBtn->setObjectName(QStringLiteral("cancelTaskBtn"));
    m_texts.add(cancelBtn, "Cancel");
    connect(cancelBtn, &QPushButton::clicked, this, &ZipProgressWindow::cancelRequested);
    row->addWidget(cancelBtn);
    outer->addLayout(row);
    setMinimumWidth(380);
    setStateKey("...Initializing...");
}

void ZipProgressWindow::setStateKey(const char *key)
{
    m_stateKey = key;
    cancelBtn->setEnabled(m_stateKey != "Success" && m_stateKey != "Canceled");
    retranslate();
}

void ZipProgressWindow::setProgress(quint64 done, quint64 total, const QString &currentName)
{
    m_done = done;
    m_total = total;
    if (!currentName.isEmpty())
        m_current = currentName;
    taskProgressIndic->setValue(permille());
    retranslate();
}

int ZipProgressWindow::permille() const
{
    if (m_total == 0)
        return m_stateKey == "Success" ? 1000 : 0;
    return int(std::min<quint64>(1000, m_done * 1000 / m_total));
}

QString ZipProgressWindow::stateText() const { return m_state->text(); }

void ZipProgressWindow::retranslate()
{
    setWindowTitle(Texts::localized("Zip"));
    m_state->setText(Texts::localized(m_stateKey.constData()));
    QString detail = Texts::localized("%1 of %2")
                         .arg(Utils::getHumanReadableSizeFrom(m_done, Texts::locale()),
                              Utils::getHumanReadableSizeFrom(m_total, Texts::locale()));
    if (!m_current.isEmpty() && m_stateKey == "zipping")
        detail += QStringLiteral("  ·  ") + m_detail->fontMetrics().elidedText(NativePath::forDisplay(m_current),
                                                                              Qt::ElideMiddle, 160);
    m_detail->setText(detail);
    m_texts.retranslate();
}

void ZipProgressWindow::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QWidget::changeEvent(event);
}

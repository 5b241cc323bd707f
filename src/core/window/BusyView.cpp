#include "BusyView.h"

#include "core/texts/Texts.h"
#include "widgets/Spinner.h"

#include <QLabel>
#include <QPainter>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

BusyView::BusyView(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("emptyContview"));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(18, 18, 18, 18);
    layout->addStretch(1);
    m_spinner = new Spinner(this);
    m_spinner->setObjectName(QStringLiteral("progIndicForPanelChange"));
    layout->addWidget(m_spinner, 0, Qt::AlignHCenter);
    m_bar = new QProgressBar(this);
    m_bar->setObjectName(QStringLiteral("progIndicForPanelChange"));
    m_bar->setTextVisible(false);
    m_bar->setFixedHeight(8);
    layout->addWidget(m_bar);
    emptyContviewLbl = new QLabel(this);
    emptyContviewLbl->setObjectName(QStringLiteral("emptyContviewLbl"));
    emptyContviewLbl->setAlignment(Qt::AlignCenter);
    emptyContviewLbl->setWordWrap(true);
    layout->addWidget(emptyContviewLbl);
    layout->addStretch(1);
    cancelProgressBtn = new QPushButton(Texts::localized("Cancel"), this);
    cancelProgressBtn->setObjectName(QStringLiteral("cancelProgressBtn"));
    layout->addWidget(cancelProgressBtn, 0, Qt::AlignHCenter);
    connect(cancelProgressBtn, &QPushButton::clicked, this, &BusyView::cancelRequested);
}

void BusyView::start(const QString &text, double alpha, double maximum, bool cancelEnabled)
{
    cancelProgressBtn->setEnabled(cancelEnabled);
    cancelProgressBtn->setVisible(cancelEnabled);
    cancelProgressBtn->setText(Texts::localized("Cancel"));
    m_alpha = alpha;
    emptyContviewLbl->setText(text);
    m_value = 0;
    m_maximum = maximum;
    const bool spin = maximum <= 1.0;
    m_spinner->setVisible(spin);
    m_bar->setVisible(!spin);
    if (spin) {
        m_spinner->start();
    } else {
        m_spinner->stop();
        m_bar->setRange(0, int(maximum));
        m_bar->setValue(0);
    }
    update();
}

void BusyView::incrementBy(double delta)
{
    m_value += delta;
    if (isBar())
        m_bar->setValue(int(m_value));
}

void BusyView::showProgress(int done, int total)
{
    if (total <= 1)
        return;
    if (!isBar() || int(m_maximum) != total) {
        m_spinner->stop();
        m_spinner->setVisible(false);
        m_bar->setVisible(true);
        m_bar->setRange(0, total);
        m_maximum = total;
    }
    m_value = done;
    m_bar->setValue(done);
}

void BusyView::stop()
{
    m_spinner->stop();
}

bool BusyView::isSpinning() const
{
    return !m_spinner->isHidden() && m_spinner->isSpinning();
}

bool BusyView::isBar() const
{
    return !m_bar->isHidden();
}

double BusyView::value() const
{
    return m_value;
}

double BusyView::maximum() const
{
    return m_maximum;
}

void BusyView::paintEvent(QPaintEvent *)
{
    // The alpha of the call dims what the view covers: the window shows through where it is below 1.
    QPainter p(this);
    QColor fill = palette().color(QPalette::Window);
    fill.setAlphaF(m_alpha);
    p.fillRect(rect(), fill);
}

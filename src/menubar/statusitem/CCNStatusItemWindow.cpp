#include "CCNStatusItemWindow.h"

#include <QCloseEvent>
#include <QEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QVBoxLayout>

CCNStatusItemWindow::CCNStatusItemWindow(const StatusItemWindowConfiguration &configuration, QWidget *parent)
    : QWidget(parent), m_configuration(configuration)
{
    setObjectName(QStringLiteral("CCNStatusItemWindow"));
    // Named for window lists and tools, though the frameless panel shows no title.
    setWindowTitle(QStringLiteral("Quaydrop options"));
    setAsNormalWindow(false);
    auto *layout = new QVBoxLayout(this);
    layout->setSpacing(0);
    relayout();
}

void CCNStatusItemWindow::setConfiguration(const StatusItemWindowConfiguration &configuration)
{
    m_configuration = configuration;
    setToolTip(configuration.toolTip);
    update();
}

void CCNStatusItemWindow::setAsNormalWindow(bool normal)
{
    m_normal = normal;
    const bool wasVisible = isVisible();
    if (normal) {
        setWindowFlags(Qt::Window);
        // A translucent window also drops its background: as a normal window it gets the theme's back.
        setAttribute(Qt::WA_TranslucentBackground, false);
        setAttribute(Qt::WA_NoSystemBackground, false);
        setWindowTitle(QStringLiteral("Quaydrop options"));
    } else {
        // A tool window: no task-bar entry, no frame, above the others.
        setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
        setAttribute(Qt::WA_TranslucentBackground, true);
    }
    setAutoFillBackground(normal);
    relayout();
    if (wasVisible)
        show();
}

void CCNStatusItemWindow::setContentView(QWidget *view)
{
    if (view == m_content)
        return;
    if (m_content) {
        layout()->removeWidget(m_content);
        m_content->setParent(nullptr);
    }
    m_content = view;
    if (view) {
        view->setParent(this);
        layout()->addWidget(view);
        view->show();
    }
    relayout();
}

void CCNStatusItemWindow::setArrowOnTop(bool top)
{
    m_arrowOnTop = top;
    relayout();
}

void CCNStatusItemWindow::setArrowX(int x)
{
    m_arrowX = x;
    update();
}

QSize CCNStatusItemWindow::frameSizeForContent(const QSize &content) const
{
    return m_normal ? content : QSize(content.width(), content.height() + kArrowHeight);
}

void CCNStatusItemWindow::relayout()
{
    if (!layout())
        return;
    const int arrow = m_normal ? 0 : kArrowHeight;
    layout()->setContentsMargins(0, m_arrowOnTop ? arrow : 0, 0, m_arrowOnTop ? 0 : arrow);
    update();
}

bool CCNStatusItemWindow::event(QEvent *event)
{
    if (event->type() == QEvent::WindowDeactivate && !m_normal)
        Q_EMIT lostFocus();
    return QWidget::event(event);
}

void CCNStatusItemWindow::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape) {
        Q_EMIT escapePressed();
        return;
    }
    QWidget::keyPressEvent(event);
}

void CCNStatusItemWindow::closeEvent(QCloseEvent *event)
{
    if (m_normal && event->spontaneous())
        Q_EMIT closedByUser();
    QWidget::closeEvent(event);
}

void CCNStatusItemWindow::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    if (m_normal) {
        p.fillRect(rect(), palette().color(QPalette::Window));
        return;
    }
    p.setRenderHint(QPainter::Antialiasing);
    const QColor fill = m_configuration.backgroundColor.isValid() ? m_configuration.backgroundColor
                                                                   : palette().color(QPalette::Window);
    const QRectF card = QRectF(rect()).adjusted(0.5, m_arrowOnTop ? kArrowHeight : 0.5, -0.5,
                                                m_arrowOnTop ? -0.5 : -kArrowHeight);
    QPainterPath path;
    path.addRoundedRect(card, kCornerRadius, kCornerRadius);
    const double ax = m_arrowX >= 0 ? std::clamp<double>(m_arrowX, kCornerRadius + kArrowHeight, width() - kCornerRadius - kArrowHeight)
                                    : width() / 2.0;
    QPainterPath arrow;
    if (m_arrowOnTop) {
        arrow.moveTo(ax - kArrowHeight, card.top() + 0.5);
        arrow.lineTo(ax, 0.5);
        arrow.lineTo(ax + kArrowHeight, card.top() + 0.5);
    } else {
        arrow.moveTo(ax - kArrowHeight, card.bottom() - 0.5);
        arrow.lineTo(ax, height() - 0.5);
        arrow.lineTo(ax + kArrowHeight, card.bottom() - 0.5);
    }
    arrow.closeSubpath();
    path = path.united(arrow);
    p.setPen(QPen(palette().color(QPalette::Mid), 1.0));
    p.setBrush(fill);
    p.drawPath(path);
}

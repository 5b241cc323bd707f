#include "JMModalOverlay.h"

#include "JMOverlayView.h"
#include "core/NotificationCenter.h"

#include <QGraphicsOpacityEffect>
#include <QParallelAnimationGroup>
#include <QPropertyAnimation>
#include <QVBoxLayout>

namespace {
constexpr int kAnimationMs = 300;
const char kObjectKey[] = "object";
} // namespace

JMModalOverlay::JMModalOverlay(QObject *parent) : QObject(parent)
{
    for (const char *name : {JMModalOverlayNotification::WillShow, JMModalOverlayNotification::DidShow,
                             JMModalOverlayNotification::WillClose, JMModalOverlayNotification::DidClose}) {
        const QString n = QString::fromLatin1(name);
        NotificationCenter::defaultCenter().observe(n, this, [this, n](const QVariantMap &info) {
            if (info.value(kObjectKey).value<QObject *>() == this)
                forward(n);
        });
    }
}

JMModalOverlay::~JMModalOverlay()
{
    NotificationCenter::defaultCenter().removeObserver(this);
    delete m_overlayView;
    delete m_container;
}

void JMModalOverlay::setBackgroundColor(const QColor &color)
{
    m_backgroundColor = color;
    if (auto *view = qobject_cast<JMOverlayView *>(m_overlayView.data())) {
        view->backgroundColor = color;
        view->update();
    }
}

void JMModalOverlay::post(const char *name)
{
    NotificationCenter::defaultCenter().post(QString::fromLatin1(name),
                                             {{kObjectKey, QVariant::fromValue<QObject *>(this)}});
}

void JMModalOverlay::forward(const QString &name)
{
    if (!delegate)
        return;
    if (name == QLatin1String(JMModalOverlayNotification::WillShow))
        delegate->modalOverlayWillShow(this);
    else if (name == QLatin1String(JMModalOverlayNotification::DidShow))
        delegate->modalOverlayDidShow(this);
    else if (name == QLatin1String(JMModalOverlayNotification::WillClose))
        delegate->modalOverlayWillClose(this);
    else if (name == QLatin1String(JMModalOverlayNotification::DidClose))
        delegate->modalOverlayDidClose(this);
}

Status JMModalOverlay::showInWindow(QWidget *window)
{
    if (!window)
        return Error{QStringLiteral("JMModalOverlay"), 1, QStringLiteral("window is nil")};
    if (!contentViewController)
        return Error{QStringLiteral("JMModalOverlay"), 2, QStringLiteral("contentViewController is nil")};
    if (m_shown)
        return success();
    post(JMModalOverlayNotification::WillShow);
    m_shown = true;
    m_parentWindow = window;

    if (shouldOverlayTitleBar && window->minimumSize() != window->maximumSize()) {
        m_tookResizable = true;
        m_oldMin = window->minimumSize();
        m_oldMax = window->maximumSize();
        window->setFixedSize(window->size());
    }

    auto *overlayView = new JMOverlayView(this, window);
    overlayView->backgroundColor = m_backgroundColor;
    m_overlayView = overlayView;

    QWidget *container = overlayView->card();
    auto *layout = new QVBoxLayout(container);
    layout->setContentsMargins(0, 0, 0, 0);
    m_container = container;

    QWidget *view = contentViewController;
    view->setParent(container);
    layout->addWidget(view);
    view->show();
    overlayView->show();
    overlayView->raise();
    overlayView->setFocus();

    if (animates)
        animate(container, true, [this] { afterShow(); });
    else
        afterShow();
    return success();
}

void JMModalOverlay::afterShow()
{
    post(JMModalOverlayNotification::DidShow);
}

void JMModalOverlay::performClose()
{
    if (delegate && !delegate->modalOverlayShouldClose(this))
        return;
    close();
}

void JMModalOverlay::close()
{
    if (!m_shown)
        return;
    post(JMModalOverlayNotification::WillClose);
    if (animates && m_container)
        animate(m_container, false, [this] { afterClose(); });
    else
        afterClose();
}

void JMModalOverlay::afterClose()
{
    // The controller outlives its stay in the overlay.
    if (contentViewController && m_container && contentViewController->parent() == m_container) {
        contentViewController->hide();
        contentViewController->setParent(nullptr);
    }
    // Later: the close may come from the background's own mouse press.
    if (m_overlayView) {
        m_overlayView->hide();
        m_overlayView->setParent(nullptr);
        m_overlayView->deleteLater(); // takes the container with it
    }
    if (m_tookResizable && m_parentWindow) {
        m_parentWindow->setMinimumSize(m_oldMin);
        m_parentWindow->setMaximumSize(m_oldMax);
    }
    m_tookResizable = false;
    m_parentWindow = nullptr;
    m_shown = false;
    post(JMModalOverlayNotification::DidClose);
}

void JMModalOverlay::animate(QWidget *view, bool appearing, const std::function<void()> &done)
{
    auto *group = new QParallelAnimationGroup(this);
    auto *effect = new QGraphicsOpacityEffect(view);
    view->setGraphicsEffect(effect);
    auto *fade = new QPropertyAnimation(effect, "opacity", group);
    fade->setDuration(kAnimationMs);
    fade->setStartValue(appearing ? 0.0 : 1.0);
    fade->setEndValue(appearing ? 1.0 : 0.0);
    fade->setEasingCurve(appearing ? QEasingCurve::OutQuad : QEasingCurve::InQuad);
    if (animationDirection >= 1 && animationDirection <= 4) {
        // A push: appear from the named side, leave towards the opposite one.
        const QPoint home = view->pos();
        const int w = view->width(), h = view->height();
        static const QPoint fromSide[] = {{0, -1}, {0, 1}, {-1, 0}, {1, 0}};
        QPoint offset = fromSide[animationDirection - 1];
        offset = QPoint(offset.x() * w, offset.y() * h);
        auto *push = new QPropertyAnimation(view, "pos", group);
        push->setDuration(kAnimationMs);
        push->setStartValue(appearing ? home + offset : home);
        push->setEndValue(appearing ? home : home - offset);
        push->setEasingCurve(fade->easingCurve());
    }
    connect(group, &QAbstractAnimation::finished, this, [view, done, group] {
        if (view)
            view->setGraphicsEffect(nullptr);
        group->deleteLater();
        done();
    });
    group->start();
}

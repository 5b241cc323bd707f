#include "CCNStatusItemWindowController.h"

#include "StatusWindowGeometry.h"
#include "core/NotificationCenter.h"

#include <QGuiApplication>
#include <QScreen>
#include <QVariantAnimation>

namespace {
constexpr int kSlideDistance = 8; // points the window travels while it slides
}

CCNStatusItemWindowController::CCNStatusItemWindowController(const StatusItemWindowConfiguration &configuration,
                                                             QObject *parent)
    : QObject(parent), m_configuration(configuration), m_window(new CCNStatusItemWindow(configuration))
{
    m_animation = new QVariantAnimation(this);
    m_animation->setStartValue(0.0);
    m_animation->setEndValue(1.0);
    m_animation->setEasingCurve(QEasingCurve::InOutQuad);
    connect(m_window, &CCNStatusItemWindow::lostFocus, this, [this] {
        if (!m_configuration.pinned && m_open)
            dismissStatusItemWindow();
    });
    // As a normal window it just goes, by its close button or Escape; as the panel it fades.
    auto closedAsWindow = [this] {
        post(NotificationName::StatusItemWindowWillDismiss);
        m_window->hide();
        m_open = false;
        post(NotificationName::StatusItemWindowDidDismiss);
    };
    connect(m_window, &CCNStatusItemWindow::escapePressed, this, [this, closedAsWindow] {
        if (m_window->isNormalWindow())
            closedAsWindow();
        else
            dismissStatusItemWindow();
    });
    connect(m_window, &CCNStatusItemWindow::closedByUser, this, closedAsWindow);
}

CCNStatusItemWindowController::~CCNStatusItemWindowController()
{
    // The content belongs to its creator, not to the window.
    if (QWidget *content = m_window->userContentView())
        content->setParent(nullptr);
    delete m_window;
}

void CCNStatusItemWindowController::setConfiguration(const StatusItemWindowConfiguration &configuration)
{
    m_configuration = configuration;
    m_window->setConfiguration(configuration);
}

void CCNStatusItemWindowController::post(const char *name)
{
    NotificationCenter::defaultCenter().post(QString::fromLatin1(name),
                                             {{QStringLiteral("window"), QVariant::fromValue<QObject *>(m_window)}});
}

void CCNStatusItemWindowController::updateWindowFrame(const QRect &icon, const QRect &screen)
{
    QWidget *content = m_window->userContentView();
    const QSize contentSize = content ? content->sizeHint().expandedTo(content->minimumSizeHint()) : QSize(200, 200);
    const QSize size = m_window->frameSizeForContent(contentSize);
    bool above = false;
    const QRectF frame = StatusWindowGeometry::frameOnScreen(QRectF(icon), QSizeF(size),
                                                             m_configuration.windowToStatusItemMargin, QRectF(screen), &above);
    m_window->setArrowOnTop(!above);
    m_window->setArrowX(int(icon.center().x() - frame.x()));
    m_window->setGeometry(frame.toRect());
    m_restingPos = frame.topLeft().toPoint();
}

void CCNStatusItemWindowController::showStatusItemWindow(const QRect &icon, const QRect &screen)
{
    if (m_animating)
        return;
    if (m_window->isNormalWindow())
        m_window->setAsNormalWindow(false);
    updateWindowFrame(icon, screen);
    m_window->setWindowOpacity(0.0);
    m_window->show();
    animateWindow(In);
}

void CCNStatusItemWindowController::showAsNormalWindow()
{
    if (m_animating)
        return;
    m_window->setAsNormalWindow(true);
    QWidget *content = m_window->userContentView();
    m_window->resize(content ? content->sizeHint() : QSize(320, 480));
    if (const QScreen *screen = QGuiApplication::primaryScreen())
        m_window->move(screen->availableGeometry().center() - m_window->rect().center());
    m_restingPos = m_window->pos();
    m_window->setWindowOpacity(1.0);
    post(NotificationName::StatusItemWindowWillShow);
    m_window->show();
    m_window->raise();
    m_window->activateWindow();
    m_open = true;
    post(NotificationName::StatusItemWindowDidShow);
}

void CCNStatusItemWindowController::dismissStatusItemWindow()
{
    if (m_animating || !m_open)
        return;
    animateWindow(Out);
}

void CCNStatusItemWindowController::animateWindow(Direction direction)
{
    post(direction == In ? NotificationName::StatusItemWindowWillShow : NotificationName::StatusItemWindowWillDismiss);
    const int transition = m_configuration.presentationTransition();
    if (transition != StatusItemWindowConfiguration::Fade && transition != StatusItemWindowConfiguration::SlideAndFade &&
        transition != StatusItemWindowConfiguration::None) {
        finishAnimation(direction);
        return;
    }
    const bool slide = transition == StatusItemWindowConfiguration::SlideAndFade;
    const int ms = int(m_configuration.animationDuration * 1000.0);
    if (ms <= 0 || m_window->isNormalWindow()) {
        m_window->setWindowOpacity(direction == In ? 1.0 : 0.0);
        finishAnimation(direction);
        return;
    }
    m_animating = true;
    m_animation->disconnect(this);
    m_animation->setDuration(ms);
    connect(m_animation, &QVariantAnimation::valueChanged, this, [this, direction, slide](const QVariant &v) {
        const double t = v.toDouble();
        m_window->setWindowOpacity(direction == In ? t : 1.0 - t);
        if (slide) {
            // In: from a little above down into place; out: up and away.
            const double offset = direction == In ? (1.0 - t) * kSlideDistance : t * kSlideDistance;
            m_window->move(m_restingPos - QPoint(0, int(offset)));
        }
    });
    connect(m_animation, &QVariantAnimation::finished, this, [this, direction] { finishAnimation(direction); });
    m_animation->start();
}

void CCNStatusItemWindowController::finishAnimation(Direction direction)
{
    m_animating = false;
    m_open = direction == In;
    if (direction == In) {
        m_window->move(m_restingPos);
        m_window->raise();
        m_window->activateWindow();
        post(NotificationName::StatusItemWindowDidShow);
    } else {
        m_window->hide();
        post(NotificationName::StatusItemWindowDidDismiss);
    }
}

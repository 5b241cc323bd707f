#include "MIHSliderView.h"

#include <QGraphicsOpacityEffect>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QTimer>
#include <QToolButton>
#include <QVariantAnimation>
#include <QWheelEvent>

#include <cmath>

namespace {

// The two dot pictures: a ring at rest, filled when it stands for the slide shown.
QIcon dotIcon(const QColor &ink)
{
    QIcon icon;
    for (const bool on : {false, true}) {
        QPixmap p(MIHSliderDotsControl::kDotSide * 2, MIHSliderDotsControl::kDotSide * 2);
        p.setDevicePixelRatio(2.0);
        p.fill(Qt::transparent);
        QPainter painter(&p);
        painter.setRenderHint(QPainter::Antialiasing);
        QColor c = ink;
        c.setAlphaF(on ? 0.85f : 0.3f);
        painter.setPen(Qt::NoPen);
        painter.setBrush(c);
        painter.drawEllipse(QRectF(4, 4, 7, 7));
        icon.addPixmap(p, QIcon::Normal, on ? QIcon::On : QIcon::Off);
    }
    return icon;
}

} // namespace

MIHSliderDotsControl::MIHSliderDotsControl(MIHSliderView *slider) : QWidget(slider), m_slider(slider)
{
    setObjectName(QStringLiteral("dotsControl"));
}

double MIHSliderDotsControl::rowX(int count, double width) { return (width - (count * double(kDotStep) + kDotSide) + kDotStep) * 0.5; }

void MIHSliderDotsControl::setDotsCount(int count)
{
    qDeleteAll(m_dots);
    m_dots.clear();
    const QIcon icon = dotIcon(palette().color(QPalette::WindowText));
    for (int i = 0; i < count; ++i) {
        auto *dot = new QToolButton(this);
        dot->setObjectName(QStringLiteral("dot%1").arg(i));
        dot->setAutoRaise(true);
        dot->setCheckable(true);
        dot->setIcon(icon);
        dot->setIconSize(QSize(kDotSide, kDotSide));
        dot->setProperty("tag", i);
        dot->setGeometry(i * kDotStep, 0, kDotSide, kDotSide);
        dot->setStyleSheet(QStringLiteral("QToolButton { border: none; padding: 0; }"));
        dot->setFocusPolicy(Qt::NoFocus);
        connect(dot, &QToolButton::clicked, m_slider, [this, i] { m_slider->dotViewSelected(i); });
        dot->show();
        m_dots.append(dot);
    }
    resize(count > 0 ? (count - 1) * kDotStep + kDotSide : 0, kDotSide);
    setIndexOfHighlightedDot(m_highlighted);
}

void MIHSliderDotsControl::setIndexOfHighlightedDot(int index)
{
    m_highlighted = index;
    for (int i = 0; i < m_dots.size(); ++i)
        m_dots[i]->setChecked(i == index);
}

MIHSliderView::MIHSliderView(QWidget *parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("sliderView"));
    setFocusPolicy(Qt::StrongFocus);
    m_content = new QWidget(this);
    m_content->setObjectName(QStringLiteral("contentView"));
    m_snapshot = new QLabel(m_content);
    m_snapshot->hide();
    m_dots = new MIHSliderDotsControl(this);
    m_timer = new QTimer(this);
    connect(m_timer, &QTimer::timeout, this, &MIHSliderView::handleTimerTick);
    m_transition = new QVariantAnimation(this);
    m_transition->setStartValue(0.0);
    m_transition->setEndValue(1.0);
    m_transition->setEasingCurve(QEasingCurve::InOutQuad);
    prepareTransitionTimer();
}

bool MIHSliderView::isTransitionRunning() const { return m_transition->state() == QAbstractAnimation::Running; }

void MIHSliderView::addSlide(QWidget *slide)
{
    slide->setParent(m_content);
    slide->hide();
    m_slides.append(slide);
    if (m_slides.size() == 1)
        displaySlideAtIndex(0);
    m_dots->setDotsCount(int(m_slides.size()));
    layoutDots();
}

void MIHSliderView::removeSlide(QWidget *slide)
{
    const qsizetype at = m_slides.indexOf(slide);
    if (at < 0)
        return;
    m_slides.removeAt(at);
    slide->hide();
    if (m_displayed == slide)
        m_displayed = nullptr;
    m_dots->setDotsCount(int(m_slides.size()));
    layoutDots();
}

void MIHSliderView::displaySlideAtIndex(int index)
{
    m_dots->setIndexOfHighlightedDot(index);
    QWidget *slide = m_slides.value(index);
    if (!slide || slide == m_displayed)
        return;
    slide->setGeometry(m_content->rect());
    if (m_displayed)
        animateTo(slide);
    else
        slide->show();
    m_displayed = slide;
    m_index = index;
    Q_EMIT slideShown(index);
}

void MIHSliderView::animateTo(QWidget *next)
{
    // The old slide stays as a picture while the new one comes in over or beside it.
    m_transition->stop();
    m_transition->disconnect(this);
    m_snapshot->setPixmap(m_displayed->grab());
    m_snapshot->setGeometry(m_content->rect());
    m_snapshot->show();
    m_displayed->hide();
    next->show();
    next->raise();
    const QRect home = m_content->rect();
    const int w = home.width(), h = home.height();
    const TransitionStyle style = transitionStyle;
    auto *fade = new QGraphicsOpacityEffect(next);
    if (style == Fade)
        next->setGraphicsEffect(fade);
    else
        delete fade;
    m_transition->setDuration(int(transitionAnimationDuration * 1000));
    connect(m_transition, &QVariantAnimation::valueChanged, this, [=, this](const QVariant &v) {
        const double t = v.toDouble();
        switch (style) {
        case Fade:
            if (auto *e = qobject_cast<QGraphicsOpacityEffect *>(next->graphicsEffect()))
                e->setOpacity(t);
            break;
        case MoveInFromTop:
            next->move(0, int(-h * (1.0 - t)));
            break;
        case PushFromLeft:
            next->move(int(-w * (1.0 - t)), 0);
            m_snapshot->move(int(w * t), 0);
            break;
        case PushFromRight:
            next->move(int(w * (1.0 - t)), 0);
            m_snapshot->move(int(-w * t), 0);
            break;
        }
    });
    connect(m_transition, &QVariantAnimation::finished, this, [this, next, home] {
        next->setGraphicsEffect(nullptr);
        next->setGeometry(home);
        m_snapshot->hide();
    });
    m_transition->start();
}

void MIHSliderView::setScheduledTransition(bool on)
{
    m_scheduled = on;
    if (on)
        prepareTransitionTimer();
    else
        m_timer->stop();
}

void MIHSliderView::setScheduledTransitionInterval(double seconds)
{
    m_interval = seconds;
    if (m_scheduled)
        prepareTransitionTimer();
}

void MIHSliderView::prepareTransitionTimer()
{
    m_timer->stop();
    m_timer->start(int(m_interval * 1000));
}

void MIHSliderView::handleTimerTick()
{
    if (m_slides.isEmpty())
        return;
    if (!repeatingScheduledTransition && m_index + 1 >= m_slides.size())
        return;
    displaySlideAtIndex((m_index + 1) % int(m_slides.size()));
}

void MIHSliderView::dotViewSelected(int tag)
{
    if (m_scheduled)
        prepareTransitionTimer();
    if (tag < 0 || tag >= m_slides.size())
        return;
    transitionStyle = tag > m_dots->indexOfHighlightedDot() ? PushFromRight : PushFromLeft;
    displaySlideAtIndex(tag);
}

void MIHSliderView::wheelEvent(QWheelEvent *event)
{
    const int count = int(m_slides.size());
    switch (event->phase()) {
    case Qt::ScrollBegin:
        m_scrollDeltaX = m_scrollDeltaY = 0;
        break;
    case Qt::ScrollUpdate:
    case Qt::ScrollMomentum:
        m_scrollDeltaX += event->pixelDelta().isNull() ? event->angleDelta().x() / 8.0 : event->pixelDelta().x();
        m_scrollDeltaY += event->pixelDelta().isNull() ? event->angleDelta().y() / 8.0 : event->pixelDelta().y();
        break;
    case Qt::ScrollEnd: {
        const double dx = m_scrollDeltaX;
        m_scrollDeltaX = m_scrollDeltaY = 0;
        // Exactly the threshold is not enough; beyond it the show goes back or on, wrapping round.
        if (count == 0 || std::abs(dx) <= kSwipeThreshold)
            break;
        const bool back = dx > 0;
        transitionStyle = back ? PushFromLeft : PushFromRight;
        displaySlideAtIndex((m_index + (back ? count - 1 : 1)) % count);
        if (m_scheduled)
            prepareTransitionTimer();
        break;
    }
    default:
        // A plain mouse wheel has no phases: it is no swipe.
        break;
    }
    event->accept();
}

void MIHSliderView::keyPressEvent(QKeyEvent *event)
{
    // The keyboard turns the pages too.
    const int count = int(m_slides.size());
    if (count > 0 && (event->key() == Qt::Key_Right || event->key() == Qt::Key_Left)) {
        const bool forward = event->key() == Qt::Key_Right;
        transitionStyle = forward ? PushFromRight : PushFromLeft;
        displaySlideAtIndex((m_index + (forward ? 1 : count - 1)) % count);
        if (m_scheduled)
            prepareTransitionTimer();
        return;
    }
    QWidget::keyPressEvent(event);
}

void MIHSliderView::layoutDots()
{
    const int count = m_dots->dotsCount();
    m_dots->move(int(MIHSliderDotsControl::rowX(count, width())), height() - MIHSliderDotsControl::kDotSide - 8);
    m_dots->raise();
}

void MIHSliderView::resizeEvent(QResizeEvent *)
{
    m_content->setGeometry(rect().adjusted(0, 0, 0, -(MIHSliderDotsControl::kDotSide + 16)));
    if (m_displayed)
        m_displayed->setGeometry(m_content->rect());
    layoutDots();
}

#include "ITSwitch.h"

#include <QEasingCurve>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QVariantAnimation>

ITSwitch::ITSwitch(QWidget *parent) : QCheckBox(parent), m_tint(QColor::fromRgbF(0.27f, 0.86f, 0.36f))
{
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    m_knobMove = new QVariantAnimation(this);
    m_knobMove->setDuration(400);
    connect(m_knobMove, &QVariantAnimation::valueChanged, this, [this](const QVariant &v) {
        m_knobShown = v.toRectF();
        update();
    });
    reloadLayer(false);
}

QSize ITSwitch::sizeHint() const { return QSize(44, 26); }

QRectF ITSwitch::trackRect() const
{
    // The track keeps the proportions of the original control, centred in whatever room it gets.
    const QSizeF hint = sizeHint();
    const double h = std::min<double>(height(), hint.height());
    const double w = std::min<double>(width(), h * hint.width() / hint.height());
    return QRectF((width() - w) / 2.0, (height() - h) / 2.0, w, h);
}

QRectF ITSwitch::knobRect() const { return m_knobShown.translated(trackRect().topLeft()); }

void ITSwitch::setOn(bool on)
{
    const QSignalBlocker quiet(this);
    setChecked(on);
    m_state.on = on;
    reloadLayer();
}

void ITSwitch::setTintColor(const QColor &color)
{
    m_tint = color;
    update();
}

void ITSwitch::setKnobImg(const QPixmap &image)
{
    m_knobImg = image;
    update();
}

void ITSwitch::reloadLayer(bool animated)
{
    const QRectF target = SwitchGeometry::rectForKnob(trackRect().size(), m_state);
    m_knobMove->stop();
    if (!animated || m_knobShown.isNull() || !isVisible()) {
        m_knobShown = target;
        update();
        return;
    }
    // At rest the knob overshoots a little and settles; under the finger it follows directly.
    QEasingCurve curve(QEasingCurve::BezierSpline);
    curve.addCubicBezierSegment(QPointF(0.25, 1.5), QPointF(0.5, 1.0), QPointF(1.0, 1.0));
    m_knobMove->setEasingCurve(m_state.dragged ? QEasingCurve(QEasingCurve::Linear) : curve);
    m_knobMove->setStartValue(m_knobShown);
    m_knobMove->setEndValue(target);
    m_knobMove->start();
}

void ITSwitch::userSets(bool on)
{
    const bool changed = on != isChecked();
    setOn(on);
    if (changed)
        Q_EMIT switched(on);
}

void ITSwitch::mousePressEvent(QMouseEvent *event)
{
    if (!isEnabled() || event->button() != Qt::LeftButton)
        return;
    m_state.active = true;
    reloadLayer();
}

void ITSwitch::mouseMoveEvent(QMouseEvent *event)
{
    if (!isEnabled() || !m_state.active)
        return;
    m_state.dragged = true;
    const QRectF track = trackRect();
    m_state.draggingTowardsOn = SwitchGeometry::draggingTowardsOn(event->position().x() - track.x(), track.width());
    reloadLayer();
}

void ITSwitch::mouseReleaseEvent(QMouseEvent *event)
{
    if (!isEnabled() || event->button() != Qt::LeftButton || !m_state.active)
        return;
    m_state.active = false;
    const bool next = SwitchGeometry::stateAfterRelease(m_state);
    m_state.dragged = false;
    m_state.draggingTowardsOn = false;
    userSets(next);
    reloadLayer();
}

void ITSwitch::keyPressEvent(QKeyEvent *event)
{
    if (!isEnabled()) {
        event->ignore();
        return;
    }
    switch (event->key()) {
    case Qt::Key_Space:
        userSets(!isChecked());
        return;
    case Qt::Key_Left:
        userSets(false);
        return;
    case Qt::Key_Right:
        userSets(true);
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}

void ITSwitch::keyReleaseEvent(QKeyEvent *event)
{
    // The check box would toggle again on the space key's release.
    if (event->key() != Qt::Key_Space)
        QWidget::keyReleaseEvent(event);
}

void ITSwitch::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::EnabledChange)
        update();
    QCheckBox::changeEvent(event);
}

void ITSwitch::paintEvent(QPaintEvent *)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.setOpacity(isEnabled() ? 1.0 : 0.5);
    const QRectF track = trackRect().adjusted(0.5, 0.5, -0.5, -0.5);
    const double radius = track.height() / 2.0;
    const bool lit = (m_state.dragged && m_state.draggingTowardsOn) || (!m_state.dragged && isChecked());
    p.setPen(QPen(lit ? m_tint : QColor(0, 0, 0, 51), 1.0));
    p.setBrush(lit ? m_tint : QColor(Qt::transparent));
    p.drawRoundedRect(track, radius, radius);

    const QRectF knob = knobRect();
    const double r = knob.height() / 2.0;
    // A soft shadow under a white knob.
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(0, 0, 0, 60));
    p.drawRoundedRect(knob.translated(0, 1.5), r, r);
    p.setBrush(Qt::white);
    p.drawRoundedRect(knob, r, r);
    if (!m_knobImg.isNull()) {
        QPainterPath clip;
        clip.addRoundedRect(knob, r, r);
        p.setClipPath(clip);
        p.drawPixmap(knob.toRect(), m_knobImg);
        p.setClipping(false);
    }
    if (hasFocus()) {
        p.setPen(QPen(palette().color(QPalette::Highlight), 1.5));
        p.setBrush(Qt::NoBrush);
        p.drawRoundedRect(track.adjusted(-1.5, -1.5, 1.5, 1.5), radius + 1.5, radius + 1.5);
    }
}

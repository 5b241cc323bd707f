#pragma once

#include "SwitchGeometry.h"

#include <QCheckBox>
#include <QColor>
#include <QPixmap>

class QVariantAnimation;

// An on/off switch with a sliding knob. A click toggles it; a drag moves the knob and decides by the
// side it ends on; space toggles it when it has the focus. setOn() never sends the action: only the
// user's change does, through switched(). To assistive technology it is a check box.
class ITSwitch : public QCheckBox
{
    Q_OBJECT
public:
    explicit ITSwitch(QWidget *parent = nullptr);

    bool isOn() const { return isChecked(); }
    void setOn(bool on);
    void setTintColor(const QColor &color);
    QColor tintColor() const { return m_tint; }
    void setKnobImg(const QPixmap &image);
    SwitchGeometry::State knobState() const { return m_state; }
    // Where the knob is drawn now, in the widget's coordinates (it may be moving).
    QRectF knobRect() const;

    QSize sizeHint() const override;

Q_SIGNALS:
    // The target-action: the user changed the state.
    void switched(bool on);

protected:
    void paintEvent(QPaintEvent *) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *) override { reloadLayer(false); }
    bool hitButton(const QPoint &) const override { return true; }

private:
    void reloadLayer(bool animated = true);
    void userSets(bool on);
    QRectF trackRect() const;

    SwitchGeometry::State m_state;
    QColor m_tint;
    QPixmap m_knobImg;
    QVariantAnimation *m_knobMove;
    QRectF m_knobShown;
};

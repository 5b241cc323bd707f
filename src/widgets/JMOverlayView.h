#pragma once

#include <QColor>
#include <QWidget>

class JMModalOverlay;

// The dimmed background of an overlay. A press on it asks the overlay to close when that is allowed.
class JMOverlayView : public QWidget
{
    Q_OBJECT
public:
    JMOverlayView(JMModalOverlay *overlay, QWidget *parent);
    QColor backgroundColor;

protected:
    void paintEvent(QPaintEvent *) override;
    void mousePressEvent(QMouseEvent *event) override;

private:
    JMModalOverlay *m_overlay;
};

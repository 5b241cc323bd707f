#pragma once

#include <QWidget>

// A small spinning arc: work of unknown length.
class Spinner : public QWidget
{
    Q_OBJECT
public:
    explicit Spinner(QWidget *parent = nullptr, int side = 28);
    void start();
    void stop();
    bool isSpinning() const { return m_timer != 0; }

protected:
    void paintEvent(QPaintEvent *) override;
    void timerEvent(QTimerEvent *) override;

private:
    int m_timer = 0;
    int m_angle = 0;
};

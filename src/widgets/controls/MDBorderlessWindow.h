#pragma once

#include <QWidget>

class QVariantAnimation;

// A floating window without a frame: rounded corners of 10 points, a shadow, fading in and out in
// a tenth of a second.
class MDBorderlessWindow : public QWidget
{
    Q_OBJECT
public:
    explicit MDBorderlessWindow(QWidget *parent = nullptr);
    void fadeIn();
    void fadeOut();
    static constexpr int kFadeMs = 100;

protected:
    void paintEvent(QPaintEvent *) override;

private:
    QVariantAnimation *m_fade;
};

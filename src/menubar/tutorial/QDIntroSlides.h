#pragma once

#include <QWidget>

class MIHSliderView;
class MXButton;
class QCheckBox;
class QPushButton;

// The first-start window: four slides on how the program is used, a page through them, and a box to
// keep it from showing again. `inTray`: where the options are, under an icon or by starting again.
class QDIntroSlides : public QWidget
{
    Q_OBJECT
public:
    explicit QDIntroSlides(bool inTray = true, QWidget *parent = nullptr);

    MIHSliderView *sliderView;
    QWidget *slide1V;
    QWidget *slide2V;
    QWidget *slide3V;
    QWidget *slide4V;
    MXButton *viewIntroBtn;
    QPushButton *prevBtn;
    QPushButton *nextBtn;
    QCheckBox *dontShowAgainCheck; // "kDontShowIntroSlider"

    void showPrevSlide();
    void showNextSlide();
    void showIntroOnMedium();

Q_SIGNALS:
    void closed();

protected:
    void changeEvent(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void retranslate();
    void updateButtons();
};

#pragma once

#include <QList>
#include <QPointer>
#include <QWidget>

class QLabel;
class QTimer;
class QToolButton;
class QVariantAnimation;
class MIHSliderView;

// The row of page dots under a slide show: one per slide, the shown one highlighted; a click on a dot
// goes to its slide.
class MIHSliderDotsControl : public QWidget
{
    Q_OBJECT
public:
    static constexpr int kDotSide = 15;
    static constexpr int kDotStep = 22;

    explicit MIHSliderDotsControl(MIHSliderView *slider);
    void setDotsCount(int count);
    int dotsCount() const { return int(m_dots.size()); }
    void setIndexOfHighlightedDot(int index);
    int indexOfHighlightedDot() const { return m_highlighted; }
    QToolButton *dot(int index) const { return m_dots.value(index); }
    // The row's left edge, centred in a slider `width` wide.
    static double rowX(int count, double width);

private:
    QList<QToolButton *> m_dots;
    int m_highlighted = -1;
    MIHSliderView *m_slider;
};

// A slide show: one view at a time, changed by a timer, a swipe, the dots or the caller, with a fade,
// a move in from the top or a push from either side.
class MIHSliderView : public QWidget
{
    Q_OBJECT
public:
    enum TransitionStyle { Fade = 0, MoveInFromTop = 1, PushFromLeft = 2, PushFromRight = 3 };

    explicit MIHSliderView(QWidget *parent = nullptr);

    void addSlide(QWidget *slide);
    void removeSlide(QWidget *slide);
    void displaySlideAtIndex(int index);
    const QList<QWidget *> &slides() const { return m_slides; }
    int indexOfDisplayedSlide() const { return m_index; }
    QWidget *displayedSlide() const { return m_displayed; }

    TransitionStyle transitionStyle = Fade;
    bool repeatingScheduledTransition = true;
    double transitionAnimationDuration = 0.6; // seconds
    void setScheduledTransition(bool on);
    bool scheduledTransition() const { return m_scheduled; }
    void setScheduledTransitionInterval(double seconds);
    double scheduledTransitionInterval() const { return m_interval; }
    MIHSliderDotsControl *dotsControl() const { return m_dots; }
    QTimer *transitionTimer() const { return m_timer; }
    bool isTransitionRunning() const;
    // The horizontal distance a swipe must pass, in points.
    static constexpr double kSwipeThreshold = 50.0;

    void handleTimerTick();
    void dotViewSelected(int tag);

Q_SIGNALS:
    void slideShown(int index);

protected:
    void resizeEvent(QResizeEvent *) override;
    void wheelEvent(QWheelEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void prepareTransitionTimer();
    void layoutDots();
    void animateTo(QWidget *next);

    QList<QWidget *> m_slides;
    int m_index = 0;
    QPointer<QWidget> m_displayed;
    QWidget *m_content;
    MIHSliderDotsControl *m_dots;
    QTimer *m_timer;
    bool m_scheduled = true;
    double m_interval = 8.0;
    double m_scrollDeltaX = 0;
    double m_scrollDeltaY = 0;
    QVariantAnimation *m_transition;
    QLabel *m_snapshot; // the slide going away, while the next one comes
};

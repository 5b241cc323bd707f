#pragma once

#include <QColor>
#include <QWidget>

class JMModalOverlay;

// The dimmed background of an overlay, over the whole parent window. A press on it, outside the
// card, asks the overlay to close when that is allowed.
class JMOverlayView : public QWidget
{
    Q_OBJECT
public:
    JMOverlayView(JMModalOverlay *overlay, QWidget *parent);
    QColor backgroundColor;
    // The card the controller sits on: inset from the window, so that the dimmed panel shows around it.
    QWidget *card() const { return m_card; }
    static constexpr int kCardInset = 6;

protected:
    void paintEvent(QPaintEvent *) override;
    void mousePressEvent(QMouseEvent *event) override;
    void resizeEvent(QResizeEvent *) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void placeCard();

    JMModalOverlay *m_overlay;
    QWidget *m_card;
};

// Where the overlay's content is: a raised card that keeps every press on it, so that a click
// between its fields never reaches the background.
class JMOverlayCard : public QWidget
{
    Q_OBJECT
public:
    explicit JMOverlayCard(QWidget *parent);

protected:
    void paintEvent(QPaintEvent *) override;
    void mousePressEvent(QMouseEvent *event) override;
};

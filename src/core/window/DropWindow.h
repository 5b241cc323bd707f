#pragma once

#include <QPointer>
#include <QRectF>
#include <QWidget>

class QScreen;
class QStackedLayout;

// The single window: frameless, above other windows, and not taking the focus while it only waits
// for a drop. Its content view is swapped, never recreated.
class DropWindow : public QWidget
{
    Q_OBJECT
public:
    explicit DropWindow(QWidget *parent = nullptr);

    void prepareFirstShow();
    // Takes a view into the window, hidden until it becomes the content.
    void addView(QWidget *view);
    void setContentView(QWidget *view);
    QWidget *contentView() const { return m_content; }
    // Whether a panel may take the keyboard focus: off while the window waits for a drop.
    void setTakesFocus(bool takes);
    bool takesFocus() const { return m_takesFocus; }

    // A point of the screen it lies on in the points of the window's screen, which run on past its
    // edges: next to the window on a screen of another scale, a point keeps its true distance.
    QPointF inItsScreensScale(QPointF global) const;
    // Geometry in the layout rules' y-up space.
    QRectF frameYUp() const;
    void setFrameYUp(const QRectF &frame);
    // The screen a point is on (or the nearest one), its visible frame and its whole frame, y-up.
    static const QScreen *screenAtYUp(QPointF pointYUp);
    static QRectF visibleFrameYUp(QPointF at);
    static QRectF screenFrameYUp(QPointF at);
    static qreal primaryScreenHeight();

Q_SIGNALS:
    // Keys that no control of the window took: the controller decides what they do.
    void escapePressed();
    void returnPressed();
    void pastePressed();

protected:
    void paintEvent(QPaintEvent *) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QStackedLayout *m_stack;
    QPointer<QWidget> m_content;
    bool m_takesFocus = false;
};

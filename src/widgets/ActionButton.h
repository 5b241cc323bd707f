#pragma once

#include <QPixmap>
#include <QToolButton>

// A flat panel button: an image over a short label, or a title alone. It swaps to its hover image
// and a soft highlight under the pointer, and can hold a small spinner while its title is computed.
class ActionButton : public QToolButton
{
    Q_OBJECT
public:
    explicit ActionButton(QWidget *parent = nullptr);

    void setImages(const QPixmap &normal, const QPixmap &hover);
    bool hasImages() const { return !m_normal.isNull(); }
    bool isHovered() const { return m_hovered; }
    // A title-only button shows a spinner in place of its title while busy.
    void setBusy(bool busy);
    bool isBusy() const { return m_busy; }
    // The label under the image is set in this font, which its panel fits to the longest label; a
    // title-only button uses its own font. The label is never cut: what does not fit overflows.
    void setLabelFont(const QFont &font);
    QFont labelFont() const;
    // Where the label goes.
    QRect labelRect() const;

protected:
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    QPixmap m_normal, m_hover;
    QFont m_labelFont;
    bool m_hasLabelFont = false;
    bool m_hovered = false;
    bool m_busy = false;
    int m_spinTimer = 0;
    int m_spinAngle = 0;
};

#pragma once

#include <QImage>
#include <QPixmap>
#include <QWidget>

// The picture in the editor (imgToRotateOrCrop): shown at a scale that never enlarges it, centred. It
// holds what is drawn, which may be a quick preview while the whole picture is still being read, and
// keeps a copy scaled to the screen so that a repaint does not scale the full picture again.
class EditorImageView : public QWidget
{
    Q_OBJECT
public:
    explicit EditorImageView(QWidget *parent = nullptr);

    // `pixels` shown as a picture of `points`; any pixel count will do (a preview has fewer).
    void setImage(const QImage &pixels, const QSizeF &points);
    void clear();
    bool hasImage() const { return !m_pixels.isNull(); }
    QSizeF imagePoints() const { return m_points; }
    // Where the picture lies, in this view's y-up points.
    QRectF imgRectYUp() const;

Q_SIGNALS:
    // After the first paint of a new picture: the moment it can be seen.
    void pictureShown();

protected:
    void paintEvent(QPaintEvent *) override;

private:
    QImage m_pixels;
    QSizeF m_points;
    QPixmap m_scaled; // m_pixels at the size last shown
    bool m_announced = false;
};

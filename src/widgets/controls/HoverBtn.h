#pragma once

#include <QIcon>
#include <QToolButton>

// An image button with its own pictures for rest, hover, pressed and disabled.
class HoverBtn : public QToolButton
{
    Q_OBJECT
public:
    explicit HoverBtn(QWidget *parent = nullptr);
    void setImages(const QPixmap &active, const QPixmap &rollover, const QPixmap &inactive, const QPixmap &pressed);
    // Which picture shows now: "active", "rollover", "inactive" or "pressed".
    QString shownImage() const { return m_shown; }

protected:
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void show(const QString &which);
    void updateImage();

    QPixmap m_active, m_rollover, m_inactive, m_pressed;
    QString m_shown;
    bool m_inside = false;
};

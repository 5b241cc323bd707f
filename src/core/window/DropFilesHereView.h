#pragma once

#include <QMimeData>
#include <QWidget>

// The drop target the window shows while it waits: 90 by 90, an arrow into a dashed square, lit up
// while something is dragged over it.
class DropFilesHereView : public QWidget
{
    Q_OBJECT
public:
    explicit DropFilesHereView(QWidget *parent = nullptr);
    bool isHovered() const { return m_hovered; }

Q_SIGNALS:
    // What was let go over the view; the controller takes it from here.
    void dropped(const QMimeData *data);

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void paintEvent(QPaintEvent *) override;

private:
    bool m_hovered = false;
};

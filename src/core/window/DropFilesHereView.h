#pragma once

#include <QMimeData>
#include <QWidget>

class DropView;
class QLabel;

// What the window shows while it waits: its own target (an arrow into a dashed square and "Drop here",
// lit up while something is dragged over it) and, below it, the quick-move and alias targets.
class DropFilesHereView : public QWidget
{
    Q_OBJECT
public:
    explicit DropFilesHereView(QWidget *parent = nullptr);
    bool isHovered() const { return m_hovered; }
    DropView *dropQuickMoveView;
    DropView *createAliasDropView;
    QLabel *dropHereLbl;

Q_SIGNALS:
    // What was let go over the view; the controller takes it from here.
    void dropped(const QMimeData *data, const QStringList &promisedPaths);

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void paintEvent(QPaintEvent *) override;
    void resizeEvent(QResizeEvent *) override;
    void changeEvent(QEvent *event) override;

private:
    void retranslate();
    bool m_hovered = false;
};

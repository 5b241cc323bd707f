#pragma once

#include <QWidget>

class QLabel;
class QMimeData;

// One of the two small targets below the window's own, a row each: tag 0 opens the quick-move picker,
// tag 1 makes aliases at once. They take file names and promised files only. The caption says what
// the target is, and while something hovers over it, what a drop there does.
class DropView : public QWidget
{
    Q_OBJECT
public:
    static constexpr qint64 kQuickMoveTag = 0;
    static constexpr qint64 kAliasTag = 1;

    explicit DropView(QWidget *parent = nullptr);
    void setMDropViewTag(qint64 tag);
    qint64 mDropViewTag() const { return m_tag; }
    bool isHovered() const { return m_hovered; }

    QLabel *labelTextFld;

Q_SIGNALS:
    void dropped(DropView *view, const QMimeData *data, const QStringList &promisedPaths);

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void paintEvent(QPaintEvent *) override;
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *) override;

private:
    void retranslate();
    void fitCaption();
    void setHovered(bool hovered);
    QString iconStem() const;
    qint64 m_tag = kQuickMoveTag;
    bool m_hovered = false;
};

#pragma once

#include <QListView>

// The page board's grid: icon mode, several selected at once, reordered by dragging (the model moves
// the rows), files dropped in. Delete removes the selection (a beep with none); Ctrl+A selects all.
class LRHMIKImageBrowserView : public QListView
{
    Q_OBJECT
public:
    explicit LRHMIKImageBrowserView(QWidget *parent = nullptr);
    QList<qsizetype> selectedRows() const;

Q_SIGNALS:
    void removeItems(const QList<qsizetype> &rows);

protected:
    void keyPressEvent(QKeyEvent *event) override;
};

#pragma once

#include "widgets/TranslatedTexts.h"

#include <QWidget>

class DestinationList;
class DestinationListView;
class QPushButton;

// The destination manager: a window of its own, opened from the options' menu and by
// `quaydrop --destinations`, that edits the same stored list as the picker with no files in play.
// Every row has the edit look: a click renames, the minus removes after asking, the arrow opens
// the row's subfolders to add one of them, and rows are dragged into a new order.
class ManageDestinationsWC : public QWidget
{
    Q_OBJECT
public:
    explicit ManageDestinationsWC(QWidget *parent = nullptr);

    DestinationList *destList;
    DestinationListView *destTablView;
    QPushButton *addDestBtn;

protected:
    void showEvent(QShowEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    TranslatedTexts m_texts;
};

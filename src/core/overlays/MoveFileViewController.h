#pragma once

#include "OverlayController.h"

#include <QStringList>

#include <functional>

class DestinationList;
class DestinationListView;
class QCheckBox;
class QMenu;
class QPushButton;
class QToolButton;

// The destination picker: one list of destinations from the store, with a box that turns the move
// into a copy, the recent destinations, a subfolder browser per row, "Other..." for any folder, and
// an edit mode that renames, removes, adds and reorders. It moves nothing: the choice goes to the
// completion with a tag: 0 a row or a subfolder, 5 a recent destination, 6 Other..., 7 Back.
class MoveFileViewController : public OverlayController
{
    Q_OBJECT
public:
    static constexpr qint64 kChosenTag = 0;
    static constexpr qint64 kRecentTag = 5;
    static constexpr qint64 kOtherFolderTag = 6;
    static constexpr qint64 kGoBackTag = 7;
    static constexpr int kEmptyRecentTag = 999;
    using Completion = std::function<void(qint64 tag, bool copy, QString path)>;

    explicit MoveFileViewController(QWidget *parent = nullptr);
    void setCompletion(Completion c) { m_completion = std::move(c); }

    void setDestinationsArr(const QStringList &paths);
    QStringList destinationsArr() const;
    void setDefDestArr(const QStringList &paths);
    void setDestParentFldrPath(const QString &path);
    QString destParentFldrPath() const;

    void enterEditMode(); // toggles
    bool isEditMode() const;
    void showMyDestMenu();
    void myMenuItemViewSelector(int tag);
    QWidget *firstResponder() const override;

    DestinationList *destList;
    DestinationListView *destTablView;
    QCheckBox *shouldCopyCheckB;
    QPushButton *goBackBtn;
    QPushButton *otherFolderBtn;
    QToolButton *recentDestBtn;
    QToolButton *editModeBtn; // its "tag" property is the mode: 0 normal, 1 edit
    QToolButton *addDestBtn;  // in edit mode, where the recent button is otherwise
    QMenu *userDestMenu;
    QStringList recentDestArr;

protected:
    void fire(qint64 tag) override;
    void showEvent(QShowEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void complete(qint64 tag, const QString &path);
    void updateToolImages();

    Completion m_completion;
    bool m_chosen = false; // one choice per showing
};

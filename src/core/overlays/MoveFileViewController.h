#pragma once

#include "OverlayController.h"

#include <QStringList>

#include <functional>

class QCheckBox;
class QListWidget;
class QListWidgetItem;
class QPushButton;

// The destination picker: the stored destinations, then the six standard folders. A row passes its
// path; "Other..." (tag 6) asks for a folder; back (tag 7) returns to the panel.
class MoveFileViewController : public OverlayController
{
    Q_OBJECT
public:
    static constexpr qint64 kOtherFolderTag = 6;
    static constexpr qint64 kGoBackTag = 7;
    using Completion = std::function<void(qint64 tag, bool copy, QString path)>;

    explicit MoveFileViewController(QWidget *parent = nullptr);
    void setCompletion(Completion c) { m_completion = std::move(c); }

    void setDestinationsArr(const QStringList &paths);
    void setDefDestArr(const QStringList &paths);
    void setDestParentFldrPath(const QString &path) { destParentFldrPath = path; }
    QString destParentFldrPath;

    QListWidget *destTablView;
    QCheckBox *shouldCopyCheckB;
    QPushButton *goBackBtn;
    QPushButton *otherFolderBtn;

protected:
    void fire(qint64 tag) override;
    void showEvent(QShowEvent *event) override;

private:
    void rebuild();
    void rowActivated(QListWidgetItem *item);

    Completion m_completion;
    QStringList m_destinations;
    QStringList m_defaults;
    bool m_chosen = false; // a click and the double click's activation are one choice
};

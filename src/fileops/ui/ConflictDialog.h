#pragma once

#include "fileops/orchestration/MoveCopyInterfaces.h"

#include <QDialog>
#include <QPointer>

class QCheckBox;
class QLabel;
class QPushButton;

// "An item with this name already exists": Replace, Skip, Keep both, and an apply-to-all box.
// Shown with show(), never exec(): the job's logic waits for the answer without a nested loop.
class ConflictDialog : public QDialog
{
    Q_OBJECT
public:
    ConflictDialog(const ConflictQuestion &question, QWidget *parent = nullptr);

    QPushButton *replaceButton;
    QPushButton *skipButton;
    QPushButton *keepBothButton;
    QCheckBox *applyToAllBox;

Q_SIGNALS:
    void answered(ConflictReply reply);

protected:
    void reject() override; // Escape is Skip: nothing of the user's changes
};

// Asks through a ConflictDialog over the given window.
class WidgetConflictResolver : public ConflictResolver
{
public:
    explicit WidgetConflictResolver(QWidget *window) : m_window(window) {}
    void ask(const ConflictQuestion &question, std::function<void(ConflictReply)> reply) override;
    ConflictDialog *openDialog() const { return m_open; }

private:
    QPointer<QWidget> m_window;
    QPointer<ConflictDialog> m_open;
};

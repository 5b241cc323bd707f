#pragma once

// The overlays of the file actions: a new file or folder, the name of a folder to gather into, and
// the batch rename with its live preview. Each only collects input and hands it to its completion.

#include "OverlayController.h"

#include <functional>

class QCheckBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QToolButton;

class FileCreateOverlayVC : public OverlayController
{
    Q_OBJECT
public:
    // tag, inside-folder state (0 or 1), name
    using Completion = std::function<void(qint64, qint64, QString)>;
    static constexpr qint64 kBackTag = 3;

    explicit FileCreateOverlayVC(QWidget *parent = nullptr);
    void setFileCreateCompletion(Completion c) { m_completion = std::move(c); }
    QWidget *firstResponder() const override;
    qint64 closeTag() const override { return kBackTag; }
    // Before each showing: the field emptied, "same as dragged file" unticked and offered only for one
    // item (whose base name it fills in), the inside box as the stored setting says.
    void prepare(bool oneItem, const QString &draggedBaseName, bool insideFolder);

    QLineEdit *fileNameTXTfld;
    QCheckBox *sameAsDragedFile;
    QCheckBox *insideFolderCheckBox;
    QToolButton *hintBtn;
    QString fileName;

protected:
    void fire(qint64 tag) override;

private:
    void sameAsDraggedFileNameAction(bool on);
    void showFileNameHint();
    Completion m_completion;
};

class EnterFolderNameOverlayVC : public OverlayController
{
    Q_OBJECT
public:
    using Completion = std::function<void(qint64, QString)>;
    static constexpr qint64 kDoneTag = 0;

    explicit EnterFolderNameOverlayVC(QWidget *parent = nullptr);
    void setFolderNameCompletion(Completion c) { m_completion = std::move(c); }
    QWidget *firstResponder() const override;
    QLineEdit *folderNameTF;

protected:
    void fire(qint64 tag) override;

private:
    Completion m_completion;
};

class RenameFilesVC : public OverlayController
{
    Q_OBJECT
public:
    // tag, new name, suffix, prefix, folder
    using Completion = std::function<void(qint64, QString, QString, QString, QString)>;
    // (name, prefix, suffix) -> the first rows of (old name, new name)
    using Preview = std::function<QList<QPair<QString, QString>>(QString, QString, QString)>;
    static constexpr qint64 kRenameTag = 1;
    static constexpr int kPreviewRows = 3;

    explicit RenameFilesVC(QWidget *parent = nullptr);
    void setRenameCompletion(Completion c) { m_completion = std::move(c); }
    void setPreview(Preview p);
    QWidget *firstResponder() const override;

    QString destPathForRename;
    QLineEdit *renameNameTF;
    QLineEdit *prefixTF;
    QLineEdit *suffixTF;
    QLabel *previewLbl;

    static const char *kNoRenameDataText;

protected:
    void fire(qint64 tag) override;
    void changeEvent(QEvent *event) override;

private:
    void renameAction(qint64 tag);
    void refreshPreview();
    Completion m_completion;
    Preview m_preview;
};

#include "FileOverlays.h"

#include "core/fs/NativePath.h"
#include "core/texts/Texts.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QCursor>
#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>
#include <QToolTip>

namespace {

QLineEdit *lineEdit(QWidget *parent, const char *name)
{
    auto *edit = new QLineEdit(parent);
    edit->setObjectName(QString::fromLatin1(name));
    edit->setClearButtonEnabled(true);
    return edit;
}

} // namespace

// ---- FileCreateOverlayVC ----

FileCreateOverlayVC::FileCreateOverlayVC(QWidget *parent) : OverlayController("New", parent)
{
    setObjectName(QStringLiteral("fileCreateVC"));
    auto *nameRow = new QHBoxLayout;
    fileNameTXTfld = lineEdit(this, "fileNameTXTfld");
    nameRow->addWidget(fileNameTXTfld, 1);
    hintBtn = new QToolButton(this);
    hintBtn->setObjectName(QStringLiteral("showFileNameHint"));
    hintBtn->setText(QStringLiteral("?"));
    hintBtn->setAutoRaise(true);
    connect(hintBtn, &QToolButton::clicked, this, &FileCreateOverlayVC::showFileNameHint);
    nameRow->addWidget(hintBtn);
    body()->addLayout(nameRow);

    sameAsDragedFile = new QCheckBox(this);
    sameAsDragedFile->setObjectName(QStringLiteral("sameAsDragedFile"));
    translateLater(sameAsDragedFile, "sameAsDraggedName");
    connect(sameAsDragedFile, &QCheckBox::clicked, this, &FileCreateOverlayVC::sameAsDraggedFileNameAction);
    body()->addWidget(sameAsDragedFile);
    insideFolderCheckBox = new QCheckBox(this);
    insideFolderCheckBox->setObjectName(QStringLiteral("insideFolderCheckBox"));
    translateLater(insideFolderCheckBox, "insideFolderCheckBox");
    body()->addWidget(insideFolderCheckBox);
    // Typing a name of one's own is no longer "the same as the dragged file".
    connect(fileNameTXTfld, &QLineEdit::textEdited, this, [this] { sameAsDragedFile->setChecked(false); });

    // One button per kind of item, with its tag; "Back" closes.
    struct Kind
    {
        const char *key;
        const char *tipKey;
        qint64 tag;
        const char *name;
    };
    static const Kind kinds[] = {{"newFolderBtn", "newFolderTip", 0, "createFolderBtnAction"},
                                 {"newTextBtn", "newTextTip", 1, "createTextDocumentAction"},
                                 {"newRtfBtn", "newRtfTip", 2, "createRTFFileAction"},
                                 {"newWordBtn", "newWordTip", 4, "createWordDoc"},
                                 {"newExcelBtn", "newExcelTip", 5, "createExcelSheet"},
                                 {"newOdtBtn", "newOdtTip", 7, "createOdfText"},
                                 {"newOdsBtn", "newOdsTip", 8, "createOdfSheet"},
                                 {"Back", "", kBackTag, "backBtnAction"}};
    auto *grid = new QGridLayout;
    grid->setSpacing(4);
    int i = 0;
    for (const Kind &k : kinds) {
        auto *b = new QPushButton(this);
        b->setObjectName(QString::fromLatin1(k.name));
        b->setProperty("tag", k.tag);
        b->setAutoDefault(false);
        translateLater(b, k.key);
        if (*k.tipKey)
            b->setToolTip(Texts::localized(k.tipKey));
        connect(b, &QPushButton::clicked, this, [this, tag = k.tag] { fire(tag); });
        grid->addWidget(b, i / 2, i % 2);
        ++i;
    }
    body()->addLayout(grid);
    body()->addStretch(1);
}

QWidget *FileCreateOverlayVC::firstResponder() const { return fileNameTXTfld; }

void FileCreateOverlayVC::prepare(bool oneItem, const QString &draggedBaseName, bool insideFolder)
{
    fileNameTXTfld->clear();
    sameAsDragedFile->setChecked(false);
    sameAsDragedFile->setEnabled(oneItem);
    sameAsDragedFile->setVisible(oneItem);
    fileName = oneItem ? draggedBaseName : QString();
    insideFolderCheckBox->setChecked(insideFolder);
    insideFolderCheckBox->setEnabled(insideFolder);
}

void FileCreateOverlayVC::sameAsDraggedFileNameAction(bool on)
{
    if (on)
        fileNameTXTfld->setText(NativePath::forDisplay(fileName.isEmpty() ? QStringLiteral("newFile") : fileName));
    else
        fileNameTXTfld->clear();
}

void FileCreateOverlayVC::showFileNameHint()
{
    QToolTip::showText(QCursor::pos(), Texts::localized("fileCreateNameHintText"), hintBtn);
}

void FileCreateOverlayVC::fire(qint64 tag)
{
    // The dragged file's own name keeps its bytes; a typed one is as typed.
    const QString name = sameAsDragedFile->isChecked() && !fileName.isEmpty() ? fileName : fileNameTXTfld->text();
    if (m_completion)
        m_completion(tag, insideFolderCheckBox->isChecked() ? 1 : 0, name);
}

// ---- EnterFolderNameOverlayVC ----

EnterFolderNameOverlayVC::EnterFolderNameOverlayVC(QWidget *parent) : OverlayController("Into folder", parent)
{
    setObjectName(QStringLiteral("enterFolderNameVC"));
    QLabel *label = addLabel("folderNameLbl");
    label->setWordWrap(true);
    body()->addWidget(label);
    folderNameTF = lineEdit(this, "folderNameTF");
    body()->addWidget(folderNameTF);
    body()->addStretch(1);
    addTagButton("Cancel", kCloseTag);
    addTagButton("Create", kDoneTag, true)->setObjectName(QStringLiteral("doneFolderNameAction"));
}

QWidget *EnterFolderNameOverlayVC::firstResponder() const { return folderNameTF; }

void EnterFolderNameOverlayVC::fire(qint64 tag)
{
    if (m_completion)
        m_completion(tag, folderNameTF->text().trimmed());
}

// ---- RenameFilesVC ----

const char *RenameFilesVC::kNoRenameDataText =
    "No rename data entered.\n\n Please make sure at least one of the textfields above is not empty. To go back, just "
    "click on the window's background.";

RenameFilesVC::RenameFilesVC(QWidget *parent) : OverlayController("Rename files", parent)
{
    setObjectName(QStringLiteral("renameFlsVC"));
    renameNameTF = lineEdit(this, "renameNameTF");
    body()->addWidget(renameNameTF);
    auto *affixes = new QHBoxLayout;
    prefixTF = lineEdit(this, "prefixTF");
    suffixTF = lineEdit(this, "suffixTF");
    affixes->addWidget(prefixTF);
    affixes->addWidget(suffixTF);
    body()->addLayout(affixes);
    previewLbl = new QLabel(this);
    previewLbl->setObjectName(QStringLiteral("renamePreviewLbl"));
    previewLbl->setTextFormat(Qt::PlainText);
    QFont small = previewLbl->font();
    small.setPointSizeF(small.pointSizeF() * 0.85);
    previewLbl->setFont(small);
    previewLbl->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    body()->addWidget(previewLbl, 1);
    // Return in a field presses Rename, the default button, through the window.
    for (QLineEdit *field : {renameNameTF, prefixTF, suffixTF})
        connect(field, &QLineEdit::textChanged, this, &RenameFilesVC::refreshPreview);
    addTagButton("Cancel", kCloseTag);
    addTagButton("Rename", kRenameTag, true)->setObjectName(QStringLiteral("renameAction"));
    changeEvent(nullptr);
}

QWidget *RenameFilesVC::firstResponder() const { return renameNameTF; }

void RenameFilesVC::setPreview(Preview p)
{
    m_preview = std::move(p);
    refreshPreview();
}

void RenameFilesVC::refreshPreview()
{
    if (!m_preview) {
        previewLbl->clear();
        return;
    }
    QStringList lines;
    const QFontMetrics metrics(previewLbl->font());
    const int half = std::max(40, (previewLbl->width() - metrics.horizontalAdvance(QStringLiteral(" → "))) / 2);
    for (const auto &[from, to] : m_preview(renameNameTF->text(), prefixTF->text(), suffixTF->text()))
        lines.append(metrics.elidedText(NativePath::forDisplay(from), Qt::ElideMiddle, half) + QStringLiteral(" → ") +
                     metrics.elidedText(NativePath::forDisplay(to), Qt::ElideMiddle, half));
    previewLbl->setText(lines.join(QLatin1Char('\n')));
}

void RenameFilesVC::renameAction(qint64 tag)
{
    if (renameNameTF->text().isEmpty() && prefixTF->text().isEmpty() && suffixTF->text().isEmpty()) {
        QToolTip::showText(QCursor::pos(), Texts::localized(kNoRenameDataText), this);
        return;
    }
    if (destPathForRename.isEmpty())
        return;
    if (m_completion)
        m_completion(tag, renameNameTF->text(), suffixTF->text(), prefixTF->text(), destPathForRename);
}

void RenameFilesVC::fire(qint64 tag)
{
    if (tag == kRenameTag) {
        renameAction(tag);
        return;
    }
    if (m_completion)
        m_completion(tag, {}, {}, {}, {});
}

void RenameFilesVC::changeEvent(QEvent *event)
{
    if (!event || event->type() == QEvent::LanguageChange) {
        renameNameTF->setPlaceholderText(Texts::localized("renameNamePlaceholder"));
        prefixTF->setPlaceholderText(Texts::localized("renamePrefixPlaceholder"));
        suffixTF->setPlaceholderText(Texts::localized("renameSuffixPlaceholder"));
    }
    if (event)
        OverlayController::changeEvent(event);
}

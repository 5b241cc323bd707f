#include "OverlayControllers.h"

#include "core/texts/Texts.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>

#include <cmath>

namespace {

QLineEdit *lineEdit(QWidget *parent, const char *name)
{
    auto *edit = new QLineEdit(parent);
    edit->setObjectName(QString::fromLatin1(name));
    return edit;
}

} // namespace

RenameFilesVC::RenameFilesVC(QWidget *parent) : OverlayController("Rename files", parent)
{
    setObjectName(QStringLiteral("renameFlsVC"));
    renameNameTF = lineEdit(this, "renameNameTF");
    body()->addWidget(renameNameTF);
    body()->addStretch(1);
    addTagButton("Cancel", kCloseTag);
    addTagButton("Rename", 1, true);
}

QWidget *RenameFilesVC::firstResponder() const
{
    return renameNameTF;
}

void RenameFilesVC::fire(qint64 tag)
{
    if (m_completion)
        m_completion(tag, renameNameTF->text(), {}, {}, {});
}

ImgShareOverlayVC::ImgShareOverlayVC(QWidget *parent) : OverlayController("Share", parent)
{
    setObjectName(QStringLiteral("imgShareVC"));
    body()->addStretch(1);
    addTagButton("Cancel", kCloseTag);
}

void ImgShareOverlayVC::fire(qint64 tag)
{
    if (m_completion)
        m_completion(tag);
}

EnterFolderNameOverlayVC::EnterFolderNameOverlayVC(QWidget *parent) : OverlayController("Into folder", parent)
{
    setObjectName(QStringLiteral("enterFolderNameVC"));
    folderNameTF = lineEdit(this, "folderNameTF");
    body()->addWidget(folderNameTF);
    body()->addStretch(1);
    addTagButton("Cancel", kCloseTag);
    addTagButton("Create", 1, true);
}

QWidget *EnterFolderNameOverlayVC::firstResponder() const
{
    return folderNameTF;
}

void EnterFolderNameOverlayVC::fire(qint64 tag)
{
    if (m_completion)
        m_completion(tag, folderNameTF->text());
}

FileCreateOverlayVC::FileCreateOverlayVC(QWidget *parent) : OverlayController("New", parent)
{
    setObjectName(QStringLiteral("fileCreateVC"));
    fileNameTF = lineEdit(this, "fileNameTF");
    body()->addWidget(fileNameTF);
    body()->addStretch(1);
    addTagButton("Cancel", kCloseTag);
    addTagButton("Create", 1, true);
}

void FileCreateOverlayVC::fire(qint64 tag)
{
    if (m_completion)
        m_completion(tag, 0, fileNameTF->text());
}

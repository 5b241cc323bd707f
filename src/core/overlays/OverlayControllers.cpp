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

WallpaperOverlayVC::WallpaperOverlayVC(QWidget *parent) : OverlayController("Wallpaper", parent)
{
    setObjectName(QStringLiteral("wpChangeVC"));
    oldWPview = new QLabel(this);
    oldWPview->setObjectName(QStringLiteral("oldWPview"));
    oldWPview->setAlignment(Qt::AlignCenter);
    oldWPview->setWordWrap(true);
    body()->addWidget(oldWPview, 1);
    addTagButton("Cancel", kCloseTag);
    addTagButton("Set", 1, true);
}

void WallpaperOverlayVC::setupOldWPview(const QString &currentWallpaper)
{
    oldWPview->setText(currentWallpaper);
}

void WallpaperOverlayVC::fire(qint64 tag)
{
    if (m_completion)
        m_completion(tag);
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

PdfToImgVC::PdfToImgVC(QWidget *parent) : OverlayController("To images", parent)
{
    setObjectName(QStringLiteral("pdfToImgConvVC"));
    DPItxtFld = lineEdit(this, "DPItxtFld");
    DPItxtFld->setText(QStringLiteral("150"));
    auto *form = new QFormLayout;
    form->addRow(QStringLiteral("DPI"), DPItxtFld);
    body()->addLayout(form);
    body()->addStretch(1);
    addTagButton("Cancel", kCloseTag);
    addTagButton("Convert", 1, true);
}

void PdfToImgVC::fire(qint64 tag)
{
    if (m_completion)
        m_completion(tag, DPItxtFld->text().toFloat());
}

ImgConvertOverlayVC::ImgConvertOverlayVC(QWidget *parent) : OverlayController("Convert", parent)
{
    setObjectName(QStringLiteral("imgConvrtVC"));
    compressFactorSlider = new QSlider(Qt::Horizontal, this);
    compressFactorSlider->setObjectName(QStringLiteral("compressFactorSlider"));
    compressFactorSlider->setRange(0, 100);
    comprFactorLbl = new QLabel(this);
    comprFactorLbl->setObjectName(QStringLiteral("comprFactorLbl"));
    body()->addWidget(compressFactorSlider);
    body()->addWidget(comprFactorLbl, 0, Qt::AlignRight);
    body()->addStretch(1);
    connect(compressFactorSlider, &QSlider::valueChanged, this,
            [this](int v) { comprFactorLbl->setText(QStringLiteral("%1%").arg(v)); });
    addTagButton("Cancel", kCloseTag);
    addTagButton("Convert", 1, true);
}

void ImgConvertOverlayVC::setStepValue(double step)
{
    m_step = step;
    compressFactorSlider->setSingleStep(int(std::lround(step)));
    compressFactorSlider->setPageStep(int(std::lround(step)));
}

void ImgConvertOverlayVC::fire(qint64 tag)
{
    if (m_completion)
        m_completion(tag, float(compressFactorSlider->value()), tag);
}

ImgResizeOverlayVC::ImgResizeOverlayVC(QWidget *parent) : OverlayController("Resizing", parent)
{
    setObjectName(QStringLiteral("imgResizeVC"));
    widthTextField = lineEdit(this, "widthTextField");
    heightTextField = lineEdit(this, "heightTextField");
    proportionCheckBox = new QCheckBox(Texts::localized("Keep proportions"), this);
    proportionCheckBox->setObjectName(QStringLiteral("proportionCheckBox"));
    destinationPop = new QComboBox(this);
    destinationPop->setObjectName(QStringLiteral("destinationPop"));
    auto *form = new QFormLayout;
    form->addRow(Texts::localized("Width"), widthTextField);
    form->addRow(Texts::localized("Height"), heightTextField);
    body()->addLayout(form);
    body()->addWidget(proportionCheckBox);
    body()->addWidget(destinationPop);
    cropRotateBtn = addTagButton("Crop", 2);
    cropRotateBtn->setObjectName(QStringLiteral("cropRotateBtn"));
    addTagButton("Cancel", kCloseTag);
    addTagButton("Resize", 1, true);
}

void ImgResizeOverlayVC::setMultiFilesMode(bool multi)
{
    m_multi = multi;
    if (multi) {
        widthTextField->clear();
        heightTextField->clear();
    }
    cropRotateBtn->setEnabled(!multi);
    proportionCheckBox->setEnabled(true);
    proportionCheckBox->setChecked(true);
}

QWidget *ImgResizeOverlayVC::firstResponder() const
{
    return widthTextField;
}

void ImgResizeOverlayVC::fire(qint64 tag)
{
    if (m_completion)
        m_completion(tag, widthTextField->text(), heightTextField->text(), destinationPop->currentIndex(),
                     destinationPop->currentText());
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

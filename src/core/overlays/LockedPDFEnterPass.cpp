#include "LockedPDFEnterPass.h"

#include "core/fs/NativePath.h"
#include "core/texts/Texts.h"

#include <QBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

LockedPDFEnterPass::LockedPDFEnterPass(const QString &documentName, QWidget *sheetParent) : QDialog(sheetParent)
{
    setObjectName(QStringLiteral("LockedPDFEnterPass"));
    setWindowTitle(Texts::localized("lockedPdfTitle"));
    setWindowModality(Qt::WindowModal);
    setMinimumWidth(280);
    auto *layout = new QVBoxLayout(this);
    auto *title = new QLabel(Texts::localized("lockedPdfTitle"), this);
    QFont bold = title->font();
    bold.setBold(true);
    title->setFont(bold);
    layout->addWidget(title);
    auto *text = new QLabel(Texts::localized("lockedPdfText").arg(NativePath::forDisplay(documentName)), this);
    text->setWordWrap(true);
    layout->addWidget(text);
    pdfPassTxtFld = new QLineEdit(this);
    pdfPassTxtFld->setObjectName(QStringLiteral("pdfPassTxtFld"));
    pdfPassTxtFld->setEchoMode(QLineEdit::Password);
    layout->addWidget(pdfPassTxtFld);
    pasHintTxtFld = new QLabel(this);
    pasHintTxtFld->setObjectName(QStringLiteral("pasHintTxtFld"));
    pasHintTxtFld->hide();
    layout->addWidget(pasHintTxtFld);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    auto *cancel = new QPushButton(Texts::localized("Cancel"), this);
    cancel->setObjectName(QStringLiteral("cancelBtn"));
    auto *unlock = new QPushButton(Texts::localized("Unlock"), this);
    unlock->setObjectName(QStringLiteral("unlockBtn"));
    unlock->setDefault(true);
    buttons->addWidget(cancel);
    buttons->addWidget(unlock);
    layout->addLayout(buttons);
    connect(cancel, &QPushButton::clicked, this, [this] { unlockCancleAction(0); });
    connect(unlock, &QPushButton::clicked, this, [this] { unlockCancleAction(1); });
    pdfPassTxtFld->setFocus();
}

QString LockedPDFEnterPass::password() const { return pdfPassTxtFld->text(); }

void LockedPDFEnterPass::unlockCancleAction(qint64 tag) { done(tag != 0 ? 1 : 0); }

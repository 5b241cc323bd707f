#include "LockedPDFEnterPass.h"

#include "core/fs/NativePath.h"
#include "core/texts/Texts.h"

#include <QBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

LockedPDFEnterPass::LockedPDFEnterPass(const QString &documentName, Check opens, QWidget *sheetParent)
    : QDialog(sheetParent), m_opens(std::move(opens))
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
    wrongPassLbl = new QLabel(Texts::localized("wrongPdfPassword"), this);
    wrongPassLbl->setObjectName(QStringLiteral("wrongPassLbl"));
    wrongPassLbl->setWordWrap(true);
    QPalette warning = wrongPassLbl->palette();
    warning.setColor(QPalette::WindowText, QColor(0xc0, 0x39, 0x2b));
    wrongPassLbl->setPalette(warning);
    wrongPassLbl->hide();
    layout->addWidget(wrongPassLbl);
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

void LockedPDFEnterPass::unlockCancleAction(qint64 tag)
{
    if (tag != 0 && m_opens && !m_opens(password())) {
        wrongPassLbl->show();
        pdfPassTxtFld->selectAll();
        pdfPassTxtFld->setFocus();
        adjustSize();
        return;
    }
    done(tag != 0 ? 1 : 0);
}

#include "ConflictDialog.h"

#include "core/fs/NativePath.h"
#include "core/texts/Texts.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

ConflictDialog::ConflictDialog(const ConflictQuestion &question, QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("conflictDialog"));
    setWindowTitle(QStringLiteral("Quaydrop"));
    setWindowModality(Qt::WindowModal);
    setAttribute(Qt::WA_DeleteOnClose);
    auto *outer = new QVBoxLayout(this);
    auto *top = new QHBoxLayout;
    auto *icon = new QLabel(this);
    icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxQuestion).pixmap(40, 40));
    top->addWidget(icon, 0, Qt::AlignTop);
    auto *texts = new QVBoxLayout;
    auto *title = new QLabel(Texts::localized("FileExistsAlrtTitle"), this);
    QFont bold = title->font();
    bold.setBold(true);
    title->setFont(bold);
    auto *info = new QLabel(Texts::localized("%@ alreadyExists").arg(NativePath::forDisplay(question.existingName)), this);
    info->setObjectName(QStringLiteral("informativeText"));
    info->setTextFormat(Qt::PlainText);
    info->setWordWrap(true);
    texts->addWidget(title);
    texts->addWidget(info);
    top->addLayout(texts, 1);
    outer->addLayout(top);
    applyToAllBox = new QCheckBox(Texts::localized("Apply4All"), this);
    outer->addWidget(applyToAllBox);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    replaceButton = new QPushButton(Texts::localized("Replace"), this);
    skipButton = new QPushButton(Texts::localized("Skip"), this);
    keepBothButton = new QPushButton(Texts::localized("KeepBoth"), this);
    keepBothButton->setDefault(true);
    for (QPushButton *b : {replaceButton, skipButton, keepBothButton})
        buttons->addWidget(b);
    outer->addLayout(buttons);
    setMinimumWidth(420);

    // Gone before the answer is acted on: a window that closes on the answer is no longer held by it.
    auto answer = [this](ConflictAnswer a) {
        QDialog::accept();
        Q_EMIT answered(ConflictReply{a, applyToAllBox->isChecked()});
    };
    connect(replaceButton, &QPushButton::clicked, this, [answer] { answer(ConflictAnswer::Replace); });
    connect(skipButton, &QPushButton::clicked, this, [answer] { answer(ConflictAnswer::Skip); });
    connect(keepBothButton, &QPushButton::clicked, this, [answer] { answer(ConflictAnswer::KeepBoth); });
}

void ConflictDialog::reject()
{
    QDialog::reject();
    Q_EMIT answered(ConflictReply{ConflictAnswer::Skip, applyToAllBox->isChecked()});
}

void WidgetConflictResolver::ask(const ConflictQuestion &question, std::function<void(ConflictReply)> reply)
{
    auto *dialog = new ConflictDialog(question, m_window);
    m_open = dialog;
    QObject::connect(dialog, &ConflictDialog::answered, dialog, [reply](ConflictReply r) { reply(r); });
    dialog->show();
    dialog->raise();
    dialog->activateWindow();
}

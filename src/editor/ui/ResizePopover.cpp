#include "ResizePopover.h"

#include "core/texts/Texts.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QEvent>
#include <QIntValidator>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>

ResizePopover::ResizePopover(QWidget *parent) : QFrame(parent, Qt::Popup)
{
    setObjectName(QStringLiteral("resizeimgPopover"));
    setFrameShape(QFrame::StyledPanel);
    resizeWTxtFld = new QLineEdit(this);
    resizeWTxtFld->setObjectName(QStringLiteral("resizeWTxtFld"));
    resizeHtxtFld = new QLineEdit(this);
    resizeHtxtFld->setObjectName(QStringLiteral("resizeHtxtFld"));
    for (QLineEdit *field : {resizeWTxtFld, resizeHtxtFld}) {
        field->setAlignment(Qt::AlignCenter);
        field->setValidator(new QIntValidator(0, 999999, field));
        field->setFixedWidth(80);
        field->installEventFilter(this);
        connect(field, &QLineEdit::textEdited, this, [this, field] { Q_EMIT controlTextDidChange(field); });
        connect(field, &QLineEdit::returnPressed, this, &ResizePopover::resizeDonePressed);
    }
    proportionCheckBox = new QCheckBox(this);
    proportionCheckBox->setObjectName(QStringLiteral("proportionCheckBox"));
    proportionCheckBox->setChecked(true);
    connect(proportionCheckBox, &QCheckBox::toggled, this, &ResizePopover::proportionToggled);
    doneButton = new QPushButton(this);
    doneButton->setObjectName(QStringLiteral("resizeDoneBtn"));
    doneButton->setDefault(true);
    connect(doneButton, &QPushButton::clicked, this, &ResizePopover::resizeDonePressed);

    auto *fields = new QHBoxLayout;
    fields->addWidget(resizeWTxtFld);
    fields->addWidget(new QLabel(QStringLiteral("×"), this));
    fields->addWidget(resizeHtxtFld);
    fields->addWidget(new QLabel(QStringLiteral("px"), this));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(12, 12, 12, 12);
    layout->addLayout(fields);
    layout->addWidget(proportionCheckBox);
    layout->addWidget(doneButton, 0, Qt::AlignRight);
    retranslate();
}

void ResizePopover::retranslate()
{
    proportionCheckBox->setText(Texts::localized("Keep proportions"));
    doneButton->setText(Texts::localized("Resize"));
    resizeWTxtFld->setToolTip(Texts::localized("Width"));
    resizeHtxtFld->setToolTip(Texts::localized("Height"));
}

void ResizePopover::showFrom(QWidget *anchor, QSize pixels)
{
    resizeWTxtFld->setText(QString::number(pixels.width()));
    resizeHtxtFld->setText(QString::number(pixels.height()));
    adjustSize();
    // Below the button, kept on its screen.
    QPoint at = anchor->mapToGlobal(QPoint(anchor->width() / 2 - width() / 2, anchor->height() + 4));
    if (const QScreen *screen = anchor->screen()) {
        const QRect area = screen->availableGeometry();
        at.setX(std::clamp(at.x(), area.left(), area.right() - width()));
        at.setY(std::clamp(at.y(), area.top(), area.bottom() - height()));
    }
    move(at);
    show();
    resizeWTxtFld->setFocus();
    resizeWTxtFld->selectAll();
}

bool ResizePopover::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress) {
        auto *key = static_cast<QKeyEvent *>(event);
        auto *field = qobject_cast<QLineEdit *>(watched);
        if (field && (key->key() == Qt::Key_Up || key->key() == Qt::Key_Down)) {
            Q_EMIT stepRequested(field, key->key() == Qt::Key_Up);
            return true;
        }
    }
    return QFrame::eventFilter(watched, event);
}

void ResizePopover::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QFrame::changeEvent(event);
}

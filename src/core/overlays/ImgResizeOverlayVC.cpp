#include "ImgResizeOverlayVC.h"

#include "core/texts/Texts.h"
#include "images/ResizePlan.h"
#include "utils/Utils.h"
#include "widgets/ButtonImages.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QComboBox>
#include <QCursor>
#include <QIntValidator>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>
#include <QToolTip>

namespace {

QLineEdit *sizeField(QWidget *parent, const char *name)
{
    auto *edit = new QLineEdit(parent);
    edit->setObjectName(QString::fromLatin1(name));
    edit->setAlignment(Qt::AlignCenter);
    edit->setMaxLength(9);
    return edit;
}

} // namespace

ImgResizeOverlayVC::ImgResizeOverlayVC(QWidget *parent) : OverlayController("Resize", parent)
{
    setObjectName(QStringLiteral("imgResizeVC"));
    widthTextField = sizeField(this, "widthTextField");
    heightTextField = sizeField(this, "heightTextField");
    auto *times = new QLabel(QStringLiteral("×"), this);
    auto *sizes = new QHBoxLayout;
    sizes->addWidget(widthTextField, 1);
    sizes->addWidget(times);
    sizes->addWidget(heightTextField, 1);
    body()->addLayout(sizes);
    auto *units = new QHBoxLayout;
    auto *w = addLabel("Width");
    auto *h = addLabel("Height");
    for (QLabel *l : {w, h}) {
        l->setAlignment(Qt::AlignCenter);
        QFont f = l->font();
        f.setPointSizeF(f.pointSizeF() * 0.85);
        l->setFont(f);
    }
    units->addWidget(w, 1);
    units->addSpacing(times->sizeHint().width());
    units->addWidget(h, 1);
    body()->addLayout(units);

    proportionCheckBox = new QCheckBox(this);
    proportionCheckBox->setObjectName(QStringLiteral("proportionCheckBox"));
    proportionCheckBox->setChecked(true);
    translateLater(proportionCheckBox, "Keep proportions");
    body()->addWidget(proportionCheckBox);

    destinationPop = new QComboBox(this);
    destinationPop->setObjectName(QStringLiteral("destinationPop"));
    auto *help = new QToolButton(this);
    help->setObjectName(QStringLiteral("imgSaveDestHelpBtn"));
    help->setText(QStringLiteral("?"));
    help->setAutoRaise(true);
    auto *where = new QHBoxLayout;
    where->addWidget(destinationPop, 1);
    where->addWidget(help);
    body()->addLayout(where);
    body()->addStretch(1);

    // The drawing says it; the words go to the tool tip, so that the three buttons fit the panel.
    cropRotateBtn = addTagButton("Crop", kCropTag, false, true);
    cropRotateBtn->setObjectName(QStringLiteral("cropRotateBtn"));
    const auto images = ButtonImages::forStem(QStringLiteral("cropRotateImg"), 18, palette());
    QIcon icon(images.normal);
    icon.addPixmap(images.hover, QIcon::Active);
    cropRotateBtn->setIcon(icon);
    addTagButton("Cancel", kCloseResizeTag)->setObjectName(QStringLiteral("closeImgResVBtn"));
    doneBtn = addTagButton("Resize", kResizeTag, true);
    doneBtn->setObjectName(QStringLiteral("doneBtn"));
    // The done button has its own guard; pressing it is not a plain fire().
    disconnect(doneBtn, &QPushButton::clicked, nullptr, nullptr);
    connect(doneBtn, &QPushButton::clicked, this, &ImgResizeOverlayVC::doneBtnPressed);

    for (QLineEdit *field : {widthTextField, heightTextField}) {
        connect(field, &QLineEdit::textEdited, this, [this, field] { controlTextDidChange(field); });
        field->installEventFilter(this);
    }
    connect(proportionCheckBox, &QCheckBox::toggled, this, &ImgResizeOverlayVC::proportionCBAction);
    connect(help, &QToolButton::clicked, this, &ImgResizeOverlayVC::imgSaveDestHelpAction);
    setDestinations({});
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
    const QSignalBlocker quiet(proportionCheckBox);
    proportionCheckBox->setChecked(true);
}

QWidget *ImgResizeOverlayVC::firstResponder() const { return widthTextField; }

void ImgResizeOverlayVC::setDestinations(const QStringList &names)
{
    destinationPop->clear();
    destinationPop->addItem(Texts::localized("Save To"));
    destinationPop->addItems(names);
    destinationPop->setCurrentIndex(0);
}

QString ImgResizeOverlayVC::selectedDestinationPath() const
{
    if (destinationPop->currentIndex() <= 0)
        return {};
    QString path;
    const QString title = destinationPop->currentText();
    // The last entry of that name stands.
    for (const QVariant &entry : Utils::movePathsDicsWithPathsAndNames().value_or(QVariantList{})) {
        const QVariantMap dic = entry.toMap();
        if (dic.value(QStringLiteral("destPname")).toString() == title)
            path = dic.value(QStringLiteral("destPath")).toString();
    }
    return path;
}

void ImgResizeOverlayVC::controlTextDidChange(QLineEdit *edited)
{
    if (!proportionCheckBox->isChecked())
        return;
    QLineEdit *other = edited == widthTextField ? heightTextField : widthTextField;
    if (m_multi) {
        // Each image keeps its own proportions: only one side can be given.
        other->clear();
        return;
    }
    const bool widthGiven = edited == widthTextField;
    const float oldSide = float(widthGiven ? m_oldSize.width() : m_oldSize.height());
    const float oldOther = float(widthGiven ? m_oldSize.height() : m_oldSize.width());
    other->setText(ResizePlan::proportional(oldSide, oldOther, edited->text()));
}

void ImgResizeOverlayVC::step(QLineEdit *field, bool up)
{
    const auto next = up ? ResizePlan::steppedUp(field->text()) : ResizePlan::steppedDown(field->text());
    if (!next)
        return;
    field->setText(*next);
    controlTextDidChange(field);
}

bool ImgResizeOverlayVC::eventFilter(QObject *watched, QEvent *event)
{
    auto *field = qobject_cast<QLineEdit *>(watched);
    if (field && event->type() == QEvent::KeyPress) {
        switch (static_cast<QKeyEvent *>(event)->key()) {
        case Qt::Key_Up:
            step(field, true);
            return true;
        case Qt::Key_Down:
            step(field, false);
            return true;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            // Return resizes at once, without the done button's guard.
            fire(kResizeTag);
            return true;
        default:
            break;
        }
    }
    return OverlayController::eventFilter(watched, event);
}

void ImgResizeOverlayVC::doneBtnPressed()
{
    if (widthTextField->text().toFloat() == 0.0f && heightTextField->text().toFloat() == 0.0f)
        return;
    fire(kResizeTag);
}

void ImgResizeOverlayVC::proportionCBAction(bool on)
{
    if (!on || m_oldSize.isEmpty())
        return;
    widthTextField->setText(QString::number(qint64(m_oldSize.width())));
    heightTextField->setText(QString::number(qint64(m_oldSize.height())));
}

void ImgResizeOverlayVC::imgSaveDestHelpAction()
{
    QToolTip::showText(QCursor::pos(), Texts::localized("imgSaveDestHelp"), this);
}

void ImgResizeOverlayVC::fire(qint64 tag)
{
    if (!m_completion)
        return;
    if (tag == kCloseResizeTag) {
        m_completion(tag, widthTextField->text(), heightTextField->text(), 0, QString());
        return;
    }
    m_completion(tag, widthTextField->text(), heightTextField->text(), destinationPop->currentIndex(),
                 selectedDestinationPath());
}

#include "MoveFileViewController.h"

#include "core/fs/FsCalls.h"
#include "core/fs/NativePath.h"
#include "core/fs/PathParts.h"
#include "core/texts/Texts.h"
#include "fileops/ui/destinations/DestinationList.h"
#include "utils/Utils.h"
#include "widgets/ButtonImages.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QEvent>
#include <QMenu>
#include <QItemSelectionModel>
#include <QPushButton>
#include <QToolButton>

namespace {

QToolButton *toolButton(QWidget *parent, const char *name)
{
    auto *b = new QToolButton(parent);
    b->setObjectName(QString::fromLatin1(name));
    b->setAutoRaise(true);
    b->setIconSize(QSize(16, 16));
    b->setFixedSize(24, 24);
    return b;
}

} // namespace

MoveFileViewController::MoveFileViewController(QWidget *parent) : OverlayController("Move files to...", parent)
{
    setObjectName(QStringLiteral("moveFileVC"));
    recentDestBtn = toolButton(this, "recentDestBtn");
    addDestBtn = toolButton(this, "addDestBtn");
    editModeBtn = toolButton(this, "editModeBtn");
    editModeBtn->setProperty("tag", 0);
    addTitleWidget(recentDestBtn);
    addTitleWidget(addDestBtn);
    addTitleWidget(editModeBtn);
    addDestBtn->hide();

    destList = new DestinationList(DestinationList::Kind::Picker, this);
    destTablView = destList->destTablView;
    destTablView->setFrameShape(QFrame::NoFrame);
    // An alert or the folder panel keeps the drop window open until it is answered.
    destList->holdWindowOpen = [](bool hold) { Utils::postShouldNotCloseWindowYetNotif(hold); };
    body()->addWidget(destList, 1);
    shouldCopyCheckB = new QCheckBox(this);
    translateLater(shouldCopyCheckB, "Copy");
    shouldCopyCheckB->setObjectName(QStringLiteral("shouldCopyCheckB"));
    body()->addWidget(shouldCopyCheckB);
    goBackBtn = addTagButton("Back", kGoBackTag);
    goBackBtn->setObjectName(QStringLiteral("goBackBtn"));
    otherFolderBtn = addTagButton("Other...", kOtherFolderTag);
    otherFolderBtn->setObjectName(QStringLiteral("otherBtn"));

    userDestMenu = new QMenu(this);
    userDestMenu->setObjectName(QStringLiteral("userDestMenu"));
    connect(recentDestBtn, &QToolButton::clicked, this, &MoveFileViewController::showMyDestMenu);
    connect(editModeBtn, &QToolButton::clicked, this, &MoveFileViewController::enterEditMode);
    connect(addDestBtn, &QToolButton::clicked, destList, &DestinationList::addNewDestination);
    connect(destList, &DestinationList::destinationChosen, this, [this](const QString &path) { complete(kChosenTag, path); });
    connect(destList, &DestinationList::subfolderChosen, this, [this](const QString &path) { complete(kChosenTag, path); });
    // Escape goes back to the panel, or closes the window where there is no panel to go back to.
    connect(destList, &DestinationList::backRequested, this,
            [this] { fire(goBackBtn->isVisibleTo(this) ? kGoBackTag : closeTag()); });
    updateToolImages();
}

void MoveFileViewController::setDestinationsArr(const QStringList &paths) { destList->setDestinationsArr(paths); }
QStringList MoveFileViewController::destinationsArr() const { return destList->destinationsArr(); }
void MoveFileViewController::setDefDestArr(const QStringList &paths) { destList->setDefDestArr(paths); }
void MoveFileViewController::setDestParentFldrPath(const QString &path) { destList->setDestParentFldrPath(path); }
QString MoveFileViewController::destParentFldrPath() const { return destList->destParentFldrPath(); }
bool MoveFileViewController::isEditMode() const { return editModeBtn->property("tag").toInt() == 1; }
QWidget *MoveFileViewController::firstResponder() const { return destTablView; }

void MoveFileViewController::enterEditMode()
{
    const bool edit = !isEditMode();
    editModeBtn->setProperty("tag", edit ? 1 : 0);
    destList->setEditMode(edit);
    // Adding takes the recent menu's place: there is nothing to choose while editing.
    recentDestBtn->setVisible(!edit);
    addDestBtn->setVisible(edit);
    updateToolImages();
}

void MoveFileViewController::updateToolImages()
{
    const bool edit = isEditMode();
    const auto icon = [this](const char *stem) {
        const auto images = ButtonImages::forStem(QString::fromLatin1(stem), 16, palette(), devicePixelRatioF());
        QIcon i(images.normal);
        i.addPixmap(images.hover, QIcon::Active);
        return i;
    };
    editModeBtn->setIcon(icon(edit ? "done" : "NSActionTemplate"));
    editModeBtn->setToolTip(Texts::localized(edit ? "doneEditingDestTip" : "editDestTip"));
    recentDestBtn->setIcon(icon("recentDest"));
    recentDestBtn->setToolTip(Texts::localized("recentDestTip"));
    addDestBtn->setIcon(icon("addDest"));
    addDestBtn->setToolTip(Texts::localized("addDestTip"));
}

void MoveFileViewController::showMyDestMenu()
{
    recentDestArr.clear();
    for (const QString &p : Utils::recentDestinations())
        if (FsCalls::exists(p, true))
            recentDestArr.append(p);
    userDestMenu->clear();
    for (int i = 0; i < recentDestArr.size(); ++i) {
        QAction *item = userDestMenu->addAction(NativePath::forDisplay(PathParts::lastComponent(recentDestArr.at(i))));
        item->setToolTip(NativePath::forDisplay(recentDestArr.at(i)));
        item->setData(i);
        connect(item, &QAction::triggered, this, [this, i] { myMenuItemViewSelector(i); });
    }
    if (recentDestArr.isEmpty()) {
        QAction *none = userDestMenu->addAction(Texts::localized("- Empty -"));
        none->setData(kEmptyRecentTag);
        none->setEnabled(false);
    }
    userDestMenu->setToolTipsVisible(true);
    userDestMenu->popup(recentDestBtn->mapToGlobal(QPoint(0, recentDestBtn->height())));
}

void MoveFileViewController::myMenuItemViewSelector(int tag)
{
    if (tag == kEmptyRecentTag || tag < 0 || tag >= recentDestArr.size())
        return;
    complete(kRecentTag, recentDestArr.at(tag));
}

void MoveFileViewController::complete(qint64 tag, const QString &path)
{
    if (!m_completion || m_chosen)
        return;
    m_chosen = true;
    m_completion(tag, shouldCopyCheckB->isChecked(), path);
}

void MoveFileViewController::fire(qint64 tag)
{
    if (m_completion)
        m_completion(tag, shouldCopyCheckB->isChecked(), {});
}

void MoveFileViewController::showEvent(QShowEvent *event)
{
    m_chosen = false;
    OverlayController::showEvent(event);
    // Each showing starts with no row chosen; the keyboard works at once.
    destTablView->selectionModel()->clear();
    destTablView->setFocus();
}

void MoveFileViewController::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange || event->type() == QEvent::PaletteChange)
        updateToolImages();
    OverlayController::changeEvent(event);
}

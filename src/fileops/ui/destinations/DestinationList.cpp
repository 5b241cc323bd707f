#include "DestinationList.h"

#include "DestinationListModel.h"
#include "DestinationRowDelegate.h"
#include "SubfolderPopup.h"
#include "core/fs/FsCalls.h"
#include "core/fs/NativePath.h"
#include "core/texts/Texts.h"
#include "fileops/destinations/DestinationEdits.h"
#include "platform/Platform.h"
#include "utils/Utils.h"
#include "widgets/Alert.h"

#include <QFileDialog>
#include <QFileSystemWatcher>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace {
constexpr qint64 kClickFilterMs = 1000;
}

void DestinationListView::keyPressEvent(QKeyEvent *event)
{
    if (state() != EditingState) {
        switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            Q_EMIT returnPressed(currentIndex());
            return;
        case Qt::Key_Escape:
            Q_EMIT escapePressed();
            return;
        case Qt::Key_Right:
            Q_EMIT subfoldersPressed(currentIndex());
            return;
        case Qt::Key_F2:
            Q_EMIT renamePressed(currentIndex());
            return;
        case Qt::Key_Delete:
        case Qt::Key_Backspace:
            if (editMode) {
                Q_EMIT deletePressed(currentIndex());
                return;
            }
            break;
        default:
            break;
        }
    }
    QListView::keyPressEvent(event);
}

void DestinationListView::focusInEvent(QFocusEvent *event)
{
    // Taking the keyboard marks the first row as current, not as chosen: no highlight until the user moves.
    const bool hadCurrent = currentIndex().isValid();
    QListView::focusInEvent(event);
    if (!hadCurrent)
        selectionModel()->clearSelection();
}

DestinationList::DestinationList(Kind kind, QWidget *parent) : QWidget(parent), m_kind(kind)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    m_model = new DestinationListModel(this);
    m_delegate = new DestinationRowDelegate(this);
    destTablView = new DestinationListView(this);
    destTablView->setObjectName(QStringLiteral("destTablView"));
    destTablView->setModel(m_model);
    destTablView->setItemDelegate(m_delegate);
    destTablView->setUniformItemSizes(true);
    destTablView->setMouseTracking(true);
    destTablView->viewport()->setAttribute(Qt::WA_Hover);
    destTablView->setEditTriggers(QAbstractItemView::NoEditTriggers); // renaming starts by a click or F2
    destTablView->setSelectionMode(QAbstractItemView::SingleSelection);
    destTablView->setDragEnabled(true);
    destTablView->setAcceptDrops(true);
    destTablView->setDropIndicatorShown(true);
    destTablView->setDragDropMode(QAbstractItemView::DragDrop);
    destTablView->setDefaultDropAction(Qt::MoveAction);
    destTablView->setDragDropOverwriteMode(false);
    layout->addWidget(destTablView);
    m_popup = new SubfolderPopup(kind == Kind::Picker ? SubfolderPopup::Mode::Choose : SubfolderPopup::Mode::Add, this);

    connect(destTablView, &QListView::clicked, this, &DestinationList::rowClicked);
    connect(destTablView, &DestinationListView::returnPressed, this, [this](const QModelIndex &index) {
        if (m_editMode)
            beginRename(index);
        else
            rowClicked(index);
    });
    connect(destTablView, &DestinationListView::escapePressed, this, &DestinationList::backRequested);
    connect(destTablView, &DestinationListView::renamePressed, this, &DestinationList::beginRename);
    connect(destTablView, &DestinationListView::deletePressed, this, &DestinationList::removeUserDest);
    connect(destTablView, &DestinationListView::subfoldersPressed, this, [this](const QModelIndex &index) {
        if (index.isValid() && (m_delegate->buttons() & DestinationRowDelegate::SubfoldersButton) &&
            !index.data(DestinationListModel::ButtonHiddenRole).toBool())
            showSubfolders(index);
    });
    connect(m_delegate, &DestinationRowDelegate::buttonClicked, this,
            [this](const QModelIndex &index, DestinationRowDelegate::Button button) {
                if (button == DestinationRowDelegate::RemoveButton)
                    removeUserDest(index);
                else
                    showSubfolders(index);
            });
    connect(m_model, &DestinationListModel::renameRequested, this, [this](const QString &path, const QString &name) {
        report(DestinationEdits::rename(path, name));
        storeChanged();
    });
    connect(m_model, &DestinationListModel::moveRequested, this, [this](int source, int target) {
        report(DestinationEdits::reorder(DestinationEdits::performDragReorder(m_model->paths(), source, target)));
        storeChanged();
    });
    connect(m_popup, &SubfolderPopup::chosen, this, &DestinationList::subfolderChosen);
    connect(m_popup, &SubfolderPopup::closed, this, [this] {
        if (holdWindowOpen)
            holdWindowOpen(false);
    });
    connect(m_popup, &SubfolderPopup::addRequested, this, [this](const QString &path) {
        m_popup->hide();
        addDestinationPath(path);
    });

    // Another window or process may change the list: follow the store's folder, once per burst.
    m_reloadLater = new QTimer(this);
    m_reloadLater->setSingleShot(true);
    m_reloadLater->setInterval(150);
    connect(m_reloadLater, &QTimer::timeout, this, [this] {
        if (destTablView->isEditing() || m_question)
            m_reloadLater->start(); // not under the user's hands
        else if (isVisible())
            reload();
    });
    m_watcher = new QFileSystemWatcher(this);
    const QString folder = Utils::QDappSupportPath();
    if (QFileInfo(folder).isDir())
        m_watcher->addPath(folder);
    connect(m_watcher, &QFileSystemWatcher::directoryChanged, m_reloadLater, qOverload<>(&QTimer::start));
    if (VolumeService *volumes = Platform::current().volumes)
        connect(volumes, &VolumeService::mountsChanged, this, [this] {
            if (isVisible())
                reload();
        });

    if (m_kind == Kind::Manager)
        setEditMode(true);
}

void DestinationList::setDestParentFldrPath(const QString &path) { m_dropped = m_kind == Kind::Picker ? path : QString(); }

void DestinationList::setEditMode(bool on)
{
    m_editMode = on || m_kind == Kind::Manager;
    destTablView->editMode = m_editMode;
    m_model->setRenamable(m_editMode);
    m_delegate->setButtons(m_kind == Kind::Manager ? DestinationRowDelegate::Buttons(DestinationRowDelegate::SubfoldersButton |
                                                                                     DestinationRowDelegate::RemoveButton)
                           : m_editMode ? DestinationRowDelegate::Buttons(DestinationRowDelegate::RemoveButton)
                                        : DestinationRowDelegate::Buttons(DestinationRowDelegate::SubfoldersButton));
    // Rows are dragged into a new order in edit mode only, so a click never starts a drag by mistake.
    destTablView->setDragEnabled(m_editMode);
    destTablView->viewport()->update();
}

void DestinationList::reload()
{
    if (m_watcher->directories().isEmpty() && QFileInfo(Utils::QDappSupportPath()).isDir())
        m_watcher->addPath(Utils::QDappSupportPath());
    applyRows(Utils::createMoveDestArr());
}

void DestinationList::setDestinationsArr(const QStringList &paths) { applyRows(paths); }

QStringList DestinationList::destinationsArr() const { return m_model->paths(); }

void DestinationList::applyRows(const QStringList &paths)
{
    const QString current = destTablView->currentIndex().data(DestinationListModel::PathRole).toString();
    m_model->setRows(DestinationRows::rowsFor(paths, m_standard.isEmpty() ? Utils::defFileMoveDestPaths(true) : m_standard,
                                              m_dropped));
    if (const QModelIndex again = indexOfPath(current); again.isValid())
        destTablView->setCurrentIndex(again);
}

QModelIndex DestinationList::indexOfPath(const QString &path) const
{
    const QStringList paths = m_model->paths();
    const qsizetype row = path.isEmpty() ? -1 : paths.indexOf(path);
    return row < 0 ? QModelIndex() : m_model->index(int(row));
}

bool DestinationList::allowClick()
{
    // A second click within a second (a double click, an impatient user) does not count again.
    const QDateTime now = QDateTime::currentDateTimeUtc();
    if (dateOfLastClick.isValid() && now < dateOfLastClick.addMSecs(kClickFilterMs))
        return false;
    dateOfLastClick = now;
    return true;
}

void DestinationList::rowClicked(const QModelIndex &index)
{
    if (!index.isValid() || index.data(DestinationListModel::InactiveRole).toBool() || !allowClick())
        return;
    const QString path = index.data(DestinationListModel::PathRole).toString();
    if (!FsCalls::exists(path, true)) {
        // Deleted or unmounted since the list was made: never copied into a path made anew.
        ask(Texts::localized("destFolderDoesntExistMsg"), Texts::localized("destFolderDoesntExistTitle"), [this, path] {
            if (const Status s = DestinationEdits::remove(path); !s.ok() && s.error().code != DestinationEdits::NotADestination)
                report(s);
            storeChanged();
        });
        return;
    }
    if (m_editMode)
        beginRename(index);
    else
        Q_EMIT destinationChosen(path);
}

void DestinationList::beginRename(const QModelIndex &index)
{
    if (!index.isValid() || !(m_model->flags(index) & Qt::ItemIsEditable))
        return;
    destTablView->setCurrentIndex(index);
    destTablView->edit(index);
}

void DestinationList::showSubfolders(const QModelIndex &index)
{
    if (!index.isValid())
        return;
    m_delegate->setFetchingRow(index);
    destTablView->viewport()->update();
    QStyleOptionViewItem option;
    option.rect = destTablView->visualRect(index);
    const QRect button = m_delegate->buttonRect(option, index, DestinationRowDelegate::SubfoldersButton);
    const QRect anchor(destTablView->viewport()->mapToGlobal(button.topLeft()), button.size());
    m_popup->fetch(index.data(DestinationListModel::PathRole).toString(), anchor, m_dropped, [this] {
        m_delegate->setFetchingRow({});
        destTablView->viewport()->update();
    });
    // After fetch(), which closes the popup shown so far: the window stays open until this one closes.
    if (holdWindowOpen)
        holdWindowOpen(true);
}

void DestinationList::removeUserDest(const QModelIndex &index)
{
    if (!index.isValid() || !m_editMode)
        return;
    const QString path = index.data(DestinationListModel::PathRole).toString();
    if (path.isEmpty())
        return;
    ask(Texts::localized("removeUserDestAlrtMsg"), NativePath::forDisplay(path), [this, path] {
        // A row the file does not hold (a mounted stick) simply comes back.
        if (const Status s = DestinationEdits::remove(path); !s.ok() && s.error().code != DestinationEdits::NotADestination)
            report(s);
        storeChanged();
    });
}

void DestinationList::addNewDestination()
{
    if (m_folderPanel)
        return;
    if (holdWindowOpen)
        holdWindowOpen(true);
    auto *panel = new QFileDialog(window(), Texts::localized("chooseUserDest"), Utils::checkAndReturnHomeFolderPath({}));
    panel->setObjectName(QStringLiteral("chooseUserDestPanel"));
    panel->setFileMode(QFileDialog::Directory);
    panel->setOption(QFileDialog::ShowDirsOnly);
    panel->setAttribute(Qt::WA_DeleteOnClose);
    panel->setWindowModality(Qt::WindowModal);
    m_folderPanel = panel;
    connect(panel, &QFileDialog::finished, this, [this, panel](int result) {
        if (holdWindowOpen)
            holdWindowOpen(false);
        if (result == QDialog::Accepted && !panel->selectedFiles().isEmpty())
            addDestinationPath(panel->selectedFiles().first());
    });
    panel->open();
}

void DestinationList::addDestinationPath(const QString &path)
{
    const Status s = DestinationEdits::add(path, m_model->paths());
    if (!s.ok() && s.error().code == DestinationEdits::AlreadyADestination) {
        showAlert(QMessageBox::Information, Texts::localized("destAlreadyThereMsg"), NativePath::forDisplay(path));
    } else {
        report(s);
    }
    storeChanged();
    if (const QModelIndex added = indexOfPath(path); added.isValid()) {
        destTablView->setCurrentIndex(added);
        destTablView->scrollTo(added);
    }
}

void DestinationList::ask(const QString &message, const QString &informative, std::function<void()> onYes)
{
    if (m_question)
        return;
    if (holdWindowOpen)
        holdWindowOpen(true);
    auto *box = new QMessageBox(QMessageBox::Critical, QStringLiteral("Quaydrop"), message, QMessageBox::NoButton, window());
    box->setObjectName(QStringLiteral("destinationQuestion"));
    box->setTextFormat(Qt::PlainText);
    box->setInformativeText(informative);
    QPushButton *yes = box->addButton(Texts::localized("YES"), QMessageBox::YesRole);
    box->addButton(Texts::localized("NO"), QMessageBox::NoRole);
    box->setDefaultButton(yes);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setWindowModality(Qt::WindowModal);
    m_question = box;
    connect(box, &QMessageBox::finished, this, [this, box, yes, onYes = std::move(onYes)] {
        if (holdWindowOpen)
            holdWindowOpen(false);
        if (box->clickedButton() == yes)
            onYes();
    });
    box->open();
}

void DestinationList::report(const Status &status)
{
    if (status.ok())
        return;
    // The old list is still on disk as it was: say why the change did not stick.
    showAlert(QMessageBox::Warning, Texts::localized("destWriteFailedMsg"), status.error().message);
}

void DestinationList::storeChanged()
{
    reload();
    if (m_watcher->directories().isEmpty() && QFileInfo(Utils::QDappSupportPath()).isDir())
        m_watcher->addPath(Utils::QDappSupportPath());
}

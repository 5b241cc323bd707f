#include "SubfolderPopup.h"

#include "core/fs/NativePath.h"
#include "core/fs/PathParts.h"
#include "core/texts/Texts.h"
#include "fileops/destinations/DestinationRows.h"
#include "widgets/ButtonImages.h"

#include <QGuiApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QStandardItemModel>
#include <QThreadPool>
#include <QTreeView>
#include <QVBoxLayout>

namespace {

constexpr int kPathRole = Qt::UserRole + 1;
constexpr int kLoadedRole = Qt::UserRole + 2;
constexpr int kWidth = 240;

SubfolderListing::Order orderFor(SubfolderPopup::Mode mode)
{
    // The picker sorts by name; the manager shows the file system's order.
    return mode == SubfolderPopup::Mode::Choose ? SubfolderListing::Order::Sorted : SubfolderListing::Order::AsListed;
}

} // namespace

SubfolderPopup::SubfolderPopup(Mode mode, QWidget *parent)
    : QFrame(parent, Qt::Popup), m_mode(mode), fetchSubfoldersCounter(std::make_shared<std::atomic_int>(0))
{
    setObjectName(QStringLiteral("subFldrsPopover"));
    setFrameShape(QFrame::StyledPanel);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->setSpacing(4);
    m_model = new QStandardItemModel(this);
    m_tree = new QTreeView(this);
    m_tree->setObjectName(QStringLiteral("subFldrOutlineView"));
    m_tree->setModel(m_model);
    m_tree->setHeaderHidden(true);
    m_tree->setUniformRowHeights(true);
    m_tree->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_tree->setFrameShape(QFrame::NoFrame);
    m_tree->setIconSize(QSize(16, 16));
    layout->addWidget(m_tree, 1);
    m_note = new QLabel(this);
    m_note->setObjectName(QStringLiteral("noSubfoldersPopover"));
    m_note->setAlignment(Qt::AlignCenter);
    m_note->setMargin(8);
    layout->addWidget(m_note);
    if (m_mode == Mode::Add) {
        m_add = new QPushButton(this);
        m_add->setObjectName(QStringLiteral("addSubfolderBtn"));
        m_add->setEnabled(false);
        layout->addWidget(m_add);
        connect(m_add, &QPushButton::clicked, this, [this] {
            if (const QString p = selectedPath(); !p.isEmpty())
                Q_EMIT addRequested(p);
        });
        connect(m_tree, &QTreeView::clicked, this, [this] { m_add->setEnabled(!selectedPath().isEmpty()); });
        connect(m_tree, &QTreeView::doubleClicked, this, [this] { m_add->click(); });
    } else {
        connect(m_tree, &QTreeView::clicked, this, &SubfolderPopup::itemClicked);
        connect(m_tree, &QTreeView::activated, this, &SubfolderPopup::itemClicked);
    }
    connect(m_tree, &QTreeView::expanded, this, &SubfolderPopup::loadChildren);
    connect(m_tree, &QTreeView::expanded, this, &SubfolderPopup::resizePopoverToFitFileTree);
    connect(m_tree, &QTreeView::collapsed, this, &SubfolderPopup::resizePopoverToFitFileTree);
}

SubfolderPopup::~SubfolderPopup() { fetchSubfoldersCounter->fetch_add(1); }

void SubfolderPopup::fetch(const QString &folder, const QRect &anchor, const QString &protectedPath,
                           std::function<void()> fetched)
{
    hide(); // hiding ends the listings of the tree shown so far
    const int generation = fetchSubfoldersCounter->fetch_add(1) + 1;
    m_protected = protectedPath;
    m_root = folder;
    auto counter = fetchSubfoldersCounter;
    const auto order = orderFor(m_mode);
    QPointer<SubfolderPopup> self(this);
    QThreadPool::globalInstance()->start([=] {
        auto stop = [counter, generation] { return counter->load() != generation; };
        const std::optional<QList<SubfolderListing::Node>> nodes = SubfolderListing::createDicsForPaths(folder, stop, order);
        QMetaObject::invokeMethod(qApp, [=] {
            if (!self || stop())
                return; // a newer fetch took over
            if (!nodes)
                return;
            self->m_model->clear();
            self->fillChildren(self->m_model->invisibleRootItem(), *nodes);
            self->m_tree->setVisible(!nodes->isEmpty());
            self->m_note->setVisible(nodes->isEmpty());
            self->m_note->setText(Texts::localized("noSubfoldersMsg"));
            if (self->m_add) {
                self->m_add->setText(Texts::localized("addSubfolderToDest"));
                self->m_add->setVisible(!nodes->isEmpty());
                self->m_add->setEnabled(false);
            }
            self->m_tree->clearSelection();
            self->resizePopoverToFitFileTree();
            // Beside the button, to its right, kept on the screen.
            QRect frame(anchor.topRight() + QPoint(4, -4), self->size());
            if (const QScreen *screen = QGuiApplication::screenAt(anchor.center())) {
                const QRect avail = screen->availableGeometry();
                if (frame.right() > avail.right())
                    frame.moveRight(anchor.left() - 4);
                frame.moveTop(qBound(avail.top(), frame.top(), qMax(avail.top(), avail.bottom() - frame.height())));
            }
            self->move(frame.topLeft());
            self->show();
            self->m_tree->setFocus();
            Q_EMIT self->levelLoaded(QString());
            if (fetched)
                fetched();
        });
    });
}

void SubfolderPopup::fillChildren(QStandardItem *parent, const QList<SubfolderListing::Node> &nodes)
{
    const QIcon folderIcon(ButtonImages::forStem(QStringLiteral("NSFolder"), 16, palette()).normal);
    QList<QStandardItem *> items;
    items.reserve(nodes.size());
    for (const SubfolderListing::Node &node : nodes) {
        auto *item = new QStandardItem(folderIcon, NativePath::forDisplay(PathParts::lastComponent(node.path)));
        item->setData(node.path, kPathRole);
        item->setToolTip(NativePath::forDisplay(node.path));
        item->setEditable(false);
        // The dropped item cannot receive itself.
        if (m_mode == Mode::Choose && DestinationRows::isAtOrInside(node.path, m_protected))
            item->setEnabled(false);
        if (node.isExpndble) {
            item->setData(false, kLoadedRole);
            item->appendRow(new QStandardItem(Texts::localized("Loading")));
        } else {
            item->setData(true, kLoadedRole);
        }
        items.append(item);
    }
    parent->appendRows(items);
}

void SubfolderPopup::loadChildren(const QModelIndex &index)
{
    QStandardItem *item = m_model->itemFromIndex(index);
    if (!item || item->data(kLoadedRole).toBool())
        return;
    item->setData(true, kLoadedRole);
    const QString path = item->data(kPathRole).toString();
    // Children are listed under the same generation as the tree: a new fetch ends them too.
    const int generation = fetchSubfoldersCounter->load();
    auto counter = fetchSubfoldersCounter;
    const auto order = orderFor(m_mode);
    QPointer<SubfolderPopup> self(this);
    QThreadPool::globalInstance()->start([=] {
        auto stop = [counter, generation] { return counter->load() != generation; };
        const auto nodes = SubfolderListing::createDicsForPaths(path, stop, order);
        QMetaObject::invokeMethod(qApp, [=] {
            if (!self || stop() || !nodes)
                return;
            QStandardItem *parent = self->itemForPath(path);
            if (!parent)
                return;
            parent->removeRows(0, parent->rowCount()); // the "Loading" row
            self->fillChildren(parent, *nodes);
            self->resizePopoverToFitFileTree();
            Q_EMIT self->levelLoaded(path);
        });
    });
}

QStandardItem *SubfolderPopup::itemForPath(const QString &path) const
{
    const QModelIndexList found =
        m_model->match(m_model->index(0, 0), kPathRole, path, 1, Qt::MatchExactly | Qt::MatchRecursive);
    return found.isEmpty() ? nullptr : m_model->itemFromIndex(found.first());
}

void SubfolderPopup::expandPath(const QString &path)
{
    if (QStandardItem *item = itemForPath(path))
        m_tree->expand(item->index());
}

void SubfolderPopup::resizePopoverToFitFileTree()
{
    if (m_model->rowCount() == 0) {
        resize(qMax(160, m_note->sizeHint().width() + 16), m_note->sizeHint().height() + 8);
        return;
    }
    int rows = 0;
    for (QModelIndex i = m_model->index(0, 0); i.isValid(); i = m_tree->indexBelow(i))
        ++rows;
    const int rowHeight = qMax(m_tree->sizeHintForRow(0), 16);
    int height = qMin((rows + 1) * rowHeight, kMaxHeight);
    if (m_add)
        height += m_add->sizeHint().height() + 4;
    resize(kWidth, height + 8);
}

QString SubfolderPopup::selectedPath() const
{
    const QModelIndexList selected = m_tree->selectionModel()->selectedIndexes();
    return selected.isEmpty() ? QString() : selected.first().data(kPathRole).toString();
}

QStringList SubfolderPopup::shownPaths(const QString &parentPath) const
{
    QStandardItem *parent = parentPath.isEmpty() ? m_model->invisibleRootItem() : itemForPath(parentPath);
    QStringList paths;
    for (int i = 0; parent && i < parent->rowCount(); ++i)
        if (const QString p = parent->child(i)->data(kPathRole).toString(); !p.isEmpty())
            paths.append(p);
    return paths;
}

void SubfolderPopup::itemClicked(const QModelIndex &index)
{
    const QString path = index.data(kPathRole).toString();
    if (path.isEmpty() || !isVisible()) // a click and its activation are one choice
        return;
    if (DestinationRows::isAtOrInside(path, m_protected)) {
        qWarning("copying to self");
        return;
    }
    hide();
    Q_EMIT chosen(path);
}

void SubfolderPopup::hideEvent(QHideEvent *event)
{
    // Closing ends any listing still running below.
    fetchSubfoldersCounter->fetch_add(1);
    QFrame::hideEvent(event);
    Q_EMIT closed();
}

void SubfolderPopup::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape) {
        hide();
        return;
    }
    QFrame::keyPressEvent(event);
}

#include "MoveFileViewController.h"

#include "core/fs/NativePath.h"
#include "core/fs/PathParts.h"
#include "core/texts/Texts.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QFileIconProvider>
#include <QFileInfo>
#include <QListWidget>
#include <QPushButton>

MoveFileViewController::MoveFileViewController(QWidget *parent) : OverlayController("Move files to...", parent)
{
    setObjectName(QStringLiteral("moveFileVC"));
    destTablView = new QListWidget(this);
    destTablView->setObjectName(QStringLiteral("destTablView"));
    destTablView->setFrameShape(QFrame::NoFrame);
    destTablView->setIconSize(QSize(18, 18));
    destTablView->setUniformItemSizes(true);
    body()->addWidget(destTablView, 1);
    shouldCopyCheckB = new QCheckBox(this);
    translateLater(shouldCopyCheckB, "Copy");
    shouldCopyCheckB->setObjectName(QStringLiteral("shouldCopyCheckB"));
    body()->addWidget(shouldCopyCheckB);
    goBackBtn = addTagButton("Back", kGoBackTag);
    goBackBtn->setObjectName(QStringLiteral("goBackBtn"));
    otherFolderBtn = addTagButton("Other...", kOtherFolderTag);
    connect(destTablView, &QListWidget::itemActivated, this, &MoveFileViewController::rowActivated);
    connect(destTablView, &QListWidget::itemClicked, this, &MoveFileViewController::rowActivated);
}

void MoveFileViewController::setDestinationsArr(const QStringList &paths)
{
    m_destinations = paths;
    rebuild();
}

void MoveFileViewController::setDefDestArr(const QStringList &paths)
{
    m_defaults = paths;
    rebuild();
}

void MoveFileViewController::rebuild()
{
    destTablView->clear();
    QFileIconProvider icons;
    auto add = [&](const QString &path, qint64 tag) {
        const QString name = NativePath::forDisplay(PathParts::lastComponent(path));
        auto *item = new QListWidgetItem(icons.icon(QFileInfo(path)), name, destTablView);
        item->setToolTip(NativePath::forDisplay(path));
        item->setData(Qt::UserRole, path);
        item->setData(Qt::UserRole + 1, tag);
    };
    for (const QString &path : m_destinations)
        add(path, 0);
    for (int i = 0; i < m_defaults.size(); ++i)
        add(m_defaults.at(i), i);
}

void MoveFileViewController::rowActivated(QListWidgetItem *item)
{
    if (!item || !m_completion || m_chosen)
        return;
    m_chosen = true;
    m_completion(item->data(Qt::UserRole + 1).toLongLong(), shouldCopyCheckB->isChecked(),
                 item->data(Qt::UserRole).toString());
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
}

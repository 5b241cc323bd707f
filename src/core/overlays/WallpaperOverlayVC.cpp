#include "WallpaperOverlayVC.h"

#include <QBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPixmap>
#include <QToolButton>

namespace {

constexpr QSize kThumbnail(80, 52);

} // namespace

WallpaperOverlayVC::WallpaperOverlayVC(QWidget *parent) : OverlayController("Wallpaper", parent)
{
    setObjectName(QStringLiteral("wpChangeVC"));
    QLabel *earlier = addLabel("earlierWallpapersLbl");
    earlier->setWordWrap(true);
    body()->addWidget(earlier);
    auto *row = new QHBoxLayout;
    row->setSpacing(6);
    row->addWidget(makeSlot(1, oldWP1imgV, setWP1toDesktopBtn, shareWP1Btn));
    row->addWidget(makeSlot(2, oldWP2imgV, setWP2toDesktopBtn, shareWP2Btn));
    body()->addLayout(row);
    body()->addStretch(1);
    addTagButton("Cancel", kCloseTag);
    addTagButton("setAsWallpaperBtn", kSetTag, true);
}

QWidget *WallpaperOverlayVC::makeSlot(int slot, QLabel *&image, QToolButton *&setButton, QToolButton *&shareButton)
{
    auto *box = new QWidget(this);
    auto *column = new QVBoxLayout(box);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(2);
    image = new QLabel(box);
    image->setObjectName(QStringLiteral("oldWP%1imgV").arg(slot));
    image->setFixedSize(kThumbnail);
    image->setAlignment(Qt::AlignCenter);
    image->setFrameShape(QFrame::StyledPanel);
    column->addWidget(image, 0, Qt::AlignHCenter);
    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(2);
    auto tool = [&](const char *name, const char *icon, const char *tipKey) {
        auto *b = new QToolButton(box);
        b->setObjectName(QString::fromLatin1(name).arg(slot));
        b->setProperty("tag", slot);
        b->setIcon(QIcon::fromTheme(QString::fromLatin1(icon)));
        b->setAutoRaise(true);
        b->setIconSize(QSize(16, 16));
        translateLater(b, tipKey);
        b->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        buttons->addWidget(b);
        return b;
    };
    setButton = tool("setWP%1toDesktopBtn", "edit-undo", "useOldWPBtn");
    shareButton = tool("shareWP%1Btn", "emblem-shared", "shareOldWPBtn");
    buttons->addStretch(1);
    column->addLayout(buttons);
    connect(setButton, &QToolButton::clicked, this, [this, slot, setButton] {
        if (m_setSlot)
            m_setSlot(slot, setButton);
    });
    connect(shareButton, &QToolButton::clicked, this, [this, slot, shareButton] {
        if (m_shareSlot)
            m_shareSlot(slot, shareButton);
    });
    return box;
}

void WallpaperOverlayVC::showSlot(int slot, const QImage &thumbnail, bool enabled)
{
    QLabel *image = slot == 1 ? oldWP1imgV : oldWP2imgV;
    if (thumbnail.isNull())
        image->clear();
    else
        image->setPixmap(QPixmap::fromImage(thumbnail.scaled(kThumbnail - QSize(4, 4), Qt::KeepAspectRatio, Qt::SmoothTransformation)));
    (slot == 1 ? setWP1toDesktopBtn : setWP2toDesktopBtn)->setEnabled(enabled);
    (slot == 1 ? shareWP1Btn : shareWP2Btn)->setEnabled(enabled);
}

void WallpaperOverlayVC::fire(qint64 tag)
{
    if (m_completion)
        m_completion(tag);
}

#pragma once

#include "OverlayController.h"

#include <QImage>

#include <functional>

class QLabel;
class QToolButton;

// Sets the dropped picture as the wallpaper (tag 0; any other tag closes) and offers the two pictures
// before it, each with a button to go back to it and one to share it.
class WallpaperOverlayVC : public OverlayController
{
    Q_OBJECT
public:
    static constexpr qint64 kSetTag = 0;
    using Completion = std::function<void(qint64)>;
    using SlotHandler = std::function<void(int slot, QWidget *sender)>;

    explicit WallpaperOverlayVC(QWidget *parent = nullptr);
    void setWpVCCompletion(Completion c) { m_completion = std::move(c); }
    void setOldWPAsDesktopWPHandler(SlotHandler h) { m_setSlot = std::move(h); }
    void setShareOldWPHandler(SlotHandler h) { m_shareSlot = std::move(h); }

    // Slot 1 or 2: its thumbnail (null clears it) and whether its two buttons work.
    void showSlot(int slot, const QImage &thumbnail, bool enabled);

    QLabel *oldWP1imgV, *oldWP2imgV;
    QToolButton *setWP1toDesktopBtn, *setWP2toDesktopBtn, *shareWP1Btn, *shareWP2Btn;

protected:
    void fire(qint64 tag) override;

private:
    QWidget *makeSlot(int slot, QLabel *&image, QToolButton *&setButton, QToolButton *&shareButton);

    Completion m_completion;
    SlotHandler m_setSlot, m_shareSlot;
};

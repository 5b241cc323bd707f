// Renders every state of the drop window, the overlay, the progress panel and the conflict dialog to
// PNG files, through the real drop path, for the README. Run under a display: scripts/screenshots.sh.

#include "LaunchedProgram.h"
#include "Screenshots.h"
#include "core/overlays/FileOverlays.h"
#include "core/overlays/ImgConvertOverlayVC.h"
#include "core/overlays/ImgResizeOverlayVC.h"
#include "core/overlays/LockedPDFEnterPass.h"
#include "core/overlays/MoveFileViewController.h"
#include "core/window/BusyView.h"
#include "fileops/ui/ConflictDialog.h"
#include "fileops/destinations/DestinationEdits.h"
#include "fileops/ui/ProgressPanel.h"
#include "fileops/ui/ZipProgressWindow.h"
#include "fileops/ui/destinations/DestinationList.h"
#include "fileops/ui/destinations/ManageDestinationsWC.h"
#include "fileops/ui/destinations/SubfolderPopup.h"
#include "menubar/ExclusionListWC.h"
#include "menubar/statusitem/CCNStatusItem.h"
#include "menubar/statusitem/NotificationBalloon.h"
#include "menubar/tutorial/MIHSliderView.h"
#include "menubar/tutorial/QDIntroSlides.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QWidget>

using namespace Screenshots;

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    Shots shots(argc, argv);
    shots.suffix.clear(); // the few pictures in a second language are named where they are made
    QTemporaryDir work;
    const QString w = work.path();
    const QString harbour = w + QStringLiteral("/Harbour.png"), notes = w + QStringLiteral("/Notes.txt"),
                  invoice = w + QStringLiteral("/Invoice.pdf"), projects = w + QStringLiteral("/Projects");
    writtenFile(harbour, pngBytes(QSize(640, 480)));
    writtenFile(notes, "Quay notes\n");
    writtenFile(invoice, "%PDF-1.4\n%%EOF\n");
    writtenFile(projects + QStringLiteral("/Quay/plan.md"), QByteArray(200000, 'x'));

    // A home with the standard folders, as the destination lists show them.
    for (const char *f : {"Desktop", "Documents/Invoices", "Documents/Letters", "Documents/Taxes 2025",
                          "Documents/Taxes 2026/Receipts", "Music", "Pictures", "Downloads", "Videos"})
        QDir::home().mkpath(QString::fromLatin1(f));
    FakePlatform fakes(w + QStringLiteral("/.trash"));
    SettingsStore::shared().setBool(SettingsKey::DontShowIntroSlider, true); // the slides have their own picture
    const std::unique_ptr<AppDelegate> launched = launchedOn(fakes);
    AppDelegate &delegate = *launched;

    delegate.showDropTargetAt(QPointF(300, 500));
    shots.save(delegate.window, QStringLiteral("drop-target"));

    // A drop on a fresh drop target, settled: the size button is filled in the background.
    auto dropData = [&](const QMimeData &data, const QString &name = {}) {
        delegate.showDropTargetAt(QPointF(300, 500));
        delegate.mycustomviewDidGetDrop(&data);
        settle(400);
        if (!name.isEmpty())
            shots.save(delegate.window, name);
    };
    auto drop = [&](const QStringList &paths, const QString &name = {}) { dropData(*filesData(paths), name); };
    drop({harbour}, QStringLiteral("panel-image"));
    drop({notes}, QStringLiteral("panel-document"));
    // The share menu with what a desktop may have: a phone, Bluetooth, an editor for the type.
    fakes.share.targets = {{QStringLiteral("kdeconnect:a1"), QStringLiteral("Pixel 7"), QStringLiteral("kdeconnect")},
                           {QStringLiteral("bluetooth"), QStringLiteral("Bluetooth"), QStringLiteral("bluetooth")},
                           {QStringLiteral("open-with:org.gnome.TextEditor"), QStringLiteral("Text Editor"),
                            QStringLiteral("org.gnome.TextEditor")}};
    auto shareMenu = [&](const char *button, const QString &name) {
        if (auto *share = delegate.window->contentView()->findChild<ActionButton *>(QLatin1String(button))) {
            share->click();
            shots.saveScreenArea(delegate.window->frameGeometry().adjusted(0, 0, 200, 220), name);
            for (QWidget *top : QApplication::topLevelWidgets())
                if (top->objectName() == QLatin1String("sharePicker"))
                    top->close();
        }
    };
    shareMenu("airDrDocBtn", QStringLiteral("share-menu"));
    drop({projects}, QStringLiteral("panel-folder"));
    drop({invoice}, QStringLiteral("panel-pdf"));
    drop({harbour, notes, projects}, QStringLiteral("panel-several-files"));
    QMimeData text;
    text.setText(QStringLiteral("Ships leave the quay at dawn, loaded with what the night brought in."));
    dropData(text, QStringLiteral("panel-text"));
    shareMenu("strOSXShareBtn", QStringLiteral("share-menu-text"));
    QMimeData image;
    image.setData(QStringLiteral("image/png"), pngBytes(QSize(640, 480)));
    dropData(image, QStringLiteral("panel-image-from-app"));

    delegate.showDropTargetAt(QPointF(300, 500));
    delegate.applyPanelFrame(235);
    delegate.showProcessingProgressLabelTxt(QStringLiteral("Loading…"), 1.0, 12, true);
    delegate.emptyContview->incrementBy(5);
    shots.save(delegate.window, QStringLiteral("busy"));
    // The same view counting the items of a trash that takes a while.
    auto trashing = [&](const QString &name) {
        delegate.showProcessingProgressLabelTxt(Texts::localized("Moving to the trash"), 0.8, 0.0, true);
        delegate.emptyContview->start(Texts::localized("Moving to the trash"), 0.8, 0.0, true);
        delegate.emptyContview->showProgress(1200, 3000);
        shots.save(delegate.window, name);
    };
    trashing(QStringLiteral("busy-trash"));

    drop({notes});
    delegate.moveToBtnAction();
    shots.save(delegate.window, QStringLiteral("overlay-move"));
    delegate.closeVisibleModalOverlay();

    // The image and PDF overlays over the panels that open them.
    auto overlayOn = [&](const QStringList &paths, const QString &panelButton, const QString &name = {}) {
        drop(paths);
        delegate.window->contentView()->findChild<ActionButton *>(panelButton)->click();
        settle(300);
        if (!name.isEmpty())
            shots.save(delegate.window, name);
    };
    overlayOn({harbour}, QStringLiteral("resizeImgBtn"));
    delegate.imgResizeVC->widthTextField->setFocus();
    delegate.imgResizeVC->widthTextField->setText(QStringLiteral("320"));
    QTest::keyClick(delegate.imgResizeVC->widthTextField, Qt::Key_Up);
    shots.save(delegate.window, QStringLiteral("overlay-resize-typed"));
    delegate.closeVisibleModalOverlay();
    QImage(harbour).save(w + QStringLiteral("/Quay.jpg"));
    overlayOn({harbour, w + QStringLiteral("/Quay.jpg")}, QStringLiteral("multiConvrtImg"));
    delegate.imgConvrtVC->compressFactorSlider->setValue(37);
    shots.save(delegate.window, QStringLiteral("overlay-convert"));
    delegate.closeVisibleModalOverlay();
    overlayOn({invoice}, QStringLiteral("convrtPDFToImgBtn"), QStringLiteral("overlay-pdf-to-images"));
    LockedPDFEnterPass sheet(QStringLiteral("Invoice.pdf"), [](const QString &) { return false; }, delegate.window);
    sheet.show();
    sheet.pdfPassTxtFld->setText(QStringLiteral("harbour"));
    sheet.findChild<QPushButton *>(QStringLiteral("unlockBtn"))->click(); // a wrong one: it says so
    shots.save(&sheet, QStringLiteral("pdf-password"));
    sheet.reject();
    delegate.closeVisibleModalOverlay();

    // The file overlays: a new item, the folder to gather into, the batch rename with its preview.
    overlayOn({notes}, QStringLiteral("createNewDocBtn"));
    delegate.fileCreateVC->sameAsDragedFile->click();
    shots.save(delegate.window, QStringLiteral("overlay-new-file"));
    delegate.closeVisibleModalOverlay();
    overlayOn({harbour, notes}, QStringLiteral("moveToOneFoldBtn"));
    QTest::keyClicks(delegate.enterFolderNameVC->folderNameTF, QStringLiteral("Quay 2026"));
    shots.save(delegate.window, QStringLiteral("overlay-folder-name"));
    delegate.closeVisibleModalOverlay();
    overlayOn({harbour, w + QStringLiteral("/Quay.jpg"), notes}, QStringLiteral("renameMultiBtn"));
    QTest::keyClicks(delegate.renameFlsVC->renameNameTF, QStringLiteral("Trip"));
    QTest::keyClicks(delegate.renameFlsVC->prefixTF, QStringLiteral("2026 "));
    shots.save(delegate.window, QStringLiteral("overlay-rename"));
    delegate.closeVisibleModalOverlay();
    delegate.orderOutTheWindow();
    {
        ZipProgressWindow zipping;
        zipping.setStateKey("zipping");
        zipping.setProgress(quint64(142) << 20, quint64(305) << 20, QStringLiteral("Trip/day07/IMG_0413.jpg"));
        zipping.show();
        shots.save(&zipping, QStringLiteral("zip-progress"));
    }

    delegate.showDropTargetAt(QPointF(300, 500));
    delegate.filePathsArr = {notes};
    delegate.showQuickMovePanel();
    shots.save(delegate.window, QStringLiteral("quick-move-picker"));
    delegate.orderOutTheWindow();

    // The destinations: the standard folders of the home, a folder of the user's renamed, a stick.
    {
        const QString home = QDir::homePath();
        writtenFile(home + QStringLiteral("/Documents/Offer.pdf"), "%PDF-1.4\n%%EOF\n");
        Utils::createMoveDestArr();
        DestinationEdits::add(projects);
        DestinationEdits::rename(projects, QStringLiteral("Quay work"));
        VolumeInfo stick = fakeStick(); // mounted where the user's own sticks are
        stick.mountPoint = QStringLiteral("/media/%1/STICK").arg(QString::fromLocal8Bit(qgetenv("USER")));
        fakes.volumes.plugIn(stick);
        auto pickerFor = [&](const QString &dropped) {
            drop({dropped});
            delegate.moveToBtnAction();
            settle(200);
        };
        // A PDF of Documents: its own folder is grey.
        pickerFor(home + QStringLiteral("/Documents/Offer.pdf"));
        shots.save(delegate.window, QStringLiteral("destinations-picker"));
        delegate.moveFileVC->enterEditMode();
        shots.save(delegate.window, QStringLiteral("destinations-edit"));
        delegate.moveFileVC->enterEditMode();
        DestinationList *list = delegate.moveFileVC->destList;
        QSignalSpy loaded(list->subfolderPopup(), &SubfolderPopup::levelLoaded);
        list->showSubfolders(list->indexOfPath(home + QStringLiteral("/Documents")));
        loaded.wait(3000);
        list->subfolderPopup()->expandPath(home + QStringLiteral("/Documents/Taxes 2026"));
        loaded.wait(3000);
        const QRect area = delegate.window->frameGeometry().united(list->subfolderPopup()->frameGeometry()).adjusted(-8, -8, 8, 8);
        shots.saveScreenArea(area, QStringLiteral("destinations-subfolders"));
        list->subfolderPopup()->hide();
        delegate.closeVisibleModalOverlay();

        ManageDestinationsWC manager;
        manager.show();
        shots.save(&manager, QStringLiteral("destinations-manager"));
        app.setPalette(darkPalette());
        manager.hide();
        manager.show();
        shots.save(&manager, QStringLiteral("destinations-manager-dark"));
        pickerFor(home + QStringLiteral("/Documents/Offer.pdf"));
        shots.save(delegate.window, QStringLiteral("destinations-picker-dark"));
        delegate.closeVisibleModalOverlay();
        delegate.orderOutTheWindow();
        app.setPalette(QApplication::style()->standardPalette());
    }

    // The exclusion list with applications of the machine's kind, and the picker that adds them.
    const QList<QPair<QString, QString>> installed = {{"org.gimp.GIMP", "GNU Image Manipulation Program"},
                                                      {"org.kde.krita", "Krita"},
                                                      {"org.inkscape.Inkscape", "Inkscape"},
                                                      {"org.gnome.Nautilus", "Files"},
                                                      {"org.mozilla.firefox", "Firefox"},
                                                      {"org.libreoffice.LibreOffice.writer", "LibreOffice Writer"}};
    QDir(w).mkpath(QStringLiteral("apps"));
    for (const auto &[id, name] : installed)
        writtenFile(w + QStringLiteral("/apps/") + id + QStringLiteral(".desktop"),
                  "[Desktop Entry]\nType=Application\nName=" + name.toUtf8() + "\nIcon=" + id.toUtf8() + "\n");
    Utils::updateExlAppsPlistWithBundleId(QStringLiteral("org.gimp.GIMP"), false);
    Utils::updateExlAppsPlistWithBundleId(QStringLiteral("org.kde.krita"), false);
    ExclusionListWC exclusions(DesktopEntries::load({w + QStringLiteral("/apps")}));
    exclusions.show();
    settle(100);
    shots.save(&exclusions, QStringLiteral("exclusion-list"));
    exclusions.chooseApplication();
    settle(100);
    shots.save(exclusions.picker(), QStringLiteral("exclusion-list-picker"));
    exclusions.picker()->reject();

    // The options panel hanging from a tray icon at the top right, light and dark, and the slides.
    Utils::saveChangesToTimeSavedPlistByAddingSec(4385);
    auto panelShot = [&](const QString &name) {
        CCNStatusItemWindowController *tray = delegate.statusItem()->windowController();
        tray->showStatusItemWindow(QRect(1180, 0, 24, 24), QRect(0, 0, 1280, 800));
        settle(400);
        shots.save(tray->window(), name);
        tray->dismissStatusItemWindow();
        settle(400);
    };
    panelShot(QStringLiteral("options-panel"));
    // Without a tray the options are a normal window, in the theme's colours.
    auto windowShot = [&](const QString &name) {
        CCNStatusItemWindowController *tray = delegate.statusItem()->windowController();
        tray->showAsNormalWindow();
        settle(300);
        shots.save(tray->window(), name);
        QTest::keyClick(tray->window(), Qt::Key_Escape);
        settle(200);
    };
    windowShot(QStringLiteral("options-window-no-tray"));
    // A result told without a notification server, under the tray icon.
    NotificationBalloon balloon([] { return QRect(1180, 0, 24, 24); });
    balloon.deliver(Texts::localized("imgResizeCompleteMsg"), Texts::localized("savedTostr /%@").arg(QStringLiteral("Pictures")),
                    {{QStringLiteral("filePaths"), QStringList{w + QStringLiteral("/Harbour_320x240.png")}}});
    shots.save(balloon.balloon(), QStringLiteral("notification-balloon"));
    balloon.balloon()->hide();
    QDIntroSlides slides;
    slides.sliderView->setScheduledTransition(false);
    slides.show();
    shots.save(&slides, QStringLiteral("intro-slides"));
    slides.sliderView->transitionAnimationDuration = 0;
    slides.sliderView->displaySlideAtIndex(2);
    settle(200);
    shots.save(&slides, QStringLiteral("intro-slides-actions"));
    slides.close();

    app.setPalette(darkPalette());
    panelShot(QStringLiteral("options-panel-dark"));
    windowShot(QStringLiteral("options-window-no-tray-dark"));
    drop({harbour}, QStringLiteral("panel-image-dark"));
    app.setPalette(QApplication::style()->standardPalette());

    QList<FileCopyParamsPtr> jobs = {
        std::make_shared<FileCopyParams>(QStringList{w + QStringLiteral("/Holiday 2026")}, QStringLiteral("/media/usb/Backup"), true),
        std::make_shared<FileCopyParams>(QStringList{projects}, QStringLiteral("/mnt/archive"), false)};
    ProgressPanel panel([&] { return jobs; }, [](const FileCopyParamsPtr &) {});
    panel.jobsChanged(2);
    panel.jobProgress(jobs[0], 64, QStringLiteral("Copying IMG_2231.jpg to Backup"));
    panel.jobProgress(jobs[1], 23, QStringLiteral("Moving plan.md to archive"));
    shots.save(&panel, QStringLiteral("progress-two-jobs"));

    ConflictDialog conflict(ConflictQuestion{QStringLiteral("Harbour.png"), {}, {}});
    conflict.show();
    shots.save(&conflict, QStringLiteral("conflict-dialog"));
    conflict.hide(); // it deletes itself on close

    // In German: a panel, the small targets and the resize overlay, with their longest words.
    if (Texts::language() != u"de") {
        Texts::setLanguage(QStringLiteral("de"));
        settle(100);
        drop({harbour, notes, projects}, QStringLiteral("panel-several-files-de"));
        drop({harbour}, QStringLiteral("panel-image-de"));
        delegate.showDropTargetAt(QPointF(300, 500));
        shots.save(delegate.window, QStringLiteral("drop-target-de"));
        overlayOn({harbour}, QStringLiteral("resizeImgBtn"));
        delegate.imgResizeVC->widthTextField->setText(QStringLiteral("320"));
        QTest::keyClick(delegate.imgResizeVC->widthTextField, Qt::Key_Up);
        shots.save(delegate.window, QStringLiteral("overlay-resize-de"));
        delegate.closeVisibleModalOverlay();
        trashing(QStringLiteral("busy-trash-de"));
    }
    return 0;
}

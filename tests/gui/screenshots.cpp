// Renders the README's pictures to PNG files: every state of the drop window, the overlays, the
// progress panel and the conflict dialog through the real drop path, the options and the slides; and
// the image windows. Run under a display with [OUT-FOLDER [LANGUAGE]]: scripts/screenshots.sh, once
// for each language.

#include "EditorFixtures.h"
#include "EditorWindowFixtures.h"
#include "LaunchedProgram.h"
#include "core/overlays/FileOverlays.h"
#include "core/overlays/ImgConvertOverlayVC.h"
#include "core/overlays/ImgResizeOverlayVC.h"
#include "core/overlays/LockedPDFEnterPass.h"
#include "core/overlays/MoveFileViewController.h"
#include "core/overlays/WallpaperOverlayVC.h"
#include "core/window/BusyView.h"
#include "editor/ui/AKPaintView.h"
#include "editor/ui/CropImgWC.h"
#include "editor/ui/CropView.h"
#include "editor/ui/ResizePopover.h"
#include "fileops/destinations/DestinationEdits.h"
#include "fileops/ui/ConflictDialog.h"
#include "fileops/ui/ProgressPanel.h"
#include "fileops/ui/ZipProgressWindow.h"
#include "fileops/ui/destinations/DestinationList.h"
#include "fileops/ui/destinations/ManageDestinationsWC.h"
#include "fileops/ui/destinations/SubfolderPopup.h"
#include "images/board/LRHMPagesManager.h"
#include "images/board/ui/LRHMIKImageBrowserView.h"
#include "images/board/ui/PDFPreviewWC.h"
#include "menubar/ExclusionListWC.h"
#include "menubar/statusitem/CCNStatusItem.h"
#include "menubar/statusitem/NotificationBalloon.h"
#include "menubar/tutorial/MIHSliderView.h"
#include "menubar/tutorial/QDIntroSlides.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>
#include <QStyleFactory>
#include <QWidget>

namespace {

// The folder and language from the command line, and a window or an area of the screen saved as PNG.
struct Shots
{
    QString out, language, suffix; // "-de" for pictures in a language other than English

    Shots(int argc, char **argv)
        : out(argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("docs/screenshots")),
          language(argc > 2 ? QString::fromLatin1(argv[2]) : QStringLiteral("en")),
          suffix(language == u"en" ? QString() : QLatin1Char('-') + language)
    {
        QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
        Texts::setLanguage(language);
        QDir().mkpath(out);
    }
    QString file(const QString &name) const { return out + QLatin1Char('/') + name + suffix + QStringLiteral(".png"); }
    void save(QWidget *w, const QString &name, int wait = 150) const
    {
        QTest::qWait(wait);
        w->grab().save(file(name));
    }
    // What the screen shows over a window and the popups beside it.
    void saveScreenArea(const QRect &area, const QString &name) const
    {
        QTest::qWait(300);
        QGuiApplication::primaryScreen()->grabWindow(0, area.x(), area.y(), area.width(), area.height()).save(file(name));
    }
};

// A dark theme: Qt derives the palette's other colours from the button's and the window's.
QPalette darkPalette()
{
    QPalette dark(QColor(60, 60, 64), QColor(45, 45, 48));
    dark.setColor(QPalette::Base, QColor(30, 30, 32));
    return dark;
}

// The harbour scenery, in a tint of its own for each seed.
QString photo(const QString &folder, const QString &name, int seed, bool portrait = false)
{
    QImage img = EditorFixtures::scenery(portrait ? 600 : 900, portrait ? 900 : 600);
    QPainter(&img).fillRect(img.rect(), QColor::fromHsv((seed * 37) % 360, 200, 230, 90));
    const QString path = folder + QLatin1Char('/') + name;
    img.save(path, "JPEG", 88);
    return path;
}

// The drop window and the options, in English, with the few pictures in German named where they are made.
void windowPictures(Shots shots)
{
    shots.suffix.clear();
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
        QTest::qWait(400);
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
            if (QMenu *menu = sharePicker())
                menu->close();
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
        QTest::qWait(300);
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
            QTest::qWait(200);
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
        QApplication::setPalette(darkPalette());
        manager.hide();
        manager.show();
        shots.save(&manager, QStringLiteral("destinations-manager-dark"));
        pickerFor(home + QStringLiteral("/Documents/Offer.pdf"));
        shots.save(delegate.window, QStringLiteral("destinations-picker-dark"));
        delegate.closeVisibleModalOverlay();
        delegate.orderOutTheWindow();
        QApplication::setPalette(QApplication::style()->standardPalette());
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
    QTest::qWait(100);
    shots.save(&exclusions, QStringLiteral("exclusion-list"));
    exclusions.chooseApplication();
    QTest::qWait(100);
    shots.save(exclusions.picker(), QStringLiteral("exclusion-list-picker"));
    exclusions.picker()->reject();

    // The options panel hanging from a tray icon at the top right, light and dark, and the slides.
    Utils::saveChangesToTimeSavedPlistByAddingSec(4385);
    auto panelShot = [&](const QString &name) {
        CCNStatusItemWindowController *tray = delegate.statusItem()->windowController();
        tray->showStatusItemWindow(QRect(1180, 0, 24, 24), QRect(0, 0, 1280, 800));
        QTest::qWait(400);
        shots.save(tray->window(), name);
        tray->dismissStatusItemWindow();
        QTest::qWait(400);
    };
    panelShot(QStringLiteral("options-panel"));
    // Without a tray the options are a normal window, in the theme's colours.
    auto windowShot = [&](const QString &name) {
        CCNStatusItemWindowController *tray = delegate.statusItem()->windowController();
        tray->showAsNormalWindow();
        QTest::qWait(300);
        shots.save(tray->window(), name);
        QTest::keyClick(tray->window(), Qt::Key_Escape);
        QTest::qWait(200);
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
    QTest::qWait(200);
    shots.save(&slides, QStringLiteral("intro-slides-actions"));
    slides.close();

    QApplication::setPalette(darkPalette());
    panelShot(QStringLiteral("options-panel-dark"));
    windowShot(QStringLiteral("options-window-no-tray-dark"));
    drop({harbour}, QStringLiteral("panel-image-dark"));
    QApplication::setPalette(QApplication::style()->standardPalette());

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
        QTest::qWait(100);
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
}

// The page board with twelve pictures, some turned, one selected; the wallpaper overlay with the two
// pictures before the present one; the editor in crop mode, in paint mode with strokes, with the resize
// popover, and in a dark theme: in the language asked for.
void imagePictures(const Shots &shots)
{
    QStandardPaths::setTestModeEnabled(true);
    QTemporaryDir work;
    QStringList photos;
    const char *names[] = {"Harbour", "Pier at dawn", "Lighthouse", "Ferry", "Old crane", "Boats", "Quay 4",
                           "Fish market", "Sunset", "Warehouse", "Gulls", "Night tide"};
    for (int i = 0; i < 12; ++i)
        photos << photo(work.path(), QString::fromLatin1(names[i]) + QStringLiteral(".jpg"), i + 1, i == 2 || i == 7);

    FakePlatform fakes(work.path() + QStringLiteral("/.trash"));
    auto delegate = launchedOn(fakes);

    PDFPreviewWC board;
    board.loadPageItemImagesWithPaths(photos);
    board.resize(900, 640);
    board.show();
    LRHMIKImageBrowserView *view = board.imageBrowserView;
    for (int row : {1, 5}) {
        view->setCurrentIndex(view->model()->index(row, 0));
        board.imageAction(PDFPreviewWC::kRotateRight);
    }
    view->setCurrentIndex(view->model()->index(9, 0));
    board.imageAction(PDFPreviewWC::kFlipHorizontal);
    view->setCurrentIndex(view->model()->index(4, 0));
    view->scrollToTop();
    shots.save(&board, QStringLiteral("page-board"), 2500);
    board.hide();

    // The wallpaper overlay after two changes: the present picture and the two before it.
    fakes.wallpaper.current = photo(work.path(), QStringLiteral("First desktop.jpg"), 20);
    Utils::saveChangesToWPPlist(photos.at(0), photos.at(8), photos.at(3));
    delegate->showDropTargetAt(QPointF(300, 500));
    dropPaths(*delegate, {photos.at(10)});
    QTest::qWait(400);
    panelButton(*delegate, QStringLiteral("deskPbtn"))->click();
    shots.save(delegate->window, QStringLiteral("overlay-wallpaper"), 1500);
    delegate->orderOutTheWindow();
    QDir(Utils::QDappSupportPath()).removeRecursively();

    const QString harbour = work.filePath(QStringLiteral("Harbour.jpg"));
    EditorFixtures::scenery(1800, 1200).save(harbour, "jpg", 92);

    CropImgWC editor;
    EditorWindowFixtures::openAndWait(editor, harbour);
    QTest::qWait(400);
    // Crop mode: the frame pulled in from two corners.
    const QRectF fitted = editor.imgCropView->frameYUp();
    editor.imgCropView->setFrameYUp(fitted.adjusted(fitted.width() * 0.12, fitted.height() * 0.1, -fitted.width() * 0.2, -fitted.height() * 0.15));
    editor.updateCropSizeValues();
    shots.save(&editor, QStringLiteral("editor-crop"));

    // Paint mode with a few strokes.
    editor.setPaintMode(true);
    QTest::qWait(100);
    editor.colorChanged(QColor(230, 40, 40));
    editor.brushSizeChanged(9);
    EditorWindowFixtures::stroke(editor.paintView, {{0.2, 0.3}, {0.25, 0.26}, {0.32, 0.24}, {0.4, 0.25}, {0.46, 0.3}, {0.44, 0.37}, {0.36, 0.4}, {0.26, 0.39}, {0.2, 0.34}, {0.21, 0.3}});
    editor.colorChanged(QColor(255, 230, 60));
    editor.brushSizeChanged(5);
    EditorWindowFixtures::stroke(editor.paintView, {{0.6, 0.62}, {0.66, 0.6}, {0.72, 0.63}, {0.78, 0.6}, {0.84, 0.63}});
    shots.save(&editor, QStringLiteral("editor-paint"));

    // The resize popover under its button.
    editor.setPaintMode(false);
    editor.showResizePopOver();
    QTest::qWait(200);
    editor.resizeimgPopover->resizeWTxtFld->setText(QStringLiteral("1200"));
    editor.controlTextDidChange(editor.resizeimgPopover->resizeWTxtFld);
    const QRect area = editor.frameGeometry().united(editor.resizeimgPopover->frameGeometry());
    shots.saveScreenArea(area, QStringLiteral("editor-resize"));
    editor.resizeimgPopover->hide();

    QApplication::setPalette(darkPalette());
    QTest::qWait(200);
    editor.setPaintMode(true);
    shots.save(&editor, QStringLiteral("editor-paint-dark"));
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    const Shots shots(argc, argv);
    if (shots.language == u"en")
        windowPictures(shots);
    Texts::setLanguage(shots.language);
    QApplication::setPalette(QApplication::style()->standardPalette());
    imagePictures(shots);
    return 0;
}

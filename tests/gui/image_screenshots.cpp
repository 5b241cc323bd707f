// Renders the pictures of the image windows for the README: the page board with twelve pictures, some
// turned, one selected; the wallpaper overlay with the two pictures before the present one; the editor
// in crop mode, in paint mode with strokes, with the resize popover, and in a dark theme. Run under a
// display: scripts/screenshots.sh.

#include "EditorFixtures.h"
#include "EditorWindowFixtures.h"
#include "LaunchedProgram.h"
#include "Screenshots.h"

#include "core/overlays/WallpaperOverlayVC.h"
#include "editor/ui/AKPaintView.h"
#include "editor/ui/CropImgWC.h"
#include "editor/ui/CropView.h"
#include "editor/ui/ResizePopover.h"
#include "images/board/LRHMPagesManager.h"
#include "images/board/ui/LRHMIKImageBrowserView.h"
#include "images/board/ui/PDFPreviewWC.h"

#include <QLineEdit>
#include <QPainter>

using namespace Screenshots;

namespace {

// The harbour scenery, in a tint of its own for each seed.
QString photo(const QString &folder, const QString &name, int seed, bool portrait = false)
{
    QImage img = EditorFixtures::scenery(portrait ? 600 : 900, portrait ? 900 : 600);
    QPainter(&img).fillRect(img.rect(), QColor::fromHsv((seed * 37) % 360, 200, 230, 90));
    const QString path = folder + QLatin1Char('/') + name;
    img.save(path, "JPEG", 88);
    return path;
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    const Shots shots(argc, argv);
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
    settle(400);
    panelButton(*delegate, QStringLiteral("deskPbtn"))->click();
    shots.save(delegate->window, QStringLiteral("overlay-wallpaper"), 1500);
    delegate->orderOutTheWindow();
    QDir(Utils::QDappSupportPath()).removeRecursively();

    const QString harbour = work.filePath(QStringLiteral("Harbour.jpg"));
    EditorFixtures::scenery(1800, 1200).save(harbour, "jpg", 92);

    CropImgWC editor;
    EditorWindowFixtures::openAndWait(editor, harbour);
    settle(400);
    // Crop mode: the frame pulled in from two corners.
    const QRectF fitted = editor.imgCropView->frameYUp();
    editor.imgCropView->setFrameYUp(fitted.adjusted(fitted.width() * 0.12, fitted.height() * 0.1, -fitted.width() * 0.2, -fitted.height() * 0.15));
    editor.updateCropSizeValues();
    shots.save(&editor, QStringLiteral("editor-crop"));

    // Paint mode with a few strokes.
    editor.setPaintMode(true);
    settle(100);
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
    settle(200);
    editor.resizeimgPopover->resizeWTxtFld->setText(QStringLiteral("1200"));
    editor.controlTextDidChange(editor.resizeimgPopover->resizeWTxtFld);
    const QRect area = editor.frameGeometry().united(editor.resizeimgPopover->frameGeometry());
    shots.saveScreenArea(area, QStringLiteral("editor-resize"));
    editor.resizeimgPopover->hide();

    app.setPalette(darkPalette());
    settle(200);
    editor.setPaintMode(true);
    shots.save(&editor, QStringLiteral("editor-paint-dark"));
    return 0;
}

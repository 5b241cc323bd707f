// Renders the page board and the wallpaper overlay for the README: twelve pictures on the board, some
// turned, one selected; the wallpaper overlay with the two pictures before the present one.

#include "EditorFixtures.h"
#include "LaunchedProgram.h"
#include "Screenshots.h"

#include "core/overlays/WallpaperOverlayVC.h"
#include "images/board/LRHMPagesManager.h"
#include "images/board/ui/LRHMIKImageBrowserView.h"
#include "images/board/ui/PDFPreviewWC.h"

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
    QDir(Utils::QDappSupportPath()).removeRecursively();
    return 0;
}

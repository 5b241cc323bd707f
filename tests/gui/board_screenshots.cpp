// Renders the page board and the wallpaper overlay for the README: twelve pictures on the board, some
// turned, one selected; the wallpaper overlay with the two pictures before the present one.

#include "LaunchedProgram.h"
#include "Screenshots.h"

#include "core/overlays/WallpaperOverlayVC.h"
#include "images/board/LRHMPagesManager.h"
#include "images/board/ui/LRHMIKImageBrowserView.h"
#include "images/board/ui/PDFPreviewWC.h"

#include <QLinearGradient>
#include <QPainter>

using namespace Screenshots;

namespace {

// A landscape of sky, sea and a sun, in colours of its own for each seed.
QString photo(const QString &folder, const QString &name, int seed, bool portrait = false)
{
    const int w = portrait ? 600 : 900, h = portrait ? 900 : 600;
    QImage img(w, h, QImage::Format_RGB32);
    QPainter p(&img);
    QLinearGradient sky(0, 0, 0, h * 0.6);
    sky.setColorAt(0, QColor::fromHsv((seed * 37) % 360, 120, 240));
    sky.setColorAt(1, QColor::fromHsv((seed * 37 + 30) % 360, 60, 255));
    p.fillRect(0, 0, w, int(h * 0.6), sky);
    QLinearGradient sea(0, h * 0.6, 0, h);
    sea.setColorAt(0, QColor::fromHsv((200 + seed * 11) % 360, 160, 170));
    sea.setColorAt(1, QColor::fromHsv((210 + seed * 11) % 360, 200, 90));
    p.fillRect(0, int(h * 0.6), w, h, sea);
    p.setPen(Qt::NoPen);
    p.setBrush(QColor(255, 230, 150));
    p.drawEllipse(QPointF(w * (0.2 + 0.06 * (seed % 10)), h * 0.3), w * 0.08, w * 0.08);
    p.setBrush(QColor(40, 40, 50));
    p.drawRect(int(w * 0.65), int(h * 0.45), int(w * 0.2), int(h * 0.15)); // a quay shed
    p.end();
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

// Times the editor for bench/editor.sh, in one process on the real window and renderer:
//   editor_probe open FILE        ms from creating the window to the first painted frame of the picture
//   editor_probe repaint          ms per repaint of the stroke layer at 1600 x 1200 with 2,000 segments
//   editor_probe save FILE        ms to save FILE (4000 x 3000) with 2,000 segments painted over it
// Each prints one line "NAME VALUE ..." for the script to read.

#include "core/texts/Texts.h"
#include "editor/picture/EditedPicture.h"
#include "editor/picture/PictureSaver.h"
#include "editor/ui/AKPaintView.h"
#include "editor/ui/CropImgWC.h"
#include "editor/ui/EditorImageView.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QMouseEvent>
#include <QRandomGenerator>
#include <QWindow>

#include <algorithm>
#include <cstdio>
#include <unistd.h>

namespace {

void drag(AKPaintView &view, QEvent::Type type, QPointF at)
{
    QMouseEvent e(type, at, view.mapToGlobal(at), Qt::LeftButton,
                  type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton, {});
    QApplication::sendEvent(&view, &e);
}

// Strokes of 100 segments each, wandering over the view, as a user paints them.
void paintSegments(AKPaintView &view, int segments)
{
    QRandomGenerator random(7);
    QPointF at(view.width() / 2.0, view.height() / 2.0);
    for (int done = 0; done < segments;) {
        drag(view, QEvent::MouseButtonPress, at);
        for (int i = 0; i < 100 && done < segments; ++i, ++done) {
            at += QPointF(random.bounded(-12, 13), random.bounded(-12, 13));
            at = QPointF(std::clamp(at.x(), 0.0, view.width() - 1.0), std::clamp(at.y(), 0.0, view.height() - 1.0));
            drag(view, QEvent::MouseMove, at);
        }
        drag(view, QEvent::MouseButtonRelease, at);
    }
}

int open(const QString &path)
{
    QElapsedTimer timer;
    timer.start();
    auto *editor = new CropImgWC;
    QObject::connect(editor->imgToRotateOrCrop, &EditorImageView::pictureShown, [&timer] {
        std::printf("open_ms %.1f\n", timer.nsecsElapsed() / 1e6);
        std::fflush(stdout);
        _exit(0); // the whole picture is still being read behind the first frame; no need to wait
    });
    editor->openImage(path, false, false);
    return QApplication::exec();
}

int repaint()
{
    AKPaintView view;
    view.resize(1600, 1200);
    view.setPaintingEnabled(true);
    view.control().setLineWidth(12);
    view.show();
    // Painted only once the window is on the screen.
    QElapsedTimer exposing;
    exposing.start();
    while (!(view.windowHandle() && view.windowHandle()->isExposed()) && exposing.elapsed() < 5000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
    paintSegments(view, 2000);
    view.repaint();
    // Full rebuilds, as after an undo: the whole session drawn again.
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < 5; ++i) {
        view.applySessionDataArray(view.paintSession.dataArray());
        view.repaint();
    }
    const double rebuild = timer.nsecsElapsed() / 1e6 / 5;
    // Painting on: each repaint follows one more segment of the stroke under way.
    drag(view, QEvent::MouseButtonPress, QPointF(800, 600));
    double worst = 0;
    timer.restart();
    for (int i = 0; i < 200; ++i) {
        QElapsedTimer one;
        one.start();
        drag(view, QEvent::MouseMove, QPointF(800 + (i % 40) * 4, 600 + (i / 40) * 6));
        view.repaint();
        worst = std::max(worst, one.nsecsElapsed() / 1e6);
    }
    std::printf("repaint_ms %.2f worst %.2f rebuild %.1f segments %lld\n", timer.nsecsElapsed() / 1e6 / 200, worst,
                rebuild, qint64(view.paintSession.steps().size()));
    return 0;
}

int save(const QString &path)
{
    auto loaded = PictureLoader::load(path);
    if (!loaded.ok()) {
        std::fprintf(stderr, "%s\n", qPrintable(loaded.error().message));
        return 1;
    }
    EditedPicture picture(path, loaded.value());
    AKPaintView view;
    view.resize(1600, 1200);
    view.setPaintingEnabled(true);
    view.control().setLineWidth(12);
    paintSegments(view, 2000);
    QElapsedTimer timer;
    timer.start();
    const QImage layer = view.snapshotWithSize(picture.image().pixels.size());
    const double drawn = timer.nsecsElapsed() / 1e6;
    const auto bytes = picture.encodedForSaving(layer);
    const auto written = bytes.ok() ? PictureSaver::writeBeside(QFileInfo(path).absolutePath(), path, bytes.value())
                                    : Result<QString>(bytes.error());
    if (!written.ok()) {
        std::fprintf(stderr, "%s\n", qPrintable(written.error().message));
        return 1;
    }
    std::printf("save_ms %.1f layer %.1f\n", timer.nsecsElapsed() / 1e6, drawn);
    ::unlink(written.value().toLocal8Bit().constData());
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    Texts::setLanguage(QStringLiteral("en")); // as the program does before its first window
    const QString mode = argc > 1 ? QString::fromLatin1(argv[1]) : QString();
    const QString file = argc > 2 ? QString::fromLocal8Bit(argv[2]) : QString();
    if (mode == u"open" && !file.isEmpty())
        return open(file);
    if (mode == u"repaint")
        return repaint();
    if (mode == u"save" && !file.isEmpty())
        return save(file);
    std::fprintf(stderr, "usage: editor_probe open FILE | repaint | save FILE\n");
    return 2;
}

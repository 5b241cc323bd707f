// Renders the editor's pictures for the README: crop mode, paint mode with strokes, the resize popover,
// and a dark theme. Run under a display: scripts/screenshots.sh.

#include "EditorFixtures.h"
#include "EditorWindowFixtures.h"
#include "Screenshots.h"

#include "core/texts/Texts.h"
#include "editor/ui/AKPaintView.h"
#include "editor/ui/CropImgWC.h"
#include "editor/ui/CropView.h"
#include "editor/ui/ResizePopover.h"

#include <QApplication>
#include <QLineEdit>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace Screenshots;

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    const Shots shots(argc, argv);
    QTemporaryDir work;
    const QString photo = work.filePath(QStringLiteral("Harbour.jpg"));
    EditorFixtures::scenery(1800, 1200).save(photo, "jpg", 92);

    CropImgWC editor;
    EditorWindowFixtures::openAndWait(editor, photo);
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

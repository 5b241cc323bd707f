// Renders the editor's pictures for the README: crop mode, paint mode with strokes, the resize popover,
// and a dark theme. Run under a display: scripts/screenshots.sh.

#include "EditorFixtures.h"
#include "EditorWindowFixtures.h"

#include "core/texts/Texts.h"
#include "editor/ui/AKPaintView.h"
#include "editor/ui/CropImgWC.h"
#include "editor/ui/CropView.h"
#include "editor/ui/ResizePopover.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QScreen>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QStyle>
#include <QStyleFactory>
#include <QTemporaryDir>
#include <QTest>

namespace {

QString suffix; // "-de" for the German pictures

void settle(int ms = 200)
{
    QElapsedTimer t;
    t.start();
    while (t.elapsed() < ms)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
}

void save(QWidget *w, const QString &dir, const QString &name)
{
    settle();
    w->grab().save(dir + QLatin1Char('/') + name + suffix + QStringLiteral(".png"));
}

// The window with the popups over it, as the screen shows them.
void saveScreenArea(const QRect &area, const QString &dir, const QString &name)
{
    settle(300);
    QGuiApplication::primaryScreen()->grabWindow(0, area.x(), area.y(), area.width(), area.height())
        .save(dir + QLatin1Char('/') + name + suffix + QStringLiteral(".png"));
}

QPalette darkPalette()
{
    QPalette p;
    p.setColor(QPalette::Window, QColor(45, 45, 48));
    p.setColor(QPalette::WindowText, QColor(230, 230, 230));
    p.setColor(QPalette::Base, QColor(30, 30, 32));
    p.setColor(QPalette::Text, QColor(230, 230, 230));
    p.setColor(QPalette::Button, QColor(60, 60, 64));
    p.setColor(QPalette::ButtonText, QColor(230, 230, 230));
    p.setColor(QPalette::Highlight, QColor(90, 150, 240));
    p.setColor(QPalette::HighlightedText, Qt::white);
    p.setColor(QPalette::PlaceholderText, QColor(160, 160, 160));
    p.setColor(QPalette::Disabled, QPalette::ButtonText, QColor(120, 120, 120));
    p.setColor(QPalette::Disabled, QPalette::WindowText, QColor(120, 120, 120));
    return p;
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QStandardPaths::setTestModeEnabled(true);
    const QString language = argc > 2 ? QString::fromLatin1(argv[2]) : QStringLiteral("en");
    Texts::setLanguage(language);
    if (language != u"en")
        suffix = QLatin1Char('-') + language;
    const QString out = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QStringLiteral("docs/screenshots");
    QDir().mkpath(out);
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
    save(&editor, out, QStringLiteral("editor-crop"));

    // Paint mode with a few strokes.
    editor.setPaintMode(true);
    settle(100);
    editor.colorChanged(QColor(230, 40, 40));
    editor.brushSizeChanged(9);
    EditorWindowFixtures::stroke(editor.paintView, {{0.2, 0.3}, {0.25, 0.26}, {0.32, 0.24}, {0.4, 0.25}, {0.46, 0.3}, {0.44, 0.37}, {0.36, 0.4}, {0.26, 0.39}, {0.2, 0.34}, {0.21, 0.3}});
    editor.colorChanged(QColor(255, 230, 60));
    editor.brushSizeChanged(5);
    EditorWindowFixtures::stroke(editor.paintView, {{0.6, 0.62}, {0.66, 0.6}, {0.72, 0.63}, {0.78, 0.6}, {0.84, 0.63}});
    save(&editor, out, QStringLiteral("editor-paint"));

    // The resize popover under its button.
    editor.setPaintMode(false);
    editor.showResizePopOver();
    settle(200);
    editor.resizeimgPopover->resizeWTxtFld->setText(QStringLiteral("1200"));
    editor.controlTextDidChange(editor.resizeimgPopover->resizeWTxtFld);
    const QRect area = editor.frameGeometry().united(editor.resizeimgPopover->frameGeometry());
    saveScreenArea(area, out, QStringLiteral("editor-resize"));
    editor.resizeimgPopover->hide();

    app.setPalette(darkPalette());
    settle(200);
    editor.setPaintMode(true);
    save(&editor, out, QStringLiteral("editor-paint-dark"));
    return 0;
}

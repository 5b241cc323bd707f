// Drags inside Quaydrop's own windows never reach the drag watcher: on a real X server, with the real
// X11 watcher, the pointer (XTest, through xdotool) drags the convert overlay's slider and selects
// text in the resize overlay's field, and the panel with its overlay stays.

#include "core/controller/AppDelegate.h"
#include "core/overlays/ImgConvertOverlayVC.h"
#include "core/overlays/ImgResizeOverlayVC.h"
#include "core/window/ActionPanelView.h"
#include "core/window/DropWindow.h"
#include "gui/LaunchedProgram.h"
#include "platform/x11/X11Desktop.h"
#include "widgets/ActionButton.h"

#include <QImage>
#include <QLineEdit>
#include <QMimeData>
#include <QProcess>
#include <QSlider>
#include <QStandardPaths>
#include <QStyleOptionSlider>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

class OwnWindowsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        QStandardPaths::setTestModeEnabled(true);
        QVERIFY2(QGuiApplication::platformName() == QLatin1String("xcb"), "needs an X server (run under xvfb-run)");
        QVERIFY2(!QStandardPaths::findExecutable(QStringLiteral("xdotool")).isEmpty(), "xdotool is missing");
        m_x11 = X11Desktop::open();
        QVERIFY(m_x11);
    }

    void init()
    {
        m_fakes = std::make_unique<FakePlatform>(m_dir.path() + QStringLiteral("/.trash"));
        Platform services = m_fakes->services();
        services.dragPasteboard = m_x11->pasteboard.get();
        services.promisedFiles = m_x11->pasteboard.get();
        services.pointerMonitor = m_x11->pointer.get();
        services.windowSystem = m_x11->windows.get();
        m_app = launchedOn(services);
        // An image dropped on the window: its panel, as after a real drop.
        const QString image = m_dir.path() + QStringLiteral("/harbour.png");
        QImage picture(400, 300, QImage::Format_RGB32);
        picture.fill(Qt::darkCyan);
        QVERIFY(picture.save(image));
        m_app->showDropTargetAt(QPointF(600, 400));
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(image)});
        m_app->mycustomviewDidGetDrop(&data);
        QTRY_VERIFY(m_app->oneofThePanelsIsShown);
        QVERIFY(QTest::qWaitForWindowExposed(m_app->window));
    }

    void cleanup()
    {
        m_app.reset();
        SettingsStore::shared().resetAll();
    }

    void draggingTheSliderKeepsTheWindow()
    {
        openOverlay("revealImginFinderBtn"); // the convert button
        QSlider *slider = m_app->imgConvrtVC->compressFactorSlider;
        QTRY_VERIFY(slider->isVisible());
        QStyleOptionSlider option;
        option.initFrom(slider);
        option.minimum = slider->minimum();
        option.maximum = slider->maximum();
        option.sliderPosition = option.sliderValue = slider->value();
        option.orientation = slider->orientation();
        const QRect handle = slider->style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, slider);
        const int before = slider->value();
        // Right, far out of the slider and 100 points beyond the window: the slider still has the drag.
        dragWithThePointer(slider->mapToGlobal(handle.center()), 12, 0, 20);
        QVERIFY2(slider->value() != before, "the slider did not take the drag");
        QVERIFY2(m_app->windowIsVsbl(), "dragging the slider closed the window");
        QVERIFY(m_app->isModalOverlayVisible());
        QVERIFY(m_app->oneofThePanelsIsShown);
    }

    void selectingTextKeepsTheWindow()
    {
        openOverlay("resizeImgBtn");
        QLineEdit *field = m_app->imgResizeVC->widthTextField;
        QTRY_COMPARE(field->text(), QStringLiteral("400"));
        field->deselect();
        dragWithThePointer(field->mapToGlobal(QPoint(3, field->height() / 2)), 4, 0, 15);
        QCOMPARE(field->selectedText(), QStringLiteral("400"));
        QVERIFY2(m_app->windowIsVsbl(), "selecting text closed the window");
        QVERIFY(m_app->isModalOverlayVisible());
    }

private:
    // Presses at `at` (global), moves in `steps` small steps by (dx, dy) each, lets go: as a hand does.
    static void dragWithThePointer(QPoint at, int dx, int dy, int steps);
    static void xdotool(const QStringList &args);
    void openOverlay(const char *outlet);

    QTemporaryDir m_dir;
    std::unique_ptr<X11Desktop> m_x11;
    std::unique_ptr<FakePlatform> m_fakes;
    std::unique_ptr<AppDelegate> m_app;
};

void OwnWindowsTest::xdotool(const QStringList &args)
{
    QProcess process;
    process.start(QStringLiteral("xdotool"), args);
    QVERIFY(process.waitForFinished(5000) && process.exitCode() == 0);
}

void OwnWindowsTest::dragWithThePointer(QPoint at, int dx, int dy, int steps)
{
    // A warp moves the pointer without motion; the relative moves are real motion, seen by the watcher.
    xdotool({"mousemove", QString::number(at.x()), QString::number(at.y()), "mousedown", "1"});
    for (int i = 0; i < steps; ++i) {
        QTest::qWait(20);
        xdotool({"mousemove_relative", "--", QString::number(dx), QString::number(dy)});
    }
    QTest::qWait(100);
    xdotool({"mouseup", "1"});
    QTest::qWait(200);
}

void OwnWindowsTest::openOverlay(const char *outlet)
{
    ActionButton *button = m_app->panelView(DropPanelImage)->button(QString::fromLatin1(outlet));
    QVERIFY(button && button->isEnabled());
    const QPoint centre = button->mapToGlobal(button->rect().center());
    xdotool({"mousemove", QString::number(centre.x()), QString::number(centre.y()), "click", "1"});
    QTRY_VERIFY(m_app->isModalOverlayVisible());
}

QTEST_MAIN(OwnWindowsTest)
#include "tst_ownwindows.moc"

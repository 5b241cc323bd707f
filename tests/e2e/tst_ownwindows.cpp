// Drags inside Quaydrop's own windows never reach the drag watcher: on a real X server, with the real
// X11 watcher, the pointer (XTest, through xdotool) drags the convert overlay's slider and selects
// text in the resize overlay's field, and the panel with its overlay stays.

#include "core/overlays/ImgConvertOverlayVC.h"
#include "core/overlays/ImgResizeOverlayVC.h"
#include "core/window/ActionPanelView.h"
#include "gui/LaunchedProgram.h"
#include "platform/x11/X11Desktop.h"

#include <QLineEdit>
#include <QSlider>
#include <QStyleOptionSlider>

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
        f.launch({}, [this](Platform &services) {
            services.dragPasteboard = m_x11->pasteboard.get();
            services.promisedFiles = m_x11->pasteboard.get();
            services.pointerMonitor = m_x11->pointer.get();
            services.windowSystem = m_x11->windows.get();
        });
        // An image dropped on the window: its panel, as after a real drop.
        f.drop({f.file(QStringLiteral("harbour.png"), pngBytes(QSize(400, 300)))});
        QTRY_VERIFY(f.app->oneofThePanelsIsShown);
        QVERIFY(QTest::qWaitForWindowExposed(f.app->window));
    }
    void cleanup() { f.close(); }

    void draggingTheSliderKeepsTheWindow()
    {
        openOverlay("revealImginFinderBtn"); // the convert button
        QSlider *slider = f.app->imgConvrtVC->compressFactorSlider;
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
        QVERIFY2(f.app->windowIsVsbl(), "dragging the slider closed the window");
        QVERIFY(f.app->isModalOverlayVisible());
        QVERIFY(f.app->oneofThePanelsIsShown);
    }

    void selectingTextKeepsTheWindow()
    {
        openOverlay("resizeImgBtn");
        QLineEdit *field = f.app->imgResizeVC->widthTextField;
        QTRY_COMPARE(field->text(), QStringLiteral("400"));
        field->deselect();
        dragWithThePointer(field->mapToGlobal(QPoint(3, field->height() / 2)), 4, 0, 15);
        QCOMPARE(field->selectedText(), QStringLiteral("400"));
        QVERIFY2(f.app->windowIsVsbl(), "selecting text closed the window");
        QVERIFY(f.app->isModalOverlayVisible());
    }

private:
    void openOverlay(const char *outlet)
    {
        ActionButton *button = f.app->panelView(DropPanelImage)->button(QString::fromLatin1(outlet));
        QVERIFY(button && button->isEnabled());
        clickAt(button->mapToGlobal(button->rect().center()));
        QTRY_VERIFY(f.app->isModalOverlayVisible());
    }

    std::unique_ptr<X11Desktop> m_x11;
    LaunchedFixture f;
};

QTEST_MAIN(OwnWindowsTest)
#include "tst_ownwindows.moc"

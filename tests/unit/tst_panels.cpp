// The panels' table, their enabling rules and the window geometry, without a window.

#include "core/panels/PanelCatalog.h"
#include "core/panels/PanelFrame.h"
#include "core/panels/PanelRules.h"

#include <QTest>

using States = QHash<QString, ButtonState>;
Q_DECLARE_METATYPE(PanelInputs)

namespace {
PanelInputs inputs(bool lib, bool other, int images = 0, bool pdf = false, bool archive = false)
{
    PanelInputs in;
    in.firstPathIsArchive = archive;
    in.libraryFolderFile = lib;
    in.droppedImageFromOtherApp = other;
    in.imageCount = images;
    in.firstPathIsPdf = pdf;
    return in;
}
} // namespace

class PanelsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void enablingRules_data()
    {
        QTest::addColumn<quint64>("panel");
        QTest::addColumn<PanelInputs>("in");
        QTest::addColumn<QStringList>("enabled");
        QTest::addColumn<QStringList>("disabled");
        QTest::addColumn<QStringList>("hidden");

        const QStringList img = {"zipImgBtn", "createNewFImgBtn", "trashImgBtn", "revealImginFinderBtn"};
        QTest::newRow("image, library folder") << quint64(1) << inputs(true, false) << QStringList() << img << QStringList();
        QTest::newRow("image ignores OTHER") << quint64(1) << inputs(false, true) << img << QStringList() << QStringList();
        const QStringList doc = {"revealdocInFinderBtn", "zipDocBtn", "trashdocBtn", "createNewDocBtn"};
        QTest::newRow("document ignores OTHER") << quint64(2) << inputs(false, true) << doc << QStringList() << QStringList();
        const QStringList folder = {"trashFileBtn", "revealInFinderBtn", "zipBtn", "createNewBtn"};
        const QStringList pdfButtons = {"printPrTbleFileBtn", "convrtPDFToImgBtn"};
        QTest::newRow("folder, library") << quint64(333) << inputs(true, false) << QStringList() << folder << pdfButtons;
        QTest::newRow("folder named like a PDF") << quint64(333) << inputs(false, false, 0, true) << folder + pdfButtons
                                                 << QStringList() << QStringList();
        QTest::newRow("other file from another app") << quint64(777) << inputs(false, true) << QStringList{"zipBtn"}
                                                     << QStringList{"trashFileBtn", "createNewBtn"} << pdfButtons;
        QTest::newRow("other file, library") << quint64(777) << inputs(true, false) << QStringList()
                                             << QStringList{"trashFileBtn", "createNewBtn", "zipBtn"} << pdfButtons;
        QTest::newRow("archive is not zipped again") << quint64(777) << inputs(false, false, 0, false, true)
                                                     << QStringList{"trashFileBtn", "createNewBtn"} << QStringList{"zipBtn"}
                                                     << pdfButtons;
        QTest::newRow("PDF file") << quint64(777) << inputs(false, false, 0, true)
                                  << QStringList{"trashFileBtn", "createNewBtn", "zipBtn", "printPrTbleFileBtn", "convrtPDFToImgBtn"}
                                  << QStringList() << QStringList();
        const QStringList multi = {"moveToOneFoldBtn", "createFileMultiBtn", "trashMultiBtn", "revealInfinderMultibtn"};
        const QStringList imageButtons = {"multiConvrtImg", "multiResizeImg"};
        QTest::newRow("several, one image") << quint64(888) << inputs(false, false, 1) << multi + imageButtons << QStringList()
                                            << QStringList();
        QTest::newRow("several from another app") << quint64(888) << inputs(false, true, 3) << imageButtons << multi
                                                  << QStringList();
        QTest::newRow("text enables nothing") << quint64(222) << inputs(true, true) << QStringList() << QStringList()
                                              << QStringList();
    }
    void enablingRules()
    {
        QFETCH(quint64, panel);
        QFETCH(PanelInputs, in);
        QFETCH(QStringList, enabled);
        QFETCH(QStringList, disabled);
        QFETCH(QStringList, hidden);
        const States states = PanelRules::buttonStatesFor(DropPanel(panel), in);
        QCOMPARE(states.size(), enabled.size() + disabled.size() + hidden.size());
        for (const QString &b : enabled)
            QVERIFY2(states.value(b) == (ButtonState{true, true}), qPrintable(b));
        for (const QString &b : disabled)
            QVERIFY2(states.value(b) == (ButtonState{false, true}), qPrintable(b));
        for (const QString &b : hidden)
            QVERIFY2(states.value(b) == (ButtonState{false, false}), qPrintable(b));
    }
    void panel777KeepsWhatPanel333Left()
    {
        // The two share one view: applying 777 after a library folder on 333 leaves reveal off; zip
        // follows the file of 777 itself.
        States view;
        for (const PanelButtonSpec &spec : PanelCatalog::buttonsOf(DropPanelFolder))
            view.insert(QString::fromLatin1(spec.outlet), ButtonState{});
        auto apply = [&](DropPanel p, const PanelInputs &in) {
            const States changes = PanelRules::buttonStatesFor(p, in);
            for (auto it = changes.cbegin(); it != changes.cend(); ++it)
                view.insert(it.key(), it.value());
        };
        apply(DropPanelFolder, inputs(true, false));
        apply(DropPanelDefault, inputs(false, false));
        QCOMPARE(view.value("zipBtn").enabled, true);
        QCOMPARE(view.value("revealInFinderBtn").enabled, false);
        apply(DropPanelDefault, inputs(false, false, 0, false, true));
        apply(DropPanelDefault, inputs(false, false));
        QCOMPARE(view.value("zipBtn").enabled, true); // an archive before leaves nothing behind
        QCOMPARE(view.value("trashFileBtn").enabled, true);
    }
    void zipButtonFollowsARunningZip_data()
    {
        QTest::addColumn<quint64>("panel");
        QTest::addColumn<QString>("zipButton");
        QTest::newRow("folder") << quint64(333) << "zipBtn";
        QTest::newRow("several") << quint64(888) << "zipMultiBtn";
        QTest::newRow("image of another app has no check") << quint64(444) << "";
    }
    void zipButtonFollowsARunningZip()
    {
        QFETCH(quint64, panel);
        QFETCH(QString, zipButton);
        PanelInputs in = inputs(false, false);
        in.zipRunning = true;
        const States states = PanelRules::buttonStatesFor(DropPanel(panel), in);
        if (zipButton.isEmpty()) {
            QVERIFY(!states.contains("zipDrImgBtn"));
            return;
        }
        QCOMPARE(states.value(zipButton), (ButtonState{false, true}));
        in.zipRunning = false;
        QCOMPARE(PanelRules::buttonStatesFor(DropPanel(panel), in).value(zipButton, ButtonState{}).enabled, true);
    }
    void panelFrame_data()
    {
        QTest::addColumn<QRectF>("window");
        QTest::addColumn<qreal>("height");
        QTest::addColumn<QRectF>("visible");
        QTest::addColumn<QRectF>("expected");
        const QRectF screen(0, 0, 1440, 877);
        QTest::newRow("top-left corner kept") << QRectF(600, 400, 90, 90) << 235.0 << screen << QRectF(600, 255, 210, 235);
        QTest::newRow("move overlay height") << QRectF(600, 400, 90, 90) << 300.0 << screen << QRectF(600, 190, 210, 300);
        QTest::newRow("left edge clamped") << QRectF(-40, 400, 90, 90) << 235.0 << screen << QRectF(0, 255, 210, 235);
        QTest::newRow("bottom edge clamped") << QRectF(600, 10, 90, 90) << 235.0 << screen << QRectF(600, 0, 210, 235);
        QTest::newRow("right overflow shifted") << QRectF(1350, 400, 90, 90) << 235.0 << screen << QRectF(1230, 255, 210, 235);
        QTest::newRow("top overflow shifted") << QRectF(600, 800, 90, 90) << 235.0 << screen << QRectF(600, 642, 210, 235);
        QTest::newRow("visible frame above a dock") << QRectF(100, 20, 90, 90) << 235.0 << QRectF(0, 70, 1440, 807)
                                                    << QRectF(100, 70, 210, 235);
    }
    void panelFrame()
    {
        QFETCH(QRectF, window);
        QFETCH(qreal, height);
        QFETCH(QRectF, visible);
        QFETCH(QRectF, expected);
        QCOMPARE(PanelFrame::panelFrame(window, height, visible), expected);
    }
    void properWindowFrameToFit_data()
    {
        QTest::addColumn<QSizeF>("image");
        QTest::addColumn<QSizeF>("minSize");
        QTest::addColumn<qreal>("viewWidth");
        QTest::addColumn<QSizeF>("expected");
        // margin = 2 x (600/2 - 500/2) = 100; wide editor: scaled by width.
        QTest::newRow("wide editor, wide image") << QSizeF(1000, 500) << QSizeF(600, 500) << 500.0 << QSizeF(600, 500);
        QTest::newRow("wide editor, tall image") << QSizeF(500, 2000) << QSizeF(600, 500) << 500.0 << QSizeF(600, 2100);
        // Tall editor: scaled by height first, then by width when that made it wider than high.
        QTest::newRow("tall editor, tall image") << QSizeF(300, 600) << QSizeF(400, 700) << 300.0 << QSizeF(400, 700);
        QTest::newRow("tall editor, wide image") << QSizeF(1200, 600) << QSizeF(400, 700) << 300.0 << QSizeF(400, 700);
        QTest::newRow("tall editor, small tall image") << QSizeF(100, 400) << QSizeF(400, 700) << 300.0 << QSizeF(250, 700);
    }
    void properWindowFrameToFit()
    {
        QFETCH(QSizeF, image);
        QFETCH(QSizeF, minSize);
        QFETCH(qreal, viewWidth);
        QFETCH(QSizeF, expected);
        const QRectF r = PanelFrame::properWindowFrameToFit(image, minSize, viewWidth, QPointF(30, 40));
        QCOMPARE(r.topLeft(), QPointF(30, 40));
        QCOMPARE(r.size(), expected);
    }
};

QTEST_GUILESS_MAIN(PanelsTest)
#include "tst_panels.moc"

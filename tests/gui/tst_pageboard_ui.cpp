// The page board and the wallpaper overlay through the drop window: convert's Pages button opens the
// board with the dropped images; keys, buttons, drops and drags change it; the export writes, credits,
// notifies and closes it. The wallpaper button sets the picture through its copy and shows the history.

#include "ImageFixtures.h"
#include "LaunchedProgram.h"

#include "core/overlays/ImgConvertOverlayVC.h"
#include "core/overlays/WallpaperOverlayVC.h"
#include "images/board/LRHMPagesManager.h"
#include "images/board/PageThumbnails.h"
#include "images/board/ui/LRHMIKImageBrowserView.h"
#include "images/board/ui/PDFPreviewWC.h"
#include "images/board/ui/PageBoardModel.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>

class PageBoardUiTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { englishTestMode(); }

    void init() { f.launch(); }
    void cleanup()
    {
        f.close();
        LRHMPagesManager::shareImagesManager().cleanUpCache();
        QDir(Utils::QDappSupportPath()).removeRecursively();
    }

    void convertOpensTheBoardWithTheImages()
    {
        PDFPreviewWC *board = openBoard({image("b.jpg"), image("a.png", "png"), image("c.jpg")});
        QVERIFY(board);
        QVERIFY(board->isVisible());
        QVERIFY(!f.app->isModalOverlayVisible());
        QAbstractItemModel *model = board->imageBrowserView->model();
        QCOMPARE(model->rowCount(), 3);
        QCOMPARE(model->index(0, 0).data().toString(), QStringLiteral("b")); // in the order dropped
        QTRY_VERIFY_WITH_TIMEOUT(!model->index(2, 0).data(Qt::DecorationRole).value<QImage>().isNull(), 10000);
        QVERIFY(board->isCanExport && !board->isEnable);
        // Any other convert button empties an open board.
        f.app->imgConvrtCompletion(OverlayController::kCloseTag, 1.0f, 0);
        QCOMPARE(model->rowCount(), 0);
        QVERIFY(!board->isCanExport);
    }

    void keysButtonsAndDrops()
    {
        PDFPreviewWC *board = openBoard({image("1.jpg"), image("2.jpg"), image("3.jpg"), image("4.jpg")});
        LRHMIKImageBrowserView *view = board->imageBrowserView;
        auto *model = qobject_cast<PageBoardModel *>(view->model());
        auto rotateRight = board->findChild<QToolButton *>(QStringLiteral("rotateRightBtn"));
        QVERIFY(!rotateRight->isEnabled());
        view->setCurrentIndex(model->index(1, 0));
        QVERIFY(board->isEnable && rotateRight->isEnabled());
        const QString before = model->index(1, 0).data(PageBoardModel::IdentifyRole).toString();
        rotateRight->click();
        QCOMPARE(model->index(1, 0).data(PageBoardModel::IdentifyRole).toString(), before + QStringLiteral("_1"));
        QTRY_COMPARE_WITH_TIMEOUT(model->index(1, 0).data(Qt::DecorationRole).value<QImage>().size(), QSize(80, 120), 10000);

        // Dragging 2 and 4 before 1: the block keeps its order and stays selected.
        QMimeData *dragged = model->mimeData({model->index(1, 0), model->index(3, 0)});
        model->dropMimeData(dragged, Qt::MoveAction, 0, 0, {});
        delete dragged;
        QStringList order;
        for (int r = 0; r < model->rowCount(); ++r)
            order << model->index(r, 0).data().toString();
        QCOMPARE(order, (QStringList{"2", "4", "1", "3"}));
        QCOMPARE(view->selectedRows(), (QList<qsizetype>{0, 1}));

        // Files dropped in: only readable page images.
        QVERIFY(ImageFixtures::write(f.dir.path() + "/notes.txt", "text"));
        QVERIFY(ImageFixtures::write(f.dir.path() + "/broken.jpg", "\xFF\xD8 not really"));
        QMimeData files;
        files.setUrls({QUrl::fromLocalFile(image("5.PNG", "png")), QUrl::fromLocalFile(f.dir.path() + "/notes.txt"),
                       QUrl::fromLocalFile(f.dir.path() + "/broken.jpg")});
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression("broken.jpg left out"));
        model->dropMimeData(&files, Qt::CopyAction, -1, 0, {});
        QCOMPARE(model->rowCount(), 5);

        view->setFocus();
        QTest::keyClick(view, Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(view->selectedRows().size(), 5);
        view->selectionModel()->select(QItemSelection(model->index(0, 0), model->index(1, 0)), QItemSelectionModel::ClearAndSelect);
        QTest::keyClick(view, Qt::Key_Delete);
        QCOMPARE(model->rowCount(), 3);
        view->clearSelection();
        QTest::keyClick(view, Qt::Key_Delete); // nothing selected: a beep, nothing removed
        QCOMPARE(model->rowCount(), 3);
        QVERIFY(!board->isEnable);
    }

    void exportWritesCreditsAndCloses()
    {
        PDFPreviewWC *board = openBoard({image("x.jpg"), image("y.jpg")});
        const quint64 before = ledgerTotal();
        const QString pdf = f.dir.path() + QStringLiteral("/pdf_Quaydrop.pdf");
        QVERIFY(board->exportPdfTo(pdf));
        QVERIFY(f.notified(1));
        const auto &n = f.note();
        QCOMPARE(n.title, QStringLiteral("PDF saved!"));
        QCOMPARE(n.userInfo.value(QStringLiteral("filePaths")).toStringList(), QStringList{pdf});
        QCOMPARE(ledgerTotal(), before + 300);
        QVERIFY(QFileInfo(pdf).size() > 0);
        QTRY_VERIFY(!board->isVisible());
        QCOMPARE(LRHMPagesManager::shareImagesManager().pageImageCount(), 0);
    }

    void wallpaperButtonSetsTheCopyAndShowsTheHistory()
    {
        const QString earlier = image("earlier.jpg");
        f.fakes->wallpaper.current = earlier;
        f.drop({image("beach.jpg")});
        const quint64 before = ledgerTotal();
        f.button(QStringLiteral("deskPbtn"))->click();
        WallpaperOverlayVC *vc = f.app->wpChangeVC;
        QVERIFY(f.app->isModalOverlayVisible());
        QTRY_VERIFY_WITH_TIMEOUT(vc->oldWP1imgV->pixmap().width() > 0, 10000); // the present picture, first use
        QVERIFY(vc->setWP1toDesktopBtn->isEnabled() && !vc->setWP2toDesktopBtn->isEnabled());
        // A picture of the history goes to the share picker: here copied as a file link.
        vc->shareWP1Btn->click();
        QMenu *menu = nullptr;
        QTRY_VERIFY((menu = vc->shareWP1Btn->findChild<QMenu *>(QStringLiteral("sharePicker"))) != nullptr);
        QAction *links = menu->findChild<QAction *>(QStringLiteral("copy-links"));
        QVERIFY(links);
        links->trigger();
        menu->close();
        QCOMPARE(QFileInfo(QGuiApplication::clipboard()->mimeData()->urls().value(0).toLocalFile()).fileName(),
                 QStringLiteral("earlier.jpg"));
        for (QPushButton *b : vc->findChildren<QPushButton *>())
            if (b->property("tag").toLongLong() == WallpaperOverlayVC::kSetTag)
                b->click();
        QCOMPARE(f.fakes->wallpaper.current, Utils::pathForWPFolder() + QStringLiteral("/beach.jpg"));
        QCOMPARE(ledgerTotal(), before + 5);
        QVERIFY(!f.app->isModalOverlayVisible());
        // Back to the one before from the overlay's slot 1.
        f.button(QStringLiteral("deskPbtn"))->click();
        QTRY_VERIFY_WITH_TIMEOUT(vc->setWP1toDesktopBtn->isEnabled(), 10000);
        vc->setWP1toDesktopBtn->click();
        QCOMPARE(f.fakes->wallpaper.current, earlier);
    }

private:
    QString image(const QString &name, const char *format = "jpeg");
    PDFPreviewWC *openBoard(const QStringList &paths);

    LaunchedFixture f;
};

QString PageBoardUiTest::image(const QString &name, const char *format)
{
    return f.file(name, ImageFixtures::encoded(ImageFixtures::quarters(120, 80), format));
}

PDFPreviewWC *PageBoardUiTest::openBoard(const QStringList &paths)
{
    if (!f.dropAndPress(paths, QStringLiteral("multiConvrtImg")))
        return nullptr;
    f.app->imgConvrtVC->typeButton(ImgConvertOverlayVC::kPageBoardTag)->click();
    return qobject_cast<PDFPreviewWC *>(f.app->pdfPreview.data());
}

QTEST_MAIN(PageBoardUiTest)
#include "tst_pageboard_ui.moc"

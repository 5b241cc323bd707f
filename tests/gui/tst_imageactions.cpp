// The image and PDF actions through the window: the overlays' typing and keys, what each completion
// writes and credits, where results go, the password sheet, and the panel coming back afterwards; the
// page board the convert overlay opens, and the wallpaper overlay.

#include "ImageFixtures.h"
#include "LaunchedProgram.h"

#include "core/overlays/ImgConvertOverlayVC.h"
#include "core/overlays/ImgResizeOverlayVC.h"
#include "core/overlays/LockedPDFEnterPass.h"
#include "core/overlays/PdfToImgVC.h"
#include "core/overlays/WallpaperOverlayVC.h"
#include "core/window/ActionPanelView.h"
#include "images/board/LRHMPagesManager.h"
#include "images/board/PageThumbnails.h"
#include "images/board/ui/LRHMIKImageBrowserView.h"
#include "images/board/ui/PDFPreviewWC.h"
#include "images/board/ui/PageBoardModel.h"
#include "images/jobs/ConvertJob.h"

#include <QAction>

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QSlider>
#include <QToolButton>

class ImageActionsTest : public QObject
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

    void oneImagesFields()
    {
        QVERIFY(f.dropAndPress({image(QStringLiteral("wide.png"), 1000, 750)}, QStringLiteral("resizeImgBtn")));
        ImgResizeOverlayVC *vc = f.app->imgResizeVC;
        QVERIFY(f.app->isModalOverlayVisible());
        QCOMPARE(vc->widthTextField->text(), QStringLiteral("1000"));
        QCOMPARE(vc->heightTextField->text(), QStringLiteral("750"));
        QVERIFY(vc->cropRotateBtn->isEnabled());
        // The arrows step the focused field, and typing one side gives the other in proportion (the
        // rules' own cases are the resize plan's test).
        QTest::keyClick(vc->widthTextField, Qt::Key_Up);
        QCOMPARE(vc->widthTextField->text(), QStringLiteral("1001"));
        QCOMPARE(vc->heightTextField->text(), QStringLiteral("750")); // 750.75 truncated
        QTest::keyClick(vc->heightTextField, Qt::Key_Down);
        QCOMPARE(vc->widthTextField->text(), QStringLiteral("998")); // 998.67 truncated
        vc->heightTextField->clear();
        QTest::keyClicks(vc->heightTextField, QStringLiteral("375"));
        QCOMPARE(vc->widthTextField->text(), QStringLiteral("500"));
        // Unticked, the fields are independent; ticked again, the picture's size is back.
        vc->proportionCheckBox->setChecked(false);
        vc->heightTextField->setText(QStringLiteral("7"));
        vc->widthTextField->setText(QStringLiteral("10"));
        QTest::keyClicks(vc->widthTextField, QStringLiteral("0"));
        QCOMPARE(vc->heightTextField->text(), QStringLiteral("7"));
        vc->proportionCheckBox->setChecked(true);
        QCOMPARE(vc->widthTextField->text(), QStringLiteral("1000"));
        QCOMPARE(vc->heightTextField->text(), QStringLiteral("750"));
    }

    void nothingToDoWritesNothingAndSeveralImagesTakeOneSide()
    {
        // The size left as it is: closed, nothing credited.
        QVERIFY(f.dropAndPress({image(QStringLiteral("same.png"), 40, 20)}, QStringLiteral("resizeImgBtn")));
        ImgResizeOverlayVC *vc = f.app->imgResizeVC;
        const quint64 before = ledgerTotal();
        vc->doneBtn->click();
        QVERIFY(!f.app->isModalOverlayVisible());
        QCOMPARE(ledgerTotal(), before);
        // No size at all: the button's guard holds; Return goes without it, credited, nothing written.
        f.button(QStringLiteral("resizeImgBtn"))->click();
        vc->widthTextField->setText(QStringLiteral("0"));
        vc->heightTextField->clear();
        vc->doneBtn->click();
        QVERIFY(f.app->isModalOverlayVisible());
        QTest::keyClick(vc->widthTextField, Qt::Key_Return);
        QVERIFY(!f.app->isModalOverlayVisible());
        QCOMPARE(ledgerTotal(), before + 150);
        QTest::qWait(300);
        QVERIFY(f.fakes->notifications.delivered.isEmpty());
        QCOMPARE(QDir(f.dir.path()).entryList(QDir::Files).size(), 1);
        // Several images take one side only: the other is left empty, each picture keeps its proportions.
        QVERIFY(f.dropAndPress({image(QStringLiteral("w.png"), 100, 50), image(QStringLiteral("t.png"), 50, 100)},
                               QStringLiteral("multiResizeImg")));
        QVERIFY(vc->multiFilesMode());
        QCOMPARE(vc->widthTextField->text(), QString());
        QVERIFY(!vc->cropRotateBtn->isEnabled());
        QTest::keyClicks(vc->heightTextField, QStringLiteral("9"));
        QTest::keyClicks(vc->widthTextField, QStringLiteral("20"));
        QCOMPARE(vc->heightTextField->text(), QString());
        vc->doneBtn->click();
        QVERIFY(f.notified(1));
        QCOMPARE(Utils::getImageDimensionsAsStringImgPath(f.path(QStringLiteral("w_20x10.png"))), QStringLiteral("20x10"));
        QCOMPARE(Utils::getImageDimensionsAsStringImgPath(f.path(QStringLiteral("t_20x40.png"))), QStringLiteral("20x40"));
    }

    void resizeWritesBesideTheSourceOrToAStoredDestination()
    {
        const QString elsewhere = f.path(QStringLiteral("Exports"));
        QVERIFY(QDir().mkpath(elsewhere));
        Utils::updateMoveCopyPaths({elsewhere});
        QVERIFY(f.dropAndPress({image(QStringLiteral("Harbour.png"), 300, 200)}, QStringLiteral("resizeImgBtn")));
        QWidget *panel = f.app->window->contentView();
        const quint64 before = ledgerTotal();
        resizeTo(QStringLiteral("150"), QStringLiteral("100"));
        QVERIFY(f.app->emptyContviewIsShown);
        QVERIFY(f.notified(1));
        const QString output = f.path(QStringLiteral("Harbour_150x100.png"));
        QCOMPARE(told(f.note()), (QStringList{"Images resized", "Saved to /" + QFileInfo(f.dir.path()).fileName(), output}));
        QCOMPARE(Utils::getImageDimensionsAsStringImgPath(output), QStringLiteral("150x100"));
        QCOMPARE(ledgerTotal(), before + 150);
        QTRY_VERIFY(!f.app->emptyContviewIsShown);
        QCOMPARE(f.app->window->contentView(), panel); // back to the panel for the next action
        // Again, into a stored destination chosen in the overlay.
        f.button(QStringLiteral("resizeImgBtn"))->click();
        ImgResizeOverlayVC *vc = f.app->imgResizeVC;
        const int index = vc->destinationPop->findText(QStringLiteral("Exports"));
        QVERIFY(index > 0);
        vc->destinationPop->setCurrentIndex(index);
        QCOMPARE(vc->selectedDestinationPath(), elsewhere);
        resizeTo(QStringLiteral("8"), QStringLiteral("8"));
        QVERIFY(f.notified(2));
        QVERIFY(QFileInfo::exists(elsewhere + QStringLiteral("/Harbour_8x8.png")));
    }

    void imagesFromAnotherApplicationAskForAFolder()
    {
        const QString source = image(QStringLiteral("o.png"), 50, 50);
        f.drop({source});
        f.app->droppedImageFromOtherApp = true;
        Utils::updateMoveCopyPaths({f.dir.path()});
        f.button(QStringLiteral("resizeImgBtn"))->click();
        ImgResizeOverlayVC *vc = f.app->imgResizeVC;
        vc->destinationPop->setCurrentIndex(1); // ignored for such an image
        const quint64 before = ledgerTotal();
        resizeTo(QStringLiteral("10"), QStringLiteral("10"));
        QCOMPARE(ledgerTotal(), before + 200);
        QFileDialog *panel = nullptr;
        QTRY_VERIFY((panel = f.app->window->findChild<QFileDialog *>(QStringLiteral("chooseFolderPanel"))));
        QCOMPARE(panel->windowTitle(), QStringLiteral("Save result to…"));
        // It opens where a folder is, with its button ready: this test's home has no desktop folder.
        QVERIFY(panel->directory().exists());
        QDialogButtonBox *buttons = panel->findChild<QDialogButtonBox *>();
        QVERIFY(buttons && buttons->button(QDialogButtonBox::Open)->isEnabled());
        QVERIFY(f.app->isModalOverlayVisible()); // until a folder is chosen
        const QString chosen = f.path(QStringLiteral("chosen"));
        QVERIFY(QDir().mkpath(chosen));
        panel->selectFile(chosen);
        static_cast<QDialog *>(panel)->accept();
        QVERIFY(f.notified(1));
        QVERIFY(QFileInfo::exists(chosen + QStringLiteral("/o_10x10.png")));
        QVERIFY(!QFileInfo::exists(f.path(QStringLiteral("o_10x10.png"))));
    }

    void convertingSeveralImagesAndOne()
    {
        // One of them damaged behind a good header: it fails alone, named with its reason.
        const QString bad = f.file(QStringLiteral("worn.png"), ImageFixtures::damagedPng(ImageFixtures::picture(100, 100)));
        const QStringList images{image(QStringLiteral("one.png"), 20, 20), image(QStringLiteral("two.bmp"), 20, 20, "bmp"), bad,
                                 image(QStringLiteral("three.jpg"), 20, 20, "jpeg")};
        QVERIFY(f.dropAndPress(images, QStringLiteral("multiConvrtImg")));
        ImgConvertOverlayVC *vc = f.app->imgConvrtVC;
        QVERIFY(vc->mergeToPDFCheck->isEnabled());
        const quint64 before = ledgerTotal();
        vc->typeButton(2)->click();
        QVERIFY(f.notified(1));
        QCOMPARE(ledgerTotal(), before + 120); // 30 for each image
        QCOMPARE(told(f.note()).mid(2), QStringList({f.path("one.jpg"), f.path("two.jpg"), f.path("three 1.jpg")}));
        QCOMPARE(f.note().title, QStringLiteral("Images converted"));
        QVERIFY2(f.note().body.section(QLatin1Char('\n'), 1).startsWith(bad + ": "), qPrintable(f.note().body));

        // Merged into one PDF, named after the first image.
        f.button(QStringLiteral("multiConvrtImg"))->click();
        vc->mergeToPDFCheck->setChecked(true);
        vc->typeButton(ConvertJob::kPdfTag)->click();
        QVERIFY(f.notified(2));
        QCOMPARE(f.fakes->notifications.delivered.last().userInfo.value(QStringLiteral("filePaths")).toStringList(),
                 QStringList{f.path(QStringLiteral("one.pdf"))});
        // One image: nothing to merge; the slider snaps in steps, and the overlay hands on its factor.
        QVERIFY(f.dropAndPress({image(QStringLiteral("s.png"), 10, 10)}, QStringLiteral("revealImginFinderBtn")));
        QVERIFY(f.app->isModalOverlayVisible());
        QVERIFY(!vc->mergeToPDFCheck->isEnabled()); // one image: nothing to merge
        vc->compressFactorSlider->setValue(37);
        QCOMPARE(vc->compressFactorSlider->value(), 35);
        QCOMPARE(vc->comprFactorLbl->text(), QStringLiteral("35%"));
        float factor = -1;
        qint64 tag = -1;
        vc->setImgConvrtCompletion([&](qint64 t, float chosen, qint64) {
            tag = t;
            factor = chosen;
        });
        tagButton(vc, OverlayController::kCloseTag)->click();
        QCOMPARE(tag, OverlayController::kCloseTag);
        QCOMPARE(factor, 0.65f);
    }

    void pdfPagesAndTheirNotification()
    {
        const QString pdf = f.path(QStringLiteral("Invoice.pdf"));
        QVERIFY(ImageFixtures::pdfWithPages(pdf, {QSizeF(72, 72), QSizeF(144, 72)}));
        f.drop({pdf});
        ActionButton *toImages = f.button(QStringLiteral("convrtPDFToImgBtn"));
        QVERIFY(toImages && toImages->isVisible());
        toImages->click();
        PdfToImgVC *vc = f.app->pdfToImgConvVC;
        vc->DPItxtFld->setText(QStringLiteral("144"));
        const quint64 before = ledgerTotal();
        tagButton(vc, 1)->click();
        QVERIFY(f.notified(1));
        const QString folder = f.path(QStringLiteral("Invoice"));
        QCOMPARE(told(f.note()), (QStringList{"PDF pages saved as images", "Saved to /Invoice", folder}));
        QCOMPARE(Utils::getImageDimensionsAsStringImgPath(folder + QStringLiteral("/Page_2.png")), QStringLiteral("288x144"));
        QCOMPARE(ledgerTotal(), before + 20);
    }

    void lockedPdfAsksForItsPassword()
    {
        if (QStandardPaths::findExecutable(QStringLiteral("qpdf")).isEmpty())
            QSKIP("qpdf is missing: scripts/install-deps.sh installs it");
        const QString plain = f.path(QStringLiteral("plain.pdf"));
        const QString pdf = f.path(QStringLiteral("Locked.pdf"));
        QVERIFY(ImageFixtures::pdfWithPages(plain, {QSizeF(36, 36)}));
        QCOMPARE(QProcess::execute(QStringLiteral("qpdf"), {"--encrypt", "quay", "owner", "256", "--", plain, pdf}), 0);
        QVERIFY(f.dropAndPress({pdf}, QStringLiteral("convrtPDFToImgBtn")));
        auto sheet = [this] { return f.app->window->findChild<LockedPDFEnterPass *>(); };
        auto unlock = [&](const QString &password) {
            sheet()->pdfPassTxtFld->setText(password);
            sheet()->findChild<QPushButton *>(QStringLiteral("unlockBtn"))->click();
        };
        // Cancel: the overlay waits for another try.
        tagButton(f.app->pdfToImgConvVC, 2)->click();
        QTRY_VERIFY(sheet() && sheet()->isVisible());
        QCOMPARE(sheet()->pdfPassTxtFld->echoMode(), QLineEdit::Password);
        QVERIFY(!sheet()->wrongPassLbl->isVisible());
        sheet()->findChild<QPushButton *>(QStringLiteral("cancelBtn"))->click();
        QTRY_VERIFY(!f.app->enterLockedPDFPass);
        QVERIFY(f.app->isModalOverlayVisible());
        // A wrong password is said, and the same sheet takes the right one.
        tagButton(f.app->pdfToImgConvVC, 2)->click();
        QTRY_VERIFY(sheet() && sheet()->isVisible());
        unlock(QStringLiteral("wrong"));
        QVERIFY(sheet() && sheet()->isVisible());
        QVERIFY(sheet()->wrongPassLbl->isVisible());
        QCOMPARE(sheet()->wrongPassLbl->text(), QStringLiteral("This password does not open the PDF. Try again."));
        QVERIFY(!QFileInfo::exists(f.path(QStringLiteral("Locked"))));
        unlock(QStringLiteral("quay"));
        QTRY_VERIFY(!f.app->enterLockedPDFPass);
        QVERIFY(f.notified(1));
        QVERIFY(QFileInfo::exists(f.path(QStringLiteral("Locked/Page_1.jpg"))));
    }

    void textDocumentToPdf()
    {
        const QString txt = f.file(QStringLiteral("Notes.txt"), "Quay notes\nShips at dawn.\n");
        f.file(QStringLiteral("Notes.pdf"), "an older PDF of the user's");
        f.drop({txt});
        const quint64 before = ledgerTotal();
        f.button(QStringLiteral("convToPDFbtn"))->click();
        QCOMPARE(ledgerTotal(), before + 40);
        QVERIFY(f.notified(1));
        const QString made = f.path(QStringLiteral("Notes 1.pdf"));
        QCOMPARE(told(f.note()), (QStringList{"Saved as PDF", "to ../" + QFileInfo(f.dir.path()).fileName() + "/Notes 1.pdf", made}));
        QCOMPARE(f.bytesOf(f.path(QStringLiteral("Notes.pdf"))), QByteArray("an older PDF of the user's"));
        QVERIFY(f.bytesOf(made).startsWith("%PDF-"));
    }

    void failuresAreShown()
    {
        // An image whose data is damaged behind a good header: the panel opens, the resize fails.
        const QString bad = f.file(QStringLiteral("bad.png"), ImageFixtures::damagedPng(ImageFixtures::picture(100, 100)));
        QVERIFY(f.dropAndPress({bad}, QStringLiteral("resizeImgBtn")));
        resizeTo(QStringLiteral("10"), QStringLiteral("10"));
        QTRY_VERIFY_WITH_TIMEOUT(visibleAlert(), 20000);
        QString said = closedAlert();
        QVERIFY2(said.startsWith(QStringLiteral("Nothing was written: ")) && said.contains(QStringLiteral("bad.png")), qPrintable(said));
        QVERIFY(f.fakes->notifications.delivered.isEmpty());
        QVERIFY(!QFileInfo::exists(f.path(QStringLiteral("bad_10x10.png"))));

        // No image behind the name at all: no overlay at 0 x 0, but the reason.
        QVERIFY(f.dropAndPress({f.file(QStringLiteral("words.png"), "just words")}, QStringLiteral("resizeImgBtn")));
        QVERIFY(!f.app->isModalOverlayVisible());
        said = closedAlert();
        QVERIFY2(said.startsWith(QStringLiteral("The size of this image cannot be read: ")) && said.contains(QStringLiteral("words.png")), qPrintable(said));

        // A PDF that cannot be read: said, and the overlay stays for another choice.
        QVERIFY(f.dropAndPress({f.file(QStringLiteral("broken.pdf"), "%PDF-1.4 and then nothing")}, QStringLiteral("convrtPDFToImgBtn")));
        tagButton(f.app->pdfToImgConvVC, 1)->click();
        QVERIFY(f.app->isModalOverlayVisible());
        said = closedAlert();
        QVERIFY2(said.startsWith(QStringLiteral("This PDF cannot be read: ")) && said.contains(QStringLiteral("broken.pdf")), qPrintable(said));
        QVERIFY(!QFileInfo::exists(f.path(QStringLiteral("broken"))));
    }

    void convertOpensTheBoardWithTheImages()
    {
        PDFPreviewWC *board = openBoard({quarters("b.jpg"), quarters("a.png", "png"), quarters("c.jpg")});
        QVERIFY(board);
        QVERIFY(board->isVisible());
        QVERIFY(!f.app->isModalOverlayVisible());
        QAbstractItemModel *model = board->imageBrowserView->model();
        QCOMPARE(model->rowCount(), 3);
        QCOMPARE(model->index(0, 0).data().toString(), QStringLiteral("b")); // in the order dropped
        QTRY_VERIFY_WITH_TIMEOUT(!model->index(2, 0).data(Qt::DecorationRole).value<QImage>().isNull(), 10000);
        QVERIFY(board->isCanExport && !board->isEnable);
        // The export writes one PDF, credits, notifies and closes the board, letting go of its pages.
        const quint64 before = ledgerTotal();
        const QString pdf = f.dir.path() + QStringLiteral("/pdf_Quaydrop.pdf");
        QVERIFY(board->exportPdfTo(pdf));
        QVERIFY(f.notified(1));
        QCOMPARE(f.note().title, QStringLiteral("PDF saved!"));
        QCOMPARE(f.note().userInfo.value(QStringLiteral("filePaths")).toStringList(), QStringList{pdf});
        QCOMPARE(ledgerTotal(), before + 300);
        QVERIFY(QFileInfo(pdf).size() > 0);
        QTRY_VERIFY(!board->isVisible());
        QCOMPARE(LRHMPagesManager::shareImagesManager().pageImageCount(), 0);
    }

    void keysButtonsAndDrops()
    {
        PDFPreviewWC *board = openBoard({quarters("1.jpg"), quarters("2.jpg"), quarters("3.jpg"), quarters("4.jpg")});
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
        files.setUrls({QUrl::fromLocalFile(quarters("5.PNG", "png")), QUrl::fromLocalFile(f.dir.path() + "/notes.txt"),
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
        // Any other convert button empties an open board.
        f.app->imgConvrtCompletion(OverlayController::kCloseTag, 1.0f, 0);
        QCOMPARE(model->rowCount(), 0);
        QVERIFY(!board->isCanExport);
    }

    void wallpaperButtonSetsTheCopyAndShowsTheHistory()
    {
        const QString earlier = quarters("earlier.jpg");
        f.fakes->wallpaper.current = earlier;
        f.drop({quarters("beach.jpg")});
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
        tagButton(vc, WallpaperOverlayVC::kSetTag)->click();
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
    void resizeTo(const QString &width, const QString &height)
    {
        f.app->imgResizeVC->widthTextField->setText(width);
        f.app->imgResizeVC->heightTextField->setText(height);
        f.app->imgResizeVC->doneBtn->click();
    }
    QString image(const QString &name, int w, int h, const char *format = "png")
    {
        return f.file(name, ImageFixtures::encoded(ImageFixtures::picture(w, h), format));
    }

    QString quarters(const QString &name, const char *format = "jpeg")
    {
        return f.file(name, ImageFixtures::encoded(ImageFixtures::quarters(120, 80), format));
    }
    PDFPreviewWC *openBoard(const QStringList &paths)
    {
        if (!f.dropAndPress(paths, QStringLiteral("multiConvrtImg")))
            return nullptr;
        f.app->imgConvrtVC->typeButton(ImgConvertOverlayVC::kPageBoardTag)->click();
        return qobject_cast<PDFPreviewWC *>(f.app->pdfPreview.data());
    }

    LaunchedFixture f;
};

QTEST_MAIN(ImageActionsTest)
#include "tst_imageactions.moc"

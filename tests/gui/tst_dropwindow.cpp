// The drop window through its controller, offscreen: states, panels for what was dropped, the busy
// view, the overlay and its controllers, the title buttons, and the launch steps users notice.

#include "LaunchedProgram.h"
#include "TextFit.h"
#include "core/overlays/MoveFileViewController.h"
#include "core/overlays/ImgConvertOverlayVC.h"
#include "core/overlays/ImgResizeOverlayVC.h"
#include "core/overlays/OverlayControllers.h"
#include "core/overlays/WallpaperOverlayVC.h"
#include "core/overlays/PdfToImgVC.h"
#include "core/panels/PanelCatalog.h"
#include "core/window/ActionPanelView.h"
#include "core/window/BusyView.h"
#include "core/window/DropFilesHereView.h"
#include "core/window/DropView.h"
#include "core/overlays/LockedPDFEnterPass.h"
#include "fileops/ui/ConflictDialog.h"
#include "menubar/statusitem/CCNStatusItem.h"
#include "menubar/tutorial/MIHSliderView.h"
#include "menubar/tutorial/QDIntroSlides.h"

#include <QClipboard>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>


// One item dropped (a folder when the name ends in a slash), in the test's folder, the library folder
// or the folder where another application's files are kept: the panel, and its buttons that are on,
// shown but off, and hidden.
struct DroppedFile
{
    QString name;
    QByteArray bytes;
    QString where, panel;
    QStringList on, off, hidden;
};
Q_DECLARE_METATYPE(DroppedFile)

class DropWindowTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { englishTestMode(); }

    void init()
    {
        f.launch();
        f.app->showDropTargetAt(QPointF(400, 300));
    }

    void cleanup()
    {
        f.close();
        Texts::setLanguage(QStringLiteral("en"));
    }

    void severalFilesWithOneImage()
    {
        const QString image = f.file(QStringLiteral("one.png"), pngBytes());
        const QString other = f.file(QStringLiteral("first.bin"));
        f.drop({other, image});
        QCOMPARE(f.app->imgsOnlyPathsArr, QStringList{image});
        QVERIFY(!f.app->multiFilesActionPanelShown);
        QVERIFY(current()->button(QStringLiteral("multiResizeImg"))->isEnabled());
        f.app->orderOutTheWindow();
        QVERIFY(f.app->imgsOnlyPathsArr.isEmpty());
        QVERIFY(!f.app->multiFilesActionPanelShown);
    }

    void buttonsFollowTheFileAndWhereItIs_data()
    {
        QTest::addColumn<DroppedFile>("row");
        const QStringList pdf{"printPrTbleFileBtn", "convrtPDFToImgBtn"}, zip{"zipBtn"};
        const QString other = QStringLiteral("defaultActionPanel");
        QTest::newRow("PDF") << DroppedFile{"report.pdf", "%PDF-1.7\n%%EOF\n", "", other, pdf + zip, {}, {}};
        QTest::newRow("PDF without extension") << DroppedFile{"scan", "%PDF-1.4\n", "", other, pdf + zip, {}, {}};
        QTest::newRow("PDF after a mailer's junk") << DroppedFile{"mailed.pdf", "junk\r\n%PDF-1.4\n", "", other, pdf + zip, {}, {}};
        QTest::newRow("text named like a PDF") << DroppedFile{"fake.pdf", "just words", "", other, zip, {}, pdf};
        QTest::newRow("folder named like a PDF") << DroppedFile{"papers.pdf/", {}, "", other, zip, {}, pdf};
        QTest::newRow("archive") << DroppedFile{"photos.zip", "PK\x03\x04", "", other, {}, zip, pdf};
        // The test's folder lies below /tmp: a file there is the user's like any other.
        QTest::newRow("a file under /tmp") << DroppedFile{"under-tmp.bin", "x", "", other, {"trashFileBtn"}, {}, {}};
        // What another application handed out is kept in our own temp folder: not the user's to trash.
        QTest::newRow("handed out by another application") << DroppedFile{"handed-out.bin", "x", "temp", other, {}, {"trashFileBtn"}, {}};
        QTest::newRow("an image in the library folder")
            << DroppedFile{"icon.png", pngBytes(), "library", "imgActionPanel",
                           {"mailImgBtn", "shareImgBtn", "resizeImgBtn", "deskPbtn", "moveFileToBtn"},
                           {"zipImgBtn", "revealImginFinderBtn", "createNewFImgBtn", "trashImgBtn"}, {}};
    }

    void buttonsFollowTheFileAndWhereItIs()
    {
        QFETCH(DroppedFile, row);
        // The library folder is that of the real home, from the password database: a folder of our own
        // in it, removed again, with the library folder itself if the test made it.
        const QString library = Utils::checkAndReturnHomeFolderPath({}) + QStringLiteral("/Library");
        const bool madeLibrary = row.where == u"library" && !QFileInfo::exists(library);
        std::unique_ptr<QTemporaryDir> folder;
        if (row.where == u"library" && QDir().mkpath(library))
            folder = std::make_unique<QTemporaryDir>(library + QStringLiteral("/quaydrop-test-XXXXXX"));
        else if (row.where == u"temp")
            folder = std::make_unique<QTemporaryDir>(Utils::tempFileOperationsFolder() + QStringLiteral("/test-XXXXXX"));
        const QString path = (folder ? folder->path() : f.dir.path()) + QLatin1Char('/') + row.name;
        if (row.name.endsWith(QLatin1Char('/')))
            QVERIFY(QDir().mkpath(path));
        f.drop({row.name.endsWith(QLatin1Char('/')) ? path.chopped(1) : writtenFile(path, row.bytes)});
        folder.reset();
        if (madeLibrary)
            QDir().rmdir(library);
        QCOMPARE(current()->objectName(), row.panel);
        for (const QString &b : std::as_const(row.on))
            QVERIFY2(current()->button(b)->isVisible() && current()->button(b)->isEnabled(), qPrintable(b));
        for (const QString &b : std::as_const(row.off))
            QVERIFY2(current()->button(b)->isVisible() && !current()->button(b)->isEnabled(), qPrintable(b));
        for (const QString &b : std::as_const(row.hidden))
            QVERIFY2(!current()->button(b)->isVisible() && !current()->button(b)->isEnabled(), qPrintable(b));
    }

    void textPanelCountsAndRereads()
    {
        f.dropText(QStringLiteral("Ships leave, at dawn."));
        ActionPanelView *view = current();
        QCOMPARE(view->objectName(), QStringLiteral("stringDroppedActionPanel"));
        QCOMPARE(view->glyphCountLbl->text(), QStringLiteral("21"));
        QCOMPARE(view->wordsCountLbl->text(), QStringLiteral("4"));
        QCOMPARE(view->button(QStringLiteral("droppedStrToClipboardBtn"))->text(), QStringLiteral("Copy to clipboard"));
        QVERIFY(f.app->filePathsArr.isEmpty());
        f.dropText(QStringLiteral("two words"));
        QCOMPARE(view->glyphCountLbl->text(), QStringLiteral("9"));
        QCOMPARE(view->wordsCountLbl->text(), QStringLiteral("2"));
    }

    void windowStatesFollowTheTable_data()
    {
        // The busy view: a spinner up to a maximum of one, a bar beyond; its cancel when asked for.
        QTest::addColumn<double>("maximum");
        QTest::addColumn<bool>("cancellable");
        QTest::newRow("no maximum: spins") << 0.0 << false;
        QTest::newRow("exactly one: spins") << 1.0 << false;
        QTest::newRow("two: a bar") << 2.0 << false;
        QTest::newRow("ten: a bar with its cancel") << 10.0 << true;
    }

    void windowStatesFollowTheTable()
    {
        QFETCH(double, maximum);
        QFETCH(bool, cancellable);
        auto state = [this] {
            if (!f.app->windowIsVsbl())
                return QStringLiteral("Hidden");
            if (f.app->emptyContviewIsShown)
                return QStringLiteral("Busy");
            if (f.app->isModalOverlayVisible())
                return QStringLiteral("Overlay");
            return f.app->oneofThePanelsIsShown ? QStringLiteral("Panel") : QStringLiteral("DropTarget");
        };
        QCOMPARE(state(), QStringLiteral("DropTarget"));
        QVERIFY(!f.app->window->takesFocus()); // waiting for a drop never takes the focus
        f.app->showProcessingProgressLabelTxt(QStringLiteral("Loading"), 0.8, maximum, cancellable);
        QCOMPARE(state(), QStringLiteral("Busy"));
        // A second call while busy changes nothing: the text, the progress, the bar and its cancel stay.
        f.app->emptyContview->incrementBy(3);
        f.app->showProcessingProgressLabelTxt(QStringLiteral("second"), 1.0, maximum > 1 ? 0 : 10, !cancellable);
        QCOMPARE(f.app->emptyContview->emptyContviewLbl->text(), QStringLiteral("Loading"));
        QCOMPARE(f.app->emptyContview->value(), 3.0);
        QCOMPARE(f.app->emptyContview->isBar(), maximum > 1);
        QCOMPARE(f.app->emptyContview->isSpinning(), maximum <= 1);
        QCOMPARE(f.app->emptyContview->alpha(), 0.8);
        QCOMPARE(!f.app->emptyContview->cancelProgressBtn->isHidden() && f.app->emptyContview->cancelProgressBtn->isEnabled(), cancellable);
        f.app->filePathsArr = {f.file(QStringLiteral("f.bin"))};
        f.app->showPanelWithIndex(DropPanelDefault);
        QCOMPARE(state(), QStringLiteral("Panel"));
        f.app->moveToBtnAction();
        QCOMPARE(state(), QStringLiteral("Overlay"));
        QCOMPARE(f.app->window->height(), 300);
        f.app->closeVisibleModalOverlay();
        QCOMPARE(state(), QStringLiteral("Panel"));
        QCOMPARE(f.app->window->height(), 235);
        f.app->moveToBtnAction();
        f.app->orderOutTheWindow(); // from the overlay straight to hidden
        QCOMPARE(state(), QStringLiteral("Hidden"));
        QVERIFY(!f.app->isModalOverlayVisible());
        QVERIFY(!f.app->oneofThePanelsIsShown);
        f.app->showDropTargetAt(QPointF(400, 300));
        QCOMPARE(state(), QStringLiteral("DropTarget"));
        QCOMPARE(f.app->window->contentView(), static_cast<QWidget *>(f.app->dropFilesHereView));
    }

    void dpiFieldIsResetOutsideItsRange_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("shown");
        QTest::newRow("zero") << "0" << "150";
        QTest::newRow("above 1000") << "1001" << "150";
        QTest::newRow("below 72") << "71" << "150";
        QTest::newRow("72 stays") << "72" << "72";
        QTest::newRow("1000 stays") << "1000" << "1000";
        QTest::newRow("no number") << "abc" << "150";
    }

    void dpiFieldIsResetOutsideItsRange()
    {
        QFETCH(QString, typed);
        QFETCH(QString, shown);
        f.app->pdfToImgConvVC->DPItxtFld->setText(typed);
        f.app->showOverlayPanel(f.app->pdfToImgConvVC);
        QCOMPARE(f.app->pdfToImgConvVC->DPItxtFld->text(), shown);
    }

    void overlaysCloseByTheirButtonAndTheBackgroundButMove()
    {
        f.app->filePathsArr = {f.file(QStringLiteral("m.bin"))};
        f.app->showPanelWithIndex(DropPanelDefault);
        auto backgroundOf = [this] { return f.app->window->findChild<QWidget *>(QStringLiteral("JMOverlayView")); };
        const QList<OverlayController *> controllers = {f.app->renameFlsVC,  f.app->wpChangeVC,   f.app->imgShareVC,
                                                        f.app->pdfToImgConvVC, f.app->imgConvrtVC, f.app->imgResizeVC,
                                                        f.app->enterFolderNameVC, f.app->fileCreateVC};
        QSignalSpy missing(f.app.get(), &AppDelegate::actionNotAvailable);
        for (OverlayController *c : controllers) {
            f.app->showOverlayPanel(c);
            QVERIFY2(f.app->isModalOverlayVisible(), qPrintable(c->objectName()));
            QPushButton *close = tagButton(c, c->closeTag());
            QVERIFY2(close, qPrintable(c->objectName()));
            close->click();
            QVERIFY2(!f.app->isModalOverlayVisible(), qPrintable(c->objectName()));
            // A click outside the card closes it too (one on the card is the overlay's own: tst_widgets).
            f.app->showOverlayPanel(c);
            QTest::mouseClick(backgroundOf(), Qt::LeftButton, {}, QPoint(2, 2));
            QVERIFY2(!f.app->isModalOverlayVisible() && f.app->oneofThePanelsIsShown, qPrintable(c->objectName()));
        }
        QCOMPARE(missing.count(), 0); // closing is no missing action
        // The move overlay ignores the background; its way back closes it.
        f.app->moveToBtnAction();
        QTest::mouseClick(backgroundOf(), Qt::LeftButton, {}, QPoint(2, 2));
        QVERIFY(f.app->isModalOverlayVisible());
        f.app->moveFileVC->goBackBtn->click();
        QVERIFY(!f.app->isModalOverlayVisible());
    }

    void everyPanelButtonHasItsAction()
    {
        for (const DropPanel panel : {DropPanelImage, DropPanelDocument, DropPanelDefault, DropPanelString,
                                      DropPanelOtherAppImage, DropPanelMultiFiles})
            for (const PanelButtonSpec &button : PanelCatalog::buttonsOf(panel))
                QVERIFY2(AppDelegate::handlesAction(QString::fromLatin1(button.action)), button.action);
        QSignalSpy missing(f.app.get(), &AppDelegate::actionNotAvailable);
        f.app->performAction(QStringLiteral("noSuchAction"), nullptr);
        QCOMPARE(missing.count(), 1);
    }

    void notificationClickRevealsOrOpens()
    {
        f.fakes->notifications.delivered.append({QStringLiteral("t"), QStringLiteral("b"),
                                                {{QStringLiteral("filePaths"), QStringList{"/tmp/a", "/tmp/b"}}}});
        const QString archive = f.file(QStringLiteral("a.zip"));
        f.fakes->notifications.delivered.append({QStringLiteral("t"), QStringLiteral("b"),
                                                {{QStringLiteral("OpenPath"), archive}}});
        f.fakes->notifications.delivered.append({QStringLiteral("t"), QStringLiteral("b"), {}});
        f.fakes->notifications.click(0);
        f.fakes->notifications.click(1);
        f.fakes->notifications.click(2);
        QCOMPARE(f.fakes->workspace.revealed, (QList<QStringList>{{"/tmp/a", "/tmp/b"}}));
        QCOMPARE(f.fakes->workspace.opened, QStringList{archive});
        f.app->userNotificationCenterDidActivate({{QStringLiteral("OpenPath"), archive}}, 3);
        QCOMPARE(f.fakes->workspace.opened.size(), 1); // neither a click nor its button
    }

    void sizeAndPathButtonsAndKeys()
    {
        const QString file = f.file(QStringLiteral("path me.txt"), QByteArray(9000, 'q'));
        f.drop({file});
        // The size button is filled in the background.
        ActionButton *size = current()->button(QStringLiteral("sizeDocPanelBtn"));
        QTRY_COMPARE(size->text(), Utils::getTheSizeOfItemsInArr({file}));
        QVERIFY(!size->isBusy());
        ActionButton *path = current()->button(QStringLiteral("getPathDocBtn"));
        QCOMPARE(path->text(), Texts::localized("/path"));
        path->setFocus();
        QTest::keyClick(f.app->window, Qt::Key_Return); // Return presses the button that has the focus
        QTRY_COMPARE(QGuiApplication::clipboard()->text(), file);
        QCOMPARE(path->text(), QStringLiteral("Copied!"));
        QTRY_COMPARE_WITH_TIMEOUT(path->text(), Texts::localized("/path"), 2000);
        // A window that closed meanwhile keeps the copied title: nothing touches a hidden panel.
        path->click();
        f.app->orderOutTheWindow();
        QTest::qWait(700);
        QCOMPARE(path->text(), QStringLiteral("Copied!"));
        f.drop({file});
        // In an overlay Return presses its default button; Escape closes the overlay, then the window.
        qint64 tag = -1;
        f.app->renameFlsVC->setRenameCompletion([&](qint64 t, QString, QString, QString, QString) { tag = t; });
        f.app->renameFlsVC->destPathForRename = QFileInfo(file).absolutePath();
        f.app->showOverlayPanel(f.app->renameFlsVC);
        f.app->renameFlsVC->renameNameTF->setFocus();
        QTest::keyClicks(f.app->renameFlsVC->renameNameTF, QStringLiteral("x"));
        QTest::keyClick(f.app->renameFlsVC->renameNameTF, Qt::Key_Return);
        QTRY_COMPARE(tag, qint64(1)); // "Rename"
        QTest::keyClick(f.app->renameFlsVC->renameNameTF, Qt::Key_Escape);
        QVERIFY(!f.app->isModalOverlayVisible());
        QVERIFY(f.app->windowIsVsbl());
        QTest::keyClick(f.app->window, Qt::Key_Escape);
        QVERIFY(!f.app->windowIsVsbl());
        // Opened by the hot key, the waiting window takes the keys; opened by a drag it never does.
        SettingsStore::shared().setBool(SettingsKey::ShowPanelHKEnabled, true);
        f.app->showPanelHKNotif();
        QVERIFY(f.app->window->takesFocus()); // (Escape closing it on a real X server: e2e_summon)
        // On Wayland the pointer X11 last saw may be far away: the hot key's window is centred instead.
        QTest::keyClick(f.app->window, Qt::Key_Escape);
        qputenv("XDG_SESSION_TYPE", "wayland");
        f.app->showPanelHKNotif();
        qunsetenv("XDG_SESSION_TYPE");
        const QPointF centre = f.app->window->frameYUp().center();
        QVERIFY(QLineF(centre, DropWindow::screenFrameYUp(centre).center()).length() < 1.5);
    }

    void everyTextFits_data()
    {
        // Run once more at 200 %: the texts must fit at both scales (ctest's tst_dropwindow_texts_200).
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("view");
        for (const char *language : {"en", "de"})
            for (const char *view : {"drop target", "drop target, hovered", "image", "document", "folder", "PDF", "several files",
                                     "text", "image from an application", "busy", "quick move", "move", "resize", "convert",
                                     "PDF to images", "rename", "folder name", "new file", "wallpaper", "share", "password",
                                     "name clash", "options", "slides"})
                QTest::addRow("%s, %s", language, view) << QString::fromLatin1(language) << QString::fromLatin1(view);
    }

    void everyTextFits()
    {
        QFETCH(QString, language);
        QFETCH(QString, view);
        Texts::setLanguage(language);
        QCoreApplication::processEvents(); // every open window takes the language
        const QString image = f.file(QStringLiteral("Hafenbild.png"), pngBytes(QSize(64, 48)));
        const QString pdf = f.file(QStringLiteral("Rechnung.pdf"), "%PDF-1.4\n%%EOF\n");
        QDir(f.dir.path()).mkpath(QStringLiteral("Projekte"));
        const QMap<QString, QStringList> drops = {
            {"image", {image}}, {"document", {f.file(QStringLiteral("Notizen.txt"))}}, {"folder", {f.dir.path() + "/Projekte"}},
            {"PDF", {pdf}}, {"several files", {image, pdf, f.dir.path() + "/Projekte"}}};
        const QMap<QString, OverlayController *> overlays = {
            {"move", f.app->moveFileVC}, {"resize", f.app->imgResizeVC}, {"convert", f.app->imgConvrtVC},
            {"PDF to images", f.app->pdfToImgConvVC}, {"rename", f.app->renameFlsVC}, {"folder name", f.app->enterFolderNameVC},
            {"new file", f.app->fileCreateVC}, {"wallpaper", f.app->wpChangeVC}, {"share", f.app->imgShareVC}};
        QWidget *shown = f.app->window;
        std::unique_ptr<QWidget> own; // a window of its own for this row
        if (view == u"drop target, hovered") {
            QMimeData files;
            files.setUrls({QUrl::fromLocalFile(image)});
            for (DropView *target : {f.app->dropFilesHereView->dropQuickMoveView, f.app->dropFilesHereView->createAliasDropView}) {
                QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction | Qt::LinkAction, &files, Qt::LeftButton, {});
                QApplication::sendEvent(target, &enter);
            }
        } else if (drops.contains(view)) {
            f.drop(drops.value(view));
        } else if (view == u"text") {
            f.dropText(QStringLiteral("Schiffe verlassen den Kai im Morgengrauen."));
        } else if (view == u"image from an application") {
            QMimeData data;
            data.setData(QStringLiteral("image/png"), pngBytes(QSize(64, 48)));
            f.app->mycustomviewDidGetDrop(&data);
        } else if (view == u"busy") {
            f.app->applyPanelFrame(PanelCatalog::kPanelHeight); // as every drop does before
            f.app->showProcessingProgressLabelTxt(Texts::localized("Converting"), 0.8, 0, true);
        } else if (view == u"quick move") {
            f.app->filePathsArr = {image};
            f.app->showQuickMovePanel();
        } else if (overlays.contains(view)) {
            f.drop({image});
            if (view == u"move")
                f.app->moveToBtnAction();
            else
                f.app->showOverlayPanel(overlays.value(view));
            QVERIFY(f.app->isModalOverlayVisible());
        } else if (view == u"password") {
            auto *sheet = new LockedPDFEnterPass(QStringLiteral("Rechnung.pdf"), [](const QString &) { return false; }, f.app->window);
            own.reset(sheet);
            sheet->show();
            sheet->findChild<QPushButton *>(QStringLiteral("unlockBtn"))->click(); // with the wrong-password line
        } else if (view == u"name clash") {
            own = std::make_unique<ConflictDialog>(ConflictQuestion{QStringLiteral("Hafenbild.png"), {}, {}});
            own->show();
        } else if (view == u"options") {
            f.app->statusItem()->windowController()->showStatusItemWindow(QRect(600, 0, 24, 24), QRect(0, 0, 1280, 800));
            shown = f.app->statusItem()->windowController()->window();
        } else if (view == u"slides") {
            auto *slides = new QDIntroSlides;
            own.reset(slides);
            slides->sliderView->transitionAnimationDuration = 0;
            slides->show();
            QStringList problems;
            for (int i = 0; i < slides->sliderView->slides().size(); ++i) {
                slides->sliderView->displaySlideAtIndex(i);
                QCoreApplication::processEvents();
                problems += clippedTexts(slides);
            }
            QVERIFY2(problems.isEmpty(), qPrintable(problems.join(QLatin1Char('\n'))));
            return;
        }
        if (own)
            shown = own.get();
        QTRY_VERIFY(shown->isVisible());
        QCoreApplication::processEvents();
        const QStringList problems = clippedTexts(shown);
        QVERIFY2(problems.isEmpty(), qPrintable(problems.join(QLatin1Char('\n'))));
    }

private:
    ActionPanelView *current() const { return qobject_cast<ActionPanelView *>(f.app->window->contentView()); }

    LaunchedFixture f;
};

QTEST_MAIN(DropWindowTest)
#include "tst_dropwindow.moc"

// The crop and rotate editor's window, offscreen: opening, the number fields' rules, the keys, quarter
// turns swapping the fields, crops in pixels, the resize popover, revert (also when the file is gone),
// a one-pixel picture, files that are refused; saving beside the source under free names or through
// the save dialog, the notification, closing after a save, undo and redo of strokes, strokes kept
// through a window resize, a second picture waiting for unsaved changes, a folder that cannot be
// written, sharing, and the way in from the image panel's crop button.

#include "EditorWindowFixtures.h"
#include "ImageFixtures.h"
#include "LaunchedProgram.h"

#include "core/overlays/ImgResizeOverlayVC.h"
#include "editor/ui/AKPaintView.h"
#include "editor/ui/CropImgWC.h"
#include "editor/ui/CropSuper.h"
#include "editor/ui/CropView.h"
#include "editor/ui/ResizePopover.h"
#include "widgets/Spinner.h"

#include <QCheckBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QUndoStack>

#include <unistd.h>

using namespace ImageFixtures;
using namespace EditorWindowFixtures;

namespace {

void typeInto(QLineEdit *field, const QString &text)
{
    field->setFocus();
    field->selectAll();
    if (text.isEmpty())
        QTest::keyClick(field, Qt::Key_Backspace);
    else
        QTest::keyClicks(field, text);
}

QStringList filesIn(const QString &folder)
{
    return QDir(folder).entryList(QDir::Files | QDir::Hidden, QDir::Name);
}

void closeAlerts()
{
    while (QMessageBox *box = visibleAlert())
        box->done(0);
}

// Saves what the editor shows and waits for it; the path written, empty when nothing was.
QString savedAndWaited(CropImgWC &editor)
{
    QSignalSpy saved(&editor, &CropImgWC::saved);
    editor.saveCropRotateResult();
    return saved.wait(10000) ? saved.first().first().toString() : QString();
}

// What every case starts from: fake services that offer one share target, a photo of four coloured
// quarters, and the editor open on it, left open after a save.
struct EditorCase : LaunchedFixture
{
    std::unique_ptr<CropImgWC> editor;
    QString photo;

    QString image(const QString &name, const QImage &picture, const char *format = "png") const
    {
        return file(name, ImageFixtures::encoded(picture, format, 72, 95));
    }
    bool open()
    {
        launch([](FakePlatform &fakes) { fakes.share.targets = {{QStringLiteral("kdeconnect:abc"), QStringLiteral("Pixel 7"), {}}}; });
        photo = image(QStringLiteral("photo.png"), ImageFixtures::quarters(800, 600));
        editor = std::make_unique<CropImgWC>();
        editor->closeWindafterSaveCheckbox->setChecked(false);
        return openAndWait(*editor, photo);
    }
    void close()
    {
        closeAlerts();
        editor.reset();
        LaunchedFixture::close();
    }
};

} // namespace

struct KeyPress
{
    int key, modifiers;
    QSize picture;
    QPointF moved; // of the small frame's origin
};
Q_DECLARE_METATYPE(KeyPress)

class EditorTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { englishTestMode(); }
    void init() { QVERIFY(c.open()); }
    void cleanup() { c.close(); }

    void openingShowsThePictureAndItsSize()
    {
        CropImgWC &e = *c.editor;
        QCOMPARE(e.windowTitle(), QStringLiteral("photo.png"));
        QCOMPARE(e.cropSizeWidthTF->text(), QStringLiteral("800"));
        QCOMPARE(e.cropSizeHeightTF->text(), QStringLiteral("600"));
        QVERIFY(e.origSizeLbl->text().contains(QStringLiteral("800x600")));
        QCOMPARE(e.pixelSize(), QSize(800, 600));
        QVERIFY(!e.isPaintMode());
        QVERIFY(e.imgCropView->isVisible());
        QVERIFY(!e.hasUnsavedChanges());
        // The frame covers the picture, its crop rectangle exactly the picture's edges.
        QCOMPARE(e.imgCropView->frameYUp(), e.boundsFrameForCropView());
        QCOMPARE(e.imgCropView->frameYUp().adjusted(5, 5, -5, -5), e.getImgRectInsideImgView());
        // The paint layer lies over the picture, and the markup button is not offered.
        QCOMPARE(QRectF(e.paintView->geometry()), e.cropSuper->fromYUp(e.getImgRectInsideImgView()).toRect());
        QVERIFY(e.markupbtn->isHidden());
        QVERIFY(!e.drawingTbox->isHidden());
    }

    void sizeFields_data()
    {
        QTest::addColumn<QString>("field"); // width or height
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("shown");
        QTest::newRow("a digit too many is taken back") << "width" << "8005" << "800";
        QTest::newRow("taken back and still too large") << "height" << "6009" << "600";
        QTest::newRow("emptied refills with the maximum") << "height" << "" << "600";
        QTest::newRow("a smaller width") << "width" << "400" << "400";
    }

    void sizeFields()
    {
        QFETCH(QString, field);
        QFETCH(QString, typed);
        QFETCH(QString, shown);
        CropImgWC &e = *c.editor;
        QLineEdit *edit = field == u"width" ? e.cropSizeWidthTF : e.cropSizeHeightTF;
        typeInto(edit, typed);
        QCOMPARE(edit->text(), shown);
        // The frame takes the typed size, its bottom left corner kept.
        const QRectF bounds = e.boundsFrameForCropView();
        QCOMPARE(e.imgCropView->frameYUp().topLeft(), bounds.topLeft());
        QCOMPARE(e.getcropImgSizeDimensions(), e.cropSizeWidthTF->text() + QLatin1Char('x') + e.cropSizeHeightTF->text());
    }

    void arrowKeysStepTheFields()
    {
        CropImgWC &e = *c.editor;
        typeInto(e.cropSizeWidthTF, QStringLiteral("500"));
        QTest::keyClick(e.cropSizeWidthTF, Qt::Key_Up);
        QCOMPARE(e.cropSizeWidthTF->text(), QStringLiteral("501"));
        QTest::keyClick(e.cropSizeWidthTF, Qt::Key_Down);
        QCOMPARE(e.cropSizeWidthTF->text(), QStringLiteral("500"));
        // The brush field keeps within the slider.
        e.setPaintMode(true);
        typeInto(e.brusSizeLbl, QStringLiteral("250"));
        QCOMPARE(e.brusSizeLbl->text(), QString::number(e.brushSizeSlider->maximum()));
        typeInto(e.brusSizeLbl, QStringLiteral("12"));
        QTest::keyClick(e.brusSizeLbl, Qt::Key_Up);
        QCOMPARE(e.brusSizeLbl->text(), QStringLiteral("13"));
        QCOMPARE(e.brushSizeSlider->value(), 13);
    }

    void keys_data()
    {
        QTest::addColumn<KeyPress>("row");
        QTest::newRow("right nudges a point") << KeyPress{int(Qt::Key_Right), int(Qt::NoModifier), QSize(800, 600), QPointF(1, 0)};
        QTest::newRow("up nudges a point") << KeyPress{int(Qt::Key_Up), int(Qt::NoModifier), QSize(800, 600), QPointF(0, 1)};
        QTest::newRow("left at the edge stays") << KeyPress{int(Qt::Key_Left), int(Qt::NoModifier), QSize(800, 600), QPointF(0, 0)};
        QTest::newRow("return crops") << KeyPress{int(Qt::Key_Return), int(Qt::NoModifier), QSize(400, 300), QPointF()};
        QTest::newRow("ctrl+right turns") << KeyPress{int(Qt::Key_Right), int(Qt::ControlModifier), QSize(600, 800), QPointF()};
        QTest::newRow("ctrl+left turns") << KeyPress{int(Qt::Key_Left), int(Qt::ControlModifier), QSize(600, 800), QPointF()};
    }

    void keys()
    {
        QFETCH(KeyPress, row);
        const auto &[key, modifiers, picture, moved] = row;
        CropImgWC &e = *c.editor;
        typeInto(e.cropSizeWidthTF, QStringLiteral("400"));
        typeInto(e.cropSizeHeightTF, QStringLiteral("300"));
        const QPointF before = e.imgCropView->frameYUp().topLeft();
        e.imgCropView->setFocus();
        QTest::keyClick(e.imgCropView, Qt::Key(key), Qt::KeyboardModifiers(modifiers));
        QCOMPARE(e.pixelSize(), picture);
        if (!moved.isNull() || picture == QSize(800, 600))
            QCOMPARE(e.imgCropView->frameYUp().topLeft(), before + moved);
    }

    void turnsSwapTheFieldsAndFitTheFrame()
    {
        CropImgWC &e = *c.editor;
        typeInto(e.cropSizeWidthTF, QStringLiteral("300"));
        e.rotateBy90right();
        QCOMPARE(e.pixelSize(), QSize(600, 800));
        QCOMPARE(e.cropSizeWidthTF->text(), QStringLiteral("600"));
        QCOMPARE(e.cropSizeHeightTF->text(), QStringLiteral("800"));
        QCOMPARE(e.imgCropView->frameYUp(), e.boundsFrameForCropView()); // the former frame is dropped
        QVERIFY(sameQuarters(e.picture.image().pixels, quarters(800, 600).transformed(QTransform().rotate(90))));
        e.rotateBy90Left();
        e.rotateBy90Left();
        QVERIFY(sameQuarters(e.picture.image().pixels, quarters(800, 600).transformed(QTransform().rotate(-90))));
        QVERIFY(e.hasUnsavedChanges());
    }

    void cropsWholePixels_data()
    {
        QTest::addColumn<int>("alignment");
        QTest::addColumn<QRect>("rows"); // of the source, y down
        QTest::newRow("fitted corner: bottom left") << -1 << QRect(0, 300, 400, 300);
        QTest::newRow("top right") << 4 << QRect(400, 0, 400, 300);
        QTest::newRow("centre") << 0 << QRect(200, 150, 400, 300);
    }

    void cropsWholePixels()
    {
        QFETCH(int, alignment);
        QFETCH(QRect, rows);
        CropImgWC &e = *c.editor;
        const QImage source = e.picture.image().pixels.convertToFormat(QImage::Format_RGB32);
        typeInto(e.cropSizeWidthTF, QStringLiteral("400"));
        typeInto(e.cropSizeHeightTF, QStringLiteral("300"));
        if (alignment >= 0)
            e.changeCropAlignment(alignment);
        QCOMPARE(e.getcropImgSizeDimensions(), QStringLiteral("400x300"));
        e.cropImage();
        QCOMPARE(e.pixelSize(), QSize(400, 300));
        QCOMPARE(e.picture.image().pixels.convertToFormat(QImage::Format_RGB32), source.copy(rows));
        // The fields keep what was cropped to; the frame covers the new picture.
        QCOMPARE(e.cropSizeWidthTF->text(), QStringLiteral("400"));
        QCOMPARE(e.imgCropView->frameYUp(), e.boundsFrameForCropView());
    }

    void resizePopoverKeepsProportions()
    {
        CropImgWC &e = *c.editor;
        QTest::keyClick(&e, Qt::Key_R, Qt::ControlModifier);
        ResizePopover *pop = e.resizeimgPopover;
        QVERIFY(pop->isShown());
        QCOMPARE(pop->resizeWTxtFld->text(), QStringLiteral("800"));
        typeInto(pop->resizeWTxtFld, QStringLiteral("400"));
        QCOMPARE(pop->resizeHtxtFld->text(), QStringLiteral("300"));
        QTest::keyClick(pop->resizeHtxtFld, Qt::Key_Up);
        QCOMPARE(pop->resizeHtxtFld->text(), QStringLiteral("301"));
        QCOMPARE(pop->resizeWTxtFld->text(), QStringLiteral("401"));
        pop->proportionCheckBox->setChecked(false);
        typeInto(pop->resizeHtxtFld, QStringLiteral("100"));
        QCOMPARE(pop->resizeWTxtFld->text(), QStringLiteral("401"));
        QTest::keyClick(pop->resizeHtxtFld, Qt::Key_Return);
        QVERIFY(!pop->isShown());
        QCOMPARE(e.pixelSize(), QSize(401, 100));
        QCOMPARE(e.cropSizeWidthTF->text(), QStringLiteral("401"));
        QCOMPARE(e.cropSizeHeightTF->text(), QStringLiteral("100"));
        QVERIFY(!e.picture.onlyTurned());
    }

    void revertGoesBackToTheFile()
    {
        CropImgWC &e = *c.editor;
        e.rotateBy90right();
        e.setPaintMode(true);
        stroke(e.paintView, {{0.2, 0.2}, {0.6, 0.5}});
        QTest::keyClick(&e, Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(e.pixelSize(), QSize(800, 600));
        QVERIFY(!e.paintView->hasDrawings());
        QCOMPARE(e.cropSizeWidthTF->text(), QStringLiteral("800"));
        QVERIFY(!e.hasUnsavedChanges());
        // The strokes come back with an undo: a revert does not touch the undo history.
        e.undoPressed();
        e.redoPressed();
        QVERIFY(e.paintView->hasDrawings());
        // With the file gone the picture stays as it is, which is said, and saving works from memory.
        e.setPaintMode(false);
        e.rotateBy90right();
        QVERIFY(QFile::remove(c.photo));
        e.revertCropChanges();
        QVERIFY(closedAlert().startsWith(Texts::localized("origImgNotFoundTitle") + ": "));
        QCOMPARE(e.pixelSize(), QSize(600, 800));
        QCOMPARE(QImage(savedAndWaited(e)).size(), QSize(600, 800));
    }

    void onePixelPicture()
    {
        CropImgWC &e = *c.editor;
        QVERIFY(openAndWait(e, c.image(QStringLiteral("dot.png"), picture(1, 1))));
        QCOMPARE(e.imgCropView->frameYUp().size(), QSizeF(11, 11));
        e.cropImage();
        e.rotateBy90right();
        QCOMPARE(e.pixelSize(), QSize(1, 1));
        QCOMPARE(QImage(savedAndWaited(e)).size(), QSize(1, 1));
    }

    void refusedFilesAreSaid_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QByteArray>("bytes");
        // (Which files are refused, and why, is the picture's own test's: here how the window says it.)
        QTest::newRow("not an image") << "notes.png" << QByteArray("plain words\n");
        QTest::newRow("claims 60000 x 60000") << "huge.png" << pngClaiming(60000, 60000);
    }

    void refusedFilesAreSaid()
    {
        QFETCH(QString, name);
        QFETCH(QByteArray, bytes);
        const QString path = c.dir.filePath(name);
        QVERIFY(write(path, bytes));
        CropImgWC fresh;
        fresh.openImage(path, false, false);
        QVERIFY(!fresh.isVisible());
        const QString said = closedAlert();
        QVERIFY2(said.startsWith(Texts::localized("editorOpenFailedTitle") + ": ") && said.contains(name), qPrintable(said));
        // The window already open keeps its picture.
        c.editor->openImage(path, false, false);
        QCOMPARE(c.editor->windowTitle(), QStringLiteral("photo.png"));
    }

    void savesBesideTheSourceUnderFreeNames()
    {
        CropImgWC &e = *c.editor;
        e.rotateBy90Left();
        QSignalSpy saved(&e, &CropImgWC::saved);
        QSignalSpy closed(&e, &CropImgWC::closed);
        QTest::keyClick(&e, Qt::Key_S, Qt::ControlModifier);
        QVERIFY(saved.wait(10000));
        e.saveCropRotateResult();
        QVERIFY(saved.wait(10000));
        QCOMPARE(saved.at(0).first().toString(), c.dir.filePath(QStringLiteral("_Quaydrop-photo.png")));
        QCOMPARE(saved.at(1).first().toString(), c.dir.filePath(QStringLiteral("_Quaydrop-photo 1.png")));
        QCOMPARE(QImage(saved.at(0).first().toString()).size(), QSize(600, 800));
        QVERIFY(!e.hasUnsavedChanges());
        QVERIFY(!e.saveProgrIndic->isSpinning());
        // The notification names the folder and the file, and shows it on a click.
        QCOMPARE(c.fakes->notifications.delivered.size(), 2);
        QCOMPARE(told(c.fakes->notifications.delivered.first()),
                 (QStringList{Texts::localized("imgSaved"), "to ../" + QDir(c.dir.path()).dirName() + "/_Quaydrop-photo.png",
                              saved.at(0).first().toString()}));
        QVERIFY(filesIn(c.dir.path()).filter(QStringLiteral(".quaydrop")).isEmpty()); // no temporary file left
        // The window stays open after saving unless asked to close.
        QVERIFY(e.isVisible());
        e.closeWindafterSaveCheckbox->setChecked(true);
        e.saveCropRotateResult();
        QVERIFY(saved.wait(10000));
        QVERIFY(!e.isVisible());
        QCOMPARE(closed.count(), 1);
    }

    void pictureFromAnotherApplicationAsksWhere()
    {
        CropImgWC &e = *c.editor;
        QVERIFY(openAndWait(e, c.photo, true));
        const QString chosen = c.dir.filePath(QStringLiteral("chosen.png"));
        // Cancelled first: nothing written, the window stays, the spinner stops.
        e.saveCropRotateResult();
        QFileDialog *dialog = nullptr;
        QVERIFY(QTest::qWaitFor([&] { return (dialog = e.findChild<QFileDialog *>(QStringLiteral("editorSavePanel"))) && dialog->isVisible(); }));
        QVERIFY(dialog->selectedFiles().value(0).endsWith(QStringLiteral("_Quaydrop-photo.png")));
        dialog->reject();
        QVERIFY(QTest::qWaitFor([&] { return !e.saveProgrIndic->isSpinning(); }));
        QVERIFY(e.isVisible());
        // Then a name is chosen.
        QSignalSpy saved(&e, &CropImgWC::saved);
        e.saveCropRotateResult();
        QVERIFY(QTest::qWaitFor([&] { return (dialog = e.findChild<QFileDialog *>(QStringLiteral("editorSavePanel"))) && dialog->isVisible(); }));
        dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->setText(c.dir.filePath(QStringLiteral("chosen")));
        QMetaObject::invokeMethod(dialog, "accept");
        QVERIFY(saved.count() == 1 || saved.wait(10000));
        QCOMPARE(saved.first().first().toString(), chosen);
        QCOMPARE(QImage(chosen).size(), QSize(800, 600));
        QVERIFY(!QFile::exists(c.dir.filePath(QStringLiteral("_Quaydrop-photo.png"))));
    }

    void undoAndRedoStrokes()
    {
        CropImgWC &e = *c.editor;
        e.setPaintMode(true);
        e.colorChanged(Qt::red);
        stroke(e.paintView, {{0.1, 0.1}, {0.3, 0.2}, {0.5, 0.2}});
        e.colorChanged(Qt::blue);
        stroke(e.paintView, {{0.1, 0.8}, {0.4, 0.8}});
        QCOMPARE(e.paintView->paintSession.steps().size(), 3);
        e.undoPressed();
        QCOMPARE(e.paintView->paintSession.steps().size(), 2);
        // The controls follow the last segment drawn, a moment after the undo.
        QTRY_COMPARE(e.paintView->tool.brushColor, (PaintColor{1, 0, 0, 1}));
        QVERIFY(e.redoBtn->isEnabled());
        e.redoPressed();
        QCOMPARE(e.paintView->paintSession.steps().size(), 3);
        QTRY_COMPARE(e.paintView->tool.brushColor, (PaintColor{0, 0, 1, 1}));
        e.undoPressed();
        e.undoPressed();
        QVERIFY(!e.paintView->hasDrawings());
        QVERIFY(!e.undoBtn->isEnabled());
        // A click without a drag paints nothing but is still a step of the history.
        stroke(e.paintView, {{0.5, 0.5}});
        QCOMPARE(e.undoStack()->count(), 1);
        QVERIFY(!e.paintView->hasDrawings());
    }

    void strokesStayOnThePictureAndAreSavedFromPaintModeOnly()
    {
        CropImgWC &e = *c.editor;
        e.setPaintMode(true);
        e.colorChanged(QColor(255, 0, 255));
        e.brushSizeChanged(20);
        stroke(e.paintView, {{0.1, 0.5}, {0.9, 0.5}, {0.75, 0.75}});
        const QImage before = e.paintView->snapshotWithSize(QSize(400, 300));
        e.resize(e.width() + 200, e.height() + 100);
        QTRY_COMPARE(QRectF(e.paintView->geometry()), e.cropSuper->fromYUp(e.getImgRectInsideImgView()).toRect());
        e.paintView->syncLayer();
        // Drawn at the same size, the strokes are where they were on the picture.
        QCOMPARE(e.paintView->snapshotWithSize(QSize(400, 300)), before);
        QCOMPARE(QImage(savedAndWaited(e)).pixel(400, 300), qRgb(255, 0, 255));
        e.setPaintMode(false);
        QCOMPARE(QImage(savedAndWaited(e)).pixel(400, 300), QImage(c.photo).pixel(400, 300));
    }

    void secondPictureWaitsForUnsavedChanges()
    {
        CropImgWC &e = *c.editor;
        const QString other = c.image(QStringLiteral("other.png"), picture(300, 200));
        e.rotateBy90right();
        e.openImage(other, false, false);
        QMessageBox *box = visibleAlert(QStringLiteral("unsavedChangesAlert"));
        QVERIFY(box);
        box->reject(); // keep editing
        QCOMPARE(e.windowTitle(), QStringLiteral("photo.png"));
        QCOMPARE(e.pixelSize(), QSize(600, 800));
        e.openImage(other, false, false);
        box = visibleAlert(QStringLiteral("unsavedChangesAlert"));
        QVERIFY(box);
        QSignalSpy ready(&e, &CropImgWC::pictureReady);
        for (QAbstractButton *b : box->buttons())
            if (b->text() == Texts::localized("editorDiscard"))
                b->click();
        QVERIFY(ready.count() == 1 || ready.wait(10000));
        QCOMPARE(e.windowTitle(), QStringLiteral("other.png"));
        QCOMPARE(e.pixelSize(), QSize(300, 200));
        QVERIFY(filesIn(c.dir.path()).filter(QStringLiteral("_Quaydrop")).isEmpty());
    }

    void unwritableFolderKeepsThePicture()
    {
        QDir(c.dir.path()).mkdir(QStringLiteral("locked"));
        const QString folder = c.dir.filePath(QStringLiteral("locked"));
        const QString file = folder + QStringLiteral("/shot.png");
        QVERIFY(write(file, encoded(quarters(200, 100), "png")));
        QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner);
        const bool writable = QFileInfo(folder).isWritable();
        if (writable && ::geteuid() == 0) {
            QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
            QSKIP("root writes anywhere; this case runs again unprivileged");
        }
        CropImgWC &e = *c.editor;
        QVERIFY(openAndWait(e, file));
        e.rotateBy90right();
        e.saveCropRotateResult();
        QMessageBox *box = nullptr;
        QVERIFY(QTest::qWaitFor([&] { return (box = visibleAlert(QStringLiteral("saveFailedAlert"))) != nullptr; }));
        QVERIFY(box->informativeText().contains(QStringLiteral("ermission")));
        box->reject();
        QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        QCOMPARE(e.pixelSize(), QSize(100, 200)); // nothing lost
        QVERIFY(e.hasUnsavedChanges());
        QCOMPARE(filesIn(folder), QStringList{QStringLiteral("shot.png")});
    }

    void sharingHandsOverACopy()
    {
        CropImgWC &e = *c.editor;
        QVERIFY(!e.shareCWimgBtn->isHidden());
        e.rotateBy90right();
        e.showSharePopCW();
        QMenu *menu = nullptr;
        QVERIFY(QTest::qWaitFor([&] { return (menu = e.findChild<QMenu *>(QStringLiteral("sharePicker"))) != nullptr; }));
        // The copy is in the temporary folder: what would point there (Save as, file links) is not offered.
        QVERIFY(!menu->findChild<QAction *>(QStringLiteral("copy-links")));
        QVERIFY(!menu->findChild<QAction *>(QStringLiteral("save-as")));
        QAction *device = menu->findChild<QAction *>(QStringLiteral("kdeconnect:abc"));
        QVERIFY(device);
        device->trigger();
        QTRY_COMPARE(c.fakes->share.shared.size(), 1);
        const QString path = QUrl(c.fakes->share.shared.first().second.value(0)).toLocalFile();
        QCOMPARE(QFileInfo(path).fileName(), QStringLiteral("photo.png")); // the source's name
        QVERIFY(Utils::isInTempFileOperationsFolder(path));
        QCOMPARE(QImage(path).size(), QSize(600, 800)); // the picture as it stands
        // Without a share service or a mail program the button is not offered.
        Platform::install({});
        CropImgWC fresh;
        QVERIFY(openAndWait(fresh, c.photo));
        QVERIFY(fresh.shareCWimgBtn->isHidden());
    }

    void cropButtonOfTheImagePanelOpensTheEditor()
    {
        c.editor.reset();
        AppDelegate *app = c.app.get();
        QVERIFY(c.dropAndPress({c.photo}, QStringLiteral("resizeImgBtn")));
        QVERIFY(app->isModalOverlayVisible());
        app->imgResizeVC->cropRotateBtn->click();
        CropImgWC *editor = app->cropEditor();
        QVERIFY(editor && editor->isVisible());
        QCOMPARE(app->cropRotateWC.data(), editor);
        QVERIFY(!app->windowIsVsbl()); // the drop window made way
        QVERIFY(editor->ensureFullPicture());
        QCOMPARE(editor->windowTitle(), QStringLiteral("photo.png"));
        // A crop, a quarter turn and a few strokes, saved beside the photo.
        typeInto(editor->cropSizeWidthTF, QStringLiteral("400"));
        typeInto(editor->cropSizeHeightTF, QStringLiteral("300"));
        editor->cropImage();
        editor->rotateBy90right();
        editor->setPaintMode(true);
        editor->colorChanged(QColor(255, 255, 0));
        editor->brushSizeChanged(12);
        stroke(editor->paintView, {{0.5, 0.1}, {0.5, 0.5}, {0.5, 0.9}});
        QSignalSpy saved(editor, &CropImgWC::saved);
        editor->saveCropRotateResult();
        QVERIFY(saved.wait(10000));
        const QString written = c.dir.filePath(QStringLiteral("_Quaydrop-photo.png"));
        QCOMPARE(saved.first().first().toString(), written);
        const QImage result(written);
        QCOMPARE(result.size(), QSize(300, 400));
        QCOMPARE(result.pixel(150, 200), qRgb(255, 255, 0));
        // The bottom left quarter (blue), turned right, lies at the top left.
        QCOMPARE(result.pixel(20, 20), qRgb(0, 0, 255));
        // Closed after saving; the controller lets go of it.
        QVERIFY(!editor->isVisible());
        QVERIFY(app->cropRotateWC.isNull());
    }

private:
    EditorCase c;
};

QTEST_MAIN(EditorTest)
#include "tst_editor.moc"
#include <QLabel>
#include <QLineEdit>

// The crop and rotate editor's window, offscreen: opening, the number fields' rules, the keys, quarter
// turns swapping the fields, crops in pixels, the resize popover, revert (also when the file is gone),
// a one-pixel picture, and files that are refused. Saving and painting: tst_editor_saving.

#include "EditorCase.h"

#include "editor/ui/AKPaintView.h"
#include "editor/ui/CropSuper.h"
#include "editor/ui/CropView.h"
#include "editor/ui/ResizePopover.h"
#include <QLabel>
#include <QSlider>


using namespace ImageFixtures;
using namespace EditorWindowFixtures;

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
        QTest::keyClick(e.cropSizeWidthTF, Qt::Key_Down);
        QCOMPARE(e.cropSizeWidthTF->text(), QStringLiteral("499"));
        QCOMPARE(e.getcropImgSizeDimensions().section(QLatin1Char('x'), 0, 0), QStringLiteral("499"));
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
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<QSize>("picture");
        QTest::addColumn<QPointF>("moved"); // of the small frame's origin
        QTest::newRow("right nudges a point") << int(Qt::Key_Right) << int(Qt::NoModifier) << QSize(800, 600) << QPointF(1, 0);
        QTest::newRow("up nudges a point") << int(Qt::Key_Up) << int(Qt::NoModifier) << QSize(800, 600) << QPointF(0, 1);
        QTest::newRow("left at the edge stays") << int(Qt::Key_Left) << int(Qt::NoModifier) << QSize(800, 600) << QPointF(0, 0);
        QTest::newRow("return crops") << int(Qt::Key_Return) << int(Qt::NoModifier) << QSize(400, 300) << QPointF();
        QTest::newRow("ctrl+right turns") << int(Qt::Key_Right) << int(Qt::ControlModifier) << QSize(600, 800) << QPointF();
        QTest::newRow("ctrl+left turns") << int(Qt::Key_Left) << int(Qt::ControlModifier) << QSize(600, 800) << QPointF();
    }

    void keys()
    {
        QFETCH(int, key);
        QFETCH(int, modifiers);
        QFETCH(QSize, picture);
        QFETCH(QPointF, moved);
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
        QVERIFY(visibleAlert());
        QCOMPARE(visibleAlert()->text(), Texts::localized("origImgNotFoundTitle"));
        QCOMPARE(e.pixelSize(), QSize(600, 800));
        closeAlerts();
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
        const QByteArray jpeg = encoded(picture(400, 300), "jpg");
        QTest::newRow("not an image") << "notes.png" << QByteArray("plain words\n");
        QTest::newRow("cut short") << "cut.jpg" << jpeg.left(jpeg.size() / 3);
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
        QMessageBox *box = visibleAlert();
        QVERIFY(box);
        QCOMPARE(box->text(), Texts::localized("editorOpenFailedTitle"));
        QVERIFY(box->informativeText().contains(name));
        closeAlerts();
        // The window already open keeps its picture.
        c.editor->openImage(path, false, false);
        QCOMPARE(c.editor->windowTitle(), QStringLiteral("photo.png"));
    }

private:
    EditorCase c;
};

QTEST_MAIN(EditorTest)
#include "tst_editor.moc"
#include <QLabel>

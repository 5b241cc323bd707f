// The crop and rotate editor's window, offscreen: opening, the number fields' rules, the keys, quarter
// turns swapping the fields, crops in pixels, revert (also when the file is gone), saving beside the
// source or through the save dialog, the notification, undo and redo of strokes, a second picture
// waiting for unsaved changes, a folder that cannot be written, sharing, and files that are refused.

#include "EditorFixtures.h"
#include "EditorWindowFixtures.h"
#include "ImageFixtures.h"
#include "LaunchedProgram.h"

#include "core/overlays/ImgResizeOverlayVC.h"
#include "core/texts/Texts.h"
#include "core/window/DropWindow.h"
#include "editor/ui/AKPaintView.h"
#include "editor/ui/CropImgWC.h"
#include "editor/ui/CropSuper.h"
#include "editor/ui/CropView.h"
#include "editor/ui/EditorImageView.h"
#include "editor/ui/ResizePopover.h"
#include "platform/fake/FakePlatform.h"
#include "utils/Utils.h"
#include "widgets/Spinner.h"
#include "widgets/ActionButton.h"
#include "widgets/controls/ITSwitch.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QSlider>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>
#include <QUrl>
#include <QUndoStack>

#include <unistd.h>

using namespace ImageFixtures;
using namespace EditorWindowFixtures;

namespace {

// The one message box that is up, or none.
QMessageBox *alertNamed(const QString &objectName = {})
{
    for (QWidget *w : QApplication::topLevelWidgets())
        if (auto *box = qobject_cast<QMessageBox *>(w); box && box->isVisible() && (objectName.isEmpty() || box->objectName() == objectName))
            return box;
    return nullptr;
}

void closeAlerts()
{
    while (QMessageBox *box = alertNamed())
        box->done(0);
}

// Waits for something the event loop brings.
template <typename F>
bool eventually(F condition, int ms = 5000)
{
    return QTest::qWaitFor(condition, ms);
}

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

} // namespace

class EditorTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void openingShowsThePictureAndItsSize();
    void sizeFields_data();
    void sizeFields();
    void arrowKeysStepTheFields();
    void keys_data();
    void keys();
    void turnsSwapTheFieldsAndFitTheFrame();
    void cropsWholePixels_data();
    void cropsWholePixels();
    void revertGoesBackToTheFile();
    void revertSaysWhenTheFileIsGone();
    void savesBesideTheSourceUnderFreeNames();
    void closesAfterSavingOnlyWhenAsked();
    void pictureFromAnotherApplicationAsksWhere();
    void undoAndRedoStrokes();
    void strokesAreSavedFromPaintModeOnly();
    void resizePopoverKeepsProportions();
    void secondPictureWaitsForUnsavedChanges();
    void unwritableFolderKeepsThePicture();
    void sharingHandsOverACopy();
    void refusedFilesAreSaid_data();
    void refusedFilesAreSaid();
    void onePixelPicture();
    void windowResizeKeepsStrokesOnThePicture();
    void cropButtonOfTheImagePanelOpensTheEditor();

private:
    QString makeImage(const QString &name, const QImage &image, const char *format = "png");
    QTemporaryDir m_dir;
    std::unique_ptr<FakePlatform> m_fakes;
    std::unique_ptr<CropImgWC> m_editor;
    QString m_photo;
};

QString EditorTest::makeImage(const QString &name, const QImage &image, const char *format)
{
    const QString path = m_dir.filePath(name);
    write(path, encoded(image, format, 72, 95));
    return path;
}

void EditorTest::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    Texts::setLanguage(QStringLiteral("en"));
    QVERIFY(m_dir.isValid());
}

void EditorTest::init()
{
    m_fakes = std::make_unique<FakePlatform>(m_dir.filePath(QStringLiteral(".trash")));
    m_fakes->share.targets = {{QStringLiteral("kdeconnect:phone"), QStringLiteral("Phone"), QStringLiteral("smartphone")}};
    Platform::install(m_fakes->services());
    for (const QString &f : filesIn(m_dir.path()))
        QFile::remove(m_dir.filePath(f));
    m_photo = makeImage(QStringLiteral("photo.png"), quarters(800, 600));
    m_editor = std::make_unique<CropImgWC>();
    m_editor->closeWindafterSaveCheckbox->setChecked(false);
    QVERIFY(openAndWait(*m_editor, m_photo));
}

void EditorTest::cleanup()
{
    closeAlerts();
    m_editor.reset();
    Platform::install({});
    m_fakes.reset();
}

void EditorTest::openingShowsThePictureAndItsSize()
{
    CropImgWC &e = *m_editor;
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

void EditorTest::sizeFields_data()
{
    QTest::addColumn<QString>("field"); // width or height
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    QTest::newRow("a digit too many is taken back") << "width" << "8005" << "800";
    QTest::newRow("taken back and still too large") << "height" << "6009" << "600";
    QTest::newRow("emptied refills with the maximum") << "height" << "" << "600";
    QTest::newRow("a smaller width") << "width" << "400" << "400";
}

void EditorTest::sizeFields()
{
    QFETCH(QString, field);
    QFETCH(QString, typed);
    QFETCH(QString, shown);
    CropImgWC &e = *m_editor;
    QLineEdit *edit = field == u"width" ? e.cropSizeWidthTF : e.cropSizeHeightTF;
    typeInto(edit, typed);
    QCOMPARE(edit->text(), shown);
    // The frame takes the typed size, its bottom left corner kept.
    const QRectF bounds = e.boundsFrameForCropView();
    QCOMPARE(e.imgCropView->frameYUp().topLeft(), bounds.topLeft());
    QCOMPARE(e.getcropImgSizeDimensions(), e.cropSizeWidthTF->text() + QLatin1Char('x') + e.cropSizeHeightTF->text());
}

void EditorTest::arrowKeysStepTheFields()
{
    CropImgWC &e = *m_editor;
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

void EditorTest::keys_data()
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

void EditorTest::keys()
{
    QFETCH(int, key);
    QFETCH(int, modifiers);
    QFETCH(QSize, picture);
    QFETCH(QPointF, moved);
    CropImgWC &e = *m_editor;
    typeInto(e.cropSizeWidthTF, QStringLiteral("400"));
    typeInto(e.cropSizeHeightTF, QStringLiteral("300"));
    const QPointF before = e.imgCropView->frameYUp().topLeft();
    e.imgCropView->setFocus();
    QTest::keyClick(e.imgCropView, Qt::Key(key), Qt::KeyboardModifiers(modifiers));
    QCOMPARE(e.pixelSize(), picture);
    if (!moved.isNull() || picture == QSize(800, 600))
        QCOMPARE(e.imgCropView->frameYUp().topLeft(), before + moved);
}

void EditorTest::turnsSwapTheFieldsAndFitTheFrame()
{
    CropImgWC &e = *m_editor;
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

void EditorTest::cropsWholePixels_data()
{
    QTest::addColumn<int>("alignment");
    QTest::addColumn<QRect>("rows"); // of the source, y down
    QTest::newRow("fitted corner: bottom left") << -1 << QRect(0, 300, 400, 300);
    QTest::newRow("top right") << 4 << QRect(400, 0, 400, 300);
    QTest::newRow("centre") << 0 << QRect(200, 150, 400, 300);
}

void EditorTest::cropsWholePixels()
{
    QFETCH(int, alignment);
    QFETCH(QRect, rows);
    CropImgWC &e = *m_editor;
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

void EditorTest::revertGoesBackToTheFile()
{
    CropImgWC &e = *m_editor;
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
}

void EditorTest::revertSaysWhenTheFileIsGone()
{
    CropImgWC &e = *m_editor;
    e.rotateBy90right();
    QVERIFY(QFile::remove(m_photo));
    e.revertCropChanges();
    QMessageBox *box = alertNamed();
    QVERIFY(box);
    QCOMPARE(box->text(), Texts::localized("origImgNotFoundTitle"));
    QCOMPARE(e.pixelSize(), QSize(600, 800)); // the picture stays
    closeAlerts();
    // Saving still works from memory.
    QSignalSpy saved(&e, &CropImgWC::saved);
    e.saveCropRotateResult();
    QVERIFY(saved.wait(10000));
    QCOMPARE(QImage(saved.first().first().toString()).size(), QSize(600, 800));
}

void EditorTest::savesBesideTheSourceUnderFreeNames()
{
    CropImgWC &e = *m_editor;
    e.rotateBy90Left();
    QSignalSpy saved(&e, &CropImgWC::saved);
    QTest::keyClick(&e, Qt::Key_S, Qt::ControlModifier);
    QVERIFY(saved.wait(10000));
    e.saveCropRotateResult();
    QVERIFY(saved.wait(10000));
    QCOMPARE(saved.at(0).first().toString(), m_dir.filePath(QStringLiteral("_Quaydrop-photo.png")));
    QCOMPARE(saved.at(1).first().toString(), m_dir.filePath(QStringLiteral("_Quaydrop-photo 1.png")));
    QCOMPARE(QImage(saved.at(0).first().toString()).size(), QSize(600, 800));
    QVERIFY(!e.hasUnsavedChanges());
    QVERIFY(!e.saveProgrIndic->isSpinning());
    // The notification names the folder and the file, and shows it on a click.
    QCOMPARE(m_fakes->notifications.delivered.size(), 2);
    const auto &note = m_fakes->notifications.delivered.first();
    QCOMPARE(note.title, Texts::localized("imgSaved"));
    QCOMPARE(note.body, QStringLiteral("to ../%1/_Quaydrop-photo.png").arg(QDir(m_dir.path()).dirName()));
    QCOMPARE(note.userInfo.value(QStringLiteral("filePaths")).toStringList(), QStringList{saved.at(0).first().toString()});
    QVERIFY(filesIn(m_dir.path()).filter(QStringLiteral(".quaydrop")).isEmpty()); // no temporary file left
}

void EditorTest::closesAfterSavingOnlyWhenAsked()
{
    CropImgWC &e = *m_editor;
    QSignalSpy saved(&e, &CropImgWC::saved);
    QSignalSpy closed(&e, &CropImgWC::closed);
    e.saveCropRotateResult();
    QVERIFY(saved.wait(10000));
    QVERIFY(e.isVisible());
    e.closeWindafterSaveCheckbox->setChecked(true);
    e.saveCropRotateResult();
    QVERIFY(saved.wait(10000));
    QVERIFY(!e.isVisible());
    QCOMPARE(closed.count(), 1);
}

void EditorTest::pictureFromAnotherApplicationAsksWhere()
{
    CropImgWC &e = *m_editor;
    QVERIFY(openAndWait(e, m_photo, true));
    const QString chosen = m_dir.filePath(QStringLiteral("chosen.png"));
    // Cancelled first: nothing written, the window stays, the spinner stops.
    e.saveCropRotateResult();
    QFileDialog *dialog = nullptr;
    QVERIFY(eventually([&] { return (dialog = e.findChild<QFileDialog *>(QStringLiteral("editorSavePanel"))) && dialog->isVisible(); }));
    QVERIFY(dialog->selectedFiles().value(0).endsWith(QStringLiteral("_Quaydrop-photo.png")));
    dialog->reject();
    QVERIFY(eventually([&] { return !e.saveProgrIndic->isSpinning(); }));
    QVERIFY(e.isVisible());
    // Then a name is chosen.
    QSignalSpy saved(&e, &CropImgWC::saved);
    e.saveCropRotateResult();
    QVERIFY(eventually([&] { return (dialog = e.findChild<QFileDialog *>(QStringLiteral("editorSavePanel"))) && dialog->isVisible(); }));
    dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->setText(m_dir.filePath(QStringLiteral("chosen")));
    QMetaObject::invokeMethod(dialog, "accept");
    QVERIFY(saved.count() == 1 || saved.wait(10000));
    QCOMPARE(saved.first().first().toString(), chosen);
    QCOMPARE(QImage(chosen).size(), QSize(800, 600));
    QVERIFY(!QFile::exists(m_dir.filePath(QStringLiteral("_Quaydrop-photo.png"))));
}

void EditorTest::undoAndRedoStrokes()
{
    CropImgWC &e = *m_editor;
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

void EditorTest::strokesAreSavedFromPaintModeOnly()
{
    CropImgWC &e = *m_editor;
    e.setPaintMode(true);
    e.colorChanged(QColor(255, 0, 255));
    e.brushSizeChanged(20);
    stroke(e.paintView, {{0.1, 0.5}, {0.9, 0.5}});
    QSignalSpy saved(&e, &CropImgWC::saved);
    e.saveCropRotateResult();
    QVERIFY(saved.wait(10000));
    QCOMPARE(QImage(saved.last().first().toString()).pixel(400, 300), qRgb(255, 0, 255));
    e.setPaintMode(false);
    e.saveCropRotateResult();
    QVERIFY(saved.wait(10000));
    QCOMPARE(QImage(saved.last().first().toString()).pixel(400, 300), QImage(m_photo).pixel(400, 300));
}

void EditorTest::resizePopoverKeepsProportions()
{
    CropImgWC &e = *m_editor;
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

void EditorTest::secondPictureWaitsForUnsavedChanges()
{
    CropImgWC &e = *m_editor;
    const QString other = makeImage(QStringLiteral("other.png"), picture(300, 200));
    e.rotateBy90right();
    e.openImage(other, false, false);
    QMessageBox *box = alertNamed(QStringLiteral("unsavedChangesAlert"));
    QVERIFY(box);
    box->reject(); // keep editing
    QCOMPARE(e.windowTitle(), QStringLiteral("photo.png"));
    QCOMPARE(e.pixelSize(), QSize(600, 800));
    e.openImage(other, false, false);
    box = alertNamed(QStringLiteral("unsavedChangesAlert"));
    QVERIFY(box);
    QSignalSpy ready(&e, &CropImgWC::pictureReady);
    for (QAbstractButton *b : box->buttons())
        if (b->text() == Texts::localized("editorDiscard"))
            b->click();
    QVERIFY(ready.count() == 1 || ready.wait(10000));
    QCOMPARE(e.windowTitle(), QStringLiteral("other.png"));
    QCOMPARE(e.pixelSize(), QSize(300, 200));
    QVERIFY(filesIn(m_dir.path()).filter(QStringLiteral("_Quaydrop")).isEmpty());
}

void EditorTest::unwritableFolderKeepsThePicture()
{
    QDir(m_dir.path()).mkdir(QStringLiteral("locked"));
    const QString folder = m_dir.filePath(QStringLiteral("locked"));
    const QString file = folder + QStringLiteral("/shot.png");
    QVERIFY(write(file, encoded(quarters(200, 100), "png")));
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::ExeOwner);
    const bool writable = QFileInfo(folder).isWritable();
    if (writable && ::geteuid() == 0) {
        QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        QSKIP("root writes anywhere; this case runs again unprivileged");
    }
    CropImgWC &e = *m_editor;
    QVERIFY(openAndWait(e, file));
    e.rotateBy90right();
    e.saveCropRotateResult();
    QMessageBox *box = nullptr;
    QVERIFY(eventually([&] { return (box = alertNamed(QStringLiteral("saveFailedAlert"))) != nullptr; }));
    QVERIFY(box->informativeText().contains(QStringLiteral("ermission")));
    box->reject();
    QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    QCOMPARE(e.pixelSize(), QSize(100, 200)); // nothing lost
    QVERIFY(e.hasUnsavedChanges());
    QCOMPARE(filesIn(folder), QStringList{QStringLiteral("shot.png")});
}

void EditorTest::sharingHandsOverACopy()
{
    CropImgWC &e = *m_editor;
    QVERIFY(!e.shareCWimgBtn->isHidden());
    e.rotateBy90right();
    e.showSharePopCW();
    QMenu *menu = nullptr;
    QVERIFY(eventually([&] { return (menu = e.findChild<QMenu *>(QStringLiteral("sharePicker"))) != nullptr; }));
    // The copy is in the temporary folder: what would point there (Save as, file links) is not offered.
    QVERIFY(!menu->findChild<QAction *>(QStringLiteral("copy-links")));
    QVERIFY(!menu->findChild<QAction *>(QStringLiteral("save-as")));
    QAction *target = menu->findChild<QAction *>(m_fakes->share.targets.value(0).id);
    QVERIFY(target);
    target->trigger();
    QVERIFY(eventually([&] { return m_fakes->share.shared.size() == 1; }));
    const QStringList uris = m_fakes->share.shared.first().second;
    QCOMPARE(uris.size(), 1);
    const QStringList paths{QUrl(uris.first()).toLocalFile()};
    QCOMPARE(QFileInfo(paths.value(0)).fileName(), QStringLiteral("photo.png")); // the source's name
    QVERIFY(Utils::isInTempFileOperationsFolder(paths.value(0)));
    QCOMPARE(QImage(paths.value(0)).size(), QSize(600, 800)); // the picture as it stands
    // Without a share service or a mail program the button is not offered.
    Platform::install({});
    CropImgWC fresh;
    QVERIFY(openAndWait(fresh, m_photo));
    QVERIFY(fresh.shareCWimgBtn->isHidden());
}

void EditorTest::refusedFilesAreSaid_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray jpeg = encoded(picture(400, 300), "jpg");
    QTest::newRow("not an image") << "notes.png" << QByteArray("plain words\n");
    QTest::newRow("cut short") << "cut.jpg" << jpeg.left(jpeg.size() / 3);
    QTest::newRow("claims 60000 x 60000") << "huge.png" << pngClaiming(60000, 60000);
}

void EditorTest::refusedFilesAreSaid()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, bytes);
    const QString path = m_dir.filePath(name);
    QVERIFY(write(path, bytes));
    CropImgWC fresh;
    fresh.openImage(path, false, false);
    QVERIFY(!fresh.isVisible());
    QMessageBox *box = alertNamed();
    QVERIFY(box);
    QCOMPARE(box->text(), Texts::localized("editorOpenFailedTitle"));
    QVERIFY(box->informativeText().contains(name));
    closeAlerts();
    // The window already open keeps its picture.
    m_editor->openImage(path, false, false);
    QCOMPARE(m_editor->windowTitle(), QStringLiteral("photo.png"));
}

void EditorTest::onePixelPicture()
{
    CropImgWC &e = *m_editor;
    QVERIFY(openAndWait(e, makeImage(QStringLiteral("dot.png"), picture(1, 1))));
    QCOMPARE(e.imgCropView->frameYUp().size(), QSizeF(11, 11));
    e.cropImage();
    e.rotateBy90right();
    QCOMPARE(e.pixelSize(), QSize(1, 1));
    QSignalSpy saved(&e, &CropImgWC::saved);
    e.saveCropRotateResult();
    QVERIFY(saved.wait(10000));
    QCOMPARE(QImage(saved.first().first().toString()).size(), QSize(1, 1));
}

void EditorTest::windowResizeKeepsStrokesOnThePicture()
{
    CropImgWC &e = *m_editor;
    e.setPaintMode(true);
    stroke(e.paintView, {{0.25, 0.25}, {0.75, 0.75}});
    const QImage before = e.paintView->snapshotWithSize(QSize(400, 300));
    e.resize(e.width() + 200, e.height() + 100);
    QTRY_COMPARE(QRectF(e.paintView->geometry()), e.cropSuper->fromYUp(e.getImgRectInsideImgView()).toRect());
    e.paintView->syncLayer();
    // Drawn at the same size, the strokes are where they were on the picture.
    QCOMPARE(e.paintView->snapshotWithSize(QSize(400, 300)), before);
}

void EditorTest::cropButtonOfTheImagePanelOpensTheEditor()
{
    m_editor.reset();
    const auto app = launchedOn(*m_fakes);
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(m_photo)});
    app->showDropTargetAt(QPointF(400, 300));
    app->mycustomviewDidGetDrop(&data);
    app->window->contentView()->findChild<ActionButton *>(QStringLiteral("resizeImgBtn"))->click();
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
    const QString written = m_dir.filePath(QStringLiteral("_Quaydrop-photo.png"));
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

QTEST_MAIN(EditorTest)
#include "tst_editor.moc"

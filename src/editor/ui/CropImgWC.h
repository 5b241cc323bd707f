#pragma once

#include "CropView.h"
#include "editor/crop/CropSizeEntry.h"
#include "editor/picture/EditedPicture.h"

#include <QFutureWatcher>
#include <QPointer>
#include <QWidget>

#include <functional>

class AKPaintView;
class CropSuper;
class EditorImageView;
class ITSwitch;
class QButtonGroup;
class QCheckBox;
class QColorDialog;
class QLabel;
class QLineEdit;
class QSlider;
class QToolButton;
class QPushButton;
class QUndoStack;
class ResizePopover;
class Spinner;

// The crop and rotate editor: one picture cropped, turned by quarter turns, resized, painted on and saved
// as "_Quaydrop-NAME.EXT" beside its source. Crop mode (the switch off) shows the frame; paint mode
// hides it and lets the paint layer take the mouse. The picture is edited in memory; only saving writes.
// The window is reused for each picture; its concerns live in CropImgWC_*.cpp.
class CropImgWC : public QWidget, public CropViewDelegate
{
    Q_OBJECT
public:
    explicit CropImgWC(QWidget *parent = nullptr);
    ~CropImgWC() override;

    // ---- opening and closing (CropImgWC_Open.cpp) ----
    // Opens the picture at `path`. With unsaved changes to the picture open now, the user first saves or
    // discards them, or keeps editing it (and the new one is not opened). A file that cannot be edited
    // is said in an alert and leaves the window as it was.
    void openImage(const QString &path, bool fromAnotherApp, bool isAttachment);
    bool hasUnsavedChanges() const { return m_modified; }
    // Blocks until the whole picture is read (the first frame shows a quick preview).
    bool ensureFullPicture();
    QSizeF contentMinSize() const;
    QRectF properWindowFrameToFit(const QSizeF &imagePoints) const;

    // ---- the crop frame (CropImgWC_Crop.cpp), y-up points of the work area ----
    QRectF boundsFrameForCropView() const override;
    void draggedCroppedView() override;
    void eventHappened(QKeyEvent *event) override;
    QRectF getImgRectInsideImgView() const;
    QRectF getImgRect() const;
    QRectF makeCropViewFitImgBounds(bool refreshStrokes = true);
    QString getcropImgSizeDimensions() const;
    void updateCropSizeValues();
    void cropImage();
    void rotateBy90right() { rotate(true); }
    void rotateBy90Left() { rotate(false); }
    void changeCropAlignment(int tag);
    void refreshCropSizeBtnAction();
    void textDidChange(QLineEdit *field);
    void textDidEndEditing(QLineEdit *field);
    bool isPaintMode() const;
    void setPaintMode(bool on);

    // ---- painting (CropImgWC_Paint.cpp) ----
    void brushEraserChanged(int segment);
    void colorChanged(const QColor &color);
    void brushSizeChanged(int sliderValue);
    void undoPressed();
    void redoPressed();
    void UndoManagerChange();

    // ---- saving, reverting, resizing, sharing (CropImgWC_Save.cpp) ----
    // Saves the picture as it stands; `then` learns whether it was written.
    void saveCropRotateResult(std::function<void(bool)> then = {});
    void revertCropChanges();
    void showResizePopOver();
    void resizeDonePressed();
    void proportionCBAction(bool on);
    void controlTextDidChange(QLineEdit *field);
    // A copy of the picture as it stands, under the source's name in the temp folder, offered to the
    // share targets of the desktop's share service. Without a service the button stays hidden.
    void showSharePopCW();

    // ---- what the editor works on ----
    QString imgPathToProcess;
    bool fromAnotherApp = false;
    bool imgIsAttachment = false;
    float origImageDPI = 0;
    float stepValue = 1.0f;
    float stepForBrushValue = 0; // 1.0 on first use
    EditedPicture picture;
    QSize pixelSize() const; // of the picture as it stands
    QUndoStack *undoStack() const { return m_undoStack; }

    // ---- outlets ----
    EditorImageView *imgToRotateOrCrop;
    CropSuper *cropSuper;
    CropView *imgCropView;
    AKPaintView *paintView;
    QLineEdit *cropSizeWidthTF;
    QLineEdit *cropSizeHeightTF;
    QLabel *origSizeLbl;
    ITSwitch *cropVisblSwitch;
    QWidget *cropTools;
    QWidget *drawingTbox;
    QButtonGroup *drawingSegment;
    QToolButton *brushColorWell;
    QSlider *brushSizeSlider;
    QLineEdit *brusSizeLbl;
    QToolButton *markupbtn;
    QToolButton *resizeImBtn;
    ResizePopover *resizeimgPopover;
    QCheckBox *closeWindafterSaveCheckbox;
    Spinner *saveProgrIndic;
    Spinner *shareProgressIndic;
    QToolButton *shareCWimgBtn;
    QPushButton *saveBtn;
    QToolButton *undoBtn;
    QToolButton *redoBtn;

Q_SIGNALS:
    // The whole picture is read and can be edited.
    void pictureReady();
    // The picture could not be opened; an alert says so too.
    void openFailed(const QString &message);
    void saved(const QString &path);
    void closed();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void changeEvent(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    // CropImgWC.cpp
    void buildToolbars();
    QWidget *buildTopBar();
    QWidget *buildBottomBar();
    void retranslate();
    void refreshIcons();
    // CropImgWC_Open.cpp
    void showPicture(const QString &path, const PictureLoader::Preview &preview);
    void pictureLoaded();
    void placeWindow(const QSizeF &imagePoints);
    void rememberWindowSize();
    void windowWillClose();
    void askToSaveChanges(const QString &forName, std::function<void(bool proceed)> then);
    // CropImgWC_Crop.cpp
    void rotate(bool clockwise);
    void nudge(double dx, double dy);
    void perform(const std::vector<EditorKeys::Action> &actions);
    bool fieldKeyPress(QLineEdit *field, QKeyEvent *event);
    CropSizeEntry::Field fieldKind(QLineEdit *field) const;
    CropSizeEntry::Context entryContext() const;
    QRect paintViewGeometry(const QRectF &innerYUp) const;
    float displayScale() const;
    void showPictureImage();
    // CropImgWC_Paint.cpp
    void syncBrushControls();
    // CropImgWC_Save.cpp
    void writeSaved(const QByteArray &bytes, std::function<void(bool)> then);
    void chooseSavePath(std::function<void(QString)> chosen);
    void writeAtChosenPath(const QByteArray &bytes, std::function<void(bool)> then);
    void saveFailed(const QString &message, const QByteArray &bytes, std::function<void(bool)> then);
    void finishSave(const QString &path, std::function<void(bool)> then);
    void showSaveProgress(bool on);
    void showShareMenu(const QString &path);
    QImage layerForSaving();

    QUndoStack *m_undoStack;
    QColorDialog *m_colorDialog = nullptr;
    QFutureWatcher<Result<LoadedPicture>> m_loading;
    bool m_saving = false;
    QSize m_previewPixels; // the picture's size before its pixels are read
    bool m_modified = false;
    bool m_fitting = false;      // a resize caused by the program itself, not the user
    bool m_userSized = false;    // the user changed the window's size since it was placed
    bool m_closingAsked = false; // the close was confirmed already
};

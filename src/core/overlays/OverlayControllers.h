#pragma once

// The overlay controllers whose content belongs to the image, file and sending actions. Each holds
// the fields the window reads or fills, and one completion handler.

#include "OverlayController.h"

#include <QSize>

#include <functional>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QPushButton;
class QSlider;
class QLabel;

class RenameFilesVC : public OverlayController
{
    Q_OBJECT
public:
    using Completion = std::function<void(qint64, QString, QString, QString, QString)>;
    explicit RenameFilesVC(QWidget *parent = nullptr);
    void setRenameCompletion(Completion c) { m_completion = std::move(c); }
    QWidget *firstResponder() const override;
    QLineEdit *renameNameTF;

protected:
    void fire(qint64 tag) override;

private:
    Completion m_completion;
};

class WallpaperOverlayVC : public OverlayController
{
    Q_OBJECT
public:
    using Completion = std::function<void(qint64)>;
    explicit WallpaperOverlayVC(QWidget *parent = nullptr);
    void setWpVCCompletion(Completion c) { m_completion = std::move(c); }
    // Shows the desktop picture that a change would replace.
    void setupOldWPview(const QString &currentWallpaper);
    QLabel *oldWPview;

protected:
    void fire(qint64 tag) override;

private:
    Completion m_completion;
};

class ImgShareOverlayVC : public OverlayController
{
    Q_OBJECT
public:
    using Completion = std::function<void(qint64)>;
    explicit ImgShareOverlayVC(QWidget *parent = nullptr);
    void setShareCompletion(Completion c) { m_completion = std::move(c); }

protected:
    void fire(qint64 tag) override;

private:
    Completion m_completion;
};

class PdfToImgVC : public OverlayController
{
    Q_OBJECT
public:
    using Completion = std::function<void(qint64, float)>;
    explicit PdfToImgVC(QWidget *parent = nullptr);
    void setPdfImgConvrtCompletion(Completion c) { m_completion = std::move(c); }
    QLineEdit *DPItxtFld;

protected:
    void fire(qint64 tag) override;

private:
    Completion m_completion;
};

class ImgConvertOverlayVC : public OverlayController
{
    Q_OBJECT
public:
    using Completion = std::function<void(qint64, float, qint64)>;
    explicit ImgConvertOverlayVC(QWidget *parent = nullptr);
    void setImgConvrtCompletion(Completion c) { m_completion = std::move(c); }
    void setStepValue(double step);
    double stepValue() const { return m_step; }
    QSlider *compressFactorSlider;
    QLabel *comprFactorLbl;

protected:
    void fire(qint64 tag) override;

private:
    Completion m_completion;
    double m_step = 1.0;
};

class ImgResizeOverlayVC : public OverlayController
{
    Q_OBJECT
public:
    using Completion = std::function<void(qint64, QString, QString, qint64, QString)>;
    explicit ImgResizeOverlayVC(QWidget *parent = nullptr);
    void setImgResizeCompletion(Completion c) { m_completion = std::move(c); }
    void setOldSizeValues(const QSize &size) { m_oldSize = size; }
    QSize oldSizeValues() const { return m_oldSize; }
    void setMultiFilesMode(bool multi);
    bool multiFilesMode() const { return m_multi; }
    QWidget *firstResponder() const override;
    QLineEdit *widthTextField;
    QLineEdit *heightTextField;
    QCheckBox *proportionCheckBox;
    QPushButton *cropRotateBtn;
    QComboBox *destinationPop;

protected:
    void fire(qint64 tag) override;

private:
    Completion m_completion;
    QSize m_oldSize;
    bool m_multi = false;
};

class EnterFolderNameOverlayVC : public OverlayController
{
    Q_OBJECT
public:
    using Completion = std::function<void(qint64, QString)>;
    explicit EnterFolderNameOverlayVC(QWidget *parent = nullptr);
    void setFolderNameCompletion(Completion c) { m_completion = std::move(c); }
    QWidget *firstResponder() const override;
    QLineEdit *folderNameTF;

protected:
    void fire(qint64 tag) override;

private:
    Completion m_completion;
};

class FileCreateOverlayVC : public OverlayController
{
    Q_OBJECT
public:
    using Completion = std::function<void(qint64, qint64, QString)>;
    explicit FileCreateOverlayVC(QWidget *parent = nullptr);
    void setFileCreateCompletion(Completion c) { m_completion = std::move(c); }
    QLineEdit *fileNameTF;

protected:
    void fire(qint64 tag) override;

private:
    Completion m_completion;
};

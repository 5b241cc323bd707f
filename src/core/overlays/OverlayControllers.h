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

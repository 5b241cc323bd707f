#pragma once

#include "OverlayController.h"

#include <QSizeF>

#include <functional>

class QCheckBox;
class QComboBox;
class QLineEdit;
class QPushButton;

// Asks for a width and a height in pixels. With the proportion box on, typing one side fills in the
// other for one image, and empties it for several (their proportions differ). Up and down step a
// field by one; Return resizes at once.
class ImgResizeOverlayVC : public OverlayController
{
    Q_OBJECT
public:
    static constexpr qint64 kResizeTag = 0;
    static constexpr qint64 kCropTag = 2;
    static constexpr qint64 kCloseResizeTag = 3;

    // tag, width, height, destination index (0: beside the source), destination path
    using Completion = std::function<void(qint64, QString, QString, qint64, QString)>;
    explicit ImgResizeOverlayVC(QWidget *parent = nullptr);
    void setImgResizeCompletion(Completion c) { m_completion = std::move(c); }
    qint64 closeTag() const override { return kCloseResizeTag; }

    void setOldSizeValues(const QSizeF &size) { m_oldSize = size; }
    QSizeF oldSizeValues() const { return m_oldSize; }
    void setMultiFilesMode(bool multi);
    bool multiFilesMode() const { return m_multi; }
    QWidget *firstResponder() const override;
    // The destination store's entries, after "Save To"; their paths are looked up by name.
    void setDestinations(const QStringList &names);
    QString selectedDestinationPath() const;

    QLineEdit *widthTextField;
    QLineEdit *heightTextField;
    QCheckBox *proportionCheckBox;
    QPushButton *cropRotateBtn;
    QPushButton *doneBtn;
    QComboBox *destinationPop;

protected:
    void fire(qint64 tag) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void controlTextDidChange(QLineEdit *edited);
    void doneBtnPressed();
    void proportionCBAction(bool on);
    void imgSaveDestHelpAction();
    void step(QLineEdit *field, bool up);

    Completion m_completion;
    QSizeF m_oldSize;
    bool m_multi = false;
};

#pragma once

#include "OverlayController.h"

#include <functional>

class QCheckBox;
class QLabel;
class QPushButton;
class QSlider;

// The type buttons of a conversion (PNG, JPEG, BMP, TIFF, PDF) under a compression slider that snaps
// to steps of 5 percent. A button hands back its tag with the slider's factor (0 % is 1.0) and the
// merge box.
class ImgConvertOverlayVC : public OverlayController
{
    Q_OBJECT
public:
    static constexpr qint64 kPageBoardTag = 6;
    // tag, compression factor, merge box state
    using Completion = std::function<void(qint64, float, qint64)>;
    explicit ImgConvertOverlayVC(QWidget *parent = nullptr);
    void setImgConvrtCompletion(Completion c) { m_completion = std::move(c); }
    void setStepValue(float step) { m_step = step; }
    float stepValue() const { return m_step; }
    // The merge box only means something with several images.
    void setMultipleImages(bool several);

    QSlider *compressFactorSlider;
    QLabel *comprFactorLbl;
    QCheckBox *mergeToPDFCheck;
    QPushButton *typeButton(qint64 tag) const;

protected:
    void fire(qint64 tag) override;

private:
    void sliderValueChanged(int value);

    Completion m_completion;
    float m_step = 5.0f;
};

#pragma once

#include "OverlayController.h"

#include <functional>

class QLineEdit;

// The resolution of the page images and their type: PNG (1), JPEG (2), BMP (3), TIFF (4).
class PdfToImgVC : public OverlayController
{
    Q_OBJECT
public:
    // tag, resolution in dots per inch
    using Completion = std::function<void(qint64, float)>;
    explicit PdfToImgVC(QWidget *parent = nullptr);
    void setPdfImgConvrtCompletion(Completion c) { m_completion = std::move(c); }
    QWidget *firstResponder() const override;
    QLineEdit *DPItxtFld;

protected:
    void fire(qint64 tag) override;

private:
    Completion m_completion;
};

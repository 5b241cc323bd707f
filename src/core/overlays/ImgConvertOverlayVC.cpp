#include "ImgConvertOverlayVC.h"

#include "core/texts/Texts.h"
#include "images/jobs/ConvertJob.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QSlider>

#include <cmath>

ImgConvertOverlayVC::ImgConvertOverlayVC(QWidget *parent) : OverlayController("Convert", parent)
{
    setObjectName(QStringLiteral("imgConvrtVC"));
    auto *grid = new QGridLayout;
    grid->setSpacing(4);
    const struct
    {
        const char *text;
        qint64 tag;
    } types[] = {{"PNG", 1}, {"JPEG", 2}, {"BMP", 3}, {"TIFF", 4}, {"PDF", ConvertJob::kPdfTag}};
    int i = 0;
    for (const auto &t : types) {
        auto *b = new QPushButton(QString::fromLatin1(t.text), this);
        b->setObjectName(QStringLiteral("convertTo%1").arg(t.tag));
        b->setProperty("tag", t.tag);
        connect(b, &QPushButton::clicked, this, [this, tag = t.tag] { fire(tag); });
        grid->addWidget(b, i / 3, i % 3);
        ++i;
    }
    auto *board = new QPushButton(this);
    board->setObjectName(QStringLiteral("convertTo%1").arg(kPageBoardTag));
    board->setProperty("tag", kPageBoardTag);
    translateLater(board, "pageBoardBtn");
    connect(board, &QPushButton::clicked, this, [this] { fire(kPageBoardTag); });
    grid->addWidget(board, 1, 2);
    body()->addLayout(grid);

    auto *compression = new QHBoxLayout;
    compression->addWidget(addLabel("Compression"));
    comprFactorLbl = new QLabel(this);
    comprFactorLbl->setObjectName(QStringLiteral("comprFactorLbl"));
    comprFactorLbl->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    compression->addWidget(comprFactorLbl, 1);
    body()->addLayout(compression);
    compressFactorSlider = new QSlider(Qt::Horizontal, this);
    compressFactorSlider->setObjectName(QStringLiteral("compressFactorSlider"));
    compressFactorSlider->setRange(0, 100);
    compressFactorSlider->setSingleStep(5);
    compressFactorSlider->setPageStep(10);
    compressFactorSlider->setValue(0);
    body()->addWidget(compressFactorSlider);
    connect(compressFactorSlider, &QSlider::valueChanged, this, &ImgConvertOverlayVC::sliderValueChanged);
    sliderValueChanged(compressFactorSlider->value());

    mergeToPDFCheck = new QCheckBox(this);
    mergeToPDFCheck->setObjectName(QStringLiteral("mergeToPDFCheck"));
    translateLater(mergeToPDFCheck, "Merge into one PDF");
    body()->addWidget(mergeToPDFCheck);
    body()->addStretch(1);
    addTagButton("Cancel", kCloseTag);
}

QPushButton *ImgConvertOverlayVC::typeButton(qint64 tag) const
{
    return findChild<QPushButton *>(QStringLiteral("convertTo%1").arg(tag));
}

void ImgConvertOverlayVC::setMultipleImages(bool several)
{
    mergeToPDFCheck->setEnabled(several);
}

void ImgConvertOverlayVC::sliderValueChanged(int value)
{
    if (m_step == 0.0f)
        m_step = 5.0f;
    const int snapped = int(ConvertJob::snappedSliderValue(float(value), m_step));
    if (snapped != value) {
        compressFactorSlider->setValue(snapped); // comes back here with the snapped value
        return;
    }
    comprFactorLbl->setText(QStringLiteral("%1%").arg(value));
}

void ImgConvertOverlayVC::fire(qint64 tag)
{
    if (m_completion)
        m_completion(tag, ConvertJob::factorForSlider(float(compressFactorSlider->value()), m_step),
                     mergeToPDFCheck->isChecked() ? 1 : 0);
}

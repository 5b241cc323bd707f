#include "PdfToImgVC.h"

#include "core/texts/Texts.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

PdfToImgVC::PdfToImgVC(QWidget *parent) : OverlayController("To images", parent)
{
    setObjectName(QStringLiteral("pdfToImgConvVC"));
    DPItxtFld = new QLineEdit(this);
    DPItxtFld->setObjectName(QStringLiteral("DPItxtFld"));
    DPItxtFld->setText(QStringLiteral("150"));
    DPItxtFld->setAlignment(Qt::AlignCenter);
    DPItxtFld->setMaxLength(6);
    auto *resolution = new QHBoxLayout;
    resolution->addWidget(addLabel("Resolution"), 1);
    resolution->addWidget(DPItxtFld);
    resolution->addWidget(new QLabel(QStringLiteral("dpi"), this));
    body()->addLayout(resolution);
    auto *hint = addLabel("pdfDpiHint");
    hint->setWordWrap(true);
    QFont small = hint->font();
    small.setPointSizeF(small.pointSizeF() * 0.85);
    hint->setFont(small);
    body()->addWidget(hint);

    auto *grid = new QGridLayout;
    grid->setSpacing(4);
    const char *types[] = {"PNG", "JPEG", "BMP", "TIFF"};
    for (int i = 0; i < 4; ++i) {
        auto *b = new QPushButton(QString::fromLatin1(types[i]), this);
        b->setObjectName(QStringLiteral("pdfTo%1").arg(i + 1));
        b->setProperty("tag", qint64(i + 1));
        connect(b, &QPushButton::clicked, this, [this, tag = qint64(i + 1)] { fire(tag); });
        grid->addWidget(b, i / 2, i % 2);
    }
    body()->addLayout(grid);
    body()->addStretch(1);
    addTagButton("Cancel", kCloseTag);
}

QWidget *PdfToImgVC::firstResponder() const { return DPItxtFld; }

void PdfToImgVC::fire(qint64 tag)
{
    if (m_completion)
        m_completion(tag, DPItxtFld->text().toFloat());
}

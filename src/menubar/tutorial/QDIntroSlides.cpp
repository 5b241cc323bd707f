#include "QDIntroSlides.h"

#include "MIHSliderView.h"
#include "core/Endpoints.h"
#include "core/settings/SettingsKeys.h"
#include "core/settings/SettingsStore.h"
#include "core/texts/Texts.h"
#include "platform/Platform.h"
#include "widgets/ButtonImages.h"
#include "widgets/controls/MXButton.h"

#include <QCheckBox>
#include <QEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace {

// One slide: a drawing made of the program's own pictures, a title and a few words.
class IntroSlide : public QWidget
{
public:
    IntroSlide(QStringList stems, const char *titleKey, const char *textKey, QWidget *parent = nullptr)
        : QWidget(parent), m_stems(std::move(stems)), m_titleKey(titleKey), m_textKey(textKey)
    {
        auto *layout = new QVBoxLayout(this);
        layout->setContentsMargins(40, 0, 40, 4);
        m_title = new QLabel(this);
        QFont f = m_title->font();
        f.setPointSizeF(f.pointSizeF() * 1.5);
        f.setBold(true);
        m_title->setFont(f);
        m_title->setAlignment(Qt::AlignHCenter);
        m_text = new QLabel(this);
        m_text->setWordWrap(true);
        QFont body = m_text->font();
        body.setPointSizeF(body.pointSizeF() * 1.1);
        m_text->setFont(body);
        m_text->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
        layout->addWidget(m_title);
        layout->addWidget(m_text, 1);
        retranslate();
    }
    void retranslate()
    {
        m_title->setText(Texts::localized(m_titleKey));
        m_text->setText(Texts::localized(m_textKey));
    }

protected:
    void resizeEvent(QResizeEvent *) override
    {
        // The picture takes the upper part; the words stand under it.
        layout()->setContentsMargins(40, pictureBottom() + 18, 40, 4);
    }
    int pictureBottom() const { return std::max(130, height() * 45 / 100); }
    void paintEvent(QPaintEvent *) override
    {
        QPainter p(this);
        p.setRenderHint(QPainter::Antialiasing);
        const int side = m_stems.size() <= 3 ? 80 : 56;
        const int gap = 18;
        const int total = int(m_stems.size()) * side + (int(m_stems.size()) - 1) * gap;
        int x = (width() - total) / 2;
        const int y = pictureBottom() - side - 8;
        for (const QString &stem : m_stems) {
            if (stem == u"->") {
                // An arrow between two pictures: from here to there.
                p.setPen(QPen(palette().color(QPalette::WindowText), 3, Qt::SolidLine, Qt::RoundCap));
                const int cy = y + side / 2;
                p.drawLine(x + 8, cy, x + side - 8, cy);
                p.drawLine(x + side - 20, cy - 12, x + side - 8, cy);
                p.drawLine(x + side - 20, cy + 12, x + side - 8, cy);
                x += side + gap;
                continue;
            }
            // Each picture on a soft tile, as the panels show them.
            p.setPen(Qt::NoPen);
            p.setBrush(palette().color(QPalette::AlternateBase));
            p.drawRoundedRect(QRectF(x - 8, y - 8, side + 16, side + 16), 12, 12);
            p.drawPixmap(x, y, ButtonImages::forStem(stem, side, palette(), devicePixelRatioF()).normal);
            x += side + gap;
        }
    }

private:
    QStringList m_stems;
    const char *m_titleKey;
    const char *m_textKey;
    QLabel *m_title;
    QLabel *m_text;
};

} // namespace

QDIntroSlides::QDIntroSlides(bool inTray, QWidget *parent) : QWidget(parent, Qt::Window)
{
    setObjectName(QStringLiteral("QDIntroSlides"));
    resize(560, 440);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 14);
    sliderView = new MIHSliderView(this);
    layout->addWidget(sliderView, 1);

    slide1V = new IntroSlide({QStringLiteral("13.pdf"), QStringLiteral("->"), QStringLiteral("dragNdropIcon")}, QT_TRANSLATE_NOOP("Quaydrop", "slide1Title"), QT_TRANSLATE_NOOP("Quaydrop", "slide1Text"));
    slide2V = new IntroSlide({QStringLiteral("dragNdropIcon"), QStringLiteral("->"), QStringLiteral("06.move")}, QT_TRANSLATE_NOOP("Quaydrop", "slide2Title"), QT_TRANSLATE_NOOP("Quaydrop", "slide2Text"));
    slide3V = new IntroSlide({QStringLiteral("06.move"), QStringLiteral("05.resize"), QStringLiteral("convertImg"),
                              QStringLiteral("13.pdf"), QStringLiteral("03.zip")},
                             QT_TRANSLATE_NOOP("Quaydrop", "slide3Title"), QT_TRANSLATE_NOOP("Quaydrop", "slide3Text"));
    slide4V = new IntroSlide({QStringLiteral("quickMove"), QStringLiteral("alias")}, QT_TRANSLATE_NOOP("Quaydrop", "slide4Title"),
                           inTray ? QT_TRANSLATE_NOOP("Quaydrop", "slide4Text") : QT_TRANSLATE_NOOP("Quaydrop", "slide4TextNoTray"));
    for (QWidget *slide : {slide1V, slide2V, slide3V, slide4V})
        sliderView->addSlide(slide);

    auto *bottom = new QHBoxLayout;
    bottom->setContentsMargins(18, 0, 18, 0);
    dontShowAgainCheck = new QCheckBox(this);
    dontShowAgainCheck->setObjectName(QStringLiteral("dontShowAgainCheck"));
    dontShowAgainCheck->setChecked(SettingsStore::shared().boolValue(SettingsKey::DontShowIntroSlider));
    connect(dontShowAgainCheck, &QCheckBox::toggled, this, [](bool on) {
        SettingsStore::shared().setBool(SettingsKey::DontShowIntroSlider, on);
        SettingsStore::shared().synchronize();
    });
    prevBtn = new QPushButton(this);
    prevBtn->setObjectName(QStringLiteral("prevBtn"));
    nextBtn = new QPushButton(this);
    nextBtn->setObjectName(QStringLiteral("nextBtn"));
    nextBtn->setDefault(true);
    viewIntroBtn = new MXButton(QString(), this);
    viewIntroBtn->setObjectName(QStringLiteral("viewIntroBtn"));
    viewIntroBtn->setCornerRadius(7.0);
    viewIntroBtn->setBackgroundColor(QColor::fromRgbF(0.1f, 0.5f, 0.9f));
    viewIntroBtn->setHighlightColor(QColor::fromRgbF(0.0f, 0.4f, 0.8f));
    viewIntroBtn->setTextColor(Qt::white);
    viewIntroBtn->setHighlightTextColor(QColor(255, 255, 255, 200));
    bottom->addWidget(dontShowAgainCheck);
    bottom->addStretch(1);
    bottom->addWidget(viewIntroBtn);
    bottom->addWidget(prevBtn);
    bottom->addWidget(nextBtn);
    layout->addLayout(bottom);

    connect(prevBtn, &QPushButton::clicked, this, &QDIntroSlides::showPrevSlide);
    // On the last page the button ends the tour.
    connect(nextBtn, &QPushButton::clicked, this, [this] {
        if (sliderView->indexOfDisplayedSlide() >= sliderView->slides().size() - 1)
            close();
        else
            showNextSlide();
    });
    connect(sliderView, &MIHSliderView::slideShown, this, &QDIntroSlides::updateButtons);
    connect(viewIntroBtn, &QPushButton::clicked, this, &QDIntroSlides::showIntroOnMedium);
    retranslate();
}

void QDIntroSlides::showPrevSlide()
{
    const int index = sliderView->indexOfDisplayedSlide();
    if (index == 0)
        return;
    sliderView->transitionStyle = MIHSliderView::PushFromLeft;
    sliderView->displaySlideAtIndex(index - 1);
}

void QDIntroSlides::showNextSlide()
{
    const int index = sliderView->indexOfDisplayedSlide();
    if (index >= sliderView->slides().size() - 1)
        return;
    sliderView->transitionStyle = MIHSliderView::PushFromRight;
    sliderView->displaySlideAtIndex(index + 1);
}

void QDIntroSlides::showIntroOnMedium()
{
    if (Workspace *workspace = Platform::current().workspace)
        if (const Status s = workspace->openUrl(QString::fromLatin1(Endpoints::IntroArticle)); !s.ok())
            qWarning("cannot open the introduction: %s", qPrintable(s.error().message));
}

void QDIntroSlides::retranslate()
{
    setWindowTitle(Texts::localized("introWindowTitle"));
    dontShowAgainCheck->setText(Texts::localized("dontShowIntroAgain"));
    prevBtn->setText(Texts::localized("Back"));
    updateButtons();
    viewIntroBtn->setText(Texts::localized("viewIntroBtn"));
    for (QWidget *slide : {slide1V, slide2V, slide3V, slide4V})
        static_cast<IntroSlide *>(slide)->retranslate();
}

void QDIntroSlides::updateButtons()
{
    const int index = sliderView->indexOfDisplayedSlide();
    prevBtn->setEnabled(index > 0);
    nextBtn->setText(index >= sliderView->slides().size() - 1 ? Texts::localized("Done") : Texts::localized("Next"));
}

void QDIntroSlides::closeEvent(QCloseEvent *event)
{
    QWidget::closeEvent(event);
    Q_EMIT closed();
}

void QDIntroSlides::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QWidget::changeEvent(event);
}

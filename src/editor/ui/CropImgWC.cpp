#include "CropImgWC.h"

#include "AKPaintView.h"
#include "CropSuper.h"
#include "EditorIcons.h"
#include "EditorImageView.h"
#include "ResizePopover.h"
#include "core/texts/Texts.h"
#include "widgets/Spinner.h"
#include "widgets/controls/ITSwitch.h"

#include <QBoxLayout>
#include <QButtonGroup>
#include <QCheckBox>
#include <QCloseEvent>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QSlider>
#include <QToolButton>
#include <QUndoStack>

namespace {

constexpr int kTopBarHeight = 48;    // the two bars take the 100 points the window's fit leaves them
constexpr int kBottomBarHeight = 52;
constexpr int kSideMargin = 12;

QToolButton *toolButton(QWidget *parent, const char *name)
{
    auto *button = new QToolButton(parent);
    button->setObjectName(QString::fromLatin1(name));
    button->setAutoRaise(true);
    button->setIconSize(QSize(20, 20));
    button->setFocusPolicy(Qt::NoFocus);
    return button;
}

QLineEdit *numberField(QWidget *parent, const char *name, int width)
{
    auto *field = new QLineEdit(parent);
    field->setObjectName(QString::fromLatin1(name));
    field->setAlignment(Qt::AlignCenter);
    field->setFixedWidth(width);
    field->setValidator(new QIntValidator(0, 999999, field));
    return field;
}

// A thin divider in a faint shade of the text colour, right in light and dark themes alike.
class Separator : public QWidget
{
public:
    using QWidget::QWidget;
    QSize sizeHint() const override { return QSize(9, 24); }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter p(this);
        QColor c = palette().color(QPalette::WindowText);
        c.setAlpha(60);
        p.fillRect(QRect(width() / 2, 4, 1, height() - 8), c);
    }
};

QWidget *separator(QWidget *parent)
{
    return new Separator(parent);
}

} // namespace

CropImgWC::CropImgWC(QWidget *parent) : QWidget(parent, Qt::Window), m_undoStack(new QUndoStack(this))
{
    setObjectName(QStringLiteral("CropImgWC"));
    setAttribute(Qt::WA_DeleteOnClose, false);
    buildToolbars();
    retranslate();
    setMinimumSize(contentMinSize().toSize());
    connect(m_undoStack, &QUndoStack::indexChanged, this, [this] {
        m_modified = true;
        undoBtn->setEnabled(m_undoStack->canUndo());
        redoBtn->setEnabled(m_undoStack->canRedo());
    });
    connect(&m_loading, &QFutureWatcher<Result<LoadedPicture>>::finished, this, &CropImgWC::pictureLoaded);
}

CropImgWC::~CropImgWC()
{
    m_loading.waitForFinished();
}

QSizeF CropImgWC::contentMinSize() const
{
    return QSizeF(900, 600);
}

void CropImgWC::buildToolbars()
{
    cropSuper = new CropSuper(this);
    imgToRotateOrCrop = new EditorImageView(cropSuper);
    paintView = new AKPaintView(cropSuper);
    paintView->setUndoStack(m_undoStack);
    imgCropView = cropSuper->cropV;
    imgCropView->setDelegate(this);
    imgCropView->raise();
    resizeimgPopover = new ResizePopover(this);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(buildTopBar());
    auto *work = new QHBoxLayout;
    work->setContentsMargins(kSideMargin, 0, kSideMargin, 0);
    work->addWidget(cropSuper, 1);
    layout->addLayout(work, 1);
    layout->addWidget(buildBottomBar());

    connect(cropVisblSwitch, &ITSwitch::switched, this, &CropImgWC::setPaintMode);
    connect(resizeimgPopover, &ResizePopover::resizeDonePressed, this, &CropImgWC::resizeDonePressed);
    connect(resizeimgPopover, &ResizePopover::proportionToggled, this, &CropImgWC::proportionCBAction);
    connect(resizeimgPopover, &ResizePopover::controlTextDidChange, this, &CropImgWC::controlTextDidChange);
    connect(resizeimgPopover, &ResizePopover::stepRequested, this, [this](QLineEdit *field, bool up) {
        if (const auto next = CropSizeEntry::steppedField(fieldKind(field), field->text(), up, entryContext())) {
            field->setText(*next);
            controlTextDidChange(field);
        }
    });
    connect(paintView, &AKPaintView::strokeFinished, this, [this] { m_modified = true; });
    for (QLineEdit *field : {cropSizeWidthTF, cropSizeHeightTF, brusSizeLbl}) {
        field->installEventFilter(this);
        connect(field, &QLineEdit::textEdited, this, [this, field] { textDidChange(field); });
        connect(field, &QLineEdit::editingFinished, this, [this, field] { textDidEndEditing(field); });
    }
    setPaintMode(false);
}

QWidget *CropImgWC::buildTopBar()
{
    auto *bar = new QWidget(this);
    bar->setObjectName(QStringLiteral("editorTopBar"));
    bar->setFixedHeight(kTopBarHeight);
    auto *row = new QHBoxLayout(bar);
    row->setContentsMargins(kSideMargin, 6, kSideMargin, 6);

    auto *cropLabel = new QLabel(bar);
    cropLabel->setObjectName(QStringLiteral("cropModeLabel"));
    cropVisblSwitch = new ITSwitch(bar);
    cropVisblSwitch->setObjectName(QStringLiteral("cropVisblSwitch"));
    auto *paintLabel = new QLabel(bar);
    paintLabel->setObjectName(QStringLiteral("paintModeLabel"));
    row->addWidget(cropLabel);
    row->addWidget(cropVisblSwitch);
    row->addWidget(paintLabel);
    row->addSpacing(8);
    row->addWidget(separator(bar));

    cropTools = new QWidget(bar);
    cropTools->setObjectName(QStringLiteral("cropTools"));
    auto *crop = new QHBoxLayout(cropTools);
    crop->setContentsMargins(0, 0, 0, 0);
    auto *wLabel = new QLabel(cropTools);
    wLabel->setObjectName(QStringLiteral("cropWidthLabel"));
    cropSizeWidthTF = numberField(cropTools, "cropSizeWidthTF", 64);
    auto *times = new QLabel(QStringLiteral("×"), cropTools);
    auto *hLabel = new QLabel(cropTools);
    hLabel->setObjectName(QStringLiteral("cropHeightLabel"));
    cropSizeHeightTF = numberField(cropTools, "cropSizeHeightTF", 64);
    auto *px = new QLabel(QStringLiteral("px"), cropTools);
    auto *full = toolButton(cropTools, "refreshCropSizeBtn");
    connect(full, &QToolButton::clicked, this, &CropImgWC::refreshCropSizeBtnAction);
    for (QWidget *w : std::initializer_list<QWidget *>{wLabel, cropSizeWidthTF, times, hLabel, cropSizeHeightTF, px, full})
        crop->addWidget(w);
    crop->addSpacing(6);
    static const char *const alignNames[] = {"alignCentreBtn", "alignBottomLeftBtn", "alignBottomRightBtn",
                                             "alignTopLeftBtn", "alignTopRightBtn"};
    for (int tag = 0; tag < 5; ++tag) {
        auto *button = toolButton(cropTools, alignNames[tag]);
        button->setProperty("alignmentTag", tag);
        button->setIconSize(QSize(16, 16));
        connect(button, &QToolButton::clicked, this, [this, tag] { changeCropAlignment(tag); });
        crop->addWidget(button);
    }
    row->addWidget(cropTools);
    row->addWidget(separator(bar));

    auto *left = toolButton(bar, "rotateLeftBtn");
    auto *right = toolButton(bar, "rotateRightBtn");
    resizeImBtn = toolButton(bar, "resizeImBtn");
    auto *revert = toolButton(bar, "revertBtn");
    connect(left, &QToolButton::clicked, this, &CropImgWC::rotateBy90Left);
    connect(right, &QToolButton::clicked, this, &CropImgWC::rotateBy90right);
    connect(resizeImBtn, &QToolButton::clicked, this, &CropImgWC::showResizePopOver);
    connect(revert, &QToolButton::clicked, this, &CropImgWC::revertCropChanges);
    for (QWidget *w : std::initializer_list<QWidget *>{left, right, resizeImBtn, revert})
        row->addWidget(w);
    row->addStretch(1);

    // The system markup service has no Linux counterpart: the paint tools stand in for it.
    markupbtn = toolButton(bar, "markupbtn");
    markupbtn->hide();
    markupbtn->setEnabled(false);
    shareProgressIndic = new Spinner(bar, 20);
    shareProgressIndic->setObjectName(QStringLiteral("shareProgressIndic"));
    shareProgressIndic->hide();
    shareCWimgBtn = toolButton(bar, "shareCWimgBtn");
    shareCWimgBtn->hide(); // shown when the desktop has a share service
    connect(shareCWimgBtn, &QToolButton::clicked, this, &CropImgWC::showSharePopCW);
    saveProgrIndic = new Spinner(bar, 20);
    saveProgrIndic->setObjectName(QStringLiteral("saveProgrIndic"));
    saveProgrIndic->hide();
    saveBtn = new QPushButton(bar);
    saveBtn->setObjectName(QStringLiteral("saveBtn"));
    saveBtn->setDefault(true);
    saveBtn->setFocusPolicy(Qt::NoFocus);
    connect(saveBtn, &QPushButton::clicked, this, [this] { saveCropRotateResult(); });
    for (QWidget *w : std::initializer_list<QWidget *>{markupbtn, shareProgressIndic, shareCWimgBtn, saveProgrIndic, saveBtn})
        row->addWidget(w);
    return bar;
}

QWidget *CropImgWC::buildBottomBar()
{
    auto *bar = new QWidget(this);
    bar->setObjectName(QStringLiteral("editorBottomBar"));
    bar->setFixedHeight(kBottomBarHeight);
    auto *row = new QHBoxLayout(bar);
    row->setContentsMargins(kSideMargin, 8, kSideMargin, 8);

    drawingTbox = new QWidget(bar);
    drawingTbox->setObjectName(QStringLiteral("drawingTbox"));
    auto *tools = new QHBoxLayout(drawingTbox);
    tools->setContentsMargins(0, 0, 0, 0);
    drawingSegment = new QButtonGroup(this);
    drawingSegment->setExclusive(true);
    for (int segment = 0; segment < 2; ++segment) {
        auto *button = toolButton(drawingTbox, segment == 0 ? "brushSegment" : "eraserSegment");
        button->setCheckable(true);
        button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        drawingSegment->addButton(button, segment);
        tools->addWidget(button);
    }
    drawingSegment->button(0)->setChecked(true);
    connect(drawingSegment, &QButtonGroup::idClicked, this, &CropImgWC::brushEraserChanged);
    brushColorWell = toolButton(drawingTbox, "brushColorWell");
    connect(brushColorWell, &QToolButton::clicked, this, [this] { colorChanged(QColor()); });
    tools->addWidget(brushColorWell);
    tools->addSpacing(8);
    auto *sizeLabel = new QLabel(drawingTbox);
    sizeLabel->setObjectName(QStringLiteral("brushSizeLabel"));
    brushSizeSlider = new QSlider(Qt::Horizontal, drawingTbox);
    brushSizeSlider->setObjectName(QStringLiteral("brushSizeSlider"));
    brushSizeSlider->setRange(1, 100);
    brushSizeSlider->setFixedWidth(140);
    brushSizeSlider->setFocusPolicy(Qt::NoFocus);
    connect(brushSizeSlider, &QSlider::sliderMoved, this, &CropImgWC::brushSizeChanged);
    connect(brushSizeSlider, &QSlider::actionTriggered, this, [this](int action) {
        if (action != QAbstractSlider::SliderMove)
            QMetaObject::invokeMethod(this, [this] { brushSizeChanged(brushSizeSlider->value()); }, Qt::QueuedConnection);
    });
    brusSizeLbl = numberField(drawingTbox, "brusSizeLbl", 44);
    tools->addWidget(sizeLabel);
    tools->addWidget(brushSizeSlider);
    tools->addWidget(brusSizeLbl);
    tools->addSpacing(8);
    undoBtn = toolButton(drawingTbox, "undoBtn");
    redoBtn = toolButton(drawingTbox, "redoBtn");
    undoBtn->setEnabled(false);
    redoBtn->setEnabled(false);
    connect(undoBtn, &QToolButton::clicked, this, &CropImgWC::undoPressed);
    connect(redoBtn, &QToolButton::clicked, this, &CropImgWC::redoPressed);
    tools->addWidget(undoBtn);
    tools->addWidget(redoBtn);
    row->addWidget(drawingTbox);
    row->addStretch(1);

    origSizeLbl = new QLabel(bar);
    origSizeLbl->setObjectName(QStringLiteral("origSizeLbl"));
    origSizeLbl->setForegroundRole(QPalette::PlaceholderText);
    closeWindafterSaveCheckbox = new QCheckBox(bar);
    closeWindafterSaveCheckbox->setObjectName(QStringLiteral("closeWindafterSaveCheckbox"));
    closeWindafterSaveCheckbox->setChecked(true);
    closeWindafterSaveCheckbox->setFocusPolicy(Qt::NoFocus);
    row->addWidget(origSizeLbl);
    row->addSpacing(12);
    row->addWidget(closeWindafterSaveCheckbox);
    return bar;
}

void CropImgWC::retranslate()
{
    findChild<QLabel *>(QStringLiteral("cropModeLabel"))->setText(Texts::localized("editorCrop"));
    findChild<QLabel *>(QStringLiteral("paintModeLabel"))->setText(Texts::localized("editorPaint"));
    cropVisblSwitch->setToolTip(Texts::localized("editorModeTip"));
    findChild<QLabel *>(QStringLiteral("cropWidthLabel"))->setText(Texts::localized("editorWidthShort"));
    findChild<QLabel *>(QStringLiteral("cropHeightLabel"))->setText(Texts::localized("editorHeightShort"));
    cropSizeWidthTF->setToolTip(Texts::localized("Width"));
    cropSizeHeightTF->setToolTip(Texts::localized("Height"));
    findChild<QToolButton *>(QStringLiteral("refreshCropSizeBtn"))->setToolTip(Texts::localized("editorFullSizeTip"));
    static const char *const alignKeys[] = {"editorAlignCentre", "editorAlignBottomLeft", "editorAlignBottomRight",
                                            "editorAlignTopLeft", "editorAlignTopRight"};
    for (QToolButton *b : cropTools->findChildren<QToolButton *>())
        if (b->property("alignmentTag").isValid())
            b->setToolTip(Texts::localized(alignKeys[b->property("alignmentTag").toInt()]));
    findChild<QToolButton *>(QStringLiteral("rotateLeftBtn"))->setToolTip(Texts::localized("editorRotateLeftTip"));
    findChild<QToolButton *>(QStringLiteral("rotateRightBtn"))->setToolTip(Texts::localized("editorRotateRightTip"));
    resizeImBtn->setToolTip(Texts::localized("editorResizeTip"));
    findChild<QToolButton *>(QStringLiteral("revertBtn"))->setToolTip(Texts::localized("editorRevertTip"));
    shareCWimgBtn->setToolTip(Texts::localized("Share"));
    saveBtn->setText(Texts::localized("Save"));
    saveBtn->setToolTip(Texts::localized("editorSaveTip"));
    drawingSegment->button(0)->setText(Texts::localized("editorBrush"));
    drawingSegment->button(1)->setText(Texts::localized("editorEraser"));
    brushColorWell->setToolTip(Texts::localized("editorColour"));
    findChild<QLabel *>(QStringLiteral("brushSizeLabel"))->setText(Texts::localized("editorBrushSize"));
    brushSizeSlider->setToolTip(Texts::localized("editorBrushSize"));
    undoBtn->setToolTip(Texts::localized("editorUndo"));
    redoBtn->setToolTip(Texts::localized("editorRedo"));
    closeWindafterSaveCheckbox->setText(Texts::localized("editorCloseAfterSave"));
    if (!imgPathToProcess.isEmpty())
        origSizeLbl->setText(Texts::localized("editorOriginalSize").arg(origSizeLbl->property("pixels").toString()));
    refreshIcons();
}

void CropImgWC::refreshIcons()
{
    using EditorIcons::Kind;
    const QPalette pal = palette();
    const auto set = [&](const char *name, Kind kind) {
        if (auto *b = findChild<QToolButton *>(QString::fromLatin1(name)))
            b->setIcon(EditorIcons::icon(kind, pal));
    };
    set("refreshCropSizeBtn", Kind::FullSize);
    set("alignCentreBtn", Kind::AlignCentre);
    set("alignBottomLeftBtn", Kind::AlignBottomLeft);
    set("alignBottomRightBtn", Kind::AlignBottomRight);
    set("alignTopLeftBtn", Kind::AlignTopLeft);
    set("alignTopRightBtn", Kind::AlignTopRight);
    set("rotateLeftBtn", Kind::RotateLeft);
    set("rotateRightBtn", Kind::RotateRight);
    set("resizeImBtn", Kind::Resize);
    set("revertBtn", Kind::Revert);
    set("shareCWimgBtn", Kind::Share);
    set("brushSegment", Kind::Brush);
    set("eraserSegment", Kind::Eraser);
    set("undoBtn", Kind::Undo);
    set("redoBtn", Kind::Redo);
    syncBrushControls();
}

void CropImgWC::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    else if (event->type() == QEvent::PaletteChange)
        refreshIcons();
    QWidget::changeEvent(event);
}

void CropImgWC::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    if (!m_fitting && isVisible())
        m_userSized = true;
    // The work area has its new size only once the layout has run.
    QMetaObject::invokeMethod(this, [this] { makeCropViewFitImgBounds(); }, Qt::QueuedConnection);
}

void CropImgWC::closeEvent(QCloseEvent *event)
{
    if (m_modified && !m_closingAsked) {
        event->ignore();
        askToSaveChanges(QString(), [this](bool proceed) {
            if (!proceed)
                return;
            m_closingAsked = true;
            close();
        });
        return;
    }
    m_closingAsked = false;
    windowWillClose();
    QWidget::closeEvent(event);
}

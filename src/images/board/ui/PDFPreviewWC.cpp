#include "PDFPreviewWC.h"

#include "ImageBrowserCell.h"
#include "LRHMIKImageBrowserView.h"
#include "PageBoardModel.h"
#include "core/fs/NativePath.h"
#include "core/fs/PathParts.h"
#include "core/texts/Texts.h"
#include "images/board/BoardExportJob.h"
#include "images/board/LRHMPagesManager.h"
#include "images/board/PageThumbnails.h"
#include "utils/Utils.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QCloseEvent>
#include <QCursor>
#include <QFileDialog>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QToolButton>
#include <QToolTip>

namespace {

constexpr quint64 kExportCredit = 300;

QString shortPath(const QString &path)
{
    return QStringLiteral("to ../%1/%2").arg(PathParts::lastComponent(PathParts::parent(path)), PathParts::lastComponent(path));
}

} // namespace

PDFPreviewWC::PDFPreviewWC(QWidget *parent)
    : QWidget(parent, Qt::Window), m_pages(LRHMPagesManager::shareImagesManager()), m_thumbnails(new PageThumbnails(this))
{
    setObjectName(QStringLiteral("PDFPreviewWC"));
    resize(860, 600);
    auto *outer = new QVBoxLayout(this);
    auto *tools = new QHBoxLayout;
    const struct
    {
        int tag;
        const char *icon, *tip, *keys;
    } actions[] = {{kRotateLeft, "object-rotate-left", "rotateLeftBtn", "Ctrl+L"},
                   {kRotateRight, "object-rotate-right", "rotateRightBtn", "Ctrl+R"},
                   {kFlipHorizontal, "object-flip-horizontal", "flipHorizontalBtn", "Ctrl+Shift+H"},
                   {kFlipVertical, "object-flip-vertical", "flipVerticalBtn", "Ctrl+Shift+V"}};
    for (const auto &a : actions) {
        auto *b = new QToolButton(this);
        b->setObjectName(QString::fromLatin1(a.tip));
        b->setIcon(QIcon::fromTheme(QString::fromLatin1(a.icon)));
        b->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        b->setProperty("tag", a.tag);
        m_texts.add(b, a.tip);
        connect(b, &QToolButton::clicked, this, [this, tag = a.tag] { imageAction(tag); });
        // The keys reach the action with nothing selected too, which then says what to do.
        connect(new QShortcut(QKeySequence(QString::fromLatin1(a.keys)), this), &QShortcut::activated, this,
                [this, tag = a.tag] { imageAction(tag); });
        tools->addWidget(b);
        m_transformButtons << b;
    }
    tools->addStretch(1);
    auto *hint = new QToolButton(this);
    hint->setObjectName(QStringLiteral("previewHintBtn"));
    hint->setText(QStringLiteral("?"));
    connect(hint, &QToolButton::clicked, this, &PDFPreviewWC::showPreviewHint);
    tools->addWidget(hint);
    outer->addLayout(tools);

    imageBrowserView = new LRHMIKImageBrowserView(this);
    m_model = new PageBoardModel(m_pages, *m_thumbnails, this);
    imageBrowserView->setModel(m_model);
    outer->addWidget(imageBrowserView, 1);
    connect(imageBrowserView, &LRHMIKImageBrowserView::removeItems, this, &PDFPreviewWC::removeItems);
    connect(imageBrowserView->selectionModel(), &QItemSelectionModel::selectionChanged, this, &PDFPreviewWC::selectionChanged);
    connect(m_model, &QAbstractItemModel::modelReset, this, [this] {
        selectionChanged();
        setExportBtnEnable();
    });
    connect(m_model, &PageBoardModel::filesDropped, this, &PDFPreviewWC::loadPageItemImagesWithPaths);
    connect(m_model, &PageBoardModel::rowsMovedTo, this, [this](int first, int count) {
        QItemSelection moved(m_model->index(first), m_model->index(first + count - 1));
        imageBrowserView->selectionModel()->select(moved, QItemSelectionModel::ClearAndSelect);
    });

    auto *bottom = new QHBoxLayout;
    mergeToPDFCheckBox = new QCheckBox(this);
    mergeToPDFCheckBox->setObjectName(QStringLiteral("mergeToPDFCheckBox"));
    mergeToPDFCheckBox->setChecked(true);
    m_texts.add(mergeToPDFCheckBox, "Merge into one PDF");
    bottom->addWidget(mergeToPDFCheckBox);
    m_status = new QLabel(this);
    m_status->setObjectName(QStringLiteral("boardStatus"));
    bottom->addWidget(m_status, 1);
    m_exportButton = new QPushButton(this);
    m_exportButton->setObjectName(QStringLiteral("exportPdfBtn"));
    m_exportButton->setDefault(true);
    m_texts.add(m_exportButton, "exportPDFBtn");
    connect(m_exportButton, &QPushButton::clicked, this, &PDFPreviewWC::exportPdf);
    bottom->addWidget(m_exportButton);
    outer->addLayout(bottom);

    m_texts.retranslate();
    setWindowTitle(Texts::localized("PDFPreviewTitle"));
    selectionChanged();
    setExportBtnEnable();
}

PDFPreviewWC::~PDFPreviewWC() = default;

QStringList PDFPreviewWC::loadPageItemImagesWithPaths(const QStringList &paths)
{
    QStringList taken;
    for (const QString &path : paths)
        if (loadPageImageWith(path))
            taken << path;
    setExportBtnEnable();
    return taken;
}

bool PDFPreviewWC::loadPageImageWith(const QString &path)
{
    if (!LRHMPagesManager::supportImageTypes().contains(PathParts::splitExtension(PathParts::lastComponent(path)).extension.toLower()))
        return false;
    // A damaged file would only be an empty cell and a missing page: it is left out at once.
    if (Utils::getImageDimensionsAtPathInSize(path).isEmpty()) {
        qWarning("page board: %s left out: not a readable image", qPrintable(NativePath::forDisplay(path)));
        return false;
    }
    return m_pages.loadPageImageWith(path);
}

void PDFPreviewWC::imageAction(int tag)
{
    const QList<qsizetype> rows = imageBrowserView->selectedRows();
    if (rows.isEmpty()) {
        showHint(qobject_cast<QWidget *>(sender()), Texts::localized("plsSelectImagePDFPreviewHint"));
        return;
    }
    const QTransform rotation = LRHMTransformManager::rotateTransformWith({}, tag == kRotateLeft ? 90.0 : -90.0);
    for (qsizetype row : rows) {
        QTransform t = rotation;
        if (tag == kFlipHorizontal || tag == kFlipVertical) {
            // The rectangle is the picture as it looks now, its present turn included.
            const auto item = m_pages.pageItemAt(row);
            const QSize upright = Utils::getImageDimensionsAtPathInSize(item->filePath).toSize();
            const QRectF rect(QPointF(0, 0), QSizeF(PageGeometry::transformedSize(upright, item->transform)));
            t = tag == kFlipHorizontal ? LRHMTransformManager::horizontalFlipTransformWith(rect)
                                       : LRHMTransformManager::verticalFlipTransformWith(rect);
        }
        m_pages.appendTransform(t, row);
        m_pages.autoReloadPageItemIdentifyAt(row);
    }
}

void PDFPreviewWC::exportPdf()
{
    if (!hasItemsInBrowserView()) {
        showHint(m_exportButton, QStringLiteral("No images to convert"));
        return;
    }
    auto *dialog = new QFileDialog(this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowModality(Qt::WindowModal);
    const bool merge = mergeToPDFCheckBox->isChecked();
    if (merge) {
        dialog->setAcceptMode(QFileDialog::AcceptSave);
        dialog->setNameFilter(QStringLiteral("PDF (*.pdf)"));
        dialog->setDefaultSuffix(QStringLiteral("pdf"));
        dialog->setDirectory(Utils::existingStartFolder(Utils::getSavePanelURL()));
        dialog->selectFile(QStringLiteral("pdf_Quaydrop.pdf"));
    } else {
        dialog->setFileMode(QFileDialog::Directory);
        dialog->setOption(QFileDialog::ShowDirsOnly);
        dialog->setWindowTitle(Texts::localized("Save result to..."));
        dialog->setDirectory(Utils::existingStartFolder(Utils::getOpenPanelURL()));
    }
    connect(dialog, &QFileDialog::fileSelected, this, [this, merge](const QString &chosen) {
        merge ? exportPdfTo(chosen) : doExportOneByOneAsPDFtoDestParPath(chosen);
    });
    dialog->open();
}

BoardExportJob *PDFPreviewWC::exportPdfTo(const QString &path)
{
    Utils::overWriteSavePanelLastSaveURL(PathParts::parent(path));
    return startExport(true, path);
}

BoardExportJob *PDFPreviewWC::doExportOneByOneAsPDFtoDestParPath(const QString &folder)
{
    Utils::overWriteOpenPanelLastSaveURL(folder);
    return startExport(false, folder);
}

BoardExportJob *PDFPreviewWC::startExport(bool merge, const QString &destination)
{
    if (m_export)
        return nullptr; // one export at a time; the button is off meanwhile
    Utils::saveChangesToTimeSavedPlistByAddingSec(kExportCredit);
    BoardExportJob::Request request{{}, merge, destination};
    for (const LRHMPageItem &item : m_pages.items())
        request.pages.append({item.filePath, item.transform});
    auto *job = new BoardExportJob(request, this);
    m_export = job;
    m_exportButton->setEnabled(false);
    connect(job, &ImageBatchJob::progress, this, [this](int done, int total, const QString &) {
        m_status->setText(Texts::localized("exportingPagesLbl").arg(done).arg(total));
    });
    connect(job, &ImageBatchJob::finished, this, [this, job, merge, destination] { exportFinished(job, merge, destination); });
    job->start();
    return job;
}

void PDFPreviewWC::exportFinished(BoardExportJob *job, bool merge, const QString &destination)
{
    job->deleteLater();
    m_status->clear();
    setExportBtnEnable();
    const QStringList written = job->written();
    if (!job->failures().isEmpty()) {
        QStringList lines;
        for (const Error &e : job->failures())
            lines << e.message;
        Utils::showBasicAlertwithTitle(written.isEmpty() ? Texts::localized("nothingWrittenTitle")
                                                         : Texts::localized("pagesLeftOutTitle").arg(job->failures().size()),
                                       lines.join(QLatin1Char('\n')));
    }
    if (written.isEmpty())
        return;
    const QString body = shortPath(destination);
    Utils::postSimpleNotificationWithTitle(merge ? QStringLiteral("PDF saved!") : QStringLiteral("PDFs saved!"), body,
                                           Texts::localized("revealShowFileBtn"), {{QStringLiteral("filePaths"), written}});
    close();
}

void PDFPreviewWC::removeItems(const QList<qsizetype> &rows)
{
    m_pages.removeItems(rows);
    setExportBtnEnable();
}

void PDFPreviewWC::showPreviewHint()
{
    showHint(qobject_cast<QWidget *>(sender()), Texts::localized("PDFPreviewHint"));
}

void PDFPreviewWC::showHint(QWidget *anchor, const QString &text)
{
    QToolTip::showText(QCursor::pos(), text, anchor ? anchor : this);
}

bool PDFPreviewWC::hasItemsInBrowserView() const
{
    return m_pages.pageImageCount() > 0;
}

void PDFPreviewWC::setExportBtnEnable()
{
    isCanExport = hasItemsInBrowserView();
    m_exportButton->setEnabled(isCanExport && !m_export);
}

void PDFPreviewWC::selectionChanged()
{
    isEnable = !imageBrowserView->selectedRows().isEmpty();
    for (QToolButton *b : std::as_const(m_transformButtons))
        b->setEnabled(isEnable);
}

void PDFPreviewWC::closeEvent(QCloseEvent *event)
{
    m_thumbnails->forgetPending();
    m_pages.cleanUpCache();
    QWidget::closeEvent(event);
}

void PDFPreviewWC::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::LanguageChange) {
        m_texts.retranslate();
        setWindowTitle(Texts::localized("PDFPreviewTitle"));
    }
    QWidget::changeEvent(event);
}

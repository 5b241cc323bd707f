#pragma once

// The page board: a window of thumbnails out of which the user makes a PDF. Pages are dropped in,
// reordered, removed, turned and flipped (the files are never touched), and exported as one merged
// PDF or as one PDF per page. Closing the window empties the board.

#include "widgets/TranslatedTexts.h"

#include <QPointer>
#include <QWidget>

class BoardExportJob;
class LRHMIKImageBrowserView;
class LRHMPagesManager;
class PageBoardModel;
class PageThumbnails;
class QCheckBox;
class QLabel;
class QPushButton;
class QToolButton;

class PDFPreviewWC : public QWidget
{
    Q_OBJECT
public:
    enum ImageAction { kRotateLeft = 1, kRotateRight = 2, kFlipHorizontal = 3, kFlipVertical = 4 };

    explicit PDFPreviewWC(QWidget *parent = nullptr);
    ~PDFPreviewWC() override;

    // Only existing page images that can be read are taken; the others are left out, one log line each.
    QStringList loadPageItemImagesWithPaths(const QStringList &paths);
    bool loadPageImageWith(const QString &path);
    void imageAction(int tag);
    void exportPdf();
    // The two exports without their dialogs; the job reports and then the window closes.
    BoardExportJob *exportPdfTo(const QString &path);
    BoardExportJob *doExportOneByOneAsPDFtoDestParPath(const QString &folder);
    void removeItems(const QList<qsizetype> &rows);
    void showPreviewHint();
    bool hasItemsInBrowserView() const;

    bool isEnable = false;    // the selection is not empty: the transform buttons work
    bool isCanExport = false; // the board has pages: the export button works
    QCheckBox *mergeToPDFCheckBox;
    LRHMIKImageBrowserView *imageBrowserView;
    PageThumbnails *thumbnails() const { return m_thumbnails; }

protected:
    void closeEvent(QCloseEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void setExportBtnEnable();
    void selectionChanged();
    BoardExportJob *startExport(bool merge, const QString &destination);
    void exportFinished(BoardExportJob *job, bool merge, const QString &destination);
    void showHint(QWidget *anchor, const QString &text);

    LRHMPagesManager &m_pages;
    PageThumbnails *m_thumbnails;
    PageBoardModel *m_model;
    QList<QToolButton *> m_transformButtons;
    QPushButton *m_exportButton;
    QLabel *m_status;
    QPointer<BoardExportJob> m_export;
    TranslatedTexts m_texts;
};

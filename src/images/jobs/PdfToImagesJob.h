#pragma once

#include "ImageBatchJob.h"

// Cuts a PDF into one image per page in a new folder. Pages are rendered by image workers on every
// core at once and written strictly in page order, so the folder always holds Page_1 .. Page_k with
// nothing missing. A folder that would stay empty because every page failed is not left behind.
class PdfToImagesJob : public ImageBatchJob
{
    Q_OBJECT
public:
    struct Request
    {
        QString sourcePath;       // the document; it names the new folder
        QByteArray password;      // empty when it opens without one
        QString destParentFolder; // where the new folder is made
        qint64 imgType = 1;       // 1 PNG, 2 JPEG, 3 BMP, 4 TIFF
        float dpi = 150.0f;
    };

    explicit PdfToImagesJob(Request request, QObject *parent = nullptr);
    ~PdfToImagesJob() override;

    // The folder made for the pages; empty until the job has made it.
    QString folder() const { return m_folder; }
    // True when a page below one pixel ended the work early, as pages after it are not written.
    bool stoppedEarly() const { return m_stoppedEarly; }
    int pageCount() const { return m_pageCount; }
    // Pages rendered at the same time; at least one.
    int parallelPages = 0;

protected:
    void run() override;

private:
    Status makeFolder();

    const Request m_request;
    // Written by the worker, read once finished() has come.
    QString m_folder;
    bool m_stoppedEarly = false;
    int m_pageCount = 0;
};

#pragma once

#include "images/jobs/ImageBatchJob.h"
#include "images/pdf/ImagesToPdf.h"

// The page board's export, in the board's order with each page's turn: one merged PDF at a path the
// user chose (replacing what was there once the new one is complete), or one PDF per page into a
// folder, named after the page's file (two pages of one name: the last one stands). A page whose file
// is gone or damaged is left out and reported; the rest is written.
class BoardExportJob : public ImageBatchJob
{
    Q_OBJECT
public:
    struct Request
    {
        QList<ImagesToPdf::Page> pages;
        bool merge = true;
        QString destination; // the PDF when merging, else the folder
    };

    explicit BoardExportJob(Request request, QObject *parent = nullptr);
    ~BoardExportJob() override;

protected:
    void run() override;

private:
    const Request m_request;
};

#pragma once

#include "ImageBatchJob.h"

// The convert overlay's work: each image to another type (tags 1 to 4), or to PDF (tag 5), one
// after another. Outputs take free names: nothing that exists is replaced.
class ConvertJob : public ImageBatchJob
{
    Q_OBJECT
public:
    struct Request
    {
        QStringList paths; // the dropped images
        bool multiFiles = false;
        bool mergeToPdf = false;
        QString folder;     // where the outputs go
        QString srcImgPath; // the one image when not multiFiles
        float factor = 1.0f;
        qint64 tag = 1;
        std::optional<quint64> imageType; // an encoder no tag names (JPEG 2000); wins over the tag
        bool orderAsGiven = false;        // a merged PDF's pages in the order of `paths`, not by name
    };

    static constexpr qint64 kPdfTag = 5;
    // 1 PNG, 2 JPEG, 3 BMP, 4 TIFF; nothing for any other tag.
    static std::optional<quint64> imageTypeForTag(qint64 tag);
    // The slider's percentage of compression, snapped to its steps of 5, as an encoder's factor:
    // 0 % is 1.0 (best), 100 % is 0.0.
    static float factorForSlider(float percent, float step = 5.0f);
    static float snappedSliderValue(float percent, float step = 5.0f);

    explicit ConvertJob(Request request, QObject *parent = nullptr);
    ~ConvertJob() override;

    // One image on the caller's thread, credited before anything can fail: the output's path.
    Result<QString> convertImg2Type(quint64 code, float factor, const QString &origImgPath, const QString &destParFolder);

protected:
    void run() override;

private:
    void runToImages(const QStringList &sources, quint64 code);
    void runToPdf(const QStringList &sources);

    const Request m_request;
};

#pragma once

#include "utils/Result.h"

#include <QFile>
#include <QImageReader>
#include <QSize>

#include <memory>

namespace ImageSize {

// A reader of Qt's own for the common types (PNG, JPEG, GIF, BMP, TIFF, WebP), judged by the file's
// first bytes, with its file; EXIF orientations are applied. It reads the header only until asked for
// pixels.
class CommonReader
{
public:
    // Nothing for any other type.
    static std::unique_ptr<CommonReader> open(const QString &path);
    QImageReader &reader() { return m_reader; }

private:
    CommonReader() = default;
    QFile m_file; // before the reader, which reads it
    QImageReader m_reader;
};

// The file's pixel size as it is seen (a photo whose EXIF orientation turns it by a quarter has its
// sides swapped), from the header alone: Qt's readers for the common types in this process, the
// image worker for the rest.
Result<QSize> ofFile(const QString &path);

} // namespace ImageSize

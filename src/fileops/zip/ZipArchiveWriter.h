#pragma once

#include "utils/Result.h"

#include <QByteArray>

#include <memory>

struct ZipEntry;

// Writes a zip archive on an open file descriptor, entry after entry, through minizip. The data of a
// file comes already deflated (or stored), so that the compression can run elsewhere. Names are
// marked as UTF-8 when they are (bit 11), else stored as their bytes; Unix modes and links survive.
class ZipArchiveWriter
{
public:
    explicit ZipArchiveWriter(int fd); // the descriptor stays the caller's
    ~ZipArchiveWriter();
    ZipArchiveWriter(const ZipArchiveWriter &) = delete;
    ZipArchiveWriter &operator=(const ZipArchiveWriter &) = delete;

    // A folder or a link entry, whole.
    Status addFolder(const ZipEntry &entry);
    Status addLink(const ZipEntry &entry, const QByteArray &target);

    // A file entry: begin, its compressed bytes in any number of pieces, end with the size and CRC-32
    // of the uncompressed data.
    Status beginFile(const ZipEntry &entry, bool deflated);
    Status writeData(const char *data, qint64 size);
    Status endFile(quint64 uncompressedSize, quint32 crc);

    // The central directory; nothing else may be written after it.
    Status finish();

    static constexpr const char *kErrorDomain = "Zip";

private:
    struct Sink;
    Status begin(const ZipEntry &entry, int method);
    Status failure(int code, const char *what) const;

    std::unique_ptr<Sink> m_sink;
    void *m_zip = nullptr;
};

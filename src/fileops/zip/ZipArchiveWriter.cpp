#include "ZipArchiveWriter.h"

#include "ZipPlan.h"

#include <QByteArrayView>

#include <minizip/zip.h>

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <ctime>

namespace {

constexpr uLong kMadeByUnix = (3u << 8) | 30u; // Unix, zip 3.0
constexpr uLong kUtf8Flag = 1u << 11;
constexpr uLong kMsDosFolder = 0x10;
constexpr quint64 kZip64From = 0xF0000000ull; // a margin below 4 GiB for files that grow meanwhile
constexpr qint64 kBufferBytes = 1 << 20;

uLong dosDateTime(qint64 seconds)
{
    const time_t t = time_t(seconds);
    struct tm tm;
    if (!::localtime_r(&t, &tm) || tm.tm_year < 80)
        return (1u << 21) | (1u << 16); // 1980-01-01, the earliest a zip can say
    return (uLong(tm.tm_year - 80) << 25) | (uLong(tm.tm_mon + 1) << 21) | (uLong(tm.tm_mday) << 16) |
           (uLong(tm.tm_hour) << 11) | (uLong(tm.tm_min) << 5) | uLong(tm.tm_sec / 2);
}

// "UT": the modification time in UTC to the second, which the DOS time cannot hold.
QByteArray extendedTimestamp(qint64 seconds)
{
    QByteArray field;
    const quint32 t = quint32(seconds);
    const char bytes[] = {'U', 'T', 5, 0, 1, char(t & 0xff), char((t >> 8) & 0xff), char((t >> 16) & 0xff), char(t >> 24)};
    field.append(bytes, sizeof bytes);
    return field;
}

bool needsUtf8Flag(const QByteArray &name)
{
    bool ascii = true;
    for (char c : name)
        ascii = ascii && uchar(c) < 0x80;
    return !ascii && QByteArrayView(name).isValidUtf8();
}

} // namespace

// Buffered writes on the caller's descriptor, for minizip's file functions: its headers come field by
// field and would otherwise cost a system call each.
struct ZipArchiveWriter::Sink
{
    int fd;
    QByteArray buffer;
    quint64 flushedTo = 0; // file offset where the buffer starts
    int error = 0;

    bool flush()
    {
        const char *p = buffer.constData();
        qint64 left = buffer.size();
        while (left > 0 && error == 0) {
            const ssize_t n = ::pwrite(fd, p, size_t(left), off_t(flushedTo));
            if (n < 0) {
                if (errno != EINTR)
                    error = errno;
                continue;
            }
            p += n;
            left -= n;
            flushedTo += quint64(n);
        }
        buffer.clear();
        return error == 0;
    }

    static voidpf open(voidpf opaque, const void *, int) { return opaque; }
    static uLong read(voidpf, voidpf, void *, uLong) { return 0; }
    static uLong write(voidpf, voidpf stream, const void *data, uLong size)
    {
        auto *s = static_cast<Sink *>(stream);
        if (s->error != 0)
            return 0;
        s->buffer.append(static_cast<const char *>(data), qsizetype(size));
        if (s->buffer.size() >= kBufferBytes && !s->flush())
            return 0;
        return size;
    }
    static ZPOS64_T tell(voidpf, voidpf stream)
    {
        auto *s = static_cast<Sink *>(stream);
        return s->flushedTo + quint64(s->buffer.size());
    }
    static long seek(voidpf, voidpf stream, ZPOS64_T offset, int origin)
    {
        auto *s = static_cast<Sink *>(stream);
        if (!s->flush())
            return -1;
        if (origin == ZLIB_FILEFUNC_SEEK_SET)
            s->flushedTo = offset;
        else if (origin == ZLIB_FILEFUNC_SEEK_CUR)
            s->flushedTo += offset;
        else {
            struct stat st;
            if (::fstat(s->fd, &st) != 0)
                return -1;
            s->flushedTo = quint64(st.st_size) + offset;
        }
        return 0;
    }
    static int close(voidpf, voidpf stream) { return static_cast<Sink *>(stream)->flush() ? 0 : -1; }
    static int testError(voidpf, voidpf stream) { return static_cast<Sink *>(stream)->error; }
};

ZipArchiveWriter::ZipArchiveWriter(int fd) : m_sink(std::make_unique<Sink>())
{
    m_sink->fd = fd;
    m_sink->buffer.reserve(kBufferBytes + (64 << 10));
    zlib_filefunc64_def functions{};
    functions.zopen64_file = &Sink::open;
    functions.zread_file = &Sink::read;
    functions.zwrite_file = &Sink::write;
    functions.ztell64_file = &Sink::tell;
    functions.zseek64_file = &Sink::seek;
    functions.zclose_file = &Sink::close;
    functions.zerror_file = &Sink::testError;
    functions.opaque = m_sink.get();
    m_zip = zipOpen2_64("", APPEND_STATUS_CREATE, nullptr, &functions);
}

ZipArchiveWriter::~ZipArchiveWriter()
{
    if (m_zip)
        zipClose(m_zip, nullptr); // an unfinished archive: the caller throws the file away
}

Status ZipArchiveWriter::failure(int code, const char *what) const
{
    const int err = m_sink->error != 0 ? m_sink->error : EIO;
    return Error{QString::fromLatin1(kErrorDomain), err,
                 QStringLiteral("%1: %2").arg(QString::fromLatin1(what), QString::fromLocal8Bit(strerror(err))),
                 {{QStringLiteral("zipError"), code}}};
}

Status ZipArchiveWriter::begin(const ZipEntry &entry, int method)
{
    if (!m_zip)
        return failure(ZIP_ERRNO, "cannot write the archive");
    zip_fileinfo info{};
    info.dosDate = dosDateTime(entry.mtime);
    info.external_fa = (uLong(entry.mode & 0xFFFF) << 16) | (entry.kind == ZipEntry::Kind::Folder ? kMsDosFolder : 0);
    const QByteArray extra = extendedTimestamp(entry.mtime);
    const bool zip64 = entry.kind == ZipEntry::Kind::File && entry.size >= kZip64From;
    // raw = 1: minizip writes what it is given, the deflating was done before.
    const int r = zipOpenNewFileInZip4_64(m_zip, entry.name.constData(), &info, extra.constData(), uInt(extra.size()),
                                          extra.constData(), uInt(extra.size()), nullptr, method,
                                          method == 0 ? 0 : 6, 1, -MAX_WBITS, 8, Z_DEFAULT_STRATEGY, nullptr, 0,
                                          kMadeByUnix, needsUtf8Flag(entry.name) ? kUtf8Flag : 0, zip64 ? 1 : 0);
    return r == ZIP_OK ? success() : failure(r, "cannot write the archive");
}

Status ZipArchiveWriter::addFolder(const ZipEntry &entry)
{
    if (Status s = begin(entry, 0); !s.ok())
        return s;
    return endFile(0, 0);
}

Status ZipArchiveWriter::addLink(const ZipEntry &entry, const QByteArray &target)
{
    if (Status s = begin(entry, 0); !s.ok())
        return s;
    if (Status s = writeData(target.constData(), target.size()); !s.ok())
        return s;
    return endFile(quint64(target.size()), quint32(crc32(0, reinterpret_cast<const Bytef *>(target.constData()), uInt(target.size()))));
}

Status ZipArchiveWriter::beginFile(const ZipEntry &entry, bool deflated) { return begin(entry, deflated ? Z_DEFLATED : 0); }

Status ZipArchiveWriter::writeData(const char *data, qint64 size)
{
    while (size > 0) {
        const unsigned piece = unsigned(std::min<qint64>(size, 1 << 30));
        if (const int r = zipWriteInFileInZip(m_zip, data, piece); r != ZIP_OK)
            return failure(r, "cannot write the archive");
        data += piece;
        size -= piece;
    }
    return success();
}

Status ZipArchiveWriter::endFile(quint64 uncompressedSize, quint32 crc)
{
    const int r = zipCloseFileInZipRaw64(m_zip, uncompressedSize, crc);
    return r == ZIP_OK ? success() : failure(r, "cannot write the archive");
}

Status ZipArchiveWriter::finish()
{
    void *zip = std::exchange(m_zip, nullptr);
    if (!zip)
        return failure(ZIP_ERRNO, "cannot write the archive");
    const int r = zipClose(zip, nullptr);
    if (r != ZIP_OK || m_sink->error != 0)
        return failure(r, "cannot write the archive");
    return success();
}

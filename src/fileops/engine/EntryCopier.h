#pragma once

#include <QByteArray>

#include <functional>
#include <sys/types.h>

// Copies one directory entry between two open folders, by file descriptor, so names stay bytes and no
// link is ever followed. A file is written under a hidden temporary name and renamed to its final
// name only when complete; a folder is copied completely, hidden entries and empty folders included.
class EntryCopier
{
public:
    // Called between chunks with the bytes just written and the name being copied; false stops.
    using Step = std::function<bool(quint64 bytes, const QByteArray &name)>;
    // Takes an existing item out of the way (to the trash) just before its replacement takes its name.
    using SetAside = std::function<bool(int dirFd, const QByteArray &name, int *error)>;

    explicit EntryCopier(Step step) : m_step(std::move(step)) {}

    // Copies srcDir/srcName to dstDir/dstName. With `replace`, an existing dstName is kept until the
    // new item is complete and is then set aside; without it, an existing dstName fails with EEXIST.
    bool copy(int srcDir, const QByteArray &srcName, int dstDir, const QByteArray &dstName,
              const SetAside &replace = {});

    // After a false return: errno of the failure (ECANCELED after a stop) and the entry's name.
    int error() const { return m_error; }
    QByteArray failedName() const { return m_failedName; }

    static constexpr size_t kChunk = 8u << 20;

private:
    bool writeUnderTemporaryName(int srcDir, const QByteArray &name, const struct stat &st, int dstDir,
                                 const QByteArray &temp);
    bool copyFile(int srcDir, const QByteArray &name, const struct stat &st, int dstDir, const QByteArray &tempName);
    bool copySymlink(int srcDir, const QByteArray &name, const struct stat &st, int dstDir, const QByteArray &tempName);
    bool copySpecial(int srcDir, const QByteArray &name, const struct stat &st, int dstDir, const QByteArray &tempName);
    bool copyFolder(int srcDir, const QByteArray &name, const struct stat &st, int dstDir, const QByteArray &dstName);
    bool copyFolderContents(int srcFd, int dstFd);
    bool copyData(int in, int out, const struct stat &st, const QByteArray &name);
    bool copyRange(int in, int out, off_t from, off_t length, const QByteArray &name, bool toEof);
    bool fail(int error, const QByteArray &name);
    static void removeTemporary(int dstDir, const QByteArray &temp);
    bool stopRequested(quint64 bytes, const QByteArray &name);

    Step m_step;
    int m_error = 0;
    QByteArray m_failedName;
    enum class Method { CopyFileRange, SendFile, ReadWrite } m_method = Method::CopyFileRange;
};

namespace EntryMetadata {
// Extended attributes (ACLs included), owner where permitted, mode, then access and modification
// times to the nanosecond, in that order so that nothing after it changes the times.
void copyTo(int srcFd, const struct stat &st, int dstFd);
QByteArray temporaryName();
} // namespace EntryMetadata

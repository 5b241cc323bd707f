#pragma once

// A file that appears under its final name only when it is complete. The bytes go to a hidden
// temporary file in the destination's folder, which is renamed into place by commit() and removed
// if the writer is dropped first. Names are kept as bytes.

#include "utils/Result.h"

#include <QByteArray>
#include <QString>

class AtomicFile
{
public:
    enum class Mode {
        Replace,      // an existing file of that name is replaced in one step
        KeepExisting, // a taken name fails with EEXIST and the existing file stays
    };

    explicit AtomicFile(QString finalPath);
    ~AtomicFile();
    AtomicFile(const AtomicFile &) = delete;
    AtomicFile &operator=(const AtomicFile &) = delete;

    Status open();
    // Writes everything or fails (a full disk is an error, never a short file).
    Status write(const char *data, qint64 size);
    Status write(const QByteArray &data) { return write(data.constData(), data.size()); }
    qint64 written() const { return m_written; }
    Status commit(Mode mode);
    // The same under another final name, in the same folder: a commit refused with EEXIST may be
    // tried again under the next free name.
    Status commitAs(const QString &finalPath, Mode mode);
    const QString &path() const { return m_final; }
    // The temporary file's native path while open: another process may write the bytes there.
    const QByteArray &temporaryPath() const { return m_temp; }

    // The usual one-shot use.
    static Status writeFile(const QString &path, const QByteArray &data, Mode mode);

    static constexpr const char *kErrorDomain = "AtomicFile";

private:
    Error failure(int err, const char *what) const;
    void discard();

    QString m_final;
    QByteArray m_temp; // native path of the temporary file
    int m_fd = -1;
    qint64 m_written = 0;
};

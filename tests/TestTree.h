#pragma once

// Builds real files, folders and links below a temporary folder, with fixed times.

#include "core/fs/NativePath.h"
#include "core/fs/TreeWalk.h"

#include <QByteArray>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

class TestTree
{
public:
    TestTree() : m_dir(QDir::tempPath() + QStringLiteral("/quaydrop-test-XXXXXX")) { m_dir.setAutoRemove(false); }
    // Qt's own removal cannot name entries that are not UTF-8.
    ~TestTree()
    {
        ::chmod(native().constData(), 0755);
        TreeWalk::removeRecursively(native(), [](const QByteArray &p, int e) {
            qWarning("test tree: could not remove %s: %s", p.constData(), strerror(e));
        });
    }

    bool isValid() const { return m_dir.isValid(); }
    QString path() const { return m_dir.path(); }
    QByteArray native() const { return m_dir.path().toUtf8(); }
    // The path of an entry below the tree (not made).
    QString at(const QString &relative) const { return m_dir.path() + QLatin1Char('/') + relative; }

    // Bytes, so that names that are not UTF-8 can be made.
    QByteArray file(const QByteArray &relative, const QByteArray &content = QByteArray())
    {
        const QByteArray p = native() + '/' + relative;
        const int fd = ::open(p.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
        if (fd >= 0) {
            if (!content.isEmpty())
                [[maybe_unused]] auto n = ::write(fd, content.constData(), size_t(content.size()));
            ::close(fd);
        }
        return p;
    }

    QByteArray folder(const QByteArray &relative)
    {
        const QByteArray p = native() + '/' + relative;
        ::mkdir(p.constData(), 0755);
        return p;
    }

    QByteArray link(const QByteArray &relative, const QByteArray &target)
    {
        const QByteArray p = native() + '/' + relative;
        [[maybe_unused]] int r = ::symlink(target.constData(), p.constData());
        return p;
    }

    // Each entry below the tree, in order: a name ending in '/' is a folder, any other a file holding
    // "data of " and its name. Their paths.
    QStringList make(const QByteArrayList &entries)
    {
        QStringList made;
        for (const QByteArray &e : entries)
            made.append(NativePath::fromNative(e.endsWith('/') ? folder(e.chopped(1)) : file(e, "data of " + e)));
        return made;
    }

    // A file of `logical` bytes with only `written` bytes of data at its start.
    QByteArray sparseFile(const QByteArray &relative, off_t logical, const QByteArray &written)
    {
        const QByteArray p = file(relative, written);
        [[maybe_unused]] int r = ::truncate(p.constData(), logical);
        return p;
    }

    // A file's bytes, read by its native name; "<unreadable>" when it cannot be opened.
    static QByteArray contents(const QByteArray &p)
    {
        QFile f;
        const int fd = ::open(p.constData(), O_RDONLY | O_CLOEXEC);
        if (fd < 0 || !f.open(fd, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
            if (fd >= 0)
                ::close(fd);
            return "<unreadable>";
        }
        return f.readAll();
    }
    static QByteArray contents(const QString &p) { return contents(NativePath::toNative(p)); }

    // Names in a folder, hidden ones included, sorted (names that are not UTF-8 are not listed).
    static QStringList entries(const QString &folder)
    {
        QStringList names = QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
        names.sort();
        return names;
    }

    static quint64 allocated(const QByteArray &p)
    {
        struct stat st;
        return ::lstat(p.constData(), &st) == 0 ? quint64(st.st_blocks) * 512u : 0;
    }

private:
    QTemporaryDir m_dir;
};

#pragma once

// A small tmpfs of its own: another device for cross-device moves, and a disk that can be filled.
// Needs root; where mounting is refused, reason() says why and the test skips.

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

#include <sys/mount.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

class ScratchMount
{
public:
    // Mounted on a temporary folder of its own, or over the folder `at` (which must exist).
    explicit ScratchMount(const QByteArray &size = "16m", const QString &at = QString()) : m_at(at)
    {
        if (m_at.isEmpty() && !m_dir.isValid()) {
            m_reason = QStringLiteral("no temporary folder");
            return;
        }
        const QByteArray options = "size=" + size + ",mode=0755";
        if (::mount("tmpfs", path().toUtf8().constData(), "tmpfs", 0, options.constData()) != 0) {
            m_reason = QStringLiteral("cannot mount a tmpfs here (%1); run the tests as root").arg(QString::fromLocal8Bit(strerror(errno)));
            return;
        }
        m_mounted = true;
    }
    ~ScratchMount()
    {
        if (m_mounted)
            ::umount2(path().toUtf8().constData(), MNT_DETACH);
    }
    bool isValid() const { return m_mounted; }
    QString reason() const { return m_reason; }
    QString path() const { return m_at.isEmpty() ? m_dir.path() : m_at; }

private:
    QString m_at;
    QTemporaryDir m_dir;
    bool m_mounted = false;
    QString m_reason;
};

#define REQUIRE_SCRATCH_MOUNT(m)                                                                                      \
    if (!(m).isValid())                                                                                               \
    QSKIP(qPrintable((m).reason()))

#include "MountTable.h"

#include <QFile>
#include <QSet>

namespace {

// \040 and friends: octal escapes of space, tab, newline and backslash.
QByteArray unescape(const QByteArray &field)
{
    QByteArray out;
    out.reserve(field.size());
    for (qsizetype i = 0; i < field.size(); ++i) {
        if (field.at(i) == '\\' && i + 3 < field.size()) {
            const QByteArray oct = field.mid(i + 1, 3);
            bool ok = false;
            const int value = oct.toInt(&ok, 8);
            if (ok && oct.size() == 3) {
                out.append(char(value));
                i += 3;
                continue;
            }
        }
        out.append(field.at(i));
    }
    return out;
}

} // namespace

QList<MountEntry> MountTable::parse(const QByteArray &mountinfo)
{
    QList<MountEntry> entries;
    for (const QByteArray &line : mountinfo.split('\n')) {
        const QList<QByteArray> f = line.split(' ');
        const qsizetype dash = f.indexOf("-");
        if (f.size() < 10 || dash < 6 || dash + 2 >= f.size())
            continue;
        entries.append({unescape(f.at(4)), f.at(dash + 1), unescape(f.at(dash + 2))});
    }
    return entries;
}

QList<MountEntry> MountTable::read()
{
    QFile f(QStringLiteral("/proc/self/mountinfo"));
    if (!f.open(QIODevice::ReadOnly))
        return {};
    return parse(f.readAll());
}

bool MountTable::isNetwork(const MountEntry &e)
{
    static const QSet<QByteArray> network{"nfs", "nfs4", "cifs", "smb3", "smbfs", "fuse.sshfs", "fuse.rclone", "9p", "ceph", "afs"};
    return network.contains(e.fsType);
}

bool MountTable::isUserVisible(const MountEntry &e)
{
    const QByteArray &p = e.mountPoint;
    for (const char *hidden : {"/proc", "/sys", "/dev", "/run", "/snap", "/boot", "/var/lib", "/tmp"}) {
        const QByteArray h(hidden);
        if ((p == h || p.startsWith(h + '/')) && !p.startsWith("/run/media/"))
            return false;
    }
    return e.source.startsWith("/dev/") || isNetwork(e);
}

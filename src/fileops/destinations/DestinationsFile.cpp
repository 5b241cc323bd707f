#include "DestinationsFile.h"

#include "core/fs/NativePath.h"
#include "core/fs/PathParts.h"
#include "core/plist/Plist.h"
#include "utils/Utils.h"

#include <QFileInfo>

namespace DestinationsFile {

namespace {

const QString kName = QStringLiteral("destPname");
const QString kPath = QStringLiteral("destPath");

bool isString(const QVariant &v) { return v.metaType().id() == QMetaType::QString; }
bool isData(const QVariant &v) { return v.metaType().id() == QMetaType::QByteArray; }

void logDamaged(const QString &file, const QString &why)
{
    qWarning("%s is damaged (%s): the stored list is left as it is until it is changed",
             qPrintable(NativePath::forDisplay(file)), qPrintable(why));
}

} // namespace

QStringList Stored::paths() const
{
    QStringList out;
    for (const Entry &e : entries)
        out.append(e.path);
    return out;
}

QVariant encodePath(const QString &path)
{
    const QByteArray bytes = NativePath::toNative(path);
    if (QString::fromUtf8(bytes) == path)
        return path;
    return bytes;
}

QString decodePath(const QVariant &stored)
{
    if (isString(stored))
        return stored.toString();
    if (isData(stored))
        return NativePath::fromNative(stored.toByteArray());
    return {};
}

Stored readPaths()
{
    Stored stored;
    const QString file = Utils::moveCopyPathsPlistPath();
    if (!QFileInfo::exists(file))
        return stored;
    const Result<QVariant> read = Plist::readFile(file);
    stored.state = State::Damaged;
    if (!read.ok()) {
        logDamaged(file, read.error().message);
        return stored;
    }
    if (read.value().metaType().id() != QMetaType::QVariantList) {
        logDamaged(file, QStringLiteral("not a list"));
        return stored;
    }
    const QVariantList list = read.value().toList();
    stored.olderForm = !list.isEmpty() && (isString(list.first()) || isData(list.first()));
    for (const QVariant &v : list) {
        Entry e;
        if (stored.olderForm) {
            e.path = decodePath(v);
            e.name = PathParts::lastComponent(e.path);
        } else if (v.metaType().id() == QMetaType::QVariantMap) {
            const QVariantMap map = v.toMap();
            e.path = decodePath(map.value(kPath));
            e.name = isString(map.value(kName)) ? map.value(kName).toString() : PathParts::lastComponent(e.path);
        }
        if (!e.path.startsWith(QLatin1Char('/'))) {
            logDamaged(file, QStringLiteral("an entry is no absolute path"));
            stored.entries.clear();
            return stored;
        }
        stored.entries.append(e);
    }
    stored.state = State::Read;
    return stored;
}

Status writePaths(const QList<Entry> &entries)
{
    QVariantList list;
    for (const Entry &e : entries)
        // The name is display text: bytes that are not UTF-8 show as U+FFFD there.
        list.append(QVariantMap{{kName, NativePath::forDisplay(e.name)}, {kPath, encodePath(e.path)}});
    const QString file = Utils::moveCopyPathsPlistPath();
    const Status s = Plist::writeFileAtomically(file, list);
    if (!s.ok())
        qWarning("could not write %s: %s", qPrintable(NativePath::forDisplay(file)), qPrintable(s.error().message));
    return s;
}

QStringList readRecent()
{
    const QString file = Utils::pathForRecentDestnsPlist();
    const Result<QVariant> read = Plist::readFile(file);
    if (!read.ok()) {
        logDamaged(file, read.error().message);
        return {};
    }
    if (read.value().metaType().id() != QMetaType::QVariantList)
        return {}; // the empty dictionary the file starts as
    QStringList paths;
    for (const QVariant &v : read.value().toList()) {
        const QString p = decodePath(v);
        if (!p.startsWith(QLatin1Char('/'))) {
            logDamaged(file, QStringLiteral("an entry is no absolute path"));
            return {};
        }
        paths.append(p);
    }
    return paths;
}

Status writeRecent(const QStringList &paths)
{
    QVariantList list;
    for (const QString &p : paths)
        list.append(encodePath(p));
    const QString file = Utils::pathForRecentDestnsPlist();
    const Status s = Plist::writeFileAtomically(file, list);
    if (!s.ok())
        qWarning("could not write %s: %s", qPrintable(NativePath::forDisplay(file)), qPrintable(s.error().message));
    return s;
}

} // namespace DestinationsFile

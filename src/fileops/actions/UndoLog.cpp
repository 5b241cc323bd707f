#include "UndoLog.h"

#include "Relocate.h"
#include "core/fs/FsCalls.h"
#include "core/fs/NativePath.h"
#include "core/fs/PathParts.h"
#include "core/plist/Plist.h"
#include "platform/Platform.h"
#include "utils/Utils.h"

#include <QDir>
#include <QUuid>

#include <unistd.h>

namespace {

QVariantList readAll()
{
    const Result<QVariant> stored = Plist::readFile(UndoLog::storePath());
    return stored.ok() ? stored.value().toList() : QVariantList();
}

QVariantMap encode(const UndoLog::Record &r)
{
    QVariantList steps;
    for (const UndoLog::Step &s : r.steps)
        steps.append(QVariantMap{{QStringLiteral("now"), NativePath::toNative(s.now)},
                                 {QStringLiteral("was"), NativePath::toNative(s.was)},
                                 {QStringLiteral("inTrash"), s.inTrash}});
    return {{QStringLiteral("id"), r.id},
            {QStringLiteral("kind"), r.kind},
            {QStringLiteral("date"), r.date},
            {QStringLiteral("steps"), steps},
            {QStringLiteral("madeFolder"), NativePath::toNative(r.madeFolder)}};
}

UndoLog::Record decode(const QVariantMap &m)
{
    UndoLog::Record r;
    r.id = m.value(QStringLiteral("id")).toString();
    r.kind = m.value(QStringLiteral("kind")).toString();
    r.date = m.value(QStringLiteral("date")).toDateTime();
    r.madeFolder = NativePath::fromNative(m.value(QStringLiteral("madeFolder")).toByteArray());
    for (const QVariant &v : m.value(QStringLiteral("steps")).toList()) {
        const QVariantMap s = v.toMap();
        r.steps.append({NativePath::fromNative(s.value(QStringLiteral("now")).toByteArray()),
                        NativePath::fromNative(s.value(QStringLiteral("was")).toByteArray()),
                        s.value(QStringLiteral("inTrash")).toBool()});
    }
    return r;
}

void store(QVariantList records)
{
    QDir().mkpath(PathParts::parent(UndoLog::storePath()));
    while (records.size() > UndoLog::kKept)
        records.removeLast();
    if (const Status s = Plist::writeFileAtomically(UndoLog::storePath(), records); !s.ok())
        qWarning("the undo list could not be written: %s", qPrintable(s.error().message));
}

void forget(const QString &id)
{
    QVariantList records = readAll();
    records.erase(std::remove_if(records.begin(), records.end(),
                                 [&](const QVariant &v) { return v.toMap().value(QStringLiteral("id")).toString() == id; }),
                  records.end());
    store(records);
}

Error undoError(int code, const QString &message, const QString &path = QString())
{
    return Error{QString::fromLatin1(UndoLog::kErrorDomain), code, message, {{QStringLiteral("path"), path}}};
}

} // namespace

QString UndoLog::storePath() { return Utils::QDappSupportPath() + QStringLiteral("/undo.plist"); }

QString UndoLog::record(const QString &kind, const QList<Step> &steps, const QString &madeFolder)
{
    if (steps.isEmpty())
        return {};
    Record r{QUuid::createUuid().toString(QUuid::WithoutBraces), kind, QDateTime::currentDateTimeUtc(), steps, madeFolder};
    QVariantList records = readAll();
    records.prepend(encode(r));
    store(records);
    return r.id;
}

std::optional<UndoLog::Record> UndoLog::find(const QString &id)
{
    for (const QVariant &v : readAll()) {
        const Record r = decode(v.toMap());
        if (id.isEmpty() || r.id == id)
            return r;
    }
    return std::nullopt;
}

Result<QStringList> UndoLog::undo(const QString &id, TrashService *trash)
{
    const std::optional<Record> found = find(id);
    if (!found)
        return undoError(NothingToUndo, QStringLiteral("There is nothing to undo."));
    const Record &r = *found;
    // Everything is checked before anything moves: an undo is all or nothing.
    for (const Step &s : r.steps) {
        if (!FsCalls::exists(s.now))
            return undoError(Blocked, QStringLiteral("%1 is no longer where it was put (%2).")
                                          .arg(NativePath::forDisplay(PathParts::lastComponent(s.was)), NativePath::forDisplay(s.now)),
                             s.now);
        if (FsCalls::exists(s.was))
            return undoError(Blocked, QStringLiteral("%1 has been taken since.").arg(NativePath::forDisplay(s.was)), s.was);
        if (!FsCalls::exists(PathParts::parent(s.was), true))
            return undoError(Blocked, QStringLiteral("The folder %1 is gone.").arg(NativePath::forDisplay(PathParts::parent(s.was))),
                             s.was);
        if (s.inTrash && !trash)
            return undoError(Failed, QStringLiteral("There is no trash to take %1 from.").arg(NativePath::forDisplay(s.was)), s.was);
    }
    QStringList restored;
    QList<Step> left = r.steps;
    for (qsizetype i = r.steps.size() - 1; i >= 0; --i) {
        const Step &s = r.steps.at(i);
        Status back = success();
        if (s.inTrash) {
            const Result<QString> put = trash->restore(s.now);
            if (!put.ok())
                back = put.error();
        } else {
            back = Relocate::item(s.now, s.was);
        }
        if (!back.ok()) {
            // What went back stays back; the rest can still be tried again.
            left = r.steps.mid(0, i + 1);
            QVariantList records = readAll();
            for (QVariant &v : records)
                if (v.toMap().value(QStringLiteral("id")).toString() == r.id)
                    v = encode(Record{r.id, r.kind, r.date, left, r.madeFolder});
            store(records);
            return undoError(Failed, back.error().message, s.now);
        }
        restored.prepend(s.was);
    }
    if (!r.madeFolder.isEmpty())
        ::rmdir(NativePath::toNative(r.madeFolder).constData()); // only if nothing else went in meanwhile
    forget(r.id);
    return restored;
}

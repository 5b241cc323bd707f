#pragma once

#include "UndoLog.h"

#include <QStringList>

#include <functional>

class TrashService;
class VolumeService;

// The Trash button: each item goes to the freedesktop trash, except a dropped mount point of a
// removable volume, which is unmounted and ejected. Nothing is ejected by its name alone.
namespace TrashItems {

struct Outcome
{
    QList<UndoLog::Step> trashed; // now: in the trash, was: where it came from
    QStringList ejected;
    QStringList noTrash; // on a volume with no trash: only the user may say to delete them for good
    QList<Error> failures;
};

// `next`, when set, is told before each item how many went before it; false stops there, leaving the
// rest where they are.
using Next = std::function<bool(int done, const QString &path)>;

Outcome trashFiles(const QStringList &paths, TrashService *trash, VolumeService *volumes, const Next &next = {});
// The mount point of a removable volume, when `path` is one; else empty.
QString removableMountPointAt(const QString &path, VolumeService *volumes);
// Deletes for good, after the user said so.
Status deleteForGood(const QString &path);

} // namespace TrashItems

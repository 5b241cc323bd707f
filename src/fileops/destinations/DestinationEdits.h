#pragma once

// The user's changes to the stored destinations, shared by the picker, the manager window and the
// command line. Each change is written at once, atomically; a write that fails leaves the old file
// and comes back as the error.

#include "utils/Result.h"

#include <QStringList>

namespace DestinationEdits {

inline constexpr char kErrorDomain[] = "Destinations";
enum ErrorCode { NoSuchFolder = 1, AlreadyADestination = 2, NotADestination = 3 };

// The name a row shows: the stored "destPname", else the folder's own name.
QString destNameForDestPath(const QString &path);

// A stored destination gets a new name; an empty one gives it back its folder's name. A path that
// is not stored (a volume row) is NotADestination.
Status rename(const QString &path, const QString &name);
// The folder goes first in the list. `shownRows` counts as stored for the duplicate test, as the
// rows on screen may include folders the file does not hold (removable media, the standard folders).
Status add(const QString &path, const QStringList &shownRows = {});
Status remove(const QString &path);
// The rows in their new order. Stored destinations on volumes that are not mounted (not on screen)
// keep their places.
Status reorder(const QStringList &arranged);

// The rows after a drag of the row at `source` onto the gap above `target`.
QStringList performDragReorder(QStringList rows, int source, int target);
// Whether a drop onto the gap above `target` would move the row at all.
bool isRealMove(int source, int target);

} // namespace DestinationEdits

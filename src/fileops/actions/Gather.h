#pragma once

#include "UndoLog.h"

#include <QStringList>

// "Into folder": the dropped items go into a new folder beside the first one. A folder of that name
// that exists already is never merged into: the new one takes a free name. An item goes whole, hidden
// entries included; one that cannot be moved stays where it was and is logged.
namespace Gather {

struct Outcome
{
    QString folder;            // the folder made, empty when it could not be
    QStringList moved;         // where the items are now
    QList<UndoLog::Step> steps;
    QList<Error> failures;
};

// moveSelectedFilesIntoFolder:userEnteredFolderName: with createfolder:AndPutFilesThere:.
Outcome moveSelectedFilesIntoFolder(const QStringList &paths, const QString &name);

} // namespace Gather

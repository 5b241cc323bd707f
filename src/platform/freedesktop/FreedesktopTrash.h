#pragma once

#include "platform/Platform.h"

#include <QByteArray>

// The freedesktop.org trash: $XDG_DATA_HOME/Trash for items on the home's file system, else
// $topdir/.Trash/$uid (a sticky, shared .Trash) or $topdir/.Trash-$uid on the item's own volume,
// each with an info file that says where the item came from. Names stay bytes throughout.
class FreedesktopTrash : public TrashService
{
public:
    Result<QString> moveToTrash(const QString &path) override;
    Result<QString> restore(const QString &trashedPath) override;

    // The trash folder an item would go to, made if missing; empty with errno set when there is none.
    static QByteArray trashFolderFor(const QByteArray &item, bool *isHomeTrash = nullptr);
    static QByteArray percentEncoded(const QByteArray &path);
};

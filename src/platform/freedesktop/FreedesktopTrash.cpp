#include "FreedesktopTrash.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

Result<QString> FreedesktopTrash::moveToTrash(const QString &path)
{
    // Without ~/.local/share, Qt 6.4 "succeeds" with a trash made in the working directory.
    QDir().mkpath(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation));
    QFile file(path);
    if (!file.moveToTrash())
        return Error{QStringLiteral("Trash"), 1, QStringLiteral("%1 could not be moved to the trash: %2").arg(path, file.errorString())};
    const QString where = file.fileName();
    if (QDir::isRelativePath(where))
        return Error{QStringLiteral("Trash"), 2, QStringLiteral("the trash folder could not be found")};
    return where;
}

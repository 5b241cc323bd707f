#pragma once

#include "utils/Result.h"

#include <QByteArray>
#include <QString>

// Where an edited picture goes: "_Quaydrop-NAME.EXT" beside its source, the first free name of
// "_Quaydrop-NAME.EXT", "_Quaydrop-NAME 1.EXT", ...; or exactly where a save dialog said. A file
// appears under its final name only complete; an existing file is never overwritten by a free name.
namespace PictureSaver {

QString baseName(const QString &sourcePath);  // "_Quaydrop-photo"
QString extension(const QString &sourcePath); // "jpg", as the source has it; empty when it has none

Result<QString> writeBeside(const QString &folder, const QString &sourcePath, const QByteArray &bytes);
// The dialog asked before replacing: an existing file there is replaced in one step.
Result<QString> writeAt(const QString &path, const QByteArray &bytes);

} // namespace PictureSaver

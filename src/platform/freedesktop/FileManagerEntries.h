#pragma once

#include "utils/Result.h"

#include <QByteArray>
#include <QString>

// "Open in Quaydrop" for the file managers that keep their entries per user: a Nautilus script and a
// Thunar custom action. Dolphin and Nemo read theirs from the installed package. The user's own files
// are edited as bytes: only our entry is added or taken out, everything else stays as it was.
namespace FileManagerEntries {

enum class Change { Added, Removed, AlreadyThere, NotThere };

// uca.xml with our action before its closing </actions> (a fresh file when `uca` is empty); an error
// for a file that is not well-formed or has no <actions> element. Our action is never added twice.
Result<QByteArray> withThunarAction(const QByteArray &uca, bool *alreadyThere = nullptr);
// uca.xml without our action (and its line), or the same bytes when it has none.
Result<QByteArray> withoutThunarAction(const QByteArray &uca, bool *wasThere = nullptr);

// ~/.config/Thunar/uca.xml and ~/.local/share/nautilus/scripts/, from the XDG folders.
QString thunarActionsFile();
QString nautilusScriptsFolder();

Result<Change> integrateThunar(const QString &ucaPath, bool remove);
Result<Change> integrateNautilus(const QString &scriptsFolder, bool remove);

} // namespace FileManagerEntries

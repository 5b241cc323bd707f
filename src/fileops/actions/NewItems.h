#pragma once

#include "utils/Result.h"

#include <QString>

#include <optional>

// The new folder and the empty documents of "New": their default names, extensions, templates,
// credits and the overlay's tags, in one table.
namespace NewItems {

enum class Kind { Folder, Text, Rtf, Word, Excel, OdfText, OdfSheet };

struct Spec
{
    Kind kind;
    qint64 tag;              // of the overlay's button
    const char *word;        // for `quaydrop new WORD`
    const char *defaultName; // "_NewFolder", ...
    const char *extension;   // empty for a folder
    const char *resource;    // the template in the program's resources, empty where none is needed
    quint64 credit;          // seconds for the ledger
};

const QList<Spec> &table();
std::optional<Spec> forTag(qint64 tag);
std::optional<Spec> forWord(const QString &word);

// The parent of the first item, or the item itself when `insideState` is exactly 1 and it is a folder.
QString folderFor(const QString &firstPath, qint64 insideState);

// Makes the item in `folder`: under the free name for `enteredName` when one is given, else for the
// default name. A name entered with an extension keeps it and gets the item's own on top. Never
// replaces anything. The new item's path.
Result<QString> create(const Spec &spec, const QString &folder, const QString &enteredName);

} // namespace NewItems

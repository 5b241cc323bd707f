#pragma once

#include "utils/Result.h"

#include <QDateTime>
#include <QList>
#include <QString>

#include <optional>

class TrashService;

// What the last file operations changed, kept so that they can be put back: by the notification's
// Undo of the program and by `quaydrop undo`, which read the same stored list. Paths are kept as
// their bytes.
namespace UndoLog {

struct Step
{
    QString now;          // where the item is: its new path, or where it lies in the trash
    QString was;          // where it came from
    bool inTrash = false; // put back through the trash's record of it
};

struct Record
{
    QString id;
    QString kind; // "rename", "gather", "move", "trash"
    QDateTime date;
    QList<Step> steps;
    QString madeFolder; // a folder the operation made, removed again when it is empty after the undo
};

inline constexpr char kErrorDomain[] = "Undo";
enum Code { NothingToUndo = 1, Blocked = 2, Failed = 3 };
inline constexpr int kKept = 10; // records kept, newest first

// Stores the operation and answers its id (empty when there was nothing to record).
QString record(const QString &kind, const QList<Step> &steps, const QString &madeFolder = QString());
std::optional<Record> find(const QString &id); // empty id: the newest
// Puts every item of the record back where it was. Changes nothing and names the item when an old
// name has been taken since or an item is no longer where the operation left it. Answers the paths
// restored.
Result<QStringList> undo(const QString &id, TrashService *trash);
QString storePath();

} // namespace UndoLog

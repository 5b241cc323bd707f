#pragma once

#include "utils/Result.h"

#include <QString>

// Moves one item to an exact new path: a rename on one file system; across file systems a complete
// copy (hidden entries and empty folders included), after which the source goes. A taken target
// fails with EEXIST and nothing is touched; a failed copy leaves the source as it was.
namespace Relocate {

inline constexpr char kErrorDomain[] = "Relocate";

Status item(const QString &from, const QString &to);

// Into `folder` under `name`, or under the free name "name 1.ext", ... when that is taken. The path
// the item has now.
Result<QString> intoFolder(const QString &from, const QString &folder, const QString &name);

} // namespace Relocate

#pragma once

#include "utils/Result.h"

#include <QString>
#include <functional>

namespace FreeName {

// Writes a new file under a free name in `folder` ("Report.pdf", else "Report 1.pdf", ...). `write`
// gets the full path and must fail with EEXIST if the name was taken meanwhile, never replace; the
// next free name is tried then. The path written, or the first other error.
Result<QString> write(const QString &folder, const QString &name, const QString &extension,
                      const std::function<Status(const QString &path)> &write);

} // namespace FreeName

#include "FreeName.h"

#include "utils/Utils.h"

#include <cerrno>

namespace {
constexpr int kAttempts = 8; // another program would have to take eight names in a row
}

Result<QString> FreeName::write(const QString &folder, const QString &name, const QString &extension,
                                const std::function<Status(const QString &)> &write)
{
    for (int attempt = 1;; ++attempt) {
        const QString path = folder + QChar('/') + Utils::nameForNewFileOrFolder(folder, name, extension);
        const Status written = write(path);
        if (written.ok())
            return path;
        if (written.error().code != EEXIST || attempt == kAttempts)
            return written.error();
    }
}

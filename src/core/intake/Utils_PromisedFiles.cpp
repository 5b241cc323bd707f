#include "core/fs/NativePath.h"
#include "utils/Utils.h"

#include <QPointer>
#include <QTimer>

#include <sys/stat.h>

namespace {

struct Snapshot
{
    bool exists = false;
    timespec modified{};
    off_t size = 0;

    // A file that is not there has no date to compare: it never counts as unchanged.
    bool sameAs(const Snapshot &other) const
    {
        return exists && other.exists && modified.tv_sec == other.modified.tv_sec &&
               modified.tv_nsec == other.modified.tv_nsec && size == other.size;
    }
};

Snapshot snapshotOf(const QByteArray &path)
{
    struct stat st{};
    if (::stat(path.constData(), &st) != 0)
        return {};
    return {true, st.st_mtim, st.st_size};
}

void checkAgain(const QByteArray &path, QPointer<QObject> context, std::function<void(bool)> handler)
{
    if (!context)
        return; // the import was given up
    const Snapshot before = snapshotOf(path);
    QTimer::singleShot(100, context.data(), [path, context, handler = std::move(handler), before]() mutable {
        if (snapshotOf(path).sameAs(before))
            handler(true);
        else
            checkAgain(path, context, std::move(handler));
    });
}

} // namespace

void Utils::checkPromisedFilePathComplete(const QString &path, QObject *context, std::function<void(bool)> handler)
{
    if (!context)
        return;
    checkAgain(NativePath::toNative(path), context, std::move(handler));
}

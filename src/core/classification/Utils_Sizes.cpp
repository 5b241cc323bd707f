#include "core/fs/NativePath.h"
#include "core/fs/TreeWalk.h"
#include "core/texts/Texts.h"
#include "utils/Utils.h"

#include <QUrl>

#include <sys/stat.h>

#include <cmath>
#include <cstring>

quint64 Utils::fileSizeAtPath(const QString &path)
{
    struct stat st;
    if (lstat(NativePath::toNative(path).constData(), &st) != 0)
        return 0;
    return quint64(st.st_blocks) * 512u;
}

quint64 Utils::folderSize(const QString &path)
{
    return TreeWalk::allocatedBytesBelow(NativePath::toNative(path), [](const QByteArray &where, int error) {
        qWarning("ERROR ENUMERATING FOLDER> %s, %s",
                 QUrl::fromLocalFile(NativePath::forDisplay(NativePath::fromNative(where))).toString().toUtf8().constData(),
                 strerror(error));
    });
}

quint64 Utils::multipleItemsSize(const QStringList &paths)
{
    // A folder counts its contents plus its own entry, unlike the single-folder answer.
    quint64 total = 0;
    for (const QString &p : paths) {
        if (isThisAFolderHere(p))
            total += folderSize(p);
        total += fileSizeAtPath(p);
    }
    return total;
}

quint64 Utils::sizeOfItemsInArr(const QStringList &paths)
{
    if (paths.isEmpty())
        return 0;
    if (paths.size() >= 2)
        return multipleItemsSize(paths);
    const QString &only = paths.first();
    return isThisAFolderHere(only) ? folderSize(only) : fileSizeAtPath(only);
}

QString Utils::getTheSizeOfItemsInArr(const QStringList &paths)
{
    if (paths.isEmpty())
        return QStringLiteral("n/a");
    return getHumanReadableSizeFrom(sizeOfItemsInArr(paths));
}

QString Utils::getHumanReadableSizeFrom(quint64 bytes) { return getHumanReadableSizeFrom(bytes, Texts::locale()); }

// Decimal units as a file manager shows them: whole KB, one decimal for MB, two from GB on,
// trailing zeros dropped, and a value that rounds up to 1000 moves to the next unit.
QString Utils::getHumanReadableSizeFrom(quint64 bytes, const QLocale &locale)
{
    if (bytes == 0)
        return Texts::localized("Zero KB");
    if (bytes == 1)
        return Texts::localized("1 byte");
    if (bytes < 1000)
        return Texts::localized("%1 bytes").arg(bytes);

    static const char *const units[] = {"KB", "MB", "GB", "TB", "PB", "EB"};
    static const int digits[] = {0, 1, 2, 2, 2, 2};
    int unit = 0;
    double divisor = 1000.0;
    while (unit < 5 && double(bytes) >= divisor * 1000.0) {
        divisor *= 1000.0;
        ++unit;
    }
    double rounded = 0;
    while (true) {
        const double scale = std::pow(10.0, digits[unit]);
        rounded = std::round(double(bytes) / divisor * scale) / scale;
        if (rounded < 1000.0 || unit == 5)
            break;
        divisor *= 1000.0;
        ++unit;
    }
    QString number = locale.toString(rounded, 'f', digits[unit]);
    if (digits[unit] > 0) {
        const QString point = locale.decimalPoint();
        while (number.endsWith(QChar('0')))
            number.chop(1);
        if (number.endsWith(point))
            number.chop(point.size());
    }
    return number + QChar(' ') + QString::fromLatin1(units[unit]);
}

#include "WallpaperHistory.h"

#include "core/fs/AtomicFile.h"
#include "platform/Platform.h"
#include "utils/Utils.h"

#include <QFile>
#include <QFileInfo>
#include <QImageReader>

namespace WallpaperHistory {

namespace {

Error failure(int code, const QString &message)
{
    return Error{QString::fromLatin1(kErrorDomain), code, message};
}

Status checkPicture(const QString &path)
{
    // The header's own claim first: the image readers refuse a huge picture without saying its size.
    QSizeF size = QImageReader(path).size();
    if (size.isEmpty())
        size = Utils::getImageDimensionsAtPathInSize(path);
    if (size.isEmpty())
        return failure(kNotAPicture, QStringLiteral("%1 is not a picture Quaydrop can read.").arg(QFileInfo(path).fileName()));
    if (size.width() > kMaxSide || size.height() > kMaxSide || size.width() * size.height() > double(kMaxPixels))
        return failure(kTooLarge, QStringLiteral("%1 is %2 × %3 pixels, too large for a wallpaper (at most %4 megapixels). "
                                                 "Scale it down first, for example with Resize.")
                                      .arg(QFileInfo(path).fileName())
                                      .arg(qint64(size.width()))
                                      .arg(qint64(size.height()))
                                      .arg(kMaxPixels / 1000000));
    return success();
}

Status copyInto(const QString &source, const QString &copy)
{
    QFile in(source);
    if (!in.open(QIODevice::ReadOnly))
        return failure(kSetFailed, in.errorString());
    const QByteArray bytes = in.readAll();
    if (in.error() != QFileDevice::NoError)
        return failure(kSetFailed, in.errorString());
    return AtomicFile::writeFile(copy, bytes, AtomicFile::Mode::Replace);
}

bool existingFile(const QString &path)
{
    return !path.isEmpty() && QFileInfo(path).isFile();
}

} // namespace

Entries read()
{
    const QVariantMap list = Utils::getWallpapersPlistDictionaryValues().value_or(QVariantMap());
    return {list.value(QStringLiteral("curWP")).toString(), list.value(QStringLiteral("oldWP1")).toString(),
            list.value(QStringLiteral("oldWP2")).toString()};
}

Status setDroppedPicture(const QString &dropped, WallpaperService &service)
{
    if (const Status ok = checkPicture(dropped); !ok.ok())
        return ok;
    const QString name = QFileInfo(dropped).fileName();
    const QString copy = Utils::pathForWPFolder() + QLatin1Char('/') + name;
    if (const Status copied = copyInto(dropped, copy); !copied.ok()) {
        qWarning("saving currWP failed %s", qPrintable(copied.error().message));
        return service.setWallpaper(dropped);
    }
    if (const Status set = service.setWallpaper(copy); !set.ok())
        return set; // the desktop kept its picture: the history stays as it was
    const Entries was = read();
    auto nameOf = [](const QString &path) { return QFileInfo(path).fileName(); };
    const bool newName = name != nameOf(was.curWP) && name != nameOf(was.oldWP1) && name != nameOf(was.oldWP2);
    if (!newName)
        return success();
    // The picture that falls out of the history goes, unless it is one of the user's own files.
    if (existingFile(was.oldWP2) && was.oldWP2.startsWith(Utils::QDappSupportPath() + QLatin1Char('/')))
        QFile::remove(was.oldWP2);
    return Utils::saveChangesToWPPlist(copy, was.curWP, was.oldWP1);
}

Shown slotsToShow(WallpaperService &service)
{
    Entries list = read();
    if (list.oldWP1.isEmpty()) {
        const QString desktop = service.currentWallpaper();
        if (!existingFile(desktop))
            return {};
        if (!desktop.startsWith(Utils::QDappSupportPath() + QLatin1Char('/')) && desktop != list.curWP)
            Utils::saveChangesToWPPlist(desktop, list.oldWP1, list.oldWP2);
        return {desktop, existingFile(list.oldWP2) ? list.oldWP2 : QString()};
    }
    return {existingFile(list.oldWP1) ? list.oldWP1 : QString(), existingFile(list.oldWP2) ? list.oldWP2 : QString()};
}

Status setSlot(int slot, WallpaperService &service)
{
    const Entries list = read();
    // Until the history first moves, slot 1 shows the present desktop picture, kept as "curWP".
    const QString path = slot == 1 ? (list.oldWP1.isEmpty() ? list.curWP : list.oldWP1) : slot == 2 ? list.oldWP2 : QString();
    if (!existingFile(path))
        return failure(kNoSlot, slot == 1 || slot == 2 ? QStringLiteral("There is no earlier wallpaper to go back to.")
                                                       : QStringLiteral("There is no wallpaper slot %1.").arg(slot));
    return service.setWallpaper(path);
}

} // namespace WallpaperHistory

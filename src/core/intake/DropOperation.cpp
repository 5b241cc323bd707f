#include "DropOperation.h"

#include "SingleItemDropGate.h"
#include "core/dragwatch/DragContent.h"
#include "core/fs/NativePath.h"
#include "platform/Platform.h"
#include "platform/UriList.h"
#include "utils/Utils.h"

#include <QDir>
#include <QMimeData>
#include <QSaveFile>
#include <QUrl>
#include <QUuid>

#include <sys/stat.h>

namespace DropOperation {

namespace {

const QString kPromise = QStringLiteral("XdndDirectSave0");

DragContent::Kind kindOf(const QMimeData *data, Target target)
{
    const QStringList types = data->formats();
    const DragContent::Kind kind = DragContent::availableType(types, !filePaths(data).isEmpty());
    if (target == Target::DropView && kind != DragContent::Kind::Files && !types.contains(kPromise))
        return DragContent::Kind::None;
    return kind;
}

const QString kFileData = QStringLiteral("application/octet-stream");

// Bytes a source handed over instead of a file, written under `suggested` (made a safe name).
QString writeHandedOverData(const QString &folder, const QString &suggested, const QByteArray &bytes)
{
    if (bytes.isEmpty())
        return {};
    const QString path = folder + QLatin1Char('/') + DragContent::fileNameForDraggedData(suggested, bytes);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size() || !file.commit()) {
        qWarning("dropped data not saved as %s: %s", qPrintable(NativePath::forDisplay(path)), qPrintable(file.errorString()));
        return {};
    }
    return path;
}

// One fresh folder per drop, made without parents: a temp folder removed meanwhile is not made again
// here. A source writes its promised files there (X Direct Save), or hands over their bytes, which
// are written there under the name it suggests, else under the name of the address they came from.
QStringList receivePromisedFiles(const QMimeData *data, quintptr nativeWindow)
{
    const QString folder = Utils::createTempFileOperationsFolderIfneeded() + QLatin1Char('/') +
                           QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
    if (::mkdir(NativePath::toNative(folder).constData(), 0700) != 0)
        qWarning("could not create temp folder for prom files!");
    const QString resolvedFolder = QDir(folder).canonicalPath().isEmpty() ? folder : QDir(folder).canonicalPath();
    PromisedFileReceiver *receiver = Platform::current().promisedFiles;
    if (receiver && data->hasFormat(kPromise)) {
        const Result<PromisedFiles> promised = receiver->namesOfPromisedFilesDroppedAtDestination(folder, nativeWindow);
        if (promised.ok() && promised.value().writeFromType.isEmpty()) {
            QStringList paths;
            for (const QString &name : promised.value().names)
                if (!name.isEmpty())
                    paths.append(resolvedFolder + QLatin1Char('/') + name);
            return paths;
        }
        if (promised.ok() && !promised.value().names.isEmpty()) {
            const QString written = writeHandedOverData(resolvedFolder, promised.value().names.first(),
                                                        data->data(promised.value().writeFromType));
            return written.isEmpty() ? QStringList() : QStringList{written};
        }
        if (!promised.ok())
            qWarning("promised files not received: %s", qPrintable(promised.error().message));
    }
    if (data->hasFormat(kFileData)) {
        const QString written = writeHandedOverData(resolvedFolder, data->urls().value(0).fileName(), data->data(kFileData));
        if (!written.isEmpty()) {
            qInfo("dropped data taken from %s", qPrintable(kFileData));
            return {written};
        }
    }
    return {};
}

} // namespace

QStringList filePaths(const QMimeData *data)
{
    QStringList paths;
    if (!data->hasFormat(QStringLiteral("text/uri-list")))
        return paths;
    for (const QByteArray &bytes : UriList::localPathBytes(data->data(QStringLiteral("text/uri-list"))))
        paths.append(NativePath::fromNative(bytes));
    return paths;
}

std::unique_ptr<QMimeData> dropFromClipboard(const QMimeData *clipboard)
{
    if (!clipboard)
        return nullptr;
    auto drop = std::make_unique<QMimeData>();
    const QString uriList = QStringLiteral("text/uri-list");
    // GNOME's file managers name the copied files after a first line that says copy or cut.
    const QString gnomeFiles = QStringLiteral("x-special/gnome-copied-files");
    if (clipboard->hasFormat(uriList)) {
        drop->setData(uriList, clipboard->data(uriList));
    } else if (clipboard->hasFormat(gnomeFiles)) {
        const QByteArray list = clipboard->data(gnomeFiles);
        drop->setData(uriList, list.mid(list.indexOf('\n') + 1));
    }
    if (!filePaths(drop.get()).isEmpty())
        return drop;
    drop = std::make_unique<QMimeData>();
    if (clipboard->hasText()) {
        drop->setText(clipboard->text());
        return drop;
    }
    // One image type, as the window takes them in turn: asking for every type costs a round trip each.
    for (const char *type : {"image/png", "image/jpeg", "image/tiff", "image/bmp", "image/gif"}) {
        if (clipboard->hasFormat(QLatin1String(type))) {
            drop->setData(QLatin1String(type), clipboard->data(QLatin1String(type)));
            return drop;
        }
    }
    return nullptr;
}

bool offersTypeFor(const QMimeData *data, Target target)
{
    return data && kindOf(data, target) != DragContent::Kind::None;
}

Outcome perform(const QMimeData *data, Target target, quintptr nativeWindow)
{
    Outcome outcome;
    if (!data)
        return outcome;
    const DragContent::Kind kind = kindOf(data, target);
    if (kind == DragContent::Kind::None)
        return outcome;
    if (kind == DragContent::Kind::Url && !DragContent::urlLeadsToImage(data->formats()))
        return outcome;
    // Promises come first, whatever else the source offers with them.
    if (data->hasFormat(kPromise) || (kind == DragContent::Kind::Url && data->hasFormat(kFileData))) {
        outcome.promisedPaths = receivePromisedFiles(data, nativeWindow);
        if (!outcome.promisedPaths.isEmpty()) {
            outcome.accepted = true;
            return outcome;
        }
    }
    const QStringList files = filePaths(data);
    if (data->hasFormat(QStringLiteral("text/uri-list")) && !files.isEmpty() && !SingleItemDropGate::passes(files)) {
        qInfo("drop of a lone volume refused: %s", qPrintable(NativePath::forDisplay(files.first())));
        return outcome;
    }
    outcome.accepted = true;
    return outcome;
}

} // namespace DropOperation

#include "DropOperation.h"

#include "SingleItemDropGate.h"
#include "core/dragwatch/DragContent.h"
#include "core/fs/NativePath.h"
#include "platform/Platform.h"
#include "platform/UriList.h"
#include "utils/Utils.h"

#include <QDir>
#include <QMimeData>
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

// One fresh folder per drop, made without parents: a temp folder removed meanwhile is not made again
// here.
QStringList askForPromisedFiles(quintptr nativeWindow)
{
    PromisedFileReceiver *receiver = Platform::current().promisedFiles;
    if (!receiver)
        return {};
    const QString folder = Utils::createTempFileOperationsFolderIfneeded() + QLatin1Char('/') +
                           QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
    if (::mkdir(NativePath::toNative(folder).constData(), 0700) != 0)
        qWarning("could not create temp folder for prom files!");
    const Result<QStringList> names = receiver->namesOfPromisedFilesDroppedAtDestination(folder, nativeWindow);
    if (!names.ok()) {
        qWarning("promised files not received: %s", qPrintable(names.error().message));
        return {};
    }
    const QString resolvedFolder = QDir(folder).canonicalPath().isEmpty() ? folder : QDir(folder).canonicalPath();
    QStringList paths;
    for (const QString &name : names.value())
        if (!name.isEmpty())
            paths.append(resolvedFolder + QLatin1Char('/') + name);
    return paths;
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
    if (data->hasFormat(kPromise)) {
        outcome.promisedPaths = askForPromisedFiles(nativeWindow);
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

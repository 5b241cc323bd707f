#include "AppDelegate.h"

#include "core/fs/NativePath.h"
#include "core/fs/PathParts.h"
#include "core/intake/SingleItemDropGate.h"
#include "core/panels/PanelCatalog.h"
#include "core/texts/Texts.h"
#include "platform/UriList.h"
#include "utils/Utils.h"

#include <QDir>
#include <QMimeData>
#include <QUrl>

namespace {

QStringList localPathsFromUriList(const QByteArray &uriList)
{
    QStringList paths;
    for (const QByteArray &bytes : UriList::localPathBytes(uriList))
        paths.append(NativePath::fromNative(bytes));
    return paths;
}

QString writeDroppedImage(const QByteArray &data, const QString &extension)
{
    const QString folder = Utils::tempFileOperationsFolder();
    const QString path = folder + QStringLiteral("/_tempDroppedImage.") + extension;
    if (folder.isEmpty() || !AppDelegate::writeData(data, path)) {
        qWarning("dropped image not saved in the temp folder %s", qPrintable(folder));
        return {};
    }
    return path;
}

} // namespace

void AppDelegate::mycustomviewDidGetDrop(const QMimeData *data)
{
    if (!data)
        return;
    const QStringList paths = data->hasFormat(QStringLiteral("text/uri-list"))
                                  ? localPathsFromUriList(data->data(QStringLiteral("text/uri-list")))
                                  : QStringList();
    // A lone volume is not taken; the window keeps waiting.
    if (!paths.isEmpty() && !SingleItemDropGate::passes(paths)) {
        qInfo("drop of a lone volume refused: %s", qPrintable(NativePath::forDisplay(paths.first())));
        return;
    }
    showProcessingProgressLabelTxt(Texts::localized("Loading"), 1.0, double(paths.size()), true);
    applyPanelFrame(PanelCatalog::kPanelHeight);
    filePathsArr.clear();
    droppedImageFromOtherApp = false;
    libraryFolderFile = false;

    if (!paths.isEmpty()) {
        filePathsArr = paths;
        // Files that live in a temporary folder are no files of the user's: applications put what they
        // hand out by drag there, and so does the drop of image data.
        const QString parent = PathParts::parent(paths.first());
        const QString ours = Utils::tempFileOperationsFolder();
        if (parent.startsWith(QDir::tempPath()) || (!ours.isEmpty() && parent.startsWith(ours)))
            droppedImageFromOtherApp = true;
        libraryFolderFile = Utils::checkIfFileIsFromLibraryFolder(paths.first());
        showPanelWithIndex(paths.size() == 1 ? Utils::determineFileType(paths.first()) : DropPanelMultiFiles);
        return;
    }
    if (data->hasText()) {
        Utils::createTXTfileFromString(data->text());
        showPanelWithIndex(DropPanelString);
        return;
    }
    // Image data without a file: kept in the temp folder and treated as an image of another application.
    static const QList<QPair<QString, QString>> imageTypes = {
        {"image/png", "png"}, {"image/jpeg", "jpg"}, {"image/tiff", "tiff"}, {"image/bmp", "bmp"}, {"image/gif", "gif"}};
    for (const auto &[mime, extension] : imageTypes) {
        if (!data->hasFormat(mime))
            continue;
        const QString path = writeDroppedImage(data->data(mime), extension);
        if (path.isEmpty())
            break;
        filePathsArr = {path};
        droppedImageFromOtherApp = true;
        showPanelWithIndex(DropPanelOtherAppImage);
        return;
    }
    qInfo("drop of %s: nothing the window can take", qPrintable(data->formats().join(QStringLiteral(", "))));
    endBusyView();
    orderOutTheWindow();
}

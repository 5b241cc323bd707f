#pragma once

#include <QStringList>

#include <memory>

class QMimeData;

// What a drop target answers when something is let go over it: taken or not, and for a drop of
// promised files the paths the source is writing into a fresh folder of the temp folder.
namespace DropOperation {

enum class Target {
    Window,   // the drop window's own target: files, a URL to an image, text, image data, promises
    DropView, // the quick-move and alias targets: files and promises only
};

struct Outcome
{
    bool accepted = false;
    QStringList promisedPaths; // empty unless files were promised
};

// The MIME types a target takes, for its drag-enter test.
bool offersTypeFor(const QMimeData *data, Target target);
// `nativeWindow`: the window the drop landed on, for a source that writes promised files.
Outcome perform(const QMimeData *data, Target target, quintptr nativeWindow);
// The local files a drop names, byte for byte.
QStringList filePaths(const QMimeData *data);
// What a paste hands over as a drop: the clipboard's files (file managers' own list included), else
// its text, else its first image type the window takes. Null when it holds none of these.
std::unique_ptr<QMimeData> dropFromClipboard(const QMimeData *clipboard);

} // namespace DropOperation
